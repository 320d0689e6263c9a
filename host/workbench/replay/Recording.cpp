#include "host/workbench/replay/Recording.h"

#include "sdk/record/TraceValues.h"

#include <algorithm>
#include <iterator>
#include <utility>

Recording::Recording(std::vector<CTraceEntry> entries, bool isCutOff)
    : m_isCutOff(isCutOff)
{
    QSet<qint64> causes;
    for (const CTraceEntry& entry : entries) {
        if (entry.kind != CTraceEntry::Kind::Call)
            causes.insert(entry.cause);
        if (entry.kind != CTraceEntry::Kind::Input && entry.duration < 0)
            m_isCutOff = true;
    }
    for (CTraceEntry& entry : entries) {
        if (entry.kind != CTraceEntry::Kind::Call) {
            m_drivers.push_back(std::move(entry));
            continue;
        }
        const Operations::Operation* operation = Operations::find(entry.name.toUtf8().constData());
        if (operation && operation->kind == Operations::Kind::Request) {
            m_requests.push_back(std::move(entry));
            continue;
        }
        ++m_questionCount;
        if (causes.contains(entry.sequence))
            m_questions.insert(entry.sequence);
        std::vector<CTraceEntry>& answers = m_answers[keyOf(entry.name, entry.arguments)];
        entry.arguments = {};
        answers.push_back(std::move(entry));
    }
}

bool Recording::isInQuestion(const CTraceEntry& driver) const
{
    return m_questions.contains(driver.cause);
}

const CTraceEntry* Recording::answer(const QString& name, const QJsonObject& arguments,
                                     qint64 position, qint64 next) const
{
    const auto found = m_answers.constFind(keyOf(name, arguments));
    if (found == m_answers.constEnd())
        return nullptr;
    const std::vector<CTraceEntry>& answers = *found;
    const auto later = std::upper_bound(
        answers.begin(), answers.end(), position,
        [](qint64 sequence, const CTraceEntry& entry) { return sequence < entry.sequence; });
    const bool isNow = later != answers.end() && later->sequence < next;
    return isNow || later == answers.begin() ? &*later : &*std::prev(later);
}

QByteArray Recording::keyOf(const QString& name, const QJsonObject& arguments)
{
    return name.toUtf8() + TraceValues::compact(arguments);
}
