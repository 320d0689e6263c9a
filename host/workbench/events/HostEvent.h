#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ObserverPattern"

#include <QList>
#include <QString>
#include <QUuid>

#include <utility>
#include <variant>
#include <vector>

/// One numbered event with its argument, before it is raised.
class HostEvent final
{
public:
    using DeviceSets = std::pair<GUID, QList<SDeviceSetInfo>>;
    using ChangedProcessor = std::pair<QUuid, SPrjProcessor>;
    using Argument =
        std::variant<std::monostate, int, QUuid, QList<QUuid>, DeviceSets, ChangedProcessor>;

    explicit HostEvent(quint32 number, Argument argument = {});

    /// Returns an event with the number `one` if there is one identity, else with `several`.
    static HostEvent forIds(quint32 one, quint32 several, const QList<QUuid>& ids);

    quint32 number() const { return m_number; }
    const Argument& argument() const { return m_argument; }

    /// Delivers the event to the subject's observers, on the calling thread.
    void deliver(CSubject& subject) const;

    /// Returns number, name and argument: "18 ProcessorAdded({5b2d…0001})".
    QString text() const;

private:
    quint32 m_number;
    Argument m_argument;
};

using HostEventList = std::vector<HostEvent>;
