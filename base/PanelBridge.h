#pragma once

#include <functional>

/// The bridge from the host, as the layers below it know it: the state that the host sets on the
/// panel, and the way of a change to the tree. Outlives every view that is given one.
class IPanelBridge
{
public:
    IPanelBridge(const IPanelBridge&) = delete;
    IPanelBridge& operator=(const IPanelBridge&) = delete;

    /// Returns whether the host allows no changes. Any thread.
    virtual bool IsReadOnly() const = 0;

    /// While set, the host's "current processor" events are ignored: they echo the user's own
    /// choice, which is being reported. Any thread.
    virtual bool IsSelectionEchoGuarded() const = 0;
    virtual void SetSelectionEchoGuard(bool guarded) = 0;

    /// Changes the tree without an event of the host's, behind what is queued and not in the middle
    /// of another change. GUI thread.
    virtual void changeTree(std::function<void()> change) = 0;

    /// Makes void what the host answered so far: its project changed without an event, as by a name
    /// that the user gave. Any thread.
    virtual void noteChange() = 0;

protected:
    IPanelBridge() = default;
    ~IPanelBridge() = default;
};
