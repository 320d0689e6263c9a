#pragma once

#include "Interface/DeviceSetInfo.h"
#include "Interface/ObserverPattern"

#include <QList>
#include <QUuid>

#include <tuple>
#include <utility>

/// The numbered events with which a host tells the panel what has changed in its project: each with
/// its number and the types of its argument.
///
/// A host tells an event after the change, on any thread, through a CSubject to which the panel's
/// observer is attached: `HostEvents::ProcessorAdded::tell(subject, id)`. Events about one identity
/// are told in the order of the changes, and a group before the processors that stand in it.
namespace HostEvents {

/// An event with its number and the types of its argument.
template <quint32 Number, typename... Arguments>
struct Event
{
    /// What CSubject::GetEvent() returns while the event is delivered.
    static constexpr quint32 number = Number;

    /// Notifies the observers of `subject` on the calling thread.
    static void tell(CSubject& subject, Arguments... arguments)
    {
        subject.Notify<Arguments...>(Number, std::move(arguments)...);
    }

    /// The argument of the event that `subject` delivers; see CSubject::GetArgument().
    static std::tuple<Arguments...> argument(const CSubject& subject)
    {
        return subject.GetArgument<Arguments...>();
    }
};

/// How devices are detected; with 2, by the addresses that the user manages.
using DetectStrategyChanged = Event<0, int>;
/// The current device set, all-zero for none, and all device sets.
using CurrentDeviceSetChanged = Event<1, GUID, QList<SDeviceSetInfo>>;
/// The whole project is another one: the tree is filled anew.
using TreeReset = Event<16>;
/// A group is new. Events about its processors come after this one.
using GroupAdded = Event<17, QUuid>;
/// A processor is new.
using ProcessorAdded = Event<18, QUuid>;
/// Several processors are new; views follow with one reset.
using ProcessorsAdded = Event<19, QList<QUuid>>;
/// A processor, or a group, whose processors then belong to no group.
using NodeRemoved = Event<20, QUuid>;
/// Several processors or groups at once.
using NodesRemoved = Event<21, QList<QUuid>>;
/// The record of a processor changed.
using ProcessorChanged = Event<25, QUuid>;
/// The same, told with the host's own record, which the panel ignores.
using ProjectProcessorChanged = Event<26, QUuid, SPrjProcessor>;
/// The addresses of the processors reached by LAN-USB changed.
using LanUsbProcessorIp = Event<29>;
/// Another processor is the current one, as GetCurrentProcessorId() says.
using CurrentProcessorChanged = Event<30>;
/// The rows are to be painted anew.
using MonitorWarningChanged = Event<37>;
/// The monitor state, a part of the record, of these processors changed.
using MonitorStateChanged = Event<39, QList<QUuid>>;

/// Events with greater numbers are ignored.
constexpr quint32 kLastNumber = 39;

} // namespace HostEvents
