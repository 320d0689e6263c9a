#include "sdk/validate/HostSession.h"

#include "Interface/HostEvents.h"
#include "Interface/HostRequests.h"
#include "Interface/ObserverPattern"
#include "sdk/validate/Project.h"
#include "sdk/validate/Threads.h"

#include <QLibrary>
#include <QVariant>

#include <algorithm>

namespace {

using namespace HostEvents;

constexpr int kProcessors = 8;

TargetSelectHostOpen entryPoint(Test& test)
{
    // Never unloaded: threads of the host may still run in it.
    static auto* const library = new QLibrary(test.hostPlugin());
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    const bool isLoaded =
        called(QStringLiteral("load %1").arg(test.hostPlugin()), [] { return library->load(); });
    test.require(isLoaded, Code::HostNotLoaded, library->errorString());
    const auto open =
        reinterpret_cast<TargetSelectHostOpen>(library->resolve(TARGETSELECTHOST_OPEN_SYMBOL));
    test.require(open, Code::HostNotLoaded,
                 QStringLiteral("the plugin exports no " TARGETSELECTHOST_OPEN_SYMBOL));
    return open;
}

/// Returns the identities that the event is about, as far as an event of this type can say.
QList<QUuid> idsOf(const Events::Event& event)
{
    if (event.arguments.size() != 1)
        return {};
    const QVariant& argument = event.arguments.first();
    if (argument.userType() == qMetaTypeId<QUuid>())
        return {argument.value<QUuid>()};
    if (argument.userType() == qMetaTypeId<QList<QUuid>>())
        return argument.value<QList<QUuid>>();
    return {};
}

} // namespace

HostSession::HostSession(Test& test)
    : m_test(test)
{
    // A plugin does not see the end of the panel, and its threads may tell events then.
    test.allow(QStringLiteral("TSA-W28"));
    const TargetSelectHostOpen open = entryPoint(test);
    const bool isOpen = called(QStringLiteral("TargetSelectHost_Open"),
                               [&] { return open(kProcessors, &m_project); });
    test.require(isOpen, Code::HostOpensNothing,
                 QStringLiteral("TargetSelectHost_Open answers false"));
    test.require(m_project.handler != nullptr, Code::HostOpensNothing,
                 QStringLiteral("TargetSelectHost_Open stores no handler"));
    m_handler = std::make_shared<WatchedHandler>(m_project.handler, true);
    // The handler outlives the call of an event.
    m_handler->setOnEvent([heard = m_heard, handler = m_handler.get()](const Events::Event& event) {
        note(*heard, *handler, event);
    });
    test.require(processors().size() >= kProcessors, Code::HostOpensNothing,
                 QStringLiteral("the project has %1 processors, %2 were asked for")
                     .arg(processors().size())
                     .arg(kProcessors));
    renewPanel();
}

HostSession::~HostSession()
{
    m_handler->setOnEvent({});
    m_panel.reset();
}

void HostSession::renewPanel()
{
    m_panel.reset();
    m_panel = std::make_unique<Panel>(m_test, m_handler);
    m_test.require(m_handler->panelObserver() != nullptr, Code::NoObserver,
                   QStringLiteral("SetObserver did not come"));
    expectTree(QStringLiteral("the first event 16"), true);
}

QList<ProcessorNode> HostSession::processors()
{
    return m_handler->GetAllProcessorNodes();
}

QList<ProcessorGroupNode> HostSession::groups()
{
    return m_handler->GetAllGroupNodes();
}

QString HostSession::describe()
{
    Project project;
    project.set(groups(), processors());
    return project.describe(true);
}

ProcessorGroupNode HostSession::someGroup()
{
    const QList<ProcessorGroupNode> all = groups();
    const QList<ProcessorNode> members = processors();
    for (const ProcessorGroupNode& group : all) {
        const auto isIn = [&](const ProcessorNode& node) { return node.groupId == group.id; };
        if (std::any_of(members.begin(), members.end(), isIn))
            return group;
    }
    return all.value(0);
}

void HostSession::note(Heard& heard, WatchedHandler& handler, const Events::Event& event)
{
    ToldEvent told;
    told.number = event.number;
    told.ids = idsOf(event);
    for (const QUuid& id : qAsConst(told.ids)) {
        const bool isAdded =
            told.number == ProcessorAdded::number || told.number == ProcessorsAdded::number;
        const bool isRemoved =
            told.number == NodeRemoved::number || told.number == NodesRemoved::number;
        if (isAdded && handler.GetProcessorNode(id).id != id)
            told.wrong = QStringLiteral("GetProcessorNode does not know the new %1 yet");
        else if (told.number == GroupAdded::number && handler.GetGroupNode(id).id != id)
            told.wrong = QStringLiteral("GetGroupNode does not know the new %1 yet");
        else if (isRemoved && handler.GetProcessorNode(id).id == id)
            told.wrong = QStringLiteral("GetProcessorNode still knows the removed %1");
        else if (isRemoved && handler.GetGroupNode(id).id == id)
            told.wrong = QStringLiteral("GetGroupNode still knows the removed %1");
        if (!told.wrong.isEmpty()) {
            told.wrong = told.wrong.arg(id.toString());
            break;
        }
    }
    const std::lock_guard guard(heard.mutex);
    heard.events.append(told);
    heard.any = true;
}

QList<ToldEvent> HostSession::takeEvents()
{
    const std::lock_guard guard(m_heard->mutex);
    return std::exchange(m_heard->events, {});
}

void HostSession::make(const char* operation, const std::function<void()>& request)
{
    const HostRequests::Request* const rule = HostRequests::find(operation);
    const QString name = QString::fromLatin1(operation);
    takeEvents();
    const QString before = describe();
    try {
        request();
    } catch (const Stop&) {
        throw;
    } catch (...) {
        m_test.find(Code::HandlerThrows, name + QStringLiteral(" throws"));
        throw Stop();
    }
    QList<ToldEvent> events;
    const auto hasFollowed = [&] {
        events += takeEvents();
        return std::any_of(events.begin(), events.end(), [&](const ToldEvent& event) {
            return HostRequests::isFollowedBy(*rule, event.number);
        });
    };
    const auto isReset = [&] {
        events += takeEvents();
        return std::any_of(events.begin(), events.end(), [](const ToldEvent& event) {
            return event.number == TreeReset::number;
        });
    };
    const bool isAwaited = rule->events[0] != HostRequests::kNone;
    const QString refusal = name + QStringLiteral(" is refused");
    if (!isAwaited && describe() == before && waitUntil(isReset, HostRequests::kFollowUpMs))
        m_test.skip(refusal);
    if (isAwaited && !waitUntil(hasFollowed, HostRequests::kFollowUpMs)) {
        bool hasHeard = false;
        {
            const std::lock_guard guard(m_heard->mutex);
            hasHeard = m_heard->any;
        }
        // CreateGroup refuses by its result.
        if (describe() == before && events.isEmpty() && name != QLatin1String("CreateGroup"))
            m_test.skip(refusal);
        // A project that changes without any event ever: nobody is attached.
        if (!hasHeard && describe() != before) {
            m_test.find(Code::NoObserver,
                        QStringLiteral("%1 changed the project, and no event came: is the "
                                       "observer attached to the subject?")
                            .arg(name));
        } else {
            m_test.find(Code::NoEvent,
                        QStringLiteral("%1 is followed by none of its events within %2 ms")
                            .arg(name)
                            .arg(HostRequests::kFollowUpMs));
        }
    }
    hasFollowed();
    for (const ToldEvent& event : qAsConst(events)) {
        m_test.check(
            event.wrong.isEmpty(), Code::EventBeforeChange,
            QStringLiteral("event %1 after %2: %3").arg(event.number).arg(name, event.wrong));
    }
}

void HostSession::tellReset()
{
    const Call call(QStringLiteral("event 16, by the validator"));
    CSubject subject;
    subject.Attach(m_handler->panelObserver());
    TreeReset::tell(subject);
}

void HostSession::expectTree(const QString& after, bool isReadAnew)
{
    if (isReadAnew)
        tellReset();
    const auto isSo = [&] { return m_panel->tree(true) == describe(); };
    if (waitUntil(isSo, HostRequests::kFollowUpMs))
        return;
    m_test.compare(m_panel->tree(true), describe(), Code::TreeDiffers,
                   QStringLiteral("after ") + after);
}
