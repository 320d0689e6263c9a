#include "plugin/EventChecks.h"

#include "Interface/HostEvents.h"
#include "Interface/ProcessorNode.h"
#include "base/ContractCheck.h"
#include "base/TargetSelectHandler.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <typeinfo>

namespace {

using namespace HostEvents;
using ContractCheck::Finding;

struct TypeName
{
    std::size_t type;
    const char* name;
};

template <typename... Arguments>
TypeName typeName(const char* name)
{
    return {typeid(std::tuple<Arguments...>).hash_code(), name};
}

/// The arguments of the events, and those that stand there by mistake: all that a host tells is a
/// number for the type.
QString nameOf(std::size_t type)
{
    static const TypeName names[] = {
        typeName<>("nothing"),
        typeName<int>("int"),
        typeName<QUuid>("QUuid"),
        typeName<QList<QUuid>>("QList<QUuid>"),
        typeName<GUID, QList<SDeviceSetInfo>>("GUID, QList<SDeviceSetInfo>"),
        typeName<QUuid, SPrjProcessor>("QUuid, SPrjProcessor"),
        typeName<bool>("bool"),
        typeName<quint32>("quint32"),
        typeName<qint64>("qint64"),
        typeName<quint64>("quint64"),
        typeName<const char*>("const char*"),
        typeName<std::string>("std::string"),
        typeName<QString>("QString"),
        typeName<QByteArray>("QByteArray"),
        typeName<QStringList>("QStringList"),
        typeName<GUID>("GUID"),
        typeName<QList<GUID>>("QList<GUID>"),
        typeName<QVector<QUuid>>("QVector<QUuid>"),
        typeName<QSet<QUuid>>("QSet<QUuid>"),
        typeName<std::vector<QUuid>>("std::vector<QUuid>"),
        typeName<QUuid, QUuid>("QUuid, QUuid"),
        typeName<QUuid, int>("QUuid, int"),
        typeName<SDeviceSetInfo>("SDeviceSetInfo"),
        typeName<QList<SDeviceSetInfo>>("QList<SDeviceSetInfo>"),
        typeName<SPrjProcessor>("SPrjProcessor"),
        typeName<ProcessorNode>("ProcessorNode"),
        typeName<QList<ProcessorNode>>("QList<ProcessorNode>"),
        typeName<QUuid, ProcessorNode>("QUuid, ProcessorNode"),
        typeName<ProcessorGroupNode>("ProcessorGroupNode"),
        typeName<QList<ProcessorGroupNode>>("QList<ProcessorGroupNode>"),
    };
    const auto found = std::find_if(std::begin(names), std::end(names),
                                    [&](const TypeName& name) { return name.type == type; });
    return found == std::end(names) ? QStringLiteral("an unknown type")
                                    : QString::fromLatin1(found->name);
}

struct Known
{
    quint32 number;
    std::size_t type;
};

template <quint32 Number, typename... Arguments>
constexpr Known known(Event<Number, Arguments...> /*event*/)
{
    return {Number, typeid(std::tuple<Arguments...>).hash_code()};
}

/// Null when no event has this number.
const Known* knownEvent(quint32 number)
{
    static const Known events[] = {
        known(DetectStrategyChanged()),
        known(CurrentDeviceSetChanged()),
        known(TreeReset()),
        known(GroupAdded()),
        known(ProcessorAdded()),
        known(ProcessorsAdded()),
        known(NodeRemoved()),
        known(NodesRemoved()),
        known(ProcessorChanged()),
        known(ProjectProcessorChanged()),
        known(LanUsbProcessorIp()),
        known(CurrentProcessorChanged()),
        known(MonitorWarningChanged()),
        known(MonitorStateChanged()),
    };
    const auto* found = std::find_if(std::begin(events), std::end(events),
                                     [&](const Known& event) { return event.number == number; });
    return found == std::end(events) ? nullptr : found;
}

/// Returns the identities that the event is about.
QList<QUuid> identities(const CSubject& subject)
{
    switch (subject.GetEvent()) {
    case GroupAdded::number:
    case ProcessorAdded::number:
    case NodeRemoved::number:
    case ProcessorChanged::number:
        return {std::get<0>(GroupAdded::argument(subject))};
    case ProjectProcessorChanged::number:
        return {std::get<0>(ProjectProcessorChanged::argument(subject))};
    case ProcessorsAdded::number:
    case NodesRemoved::number:
    case MonitorStateChanged::number:
        return std::get<0>(ProcessorsAdded::argument(subject));
    default:
        return {};
    }
}

void checkIdentities(const CSubject& subject)
{
    QSet<QUuid> seen;
    const QList<QUuid> all = identities(subject);
    for (const QUuid& id : all) {
        if (id.isNull()) {
            ContractCheck::report(Finding::NullIdentity,
                                  QStringLiteral("the event names the null identity"));
        } else if (seen.contains(id)) {
            ContractCheck::report(
                Finding::RepeatedIdentity,
                QStringLiteral("the event names %1 more than once").arg(id.toString()));
        }
        seen.insert(id);
    }
}

std::atomic<quint64> counted{0};

bool isOfItsType(const CSubject& subject)
{
    const Known* const event = knownEvent(subject.GetEvent());
    return event && event->type == subject.GetArgumentType();
}

} // namespace

void EventChecks::check(const CSubject& subject)
{
    ++counted;
    const ContractCheck::EventScope scope(subject.GetEvent());
    if (!HandlerPlace::isSet()) {
        ContractCheck::report(Finding::EventWithoutPanel,
                              QStringLiteral("the panel has gone, detach its observer"));
        return;
    }
    const Known* const event = knownEvent(subject.GetEvent());
    if (!event) {
        ContractCheck::report(
            Finding::UnknownNumber,
            QStringLiteral("the panel knows the numbers of Interface/HostEvents.h, got %1")
                .arg(subject.GetEvent()));
        return;
    }
    if (!HandlerPlace::isConnected()) {
        ContractCheck::report(Finding::EventBeforeInitialize,
                              QStringLiteral("events come after Initialize() with a handler, "
                                             "this one came before"));
    }
    if (isOfItsType(subject)) {
        checkIdentities(subject);
        return;
    }
    ContractCheck::report(Finding::ArgumentType,
                          QStringLiteral("event %1 expects %2, got %3")
                              .arg(event->number)
                              .arg(nameOf(event->type), nameOf(subject.GetArgumentType())));
}

void EventChecks::checkRemoval(const CSubject& subject, const HandlerPlace::CPanelWatch& panel)
{
    const quint32 number = subject.GetEvent();
    if ((number != NodeRemoved::number && number != NodesRemoved::number) || !isOfItsType(subject)
        || !HandlerPlace::isSet())
        return;
    const ContractCheck::EventScope scope(number);
    const ContractCheck::Probe probe;
    const auto tell = [](const char* operation, const QUuid& id) {
        ContractCheck::report(Finding::Contradiction,
                              QStringLiteral("%1 is told as removed, and %2 still answers with it")
                                  .arg(id.toString(), QLatin1String(operation)));
    };
    const QList<QUuid> all = identities(subject);
    const auto knows = [&panel](auto question, const QUuid& id) {
        const auto handler = GetTargetSelectHandler();
        // The next panel's handler is not asked.
        return handler && !panel.isOver() && (handler.get()->*question)(id).id == id;
    };
    for (const QUuid& id : all) {
        if (panel.isOver())
            return;
        if (id.isNull())
            continue;
        if (knows(&Host::GetProcessorNode, id))
            tell("GetProcessorNode", id);
        else if (knows(&Host::GetGroupNode, id))
            tell("GetGroupNode", id);
    }
}

quint64 EventChecks::count()
{
    return counted;
}
