#include "tests/support/WarningTrap.h"

#include <QTest>

#include <mutex>
#include <utility>

namespace {

std::mutex g_mutex;
QStringList g_warnings;
QtMessageHandler g_previous = nullptr;

/// The platform without a display says that of much that a window may ask for; it is no defect.
bool isDefect(QtMsgType type, const QString& message)
{
    return type != QtDebugMsg && type != QtInfoMsg
           && !message.startsWith(QLatin1String("This plugin does not support "));
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (isDefect(type, message)) {
        const std::lock_guard guard(g_mutex);
        g_warnings.append(message);
    }
    if (g_previous)
        g_previous(type, context, message);
}

} // namespace

WarningTrap::WarningTrap()
    : m_previous(qInstallMessageHandler(collect))
{
    g_previous = m_previous;
    take();
}

WarningTrap::~WarningTrap()
{
    qInstallMessageHandler(m_previous);
    const QStringList warnings = take();
    if (!warnings.isEmpty())
        QTest::qFail(qPrintable(warnings.join(QLatin1Char('\n'))), __FILE__, __LINE__);
}

QStringList WarningTrap::take()
{
    const std::lock_guard guard(g_mutex);
    return std::exchange(g_warnings, QStringList());
}
