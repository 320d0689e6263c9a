#include "host/workbench/replay/ReplayProgress.h"

#include "sdk/record/TraceValues.h"

#include <QJsonArray>
#include <QMultiMap>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

/// How long a question waits for what the user did before it, and all questions of an event.
constexpr std::chrono::milliseconds kInputTime(500);
constexpr std::chrono::milliseconds kInputTimeOfAnEvent(3000);

/// How long the panel may take to do something with an answer that it got on another thread, in
/// nanoseconds.
constexpr qint64 kTakeUpTime = 20000000;

/// The event that is being told on this thread, by its number in the recording.
thread_local qint64 t_event = 0;

QJsonArray sorted(const QJsonArray& values)
{
    QMultiMap<QByteArray, QJsonValue> byText;
    for (const QJsonValue& value : values)
        byText.insert(TraceValues::compact(value), value);
    QJsonArray all;
    for (const QJsonValue& value : qAsConst(byText))
        all.append(value);
    return all;
}

/// Returns the arguments of a report of the selection with its rows in a fixed order.
QJsonObject inOrder(const QJsonObject& report)
{
    QJsonObject arguments = report;
    for (const QString& list : {QStringLiteral("processors"), QStringLiteral("groups")}) {
        QJsonArray items = arguments.value(list).toArray();
        for (auto&& item : items) {
            QJsonObject group = item.toObject();
            if (group.contains(QStringLiteral("processors")))
                group.insert(QStringLiteral("processors"),
                             sorted(group.value(QStringLiteral("processors")).toArray()));
            if (!group.isEmpty())
                item = group;
        }
        arguments.insert(list, sorted(items));
    }
    return arguments;
}

/// Returns whether two requests are the same. The selection is a set: its order differs from run to
/// run.
bool areSame(const QString& name, const QJsonObject& one, const QJsonObject& other)
{
    return name == QLatin1String("ReportSelection") ? inOrder(one) == inOrder(other) : one == other;
}

QString textOf(const QString& name, const QJsonObject& arguments)
{
    return name + QLatin1Char(' ') + QString::fromUtf8(TraceValues::compact(arguments));
}

} // namespace

ReplayProgress::ReplayProgress(std::shared_ptr<const Recording> recording)
    : m_recording(std::move(recording))
{
}

const CTraceEntry* ReplayProgress::takeRequest(const QString& name, const QJsonObject& arguments)
{
    const CTraceEntry* next = nullptr;
    {
        const std::lock_guard guard(m_mutex);
        if (m_isOver)
            return nullptr;
        next = request();
        if (next && next->name == name && areSame(name, next->arguments, arguments)) {
            ++m_request;
            m_asked = 0;
            m_position = std::max(m_position, next->sequence);
            return next;
        }
    }
    if (next)
        end(Difference{next->line, next->text(), textOf(name, arguments)});
    else if (m_recording->isCutOff())
        end();
    else
        end(Difference{0, tr("no more requests"), textOf(name, arguments)});
    return nullptr;
}

ReplayProgress::Telling::Telling(qint64 event)
    : m_former(std::exchange(t_event, event))
{
}

ReplayProgress::Telling::~Telling()
{
    t_event = m_former;
}

const CTraceEntry* ReplayProgress::answer(const QString& name, const QJsonObject& arguments)
{
    const QByteArray key = Recording::keyOf(name, arguments);
    const std::lock_guard guard(m_mutex);
    if (t_event > 0) {
        Inside& inside = m_inside[t_event];
        ++inside.questions;
        inside.last.start();
    }
    // What the host did inside a question has to come inside the same one.
    const CTraceEntry* next = driver();
    const Recording::Question* question = next ? m_recording->questionOf(*next) : nullptr;
    const CTraceEntry* due = request();
    if (question && question->key == key && (!due || due->sequence > next->sequence)
        && t_event == (question->inEvent ? m_recording->answer(*question)->cause : 0)
        && m_asked++ >= question->before)
        return m_recording->answer(*question);
    return m_recording->answer(key, m_position, t_event);
}

void ReplayProgress::waitForInputBefore(const CTraceEntry& question)
{
    if (t_event == 0 || question.cause != t_event)
        return;
    std::unique_lock guard(m_mutex);
    if (m_inside.value(t_event).waited >= kInputTimeOfAnEvent)
        return;
    const auto begin = std::chrono::steady_clock::now();
    m_taken.wait_for(guard, kInputTime, [&] { return m_isOver || !hasInputBefore(question); });
    m_inside[t_event].waited += std::chrono::steady_clock::now() - begin;
}

/// With m_mutex locked.
bool ReplayProgress::hasInputBefore(const CTraceEntry& question) const
{
    const auto& drivers = m_recording->drivers();
    for (std::size_t at = m_driver; at < drivers.size() && drivers[at].sequence < question.sequence;
         ++at) {
        if (drivers[at].kind == CTraceEntry::Kind::Input)
            return true;
    }
    return false;
}

bool ReplayProgress::isEventBehind(qint64 event, const CTraceEntry& driver) const
{
    const std::lock_guard guard(m_mutex);
    const Recording::Known known = m_recording->knownOf(event, driver);
    const Inside inside = m_inside.value(event);
    return inside.questions < known.questions
           || (known.questions > 0
               && inside.last.nsecsElapsed() < std::min(known.time, kTakeUpTime));
}

void ReplayProgress::noteUnanswered(const QString& question)
{
    const std::lock_guard guard(m_mutex);
    m_unanswered.push_back(question);
}

QStringList ReplayProgress::unanswered() const
{
    const std::lock_guard guard(m_mutex);
    return {m_unanswered.begin(), m_unanswered.end()};
}

void ReplayProgress::countWorkQuestion()
{
    const std::lock_guard guard(m_mutex);
    ++m_workQuestions;
}

bool ReplayProgress::isWorkBehind(const CTraceEntry& driver) const
{
    const std::lock_guard guard(m_mutex);
    return m_workQuestions < m_recording->workQuestionsBefore(driver);
}

const CTraceEntry* ReplayProgress::nextDriver() const
{
    const std::lock_guard guard(m_mutex);
    return driver();
}

const CTraceEntry* ReplayProgress::nextRequest() const
{
    const std::lock_guard guard(m_mutex);
    return request();
}

/// With m_mutex locked, like request().
const CTraceEntry* ReplayProgress::driver() const
{
    const auto& drivers = m_recording->drivers();
    return m_driver < drivers.size() ? &drivers[m_driver] : nullptr;
}

const CTraceEntry* ReplayProgress::request() const
{
    const auto& requests = m_recording->requests();
    return m_request < requests.size() ? &requests[m_request] : nullptr;
}

bool ReplayProgress::isDue(const CTraceEntry& driver) const
{
    const CTraceEntry* request = nextRequest();
    return !request || request->sequence > driver.sequence;
}

bool ReplayProgress::take(const CTraceEntry& driver)
{
    const std::lock_guard guard(m_mutex);
    if (this->driver() != &driver)
        return false;
    m_position = std::max(m_position, driver.sequence);
    ++m_driver;
    m_asked = 0;
    m_taken.notify_all();
    return true;
}

const CTraceEntry* ReplayProgress::takeInside(const CTraceEntry& cause, bool isGuiThread)
{
    const CTraceEntry* driver = nextDriver();
    if (!driver || isOver() || driver->cause != cause.sequence
        || driver->kind == CTraceEntry::Kind::Input
        || (driver->thread == QLatin1String("gui") && !isGuiThread) || !isDue(*driver))
        return nullptr;
    return take(*driver) ? driver : nullptr;
}

const CTraceEntry* ReplayProgress::takeEventDuring(const CTraceEntry& call)
{
    const CTraceEntry* driver = nextDriver();
    if (!driver || isOver() || driver->kind != CTraceEntry::Kind::Event
        || driver->thread == QLatin1String("gui")
        || (driver->time >= call.end() && driver->line > call.line)
        || m_recording->isInQuestion(*driver) || !isDue(*driver))
        return nullptr;
    return take(*driver) ? driver : nullptr;
}

const CTraceEntry* ReplayProgress::takeEventInARow()
{
    const CTraceEntry* driver = nextDriver();
    if (!driver || isOver() || !m_recording->isRightAfterAnother(*driver)
        || m_recording->isInQuestion(*driver) || !isDue(*driver))
        return nullptr;
    return take(*driver) ? driver : nullptr;
}

bool ReplayProgress::isGuiBusyUntilEndOf(const CTraceEntry& entry) const
{
    const std::lock_guard guard(m_mutex);
    const auto& requests = m_recording->requests();
    if (m_request < requests.size() && requests[m_request].time < entry.end())
        return true;
    const auto& drivers = m_recording->drivers();
    for (std::size_t at = m_driver; at < drivers.size() && drivers[at].time < entry.end(); ++at) {
        if (drivers[at].thread == QLatin1String("gui"))
            return true;
    }
    return false;
}

void ReplayProgress::end(std::optional<Difference> difference)
{
    const std::lock_guard guard(m_mutex);
    if (!std::exchange(m_isOver, true))
        m_difference = std::move(difference);
    m_taken.notify_all();
}

bool ReplayProgress::isOver() const
{
    const std::lock_guard guard(m_mutex);
    return m_isOver;
}

std::optional<Difference> ReplayProgress::difference() const
{
    const std::lock_guard guard(m_mutex);
    return m_difference;
}

qint64 ReplayProgress::steps() const
{
    const std::lock_guard guard(m_mutex);
    return static_cast<qint64>(m_driver + m_request);
}
