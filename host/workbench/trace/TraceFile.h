#pragma once

#include <QFile>
#include <QObject>

class TraceModel;

/// Writes the live log down line by line, as it comes in.
class TraceFile final : public QObject
{
    Q_OBJECT

public:
    /// The file is `path`; nothing happens to it before open().
    TraceFile(TraceModel& trace, const QString& path);

    /// Empties the file and writes from here on. False with `problem` when it cannot be written.
    bool open(QString& problem);

private:
    TraceModel& m_trace;
    QFile m_file;
};
