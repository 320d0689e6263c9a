#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <vector>

/// What one actor of the storm does at once.
struct StormStep
{
    enum Kind {
        AddOneByOne,    ///< Adds processors, tells 18 for each.
        AddList,        ///< Adds processors, tells 19.
        RemoveOne,      ///< 20.
        RemoveList,     ///< 21.
        AddGroup,       ///< 17.
        AddFilledGroup, ///< 17, then 19 for processors of the family.
        Dissolve,       ///< 20 of a group.
        ChangeRecord,   ///< 25.
        ChangeProject,  ///< 26.
        ChangeAddress,  ///< 25; the row is placed anew.
        ChangeState,    ///< 39.
        Refill,         ///< 16.
        ChooseCurrent,  ///< 30.
        DeviceSets,     ///< 1.
        Strategy,       ///< 0.
        LanUsb,         ///< 29 and 37.
        Burst,          ///< Several changes in a row, most of them of one processor.
        LookAgain,      ///< An event about what is so and has not changed.
        Nonsense,       ///< 17, 18, 19, 25, 26 or 39 of an identity that the host does not know.
        ChangedGroup,   ///< 26 of a group, which has no processor's record.

        // On the GUI thread only.
        FirstGuiStep,
        ReadOnly = FirstGuiStep,
        SetCurrent,
        Snapshot,
        RemoveAllGroups,
        SwapHandler,
        OpenDialog,
        PanelDeath,
        Select,
        RenameByModel,
        RenameByEditor,
        DeleteByKey,
        Busy,
        KindCount
    };

    static constexpr int kGuiThread = -1;

    Kind kind = Refill;
    int actor = kGuiThread; ///< A telling thread, or the GUI thread.
    int family = 0;
    quint32 dice = 0;

    QString describe() const;
};

/// The steps of one round and the habits of its host, all drawn from one seed.
struct StormPlan
{
    quint32 seed = 0;
    int tellers = 1;

    // Habits of the host in its answers, in thousandths of the questions.
    int slow = 0; ///< Takes up to `slowest` ms.
    int slowest = 300;
    int raise = 0;    ///< Changes something and tells it on the asking thread.
    int delegate = 0; ///< Waits for another thread to change something and tell it.
    int spin = 0;     ///< Runs an event loop; on the GUI thread.

    bool duringPaint = false;  ///< Does so in the answers that painting asks for, too.
    bool refills = false;      ///< Tells 16 now and then, which mends what was wrong before.
    bool deaths = false;       ///< Destroys the panel; what comes after it is filled anew.
    bool ownFamilies = false;  ///< Each family belongs to one thread, else to whoever has its lock.
    bool groupsInTurn = false; ///< One group is told before the next one is created.
    bool looksAgain = true;    ///< Tells what has not changed, rather than nothing.
    bool tellsLocked = false;  ///< Tells with a lock held that its answers take too.

    std::vector<StormStep> steps;

    /// The plan of a seed; leaves out the habits and kinds of steps whose names `without` holds.
    static StormPlan draw(quint32 seed, const QStringList& without);

    QString describe(int stepCount) const;
};
