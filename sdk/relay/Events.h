#pragma once

#include "Interface/ObserverPattern"

#include <QByteArray>
#include <QVariantList>
#include <QtGlobal>

/// Host events as values. Thread-safe.
namespace Events {

/// One event with its argument.
struct Event
{
    quint32 number = 0;
    /// The values of the argument, of the types that the host gave them. Empty for an event without
    /// an argument, and for one of types that nobody expects.
    QVariantList arguments;
    /// What the argument is, such as "QUuid, SPrjProcessor"; empty for none, and "unknown" with a
    /// number for types that nobody expects.
    QByteArray types;
};

/// Returns the name of an event in HostEvents, "Event" for a number that has none.
const char* name(quint32 number);

/// Returns the event that `subject` delivers. On the thread that delivers it, before Update()
/// returns.
Event read(const CSubject& subject);

/// Returns the event of these values, and names their types in it.
Event make(quint32 number, const QVariantList& arguments);

/// Delivers `event` to `observer` on the calling thread, through a subject of its own. Values of
/// types that no host gives, and unknown ones, become an argument that the observer cannot read.
void tell(CObserver& observer, const Event& event);

} // namespace Events
