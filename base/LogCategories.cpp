#include "base/LogCategories.h"

Q_LOGGING_CATEGORY(lcBridge, "targetselect.bridge", QtWarningMsg)
Q_LOGGING_CATEGORY(lcTree, "targetselect.tree", QtWarningMsg)
Q_LOGGING_CATEGORY(lcSearch, "targetselect.search", QtWarningMsg)
Q_LOGGING_CATEGORY(lcAddresses, "targetselect.addresses", QtWarningMsg)
Q_LOGGING_CATEGORY(lcPanel, "targetselect.panel", QtWarningMsg)
Q_LOGGING_CATEGORY(lcCheck, "targetselect.check", QtWarningMsg)

void logDropped(quint32 event, const QUuid& id, const char* reason)
{
    qCInfo(lcBridge, "event %u about %s is dropped: %s", event, qPrintable(id.toString()), reason);
}
