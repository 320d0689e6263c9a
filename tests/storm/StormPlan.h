#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <vector>

/// One step of one actor of the storm.
struct StormStep
{
    enum Kind {
        AddOneByOne,    ///< Adds processors and raises 18 for each.
        AddList,        ///< Adds processors and raises 19.
        RemoveOne,      ///< 20.
        RemoveList,     ///< 21.
        AddGroup,       ///< 17.
        AddFilledGroup, ///< 17, then 19 for processors of the family.
        Dissolve,       ///< 20 of a group.
        ChangeRecord,   ///< 25.
        ChangeProject,  ///< 26.
        ChangeAddress,  ///< 25; the row moves to its new place.
        ChangeState,    ///< 39.
        Refill,         ///< 16.
        ChooseCurrent,  ///< 30.
        DeviceSets,     ///< 1.
        Strategy,       ///< 0.
        LanUsb,         ///< 29 and 37.
        Burst,          ///< Several changes in a row, most of them of one processor.
        LookAgain,      ///< An event about an unchanged record.
        Nonsense,       ///< 17, 18, 19, 25, 26 or 39 of an identity that the host does not know.
        ChangedGroup,   ///< 26 of a group, which has no processor's record.

        // Steps of the GUI thread only.
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
        MoveByKeys,
        Busy,
        KindCount
    };

    static constexpr int kGuiThread = -1;

    Kind kind = Refill;
    int actor = kGuiThread; ///< A notifying thread, or the GUI thread.
    int family = 0;
    quint32 dice = 0;

    QString describe() const;
};

/// The steps of one round and the habits of its host, both generated from one seed.
struct StormPlan
{
    quint32 seed = 0;
    int tellers = 1;

    // Habits of the host in its answers: how many of 1,000 questions they affect.
    int slow = 0; ///< The answer takes up to `slowest` ms.
    int slowest = 300;
    int raise = 0;    ///< The answer changes the project and raises the event on the asking thread.
    int delegate = 0; ///< The answer waits for another thread that does so.
    int spin = 0;     ///< The answer runs an event loop, on the GUI thread.

    bool duringPaint = false; ///< The habits also apply to questions that are asked while painting.
    bool refills = false;     ///< Raises 16 now and then, which repairs earlier differences.
    bool deaths = false;      ///< Destroys the panel; the next panel is filled again.
    bool ownFamilies =
        false; ///< Each family belongs to one thread, otherwise to the owner of its lock.
    bool groupsInTurn = false; ///< A group is announced before the next one is created.
    bool looksAgain = true;    ///< Raises events about unchanged records.
    bool tellsLocked = false;  ///< Raises events with a lock held that the answers take too.

    std::vector<StormStep> steps;

    /// Returns the plan of a seed, without the habits and kinds of steps that `without` names.
    static StormPlan draw(quint32 seed, const QStringList& without);

    QString describe(int stepCount) const;
};
