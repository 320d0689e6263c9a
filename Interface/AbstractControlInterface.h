#pragma once

class CObserver;

/// Base of the handlers that a host gives to a layer.
class IAbstractControlInterface
{
public:
    virtual ~IAbstractControlInterface() = default;

    /// Registers the layer's observer for host events. `observer` is not owned and lives until the
    /// process ends. The default ignores it.
    virtual void SetObserver(CObserver* observer) { static_cast<void>(observer); }
};
