#include "host/workbench/trace/TraceFile.h"

#include "host/workbench/trace/TraceModel.h"
#include "sdk/record/ReplacedFile.h"

#include <QDir>
#include <QRegularExpression>

namespace {

constexpr qint64 kLineStart = 64;

/// Returns whether `file` begins as a trace does.
bool isTrace(QFile& file)
{
    static const QRegularExpression start(
        QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\t(call|event|log|finding)\t"));
    return start.match(QString::fromUtf8(file.read(kLineStart))).hasMatch();
}

} // namespace

TraceFile::TraceFile(TraceModel& trace, const QString& path)
    : m_trace(trace)
    , m_file(path)
{
}

bool TraceFile::open(QString& problem)
{
    const QString reason = openToReplace(m_file, m_lock, QIODevice::Text, isTrace,
                                         tr("the file that is there is not a trace"));
    if (!reason.isEmpty()) {
        problem = problemText(reason);
        return false;
    }
    connect(&m_trace, &TraceModel::added, this, &TraceFile::write);
    return true;
}

void TraceFile::write(const QVector<TraceEntry>& entries)
{
    for (const TraceEntry& entry : entries)
        m_file.write(traceLine(entry).toUtf8() + '\n');
    if (m_file.flush() && m_file.error() == QFile::NoError)
        return;
    disconnect(&m_trace, nullptr, this, nullptr);
    m_hasFailed = true;
    emit failed(problemText(m_file.errorString()));
}

QString TraceFile::problemText(const QString& reason) const
{
    return tr("%1 cannot be written: %2").arg(QDir::toNativeSeparators(m_file.fileName()), reason);
}
