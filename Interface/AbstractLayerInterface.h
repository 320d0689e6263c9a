#pragma once

#include "Interface/AbstractControlInterface.h"

#include <memory>

class QWidget;

/// What a host sees of a layer, whatever the layer shows. All operations: GUI thread.
class IAbstractLayerInterface
{
public:
    virtual ~IAbstractLayerInterface() = default;

    /// The layer's widget, owned by its Qt parent; null for a layer without one.
    virtual QWidget* GetWidget() { return nullptr; }

    /// The host's second call, made once m_controlHandler is set. Answers true.
    virtual bool Initialize() { return true; }

    /// For a host that replaced its handler or its subject. Answers true.
    virtual bool Reconnect() { return true; }

    /// The host's control handler, assigned by the host on the GUI thread before Initialize() and
    /// kept set. The layer only reads it, and copies it for each call, so that a handler replaced
    /// in the middle of a call lives until the call ends. Call Reconnect() after replacing it.
    std::shared_ptr<IAbstractControlInterface> m_controlHandler;
};
