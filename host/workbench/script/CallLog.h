#pragma once

#include "host/workbench/trace/TraceModel.h"

#include <QObject>
#include <QVector>

/// What the live log has had since a script began, without what the panel asks while it paints.
/// GUI thread.
class CallLog final : public QObject
{
    Q_OBJECT

public:
    explicit CallLog(TraceModel& trace, QObject* parent = nullptr);

    /// Returns the position behind the newest line.
    int end();

    /// Returns the position of the first line of that kind from `from` on which `matches` holds, or
    /// -1.
    template <typename Matches>
    int find(TraceEntry::Kind kind, int from, const Matches& matches)
    {
        for (int at = from; at < end(); ++at) {
            if (m_lines.at(at).kind == kind && matches(m_lines.at(at).text))
                return at;
        }
        return -1;
    }

    /// Returns the last few lines of a kind from `from` on, for a message.
    QString lastLines(TraceEntry::Kind kind, int from);

    /// Returns the last lines of all kinds, as the trace has them.
    QStringList tail(int count);

    /// Forgets the lines of an earlier script.
    void clear();

private:
    TraceModel& m_trace;
    QVector<TraceEntry> m_lines;
};
