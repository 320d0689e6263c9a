#include "tests/storm/StormHost.h"

#include "Interface/DeviceSetInfo.h"
#include "Interface/ObserverPattern"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <iterator>
#include <optional>
#include <utility>

namespace {

using Ms = std::chrono::milliseconds;

/// Limits of the waits for locks.
constexpr Ms kHostPatience{30000};
constexpr Ms kAnswerPatience{8000};

thread_local bool t_isTeller = false;
thread_local bool t_isHelper = false;
thread_local int t_answers = 0; // number of nested answers

/// Counts an answer while it lasts.
class Nesting final
{
public:
    Nesting() { ++t_answers; }
    ~Nesting() { --t_answers; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
};

/// Returns whether painting asks the question for every row.
bool isPainted(const char* question)
{
    const QLatin1String asked(question);
    for (const char* name : {"GetSelectionMode", "GetSelectedProcessors", "CheckProcessor",
                             "ShowProcessorMoreButton", "ShowNodeMoreButton"}) {
        if (asked == QLatin1String(name))
            return true;
    }
    return false;
}

SDeviceSetInfo deviceSet(quint32 number)
{
    SDeviceSetInfo set{};
    set.id.Data1 = number;
    return set;
}

} // namespace

StormHost::StormHost(StormPlan plan)
    : m_plan(std::move(plan))
    , m_guiBudget(2500)
    , m_budget(1500)
{
    m_helper.post([] { t_isTeller = t_isHelper = true; }).wait();
    m_clerk.post([] { t_isTeller = true; }).wait();
}

StormHost::~StormHost() = default;

void StormHost::becomeTeller()
{
    t_isTeller = true;
}

Ms StormHost::patience() const
{
    const bool waits = t_isTeller && !t_isHelper && t_answers == 0;
    return waits ? kHostPatience : Ms(0);
}

Ms StormHost::answerPatience() const
{
    return m_plan.tellsLocked ? kAnswerPatience : Ms(0);
}

void StormHost::perform(const StormStep& step)
{
    for (int i = 0; i < StormProject::kFamilies; ++i) {
        const int number = (step.family + i) % StormProject::kFamilies;
        if (const HostLock::Holder turn(family(number), patience()); turn) {
            performFor(step, number);
            return;
        }
    }
    // Events about unchanged records need no lock.
    if (m_plan.looksAgain)
        lookAgain(step.family, step.dice | 1);
}

void StormHost::performFor(const StormStep& step, int family)
{
    const quint32 dice = step.dice;
    const auto tellOf = [this](quint32 event, const QUuid& id) {
        if (!id.isNull())
            tell(event, {id});
    };
    switch (step.kind) {
    case StormStep::AddOneByOne:
        for (const QUuid& id : project.addProcessors(family, 1 + int(dice % 3), dice))
            tell(18, {id});
        break;
    case StormStep::AddList: {
        QList<QUuid> ids = project.addProcessors(family, 1 + int(dice % 3), dice);
        if (dice % 5 == 0)
            ids += ids;
        tell(19, ids);
        break;
    }
    case StormStep::RemoveOne:
        for (const QUuid& id : project.removeProcessors(family, 1, dice))
            tell(20, {id});
        break;
    case StormStep::RemoveList:
        tell(21, project.removeProcessors(family, 1 + int(dice % 3), dice));
        break;
    case StormStep::AddGroup:
        addGroup(family, dice);
        break;
    case StormStep::AddFilledGroup:
        addGroup(family, dice);
        tell(19, project.addProcessors(family, 1 + int(dice % 3), dice));
        break;
    case StormStep::Dissolve:
        tellOf(20, project.dissolveGroup(family, dice));
        break;
    case StormStep::ChangeRecord:
        tellOf(25, project.changeRecord(family, true, dice));
        break;
    case StormStep::ChangeProject:
        tellOf(26, project.changeRecord(family, true, dice));
        break;
    case StormStep::ChangeAddress:
        tellOf(25, project.changeAddress(family, dice));
        break;
    case StormStep::ChangeState:
        tellOf(39, project.changeRecord(family, false, dice));
        break;
    case StormStep::Refill:
        if (m_plan.refills)
            tell(16);
        break;
    case StormStep::ChooseCurrent:
        project.chooseCurrent(family, dice);
        tell(30);
        break;
    case StormStep::DeviceSets:
        tellDeviceSets(dice % 5);
        break;
    case StormStep::Strategy:
        tell(0);
        break;
    case StormStep::LanUsb:
        tell(29);
        tell(37);
        break;
    case StormStep::Burst:
        burst(family, dice);
        break;
    case StormStep::LookAgain:
        lookAgain(family, dice);
        break;
    case StormStep::Nonsense:
        tellNonsense(dice);
        break;
    case StormStep::ChangedGroup:
        tellOf(26, project.anyGroup(family, dice));
        break;
    default:
        break;
    }
}

/// Steps with the same dice concern the same processor unless one of them adds or removes
/// processors.
void StormHost::burst(int family, quint32 dice)
{
    static constexpr StormStep::Kind kinds[] = {
        StormStep::ChangeState,   StormStep::ChangeRecord, StormStep::ChangeAddress,
        StormStep::ChangeProject, StormStep::AddOneByOne,  StormStep::AddList,
        StormStep::RemoveOne,     StormStep::Refill,
    };
    StormStep step;
    step.dice = dice;
    for (quint32 rest = dice, left = 3 + dice % 3; left > 0; --left, rest /= 8) {
        step.kind = kinds[rest % std::size(kinds)];
        performFor(step, family);
    }
}

/// Groups have the order of their events, which is that of the project if each group is announced
/// before the next one is created.
void StormHost::addGroup(int family, quint32 dice)
{
    std::optional<HostLock::Holder> turn;
    if (m_plan.groupsInTurn && !turn.emplace(m_groupTurn, patience()))
        return;
    const QUuid id = project.addGroup(family, dice);
    if (!id.isNull())
        tell(17, {id});
}

/// Raises an event that is allowed at any time, because it only makes the panel ask again. An early
/// 17 of a group would decide the order of groups, so 17 is raised only under the lock of the
/// family (even `dice`).
void StormHost::lookAgain(int family, quint32 dice)
{
    const QUuid processor = project.anyProcessor(family, dice / 16);
    const QUuid group = project.anyGroup(family, dice / 16);
    if (processor.isNull())
        return;
    switch (dice % 12) {
    case 0:
    case 6:
        if (!group.isNull())
            tell(17, {group});
        break;
    case 1:
        if (m_plan.refills)
            tell(16);
        break;
    case 2:
    case 3:
        tell(18, {processor});
        break;
    case 4:
    case 5:
        tell(19, {processor, processor});
        break;
    case 7:
    case 8:
        tell(25, {processor});
        break;
    case 9:
        tell(26, {processor});
        break;
    default:
        tell(39, {processor, project.anyProcessor(family, dice / 256)});
        break;
    }
}

/// The host does not know the identity, so it answers with default records.
void StormHost::tellNonsense(quint32 dice)
{
    static constexpr quint32 events[] = {17, 18, 19, 25, 26, 39};
    const QUuid unknown(dice, 0xFFFF, 2, 1, 2, 3, 4, 5, 6, 7, 8);
    tell(events[dice % std::size(events)], {dice % 3 == 0 ? QUuid() : unknown});
}

void StormHost::tell(quint32 event, const QList<QUuid>& ids)
{
    watch.note(QStringLiteral("tells %1 %2").arg(event).arg(stormLabels(ids)));
    std::optional<HostLock::Holder> lock;
    if (m_plan.tellsLocked && t_isTeller && !t_isHelper)
        lock.emplace(m_telling, kAnswerPatience);
    const StormWatch::Telling telling(watch, event);
    CSubject subject;
    subject.Attach(m_observer);
    switch (event) {
    case 0:
        subject.Notify<int>(event, 2);
        break;
    case 17:
    case 18:
    case 20:
    case 25:
        subject.Notify<QUuid>(event, ids.value(0));
        break;
    case 19:
    case 21:
    case 39:
        subject.Notify<QList<QUuid>>(event, ids);
        break;
    case 26:
        subject.Notify<QUuid, SPrjProcessor>(event, ids.value(0), SPrjProcessor());
        break;
    default:
        subject.Notify(event);
        break;
    }
}

void StormHost::tellDeviceSets(quint32 firstNumber)
{
    watch.note(QStringLiteral("tells 1"));
    const StormWatch::Telling telling(watch, 1);
    const SDeviceSetInfo first = deviceSet(firstNumber);
    CSubject subject;
    subject.Attach(m_observer);
    subject.Notify<GUID, QList<SDeviceSetInfo>>(1, first.id, {first, deviceSet(firstNumber + 1)});
}

void StormHost::tellLater(quint32 event, const QList<QUuid>& ids)
{
    const auto now = [this, event, ids] { tell(event, ids); };
    QMetaObject::invokeMethod(&m_guiContext, now, Qt::QueuedConnection);
}

void StormHost::removeLater(const QList<QUuid>& ids)
{
    m_clerk.post([this, ids] {
        for (const QUuid& id : ids) {
            const int number = stormFamily(id);
            if (number < 0 || number >= StormProject::kFamilies)
                continue;
            const HostLock::Holder turn(family(number), patience());
            if (project.removeProcessor(id))
                tell(20, {id});
        }
    });
}

void StormHost::dissolve(const QUuid& group)
{
    if (roll() % 2 == 0) {
        if (project.dissolveGroup(group))
            tellLater(20, {group});
        return;
    }
    m_clerk.post([this, group] {
        const int number = stormFamily(group);
        if (number < 0 || number >= StormProject::kFamilies)
            return;
        const HostLock::Holder turn(family(number), patience());
        if (project.dissolveGroup(group))
            tell(20, {group});
    });
}

void StormHost::noteDeviceSet(quint32 number)
{
    m_lastDeviceSet = number;
}

/// Returns a number that depends on the seed and on the number of earlier calls.
quint32 StormHost::roll()
{
    quint32 x = m_plan.seed * 0x9E3779B9U + ++m_rolls * 0x85EBCA6BU;
    x = (x ^ (x >> 16)) * 0x7FEB352DU;
    x = (x ^ (x >> 15)) * 0x846CA68BU;
    return x ^ (x >> 16);
}

StormStep StormHost::drawStep()
{
    StormStep step;
    step.dice = roll();
    // Draws only the kinds that change something.
    step.kind = static_cast<StormStep::Kind>(roll() % (StormStep::Refill + 1));
    step.family = static_cast<int>(roll() % StormProject::kFamilies);
    return step;
}

void StormHost::dwell(const char* question)
{
    const bool painted = isPainted(question);
    if (m_calm || t_answers > 1 || (painted && (!m_plan.duringPaint || roll() % 16 != 0)))
        return;
    const Nesting nesting;

    const bool gui = watch.isGuiThread();
    const bool mayTell = gui || t_isTeller;
    int left = static_cast<int>(roll() % (gui ? 1200 : 1000));
    const auto hits = [&left](int chance) {
        left -= chance;
        return left < 0 && left >= -chance;
    };
    // Answers on the GUI thread are slow more often: events have to wait meanwhile, so that several
    // are pending at once.
    if (hits(gui && !painted ? 2 * m_plan.slow : m_plan.slow)) {
        const int most = painted ? 10 : m_plan.slowest;
        const Ms duration(roll() % static_cast<quint32>(most));
        std::atomic<int>& budget = gui ? m_guiBudget : m_budget;
        if (budget.fetch_sub(static_cast<int>(duration.count())) > 0) {
            watch.note(QStringLiteral("takes %1 ms for %2")
                           .arg(duration.count())
                           .arg(QLatin1String(question)));
            pause(duration);
        }
    } else if (hits(m_plan.raise) && mayTell) {
        watch.note(QStringLiteral("in %1:").arg(QLatin1String(question)));
        perform(drawStep());
    } else if (hits(m_plan.delegate) && mayTell && !t_isHelper && (gui || !m_plan.tellsLocked)) {
        watch.note(QStringLiteral("waits for a thread in %1").arg(QLatin1String(question)));
        const StormWatch::GuiWait waiting(watch, "another thread's event");
        const auto told = m_helper.post([this, step = drawStep()] { perform(step); });
        if (told.wait_for(kAnswerPatience) != std::future_status::ready)
            watch.note(QStringLiteral("gives up waiting"));
    } else if (hits(m_plan.spin) && gui && !painted) {
        watch.note(QStringLiteral("runs an event loop in %1").arg(QLatin1String(question)));
        const StormWatch::PanelWork panel(watch);
        QEventLoop loop;
        QTimer::singleShot(static_cast<int>(roll() % 80), &loop, &QEventLoop::quit);
        loop.exec();
    }
}

void StormHost::pause(Ms duration)
{
    const StormWatch::HostWork work(watch);
    std::unique_lock guard(m_pauseMutex);
    m_over.wait_for(guard, duration, [this] { return m_calm.load(); });
}

void StormHost::calm()
{
    {
        const std::lock_guard guard(m_pauseMutex);
        m_calm = true;
    }
    m_over.notify_all();
}

bool StormHost::finish()
{
    return m_clerk.run([] {}) && m_helper.run([] {});
}
