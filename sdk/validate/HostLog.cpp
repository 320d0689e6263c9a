#include "sdk/validate/HostLog.h"

#include "host/common/AppendLog.h"

#include <QRegularExpression>
#include <QtGlobal>

#include <cstdio>
#include <mutex>
#include <vector>

namespace {

struct Collected
{
    std::mutex mutex;
    std::vector<QString> records;
    std::vector<QString> warnings;
};

/// A list of its own: ThreadSanitizer does not see how Qt synchronises the copies of a list that
/// changes in place.
QStringList listOf(const std::vector<QString>& lines)
{
    return {lines.begin(), lines.end()};
}

// Never destroyed: threads of the library may log while the process ends.
Collected& collected()
{
    static auto* const instance = new Collected;
    return *instance;
}

/// Returns whether the warning is the library's. The platform without a display says what it cannot
/// do, and Qt says which folders the user has not. The panel's own categories tell what a host did,
/// which the tests look at.
bool isWarning(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    return type != QtDebugMsg && type != QtInfoMsg
           && !message.startsWith(QLatin1String("This plugin does not support "))
           && !message.startsWith(QLatin1String("QStandardPaths: "))
           && !QByteArray(context.category).startsWith("targetselect.");
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (!isWarning(type, context, message))
        return;
    const std::lock_guard guard(collected().mutex);
    collected().warnings.push_back(message);
}

QString codeOf(const QString& record)
{
    static const QRegularExpression code(QStringLiteral("^TSA-[EW]\\d\\d"));
    return code.match(record).captured();
}

} // namespace

void HostLog::install()
{
    SetLogSink([](const LogRecord& record) {
        const std::lock_guard guard(collected().mutex);
        collected().records.push_back(QString::fromStdString(record.message));
    });
    qInstallMessageHandler(collect);
}

QStringList HostLog::records()
{
    const std::lock_guard guard(collected().mutex);
    return listOf(collected().records);
}

QStringList HostLog::withCode(const QString& code)
{
    QStringList found;
    const QStringList all = records();
    for (const QString& record : all) {
        if (codeOf(record) == code)
            found.append(record);
    }
    return found;
}

QStringList HostLog::codes()
{
    QStringList found;
    const QStringList all = records();
    for (const QString& record : all) {
        const QString code = codeOf(record);
        if (!code.isEmpty() && !found.contains(code))
            found.append(code);
    }
    return found;
}

QStringList HostLog::warnings()
{
    const std::lock_guard guard(collected().mutex);
    return listOf(collected().warnings);
}
