#pragma once

#include "sdk/record/TraceEntry.h"

#include <QJsonObject>
#include <QString>

#include <vector>

/// Reads a recording. Re-entrant: each object is for one thread at a time.
class CTraceReader final
{
public:
    /// Reads the whole file. Returns false and sets problem() to the first error, with its line and
    /// column, also for a version that is not kTraceVersion.
    ///
    /// A last line without its line break is what a crashed host leaves: it is left out, and note()
    /// tells so.
    bool read(const QString& path);

    const QString& problem() const { return m_problem; }
    const QString& note() const { return m_note; }

    /// The first line of the file.
    const QJsonObject& header() const { return m_header; }

    /// The entries in the order of their beginnings. What had not ended when the recording did has
    /// a negative duration.
    const std::vector<CTraceEntry>& entries() const { return m_entries; }

private:
    bool readHeader(const QByteArray& line);
    bool readEntry(const QByteArray& line, int number);
    bool readObject(const QByteArray& line, int number, QJsonObject& object);
    bool fail(int line, int column, const QString& reason);

    QString m_path;
    QString m_problem;
    QString m_note;
    QJsonObject m_header;
    std::vector<CTraceEntry> m_entries;
};
