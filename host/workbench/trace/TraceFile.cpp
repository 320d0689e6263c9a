#include "host/workbench/trace/TraceFile.h"

#include "host/workbench/trace/TraceModel.h"

#include <QDir>

TraceFile::TraceFile(TraceModel& trace, const QString& path)
    : m_trace(trace)
    , m_file(path)
{
}

bool TraceFile::open(QString& problem)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        problem = tr("%1 cannot be written: %2")
                      .arg(QDir::toNativeSeparators(m_file.fileName()), m_file.errorString());
        return false;
    }
    connect(&m_trace, &TraceModel::added, this, [this](const QVector<TraceEntry>& entries) {
        for (const TraceEntry& entry : entries)
            m_file.write(traceLine(entry).toUtf8() + '\n');
        m_file.flush();
    });
    return true;
}
