#include "tests/support/WarningTrap.h"

#include <QVector>

#include <mutex>
#include <utility>

namespace {

struct Warning
{
    QString function;
    QString message;
};

std::mutex g_mutex;
QVector<Warning> g_warnings;
QtMessageHandler g_previous = nullptr;

/// The platform without a display says that of much that a window may ask for; it is no defect.
bool isDefect(QtMsgType type, const QString& message)
{
    return type != QtDebugMsg && type != QtInfoMsg
           && !message.startsWith(QLatin1String("This plugin does not support "));
}

/// Returns the running test function with its row: "shouldAdd(first)".
QString currentFunction()
{
    const QString row = QString::fromUtf8(QTest::currentDataTag());
    return QString::fromUtf8(QTest::currentTestFunction()) + QLatin1Char('(') + row
           + QLatin1Char(')');
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (isDefect(type, message)) {
        const std::lock_guard guard(g_mutex);
        g_warnings.append({currentFunction(), message});
    }
    if (g_previous)
        g_previous(type, context, message);
}

QVector<Warning> takeAll()
{
    const std::lock_guard guard(g_mutex);
    return std::exchange(g_warnings, {});
}

} // namespace

WarningTrap::WarningTrap()
    : m_previous(qInstallMessageHandler(collect))
{
    g_previous = m_previous;
}

WarningTrap::~WarningTrap()
{
    qInstallMessageHandler(m_previous);
}

QStringList WarningTrap::take()
{
    const QString function = currentFunction();
    QStringList messages;
    QVector<Warning> others;
    const std::lock_guard guard(g_mutex);
    for (const Warning& warning : qAsConst(g_warnings)) {
        if (warning.function == function)
            messages.append(warning.message);
        else
            others.append(warning);
    }
    g_warnings = others;
    return messages;
}

int runTests(QObject& test, int argc, char** argv)
{
    // Qt Test's own message handler replaces whatever is there before qInit().
    QTest::qInit(&test, argc, argv);
    int failures = 0;
    {
        const WarningTrap trap;
        failures = QTest::qRun();
    }
    const QVector<Warning> warnings = takeAll();
    for (const Warning& warning : warnings) {
        const QString text =
            QStringLiteral("unexpected warning in %1: %2").arg(warning.function, warning.message);
        QTest::qFail(qPrintable(text), __FILE__, __LINE__);
    }
    QTest::qCleanup();
    return warnings.isEmpty() ? failures : qMax(failures, 1);
}
