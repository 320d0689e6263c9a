#include "tests/storm/StormPlan.h"

#include "tests/storm/StormProject.h"

#include <QRandomGenerator>

#include <algorithm>

namespace {

struct KindInfo
{
    StormStep::Kind kind;
    const char* name;
    const char* does;
    int weight;
};

constexpr KindInfo kKinds[] = {
    {StormStep::AddOneByOne, "AddOneByOne", "adds processors and tells 18 for each", 10},
    {StormStep::AddList, "AddList", "adds processors and tells 19", 8},
    {StormStep::RemoveOne, "RemoveOne", "removes a processor and tells 20", 8},
    {StormStep::RemoveList, "RemoveList", "removes processors and tells 21", 5},
    {StormStep::AddGroup, "AddGroup", "creates a group and tells 17", 5},
    {StormStep::AddFilledGroup, "AddFilledGroup",
     "creates a group with processors and tells 17 and 19", 4},
    {StormStep::Dissolve, "Dissolve", "dissolves a group and tells 20", 5},
    {StormStep::ChangeRecord, "ChangeRecord", "changes a record and tells 25", 12},
    {StormStep::ChangeProject, "ChangeProject", "changes a record and tells 26", 6},
    {StormStep::ChangeAddress, "ChangeAddress", "changes an address and tells 25", 12},
    {StormStep::ChangeState, "ChangeState", "changes a state and tells 39", 12},
    {StormStep::Refill, "Refill", "tells 16", 5},
    {StormStep::ChooseCurrent, "ChooseCurrent", "chooses a current processor and tells 30", 4},
    {StormStep::DeviceSets, "DeviceSets", "tells 1", 2},
    {StormStep::Strategy, "Strategy", "tells 0", 2},
    {StormStep::LanUsb, "LanUsb", "tells 29 and 37", 2},
    {StormStep::Burst, "Burst", "changes a processor several times", 25},
    {StormStep::LookAgain, "LookAgain", "tells again what has not changed", 8},
    {StormStep::Nonsense, "Nonsense", "tells of an identity that the host does not know", 3},
    {StormStep::ChangedGroup, "ChangedGroup", "tells 26 of a group", 2},
    {StormStep::ReadOnly, "ReadOnly", "calls SetReadOnly", 2},
    {StormStep::SetCurrent, "SetCurrent", "calls SetCurrentProcessor", 6},
    {StormStep::Snapshot, "Snapshot", "calls GetProcessorTree", 6},
    {StormStep::RemoveAllGroups, "RemoveAllGroups", "removes all groups and calls RemoveAllGroups",
     2},
    {StormStep::SwapHandler, "SwapHandler", "replaces the handler", 6},
    {StormStep::OpenDialog, "OpenDialog", "opens the IP management", 3},
    {StormStep::PanelDeath, "PanelDeath", "destroys the panel, or builds it again", 4},
    {StormStep::Select, "Select", "clicks on a row", 14},
    {StormStep::RenameByModel, "RenameByModel", "renames a row through the model", 6},
    {StormStep::RenameByEditor, "RenameByEditor", "renames a row in its editor", 4},
    {StormStep::DeleteByKey, "DeleteByKey", "clicks on a row and presses Delete", 12},
    {StormStep::MoveByKeys, "MoveByKeys", "cuts a processor and pastes it elsewhere", 10},
    {StormStep::Busy, "Busy", "keeps the GUI thread busy", 3},
};
static_assert(std::size(kKinds) == StormStep::KindCount);

const KindInfo& infoOf(StormStep::Kind kind)
{
    return *std::find_if(std::begin(kKinds), std::end(kKinds),
                         [kind](const KindInfo& info) { return info.kind == kind; });
}

StormStep::Kind drawKind(QRandomGenerator& random, bool forGui)
{
    int sum = 0;
    const auto isOpen = [&](const KindInfo& info) {
        return forGui || info.kind < StormStep::FirstGuiStep;
    };
    for (const KindInfo& info : kKinds)
        sum += isOpen(info) ? info.weight : 0;
    int left = random.bounded(sum);
    for (const KindInfo& info : kKinds) {
        left -= isOpen(info) ? info.weight : 0;
        if (left < 0)
            return info.kind;
    }
    return StormStep::Refill;
}

} // namespace

QString StormStep::describe() const
{
    const QString who = actor == kGuiThread ? QStringLiteral("the GUI thread")
                                            : QStringLiteral("thread %1").arg(actor);
    return QStringLiteral("%1 %2 (family %3, dice %4)")
        .arg(who, QString::fromLatin1(infoOf(kind).does))
        .arg(family)
        .arg(dice);
}

StormPlan StormPlan::draw(quint32 seed, const QStringList& without)
{
    QRandomGenerator random(seed);
    StormPlan plan;
    plan.seed = seed;
    plan.tellers = 1 + random.bounded(StormProject::kFamilies);
    const auto habit = [&](const char* name, int chance, int most) {
        const bool has = random.bounded(100) < chance;
        const int strength = 1 + random.bounded(most);
        return has && !without.contains(QLatin1String(name)) ? strength : 0;
    };
    plan.slow = habit("slow", 85, 300);
    plan.slow += plan.slow > 0 ? 200 : 0;
    plan.looksAgain = !without.contains(QLatin1String("LookAgain"));
    plan.raise = habit("raise", 50, 100);
    plan.delegate = habit("delegate", 35, 60);
    plan.spin = habit("spin", 35, 60);
    plan.tellsLocked = habit("locked", 25, 1) > 0;
    plan.refills = habit("refills", 40, 1) > 0;
    plan.deaths = habit("deaths", 40, 1) > 0;
    plan.duringPaint = habit("paint", 40, 1) > 0;
    plan.ownFamilies = random.bounded(2) == 0;
    plan.groupsInTurn = random.bounded(3) != 0;

    const int count = 40 + random.bounded(60);
    bool longBusy = random.bounded(30) == 0;
    for (int i = 0; i < count; ++i) {
        StormStep step;
        const bool gui = random.bounded(4) == 0;
        step.kind = drawKind(random, gui);
        step.actor = gui ? StormStep::kGuiThread : random.bounded(plan.tellers);
        step.family = random.bounded(StormProject::kFamilies);
        if (plan.ownFamilies && !gui)
            step.family = step.actor;
        step.dice = random.generate();
        if (step.kind == StormStep::Busy) {
            // The longest pause: the GUI thread is busy for longer than any thread waits for it.
            step.dice = longBusy ? 7500 : random.bounded(300U);
            longBusy = false;
        }
        const bool mends = (step.kind == StormStep::Refill && !plan.refills)
                           || (step.kind == StormStep::PanelDeath && !plan.deaths);
        if (!mends && !without.contains(QLatin1String(infoOf(step.kind).name)))
            plan.steps.push_back(step);
    }
    return plan;
}

QString StormPlan::describe(int stepCount) const
{
    QStringList lines;
    lines.append(
        QStringLiteral("TSA_SEED=%1, %2 telling threads, families %3")
            .arg(seed)
            .arg(tellers)
            .arg(ownFamilies ? QStringLiteral("of one thread each") : QStringLiteral("in common")));
    lines.append(QStringLiteral("of 1000 answers %1 are slow (up to %2 ms), %3 raise an event, %4 "
                                "wait for another thread's, %5 run an event loop%6%7%8")
                     .arg(slow)
                     .arg(slowest)
                     .arg(raise)
                     .arg(delegate)
                     .arg(spin)
                     .arg(tellsLocked ? QStringLiteral("; tells with a lock held") : QString(),
                          groupsInTurn ? QStringLiteral("; groups in turn") : QString(),
                          duringPaint ? QStringLiteral("; during painting too") : QString()));
    for (int i = 0; i < stepCount; ++i) {
        lines.append(QStringLiteral("%1: %2").arg(i + 1, 3).arg(
            steps[static_cast<std::size_t>(i)].describe()));
    }
    return lines.join(QLatin1Char('\n'));
}
