#pragma once

#include "sdk/record/FileLock.h"

#include <QFile>
#include <QObject>
#include <QVector>

class TraceModel;
struct TraceEntry;

/// Writes each new line of the live log to a file, until one cannot be written.
class TraceFile final : public QObject
{
    Q_OBJECT

public:
    /// Does not touch the file `path` before open() is called.
    TraceFile(TraceModel& trace, const QString& path);

    /// Starts writing. Replaces an earlier trace that is not being written any more, and no other
    /// file: returns false and sets `problem` if there is something else at the path, or if the
    /// file cannot be written.
    bool open(QString& problem);

    QString path() const { return m_file.fileName(); }

    /// Returns whether lines are missing in the file.
    bool hasFailed() const { return m_hasFailed; }

signals:
    /// Emitted once, for the first line that could not be written.
    void failed(const QString& problem);

private:
    void write(const QVector<TraceEntry>& entries);
    QString problemText(const QString& reason) const;

    TraceModel& m_trace;
    CFileLock m_lock; // of m_file
    QFile m_file;
    bool m_hasFailed = false;
};
