#pragma once

#include <QLoggingCategory>

// What the panel decides, for whoever looks for the cause of something; quiet unless a rule such as
// QT_LOGGING_RULES="targetselect.*=true" says otherwise.
Q_DECLARE_LOGGING_CATEGORY(lcBridge) // events: taken, asked, applied late, dropped
