#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

/// When the host carries out what the panel asks for and raises the events that belong to it.
enum class HostReply : qint32 {
    WhenRaised,   ///< Carried out inside the call; the events take the notifier's way.
    BeforeReturn, ///< As above, and the call does not return before the events are through.
    AfterReturn,  ///< Carried out once the GUI thread is back in its event loop.
    SecondLater,  ///< Carried out one second later.
};

QList<HostReply> allHostReplies();

/// The name in project files: "beforeReturn".
QString hostReplyName(HostReply reply);
