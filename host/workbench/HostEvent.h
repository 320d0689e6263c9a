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
    enum Number : quint32 {
        DetectStrategyChanged = 0,
        DeviceSetsChanged = 1,
        ProjectReset = 16,
        GroupAdded = 17,
        ProcessorAdded = 18,
        ProcessorsAdded = 19,
        NodeRemoved = 20,
        NodesRemoved = 21,
        ProcessorChanged = 25,
        ProjectProcessorChanged = 26,
        LanUsbChanged = 29,
        CurrentProcessorChanged = 30,
        MonitorWarningChanged = 37,
        MonitorStateChanged = 39,
    };

    using DeviceSets = std::pair<GUID, QList<SDeviceSetInfo>>;
    using ChangedProcessor = std::pair<QUuid, SPrjProcessor>;
    using Argument =
        std::variant<std::monostate, int, QUuid, QList<QUuid>, DeviceSets, ChangedProcessor>;

    explicit HostEvent(quint32 number, Argument argument = {});

    /// The event of `one` when there is one identity, else that of `several`.
    static HostEvent forIds(quint32 one, quint32 several, const QList<QUuid>& ids);

    quint32 number() const { return m_number; }
    const Argument& argument() const { return m_argument; }

    /// Delivers the event to the subject's observers, on the calling thread.
    void deliver(CSubject& subject) const;

    /// "18 processor added ({…})": number, name, argument.
    QString text() const;

    static QString name(quint32 number);

private:
    quint32 m_number;
    Argument m_argument;
};

using HostEvents = std::vector<HostEvent>;

/// A short form for the log: the ends of the identity, "{5b2d…0001}".
QString shortId(const QUuid& id);
QString shortIds(const QList<QUuid>& ids);
