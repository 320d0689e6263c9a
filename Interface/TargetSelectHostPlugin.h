#pragma once

#include "Interface/TargetSelectInterfaceHandler.h"

#include <functional>
#include <memory>

/// What a host plugin opens for targetselect-validate: the host's handler over a project of its
/// own, so that the handler can be run through a session without the host's application.
struct TargetSelectHostProject
{
    /// The handler, with what it stands on. It tells its events as it does in the host: through the
    /// CSubject to which it attaches the observer that SetObserver() delivers. The panel's copy may
    /// be the last one, so the destructor may run on a thread that tells an event, and must not
    /// join such a thread.
    std::shared_ptr<ITargetSelectInterfaceHandler> handler;

    /// Changes the project as the host does on its own, when devices come, go or change their
    /// state, and tells that; returns when all is told. Called several times, on another thread
    /// than the GUI thread, whose events are handled meanwhile. May be empty.
    std::function<void()> change;
};

/// The one function that a host plugin exports. Stores a fresh project with at least `processors`
/// processors in `*project`, and some of them in a group if the host has groups. Returns false if
/// it cannot. GUI thread, with a QApplication.
extern "C" Q_DECL_EXPORT bool TargetSelectHost_Open(int processors,
                                                    TargetSelectHostProject* project);

/// The type of TargetSelectHost_Open.
using TargetSelectHostOpen = bool (*)(int, TargetSelectHostProject*);

/// The name of TargetSelectHost_Open, for QLibrary::resolve().
#define TARGETSELECTHOST_OPEN_SYMBOL "TargetSelectHost_Open"
