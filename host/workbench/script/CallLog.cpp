#include "host/workbench/script/CallLog.h"

#include <algorithm>

namespace {

constexpr int kLinesShown = 20;

} // namespace

CallLog::CallLog(TraceModel& trace, QObject* parent)
    : QObject(parent)
    , m_trace(trace)
{
    connect(&trace, &TraceModel::added, this, [this](const QVector<TraceEntry>& entries) {
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(m_lines),
                     [](const TraceEntry& entry) { return !entry.isOfPainting; });
    });
}

int CallLog::end()
{
    m_trace.flush();
    return m_lines.size();
}

QString CallLog::lastLines(TraceEntry::Kind kind, int from)
{
    QStringList shown;
    for (int at = end() - 1; at >= from && shown.size() < kLinesShown; --at) {
        if (m_lines.at(at).kind == kind)
            shown.prepend(QStringLiteral("  ") + m_lines.at(at).text);
    }
    return shown.isEmpty() ? QStringLiteral("  (none)") : shown.join(QLatin1Char('\n'));
}

QStringList CallLog::tail(int count)
{
    QStringList shown;
    for (const TraceEntry& entry : m_lines.mid(std::max(0, end() - count)))
        shown.append(traceLine(entry));
    return shown;
}

void CallLog::clear()
{
    m_trace.flush();
    m_lines.clear();
}
