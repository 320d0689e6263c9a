#include "base/LogCategories.h"

Q_LOGGING_CATEGORY(lcBridge, "targetselect.bridge", QtWarningMsg)
