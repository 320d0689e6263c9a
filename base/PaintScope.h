#pragma once

#include <functional>

/// While one lives, a widget of the panel paints: the views hold indexes of rows, so rows neither
/// come nor go, whatever the host does when it is asked meanwhile. Scopes nest. GUI thread.
class CPaintScope final
{
public:
    CPaintScope();
    ~CPaintScope();
    CPaintScope(const CPaintScope&) = delete;
    CPaintScope& operator=(const CPaintScope&) = delete;

    static bool isPainting();

    /// Sets what is called each time that the outermost scope ends. `tell` must not throw.
    static void setOnEnded(std::function<void()> tell);
};
