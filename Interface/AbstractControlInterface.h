#pragma once

class CObserver;

/// Polymorphic root of everything that a host hands to a layer.
class IAbstractControlInterface
{
public:
    virtual ~IAbstractControlInterface() = default;

    /// Registers the layer's observer for host events. `observer` is not owned and lives as long as
    /// the process. The default takes no notice of it.
    virtual void SetObserver(CObserver* observer) { static_cast<void>(observer); }
};
