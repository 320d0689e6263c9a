#pragma once

#include <QLoggingCategory>
#include <QUuid>

// What the panel decides, for whoever looks for the cause of something; quiet unless a rule such as
// QT_LOGGING_RULES="targetselect.*=true" says otherwise. Debug messages follow the course of
// things, information is about what is refused or dropped.
Q_DECLARE_LOGGING_CATEGORY(lcBridge)    // events: taken, asked, answered, applied late, dropped
Q_DECLARE_LOGGING_CATEGORY(lcTree)      // names, drops, deletions and additions in the tree
Q_DECLARE_LOGGING_CATEGORY(lcSearch)    // texts, what they find, choices
Q_DECLARE_LOGGING_CATEGORY(lcAddresses) // entries of addresses, import, export
Q_DECLARE_LOGGING_CATEGORY(lcPanel)     // connection to the host, detections, device sets, locks
Q_DECLARE_LOGGING_CATEGORY(lcCheck)     // where the host breaks the contract; see ContractCheck

/// Logs in lcBridge that event number `event` about `id` has no effect. Any thread.
void logDropped(quint32 event, const QUuid& id, const char* reason);
