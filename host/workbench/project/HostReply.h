#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

/// When the host carries out a request of the panel and raises its events.
enum class HostReply : qint32 {
    WhenRaised,   ///< Inside the call; the notifier decides when its events are delivered.
    BeforeReturn, ///< Inside the call, which returns after its events were delivered.
    AfterReturn,  ///< When the GUI thread is back in its event loop.
    SecondLater,  ///< One second later.
};

QList<HostReply> allHostReplies();

/// Returns the name in project files, such as "beforeReturn".
QString hostReplyName(HostReply reply);
