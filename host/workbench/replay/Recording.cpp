#include "host/workbench/replay/Recording.h"

#include "sdk/record/TraceValues.h"

#include <QJsonArray>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

/// How long the panel may take to show an event on another thread, in nanoseconds.
constexpr qint64 kSettleTime = 100000000;

/// Returns whether a call of the host only looks at the panel, so that nothing changes by it.
bool isLook(const CTraceEntry& entry)
{
    return entry.kind == CTraceEntry::Kind::Layer
           && (entry.name == QLatin1String("GetProcessorTree")
               || entry.name == QLatin1String("GetAllProcessorNodes"));
}

bool isReport(const CTraceEntry& entry)
{
    return entry.name == QLatin1String("ReportSelection");
}

/// How many later answers are looked at for one that was given inside an event.
constexpr std::ptrdiff_t kMostInside = 256;

} // namespace

Recording::Recording(const std::vector<CTraceEntry>& entries, bool isCutOff)
    : m_isCutOff(isCutOff)
{
    QSet<qint64> causes;
    qint64 lastEvent = -kSettleTime;
    bool hasPanel = false;
    for (const CTraceEntry& entry : entries) {
        if (entry.kind != CTraceEntry::Kind::Call)
            causes.insert(entry.cause);
        if (entry.kind == CTraceEntry::Kind::Event)
            lastEvent = std::max(lastEvent, entry.time + std::max<qint64>(entry.duration, 0));
        else if (entry.time < lastEvent + kSettleTime)
            m_inMotion.insert(entry.sequence);
        if (entry.kind != CTraceEntry::Kind::Input && entry.duration < 0)
            m_isCutOff = true;
        if (entry.kind == CTraceEntry::Kind::Layer)
            hasPanel = entry.name != QLatin1String("Destroy");
    }
    m_isCutOff = m_isCutOff || hasPanel;
    findEventsInARow(entries);
    for (const CTraceEntry& entry : entries) {
        if (entry.kind != CTraceEntry::Kind::Call) {
            // The host's layout resizes at any time.
            if (entry.kind != CTraceEntry::Kind::Event && entry.name != QLatin1String("resize")
                && !isLook(entry))
                m_moments.push_back(entry.sequence);
            if (entry.kind == CTraceEntry::Kind::Layer && !isLook(entry))
                m_changes.push_back(entry.sequence);
            m_drivers.push_back(entry);
            continue;
        }
        const Operations::Operation* operation = Operations::find(entry.name.toUtf8().constData());
        if (operation && operation->kind == Operations::Kind::Request) {
            m_moments.push_back(entry.sequence);
            m_changes.push_back(entry.sequence);
            m_requests.push_back(entry);
            addSelection(entry);
            continue;
        }
        addQuestion(entry, causes.contains(entry.sequence));
    }
}

void Recording::addQuestion(const CTraceEntry& question, bool isCause)
{
    ++m_questionCount;
    if (question.thread.startsWith(QLatin1String("work")))
        m_workQuestions.push_back(question.sequence);
    if (question.thread != QLatin1String("gui") && question.cause > 0)
        m_inside[question.cause].push_back(question);
    const QByteArray key = keyOf(question.name, question.arguments);
    std::vector<CTraceEntry>& answers = m_answers[key];
    // The host did not make current what the panel had reported.
    if (!answers.empty() && isReport(answers.back()) && answers.back().answer != question.answer)
        answers.pop_back();
    if (isCause) {
        const qint64 step = std::max(m_drivers.empty() ? 0 : m_drivers.back().sequence,
                                     m_requests.empty() ? 0 : m_requests.back().sequence);
        const auto before =
            std::count_if(answers.begin(), answers.end(),
                          [&](const CTraceEntry& answer) { return answer.sequence > step; });
        m_questions.insert(question.sequence, {key, answers.size(), static_cast<int>(before),
                                               isEvent(question.cause)});
    }
    answers.push_back(question);
    answers.back().arguments = {};
}

/// Adds the processor that the panel reports as selected as the answer to which one is current: the
/// panel may ask for it in an event that the recorded one took for an echo of its report. The next
/// answer of the host, if it is another one, takes it back.
void Recording::addSelection(const CTraceEntry& request)
{
    if (!isReport(request))
        return;
    CTraceEntry answer = request;
    answer.arguments = {};
    answer.answer = request.arguments.value(QLatin1String("focus"));
    if (request.arguments.value(QLatin1String("processors")).toArray().contains(answer.answer))
        m_answers[keyOf(QStringLiteral("GetCurrentProcessorId"), {})].push_back(answer);
}

/// Returns whether the entry of this number is an event, among the drivers so far.
bool Recording::isEvent(qint64 sequence) const
{
    const auto driver = std::lower_bound(
        m_drivers.begin(), m_drivers.end(), sequence,
        [](const CTraceEntry& entry, qint64 number) { return entry.sequence < number; });
    return driver != m_drivers.end() && driver->sequence == sequence
           && driver->kind == CTraceEntry::Kind::Event;
}

void Recording::findEventsInARow(const std::vector<CTraceEntry>& entries)
{
    const CTraceEntry* before = nullptr; // the last event, if the panel has asked nothing since
    for (const CTraceEntry& entry : entries) {
        if (entry.thread == QLatin1String("gui")) {
            before = nullptr;
        } else if (entry.kind == CTraceEntry::Kind::Event) {
            if (before && before->thread == entry.thread && before->duration >= 0
                && entry.time - before->end() < kSettleTime)
                m_rightAfter.insert(entry.sequence);
            before = &entry;
        }
    }
}

const Recording::Question* Recording::questionOf(const CTraceEntry& driver) const
{
    const auto found = m_questions.constFind(driver.cause);
    return found == m_questions.constEnd() ? nullptr : &*found;
}

bool Recording::isRightAfterAnother(const CTraceEntry& driver) const
{
    return m_rightAfter.contains(driver.sequence);
}

std::size_t Recording::workQuestionsBefore(const CTraceEntry& driver) const
{
    return static_cast<std::size_t>(
        std::lower_bound(m_workQuestions.begin(), m_workQuestions.end(), driver.sequence)
        - m_workQuestions.begin());
}

Recording::Known Recording::knownOf(qint64 event, const CTraceEntry& driver) const
{
    Known known;
    const auto found = m_inside.constFind(event);
    if (found == m_inside.constEnd())
        return known;
    for (const CTraceEntry& question : *found) {
        if (question.sequence > driver.sequence)
            break;
        ++known.questions;
        known.time = std::max<qint64>(driver.time - question.end(), 0);
    }
    return known;
}

bool Recording::isTreeInMotion(const CTraceEntry& driver) const
{
    return m_inMotion.contains(driver.sequence);
}

const CTraceEntry* Recording::answer(const Question& question) const
{
    return &(*m_answers.constFind(question.key))[question.at];
}

const CTraceEntry* Recording::answer(const QByteArray& key, qint64 position, qint64 event) const
{
    const auto found = m_answers.constFind(key);
    if (found == m_answers.constEnd())
        return nullptr;
    const std::vector<CTraceEntry>& answers = *found;
    // What was asked inside an event is answered as it was, whatever came in between.
    if (event > 0) {
        const auto first = std::upper_bound(
            answers.begin(), answers.end(), event,
            [](qint64 sequence, const CTraceEntry& entry) { return sequence < entry.sequence; });
        const auto last = first + std::min<std::ptrdiff_t>(answers.end() - first, kMostInside);
        const auto inside = std::find_if(
            first, last, [&](const CTraceEntry& entry) { return entry.cause == event; });
        if (inside != last)
            return &*inside;
    }
    const auto later = std::upper_bound(
        answers.begin(), answers.end(), position,
        [](qint64 sequence, const CTraceEntry& entry) { return sequence < entry.sequence; });
    // An event finds the project as it stays until the next request, whatever the user does.
    const std::vector<qint64>& moments = event > 0 ? m_changes : m_moments;
    const auto moment = std::upper_bound(moments.begin(), moments.end(), position);
    const bool isNow =
        later != answers.end() && (moment == moments.end() || later->sequence < *moment);
    return isNow || later == answers.begin() ? &*later : &*std::prev(later);
}

QByteArray Recording::keyOf(const QString& name, const QJsonObject& arguments)
{
    return name.toUtf8() + TraceValues::compact(arguments);
}
