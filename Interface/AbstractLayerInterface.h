#pragma once

#include "Interface/AbstractControlInterface.h"

#include <memory>

class QWidget;

/// The part of a layer's interface that does not depend on what the layer shows. All operations:
/// GUI thread.
class IAbstractLayerInterface
{
public:
    virtual ~IAbstractLayerInterface() = default;

    /// Returns the layer's widget, which its Qt parent owns; null for a layer without a widget.
    virtual QWidget* GetWidget() { return nullptr; }

    /// Starts the layer. The host calls it after it has set m_controlHandler. Returns true.
    virtual bool Initialize() { return true; }

    /// Registers the layer again. The host calls it after it has replaced its handler or subject.
    /// Returns true.
    virtual bool Reconnect() { return true; }

    /// The host's handler. The host assigns it on the GUI thread before Initialize() and never
    /// resets it. The layer copies the pointer for each call, so that a handler that is replaced
    /// during a call lives until the call ends. The host calls Reconnect() after replacing it.
    ///
    /// The layer's copy may be the last one. The handler is then destroyed on the thread of the
    /// call, which may be one that tells an event, so its destructor must not join such a thread:
    /// the host ends its threads outside of the handler.
    std::shared_ptr<IAbstractControlInterface> m_controlHandler;
};
