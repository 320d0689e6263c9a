#include "sdk/relay/Events.h"

#include "Interface/DeviceSetInfo.h"
#include "Interface/HostEvents.h"
#include "Interface/ProcessorNode.h"
#include "sdk/relay/Operations.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <QVariant>

#include <tuple>
#include <typeinfo>
#include <utility>

namespace Events {
namespace {

/// An argument that no observer can read.
struct Unreadable
{
};

/// Reads and tells arguments of the types `Values`.
template <typename... Values>
struct Argument
{
    static bool read(const CSubject& subject, QVariantList& values)
    {
        if (subject.GetArgumentType() != typeid(std::tuple<Values...>).hash_code())
            return false;
        std::apply([&](const Values&... each) { values = {QVariant::fromValue(each)...}; },
                   subject.GetArgument<Values...>());
        return true;
    }

    static bool tell(CSubject& subject, const Event& event)
    {
        if (event.arguments.size() != int(sizeof...(Values)))
            return false;
        return tell(subject, event, std::index_sequence_for<Values...>());
    }

private:
    template <std::size_t... At>
    static bool tell(CSubject& subject, const Event& event, std::index_sequence<At...>)
    {
        if (!(true && ... && (event.arguments.at(int(At)).userType() == qMetaTypeId<Values>())))
            return false;
        subject.Notify<Values...>(event.number, event.arguments.at(int(At)).value<Values>()...);
        return true;
    }
};

/// The arguments that a host gives, and those that it gives by mistake.
template <typename Visit>
bool visitArguments(const Visit& visit)
{
    return visit(Argument<>()) || visit(Argument<QUuid>()) || visit(Argument<QList<QUuid>>())
           || visit(Argument<int>()) || visit(Argument<GUID, QList<SDeviceSetInfo>>())
           || visit(Argument<QUuid, SPrjProcessor>()) || visit(Argument<GUID>())
           || visit(Argument<quint32>()) || visit(Argument<bool>()) || visit(Argument<qint64>())
           || visit(Argument<double>()) || visit(Argument<QString>())
           || visit(Argument<QStringList>()) || visit(Argument<ProcessorNode>())
           || visit(Argument<ProcessorGroupNode>()) || visit(Argument<SDeviceSetInfo>())
           || visit(Argument<SPrjProcessor>()) || visit(Argument<QList<SDeviceSetInfo>>())
           || visit(Argument<QUuid, QUuid>()) || visit(Argument<QUuid, QString>());
}

QByteArray typeNames(const QVariantList& values)
{
    QByteArray names;
    for (const QVariant& value : values) {
        if (!names.isEmpty())
            names += ", ";
        names += QMetaType::typeName(value.userType());
    }
    return names;
}

} // namespace

const char* name(quint32 number)
{
    switch (number) {
    case HostEvents::DetectStrategyChanged::number:
        return "DetectStrategyChanged";
    case HostEvents::CurrentDeviceSetChanged::number:
        return "CurrentDeviceSetChanged";
    case HostEvents::TreeReset::number:
        return "TreeReset";
    case HostEvents::GroupAdded::number:
        return "GroupAdded";
    case HostEvents::ProcessorAdded::number:
        return "ProcessorAdded";
    case HostEvents::ProcessorsAdded::number:
        return "ProcessorsAdded";
    case HostEvents::NodeRemoved::number:
        return "NodeRemoved";
    case HostEvents::NodesRemoved::number:
        return "NodesRemoved";
    case HostEvents::ProcessorChanged::number:
        return "ProcessorChanged";
    case HostEvents::ProjectProcessorChanged::number:
        return "ProjectProcessorChanged";
    case HostEvents::LanUsbProcessorIp::number:
        return "LanUsbProcessorIp";
    case HostEvents::CurrentProcessorChanged::number:
        return "CurrentProcessorChanged";
    case HostEvents::MonitorWarningChanged::number:
        return "MonitorWarningChanged";
    case HostEvents::MonitorStateChanged::number:
        return "MonitorStateChanged";
    default:
        return "Event";
    }
}

Event read(const CSubject& subject)
{
    Event event;
    event.number = subject.GetEvent();
    const bool isKnown = visitArguments(
        [&](auto argument) { return decltype(argument)::read(subject, event.arguments); });
    event.types = isKnown ? typeNames(event.arguments)
                          : "unknown " + QByteArray::number(quint64(subject.GetArgumentType()), 16);
    return event;
}

Event make(quint32 number, const QVariantList& arguments)
{
    return {number, arguments, typeNames(arguments)};
}

void tell(CObserver& observer, const Event& event)
{
    CSubject subject;
    subject.Attach(&observer);
    const bool isKnown = !event.types.startsWith("unknown") && visitArguments([&](auto argument) {
        return decltype(argument)::tell(subject, event);
    });
    if (!isKnown)
        subject.Notify<Unreadable>(event.number, Unreadable());
}

} // namespace Events
