#include "host/workbench/replay/ReplayPlayer.h"

#include "host/workbench/replay/InputPlayer.h"
#include "host/workbench/replay/ReplayHandler.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "host/common/WorkThread.h"
#include "sdk/record/LayerCalls.h"
#include "sdk/record/TraceValues.h"

#include <QEventLoop>
#include <QMetaObject>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace {

/// How long the panel may take for the next step. It waits for the GUI thread up to 5 s.
constexpr int kPatienceMs = 10000;
/// How long a step waits for questions that came before it, and may not come again, while the panel
/// is at rest.
constexpr int kQuestionMs = 200;
/// The same while the panel's work thread has something to do.
constexpr int kBusyMs = 3000;
/// How long nothing more may come at the end.
constexpr int kQuietMs = 300;
/// How long the GUI thread waits inside a request for an event that came inside it.
constexpr int kInsideMs = 1000;
/// The same for one that did not end inside it: enough for what the panel decides at once.
constexpr int kOverlapMs = 20;
constexpr int kPollMs = 2;
/// How often a step looks before it has waited long, on a machine that is busy with others, too.
constexpr int kRoundsOfAWait = 20;
/// Rounds of the event loop in which layouts and menus settle before a gesture.
constexpr int kRoundsBeforeGesture = 3;
constexpr int kShown = 300;

/// Returns the part of `text` around the first character in which it differs from `other`.
QString partOf(const QString& text, const QString& other)
{
    const auto differing =
        std::mismatch(text.begin(), text.end(), other.begin(), other.end()).first;
    const int at = static_cast<int>(differing - text.begin());
    const int first = std::max(at - kShown / 2, 0);
    return (first > 0 ? QStringLiteral("...") : QString()) + text.mid(first, kShown)
           + (text.size() > first + kShown ? QStringLiteral("...") : QString());
}

QString textOf(const QJsonValue& answer)
{
    return answer.isUndefined() ? QStringLiteral("nothing")
                                : QString::fromUtf8(TraceValues::compact(answer));
}

} // namespace

ReplayPlayer::ReplayPlayer(std::shared_ptr<const Recording> recording, ReplayStage& stage,
                           QObject* parent)
    : QObject(parent)
    , m_progress(std::make_shared<ReplayProgress>(std::move(recording)))
    , m_stage(stage)
    , m_handler(makeHandler({}))
{
    m_poll.setSingleShot(true);
    connect(&m_poll, &QTimer::timeout, this, &ReplayPlayer::schedule);
}

ReplayPlayer::~ReplayPlayer()
{
    // The threads handle events while they are waited for.
    m_isFinished = true;
    m_progress->end();
}

/// Returns a handler for the panel. It takes the place of `former`, which may be null.
std::shared_ptr<ReplayHandler> ReplayPlayer::makeHandler(std::shared_ptr<ReplayHandler> former)
{
    auto handler = std::make_shared<ReplayHandler>(m_progress, std::move(former));
    // The panel's threads may keep the handler a little longer than this object lives.
    const QPointer<ReplayPlayer> self(this);
    handler->callPanel = [self](const CTraceEntry& driver) {
        if (self)
            self->callLayer(driver);
    };
    handler->goOnInside = [self](const CTraceEntry& call) {
        if (self)
            self->goOnInside(call);
    };
    handler->isPainting = [self] { return self && self->isPainting(); };
    return handler;
}

void ReplayPlayer::start()
{
    m_idle.start();
    schedule();
}

/// Posts a step: a timer does not fire inside its own slot, which a dialog may keep open.
void ReplayPlayer::schedule()
{
    if (!std::exchange(m_isPosted, true))
        QMetaObject::invokeMethod(this, &ReplayPlayer::step, Qt::QueuedConnection);
}

void ReplayPlayer::step()
{
    m_isPosted = false;
    if (m_isFinished)
        return;
    if (m_progress->isOver()) {
        conclude();
        return;
    }
    if (std::exchange(m_steps, m_progress->steps()) != m_progress->steps()) {
        m_idle.start();
        m_rounds = 0;
    }
    ++m_rounds;
    const CTraceEntry* driver = m_progress->nextDriver();
    if (!driver && !m_progress->nextRequest() && m_running.empty() && m_idle.hasExpired(kQuietMs)) {
        m_progress->end();
        conclude();
        return;
    }
    if (!driver || !m_progress->isDue(*driver) || isEventRunningBefore(*driver)) {
        wait();
        return;
    }
    const bool isGesture = driver->kind == CTraceEntry::Kind::Input;
    if (isGesture && m_rounds < kRoundsBeforeGesture) {
        m_poll.start(0);
        return;
    }
    const bool isForWidget = isGesture && m_stage.panel();
    const QWidget* widget = isForWidget ? InputPlayer::target(*m_stage.panel(), *driver) : nullptr;
    if (isForWidget && !widget && !(hasWaitedLong() && InputPlayer::isForAnyWidget(*driver))) {
        wait();
        return;
    }
    // Whoever asks the question tells the event. The work thread may ask in another order.
    const bool isEarly =
        (widget && !InputPlayer::isEntryThere(*widget, *driver))
        || (isGesture && isEventBehind(*driver)) || m_progress->recording().isInQuestion(*driver)
        || m_progress->isWorkBehind(*driver)
        || (driver->kind != CTraceEntry::Kind::Event && CWorkThread::PendingJobs() > 0);
    if (isEarly && !hasWaitedLong()) {
        wait();
        return;
    }
    schedule();
    if (m_progress->take(*driver))
        perform(*driver);
}

/// Returns whether questions that have not come again will not do so.
bool ReplayPlayer::hasWaitedLong() const
{
    return m_rounds >= kRoundsOfAWait
           && m_idle.hasExpired(CWorkThread::PendingJobs() > 0 ? kBusyMs : kQuestionMs);
}

/// Comes back soon, unless the panel has taken too long.
void ReplayPlayer::wait()
{
    if (m_idle.hasExpired(kPatienceMs))
        giveUp();
    m_poll.start(kPollMs);
}

void ReplayPlayer::giveUp()
{
    const CTraceEntry* driver = m_progress->nextDriver();
    const CTraceEntry* request = m_progress->nextRequest();
    if (request && (!driver || request->sequence < driver->sequence)) {
        m_progress->end(Difference{request->line, request->text(),
                                   tr("nothing within %1 s").arg(kPatienceMs / 1000)});
    } else if (driver && driver->kind == CTraceEntry::Kind::Input && m_running.empty()) {
        m_progress->end(
            Difference{driver->line, driver->text(), tr("the panel does not show this widget")});
    } else {
        m_progress->end(Difference{driver ? driver->line : 0, driver ? driver->text() : QString(),
                                   tr("an event before has not returned")});
    }
}

void ReplayPlayer::conclude()
{
    if (!std::exchange(m_isFinished, true))
        emit finished();
}

/// Returns whether an event still goes on that had ended before `driver` in the recording.
bool ReplayPlayer::isEventRunningBefore(const CTraceEntry& driver) const
{
    return std::any_of(m_running.begin(), m_running.end(),
                       [&](const auto& event) { return event.second < driver.time; });
}

/// Returns whether an event that goes on still has to ask what it had asked before `driver`.
bool ReplayPlayer::isEventBehind(const CTraceEntry& driver) const
{
    return std::any_of(m_running.begin(), m_running.end(), [&](const auto& event) {
        return m_progress->isEventBehind(event.first, driver);
    });
}

void ReplayPlayer::perform(const CTraceEntry& driver)
{
    switch (driver.kind) {
    case CTraceEntry::Kind::Event:
        raise(driver);
        break;
    case CTraceEntry::Kind::Layer:
        callLayer(driver);
        break;
    default:
        gesture(driver);
    }
}

void ReplayPlayer::raise(const CTraceEntry& driver)
{
    if (driver.thread != QLatin1String("gui")) {
        raiseElsewhere(driver);
        // The thread goes on without this one, as the recorded one did.
        while (const CTraceEntry* next = m_progress->takeEventInARow())
            raiseElsewhere(*next);
        return;
    }
    Events::Event event;
    TraceValues::readEvent(driver.arguments, event);
    const ReplayProgress::Telling telling(driver.sequence);
    m_handler->tell(event);
}

std::shared_ptr<ReplayPlayer::Delivery> ReplayPlayer::raiseElsewhere(const CTraceEntry& driver)
{
    Events::Event event;
    TraceValues::readEvent(driver.arguments, event);
    m_running.emplace(driver.sequence, driver.end());
    auto delivery = std::make_shared<Delivery>();
    m_threads.run(driver.thread,
                  [this, handler = m_handler, event, delivery, number = driver.sequence] {
                      delivery->begun.release();
                      {
                          const ReplayProgress::Telling telling(number);
                          handler->tell(event);
                      }
                      delivery->done.release();
                      QMetaObject::invokeMethod(
                          this,
                          [this, number] {
                              m_running.erase(number);
                              m_idle.start();
                              schedule();
                          },
                          Qt::QueuedConnection);
                  });
    return delivery;
}

void ReplayPlayer::callLayer(const CTraceEntry& driver)
{
    if (driver.name == QLatin1String("TargetSelectArea_Init")) {
        m_handler = makeHandler({});
        const QSize size(driver.arguments.value(QLatin1String("width")).toInt(),
                         driver.arguments.value(QLatin1String("height")).toInt());
        if (!m_stage.open(size, m_handler))
            m_progress->end(
                Difference{driver.line, driver.text(), tr("the library returns no panel")});
        return;
    }
    if (driver.name == QLatin1String("Destroy")) {
        m_stage.close();
        return;
    }
    if (driver.name == QLatin1String("HandlerReplaced") && m_stage.layer()) {
        m_handler = makeHandler(m_handler);
        const bool isAssigned = driver.arguments.value(QLatin1String("assigned")).toBool();
        m_stage.layer()->m_controlHandler = isAssigned ? m_handler : nullptr;
        return;
    }
    QJsonValue answer(QJsonValue::Undefined);
    if (!m_stage.layer()
        || !LayerCalls::repeat(*m_stage.layer(), driver.name, driver.arguments, answer)) {
        m_progress->end(Difference{driver.line, driver.text(),
                                   tr("this cannot be called: there is no panel, or no such "
                                      "operation")});
        return;
    }
    compareAnswer(driver, answer);
}

void ReplayPlayer::compareAnswer(const CTraceEntry& driver, const QJsonValue& answer)
{
    const bool isCompared = driver.duration >= 0
                            && (driver.name != QLatin1String("GetProcessorTree")
                                || !m_progress->recording().isTreeInMotion(driver));
    if (!isCompared || answer == driver.answer)
        return;
    const QString recorded = textOf(driver.answer);
    const QString came = textOf(answer);
    m_progress->end(Difference{
        driver.line, QStringLiteral("%1 = %2").arg(driver.text(), partOf(recorded, came)),
        QStringLiteral("%1 = %2").arg(driver.text(), partOf(came, recorded))});
}

void ReplayPlayer::gesture(const CTraceEntry& driver)
{
    if (!m_stage.panel())
        return;
    QWidget* widget = InputPlayer::target(*m_stage.panel(), driver);
    InputPlayer::perform(widget ? *widget : InputPlayer::nearest(*m_stage.panel(), driver), driver);
}

void ReplayPlayer::goOnInside(const CTraceEntry& call)
{
    // What the panel does with an event depends on whether it is inside the request. The panel lets
    // the notifying thread go soon, so this wait ends.
    while (const CTraceEntry* driver = m_progress->takeEventDuring(call)) {
        const std::shared_ptr<Delivery> delivery = raiseElsewhere(*driver);
        // One that outlasted the request may need the GUI thread to end.
        delivery->begun.tryAcquire(1, kInsideMs);
        delivery->done.tryAcquire(1, driver->end() < call.end() ? kInsideMs : kOverlapMs);
    }
    QEventLoop loop;
    while (!m_progress->isOver() && m_progress->isGuiBusyUntilEndOf(call)) {
        schedule();
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Returns whether the panel or a part of it is inside its paint event.
bool ReplayPlayer::isPainting() const
{
    const QWidget* panel = m_stage.panel();
    const QList<QWidget*> parts = panel ? panel->findChildren<QWidget*>() : QList<QWidget*>();
    return std::any_of(parts.begin(), parts.end(), [](const QWidget* part) {
        return part->testAttribute(Qt::WA_WState_InPaintEvent);
    });
}
