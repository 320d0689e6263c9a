#pragma once

#include <QFile>
#include <QObject>

class TraceModel;

/// Writes each new line of the live log to a file.
class TraceFile final : public QObject
{
    Q_OBJECT

public:
    /// Does not touch the file `path` before open() is called.
    TraceFile(TraceModel& trace, const QString& path);

    /// Truncates the file and starts writing. Returns false and sets `problem` on failure.
    bool open(QString& problem);

private:
    TraceModel& m_trace;
    QFile m_file;
};
