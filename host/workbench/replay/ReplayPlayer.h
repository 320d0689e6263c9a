#pragma once

#include "host/workbench/replay/EventThreads.h"
#include "host/workbench/replay/ReplayProgress.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSemaphore>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>

class ITargetSelectAreaInterface;
class QSize;
class QWidget;
class ReplayHandler;

/// The panel of a replay, as the window keeps it.
class ReplayStage
{
public:
    virtual ~ReplayStage() = default;

    /// Creates the panel in this size, with this handler, without initialising it. Returns null on
    /// failure.
    virtual ITargetSelectAreaInterface* open(const QSize& size,
                                             std::shared_ptr<ReplayHandler> handler) = 0;
    virtual void close() = 0;
    virtual ITargetSelectAreaInterface* layer() const = 0;
    virtual QWidget* panel() const = 0;
};

/// Repeats a recording: raises its events on threads like the recorded ones, repeats the host's
/// calls to the panel and the user's gestures, each as soon as the panel has made the requests that
/// came before. Goes on inside dialogs and menus that the panel opens. GUI thread.
class ReplayPlayer final : public QObject
{
    Q_OBJECT

public:
    /// `stage` must outlive this object.
    ReplayPlayer(std::shared_ptr<const Recording> recording, ReplayStage& stage,
                 QObject* parent = nullptr);
    ~ReplayPlayer() override;

    void start();

    const ReplayProgress& progress() const { return *m_progress; }

signals:
    /// Emitted once, when everything is repeated or at the first difference.
    void finished();

private:
    /// An event on another thread.
    struct Delivery
    {
        QSemaphore begun;
        QSemaphore done;
    };

    std::shared_ptr<ReplayHandler> makeHandler(std::shared_ptr<ReplayHandler> former);
    void schedule();
    void step();
    bool hasWaitedLong() const;
    void wait();
    void giveUp();
    void conclude();
    bool isEventRunningBefore(const CTraceEntry& driver) const;
    bool isEventBehind(const CTraceEntry& driver) const;
    void perform(const CTraceEntry& driver);
    void raise(const CTraceEntry& driver);
    std::shared_ptr<Delivery> raiseElsewhere(const CTraceEntry& driver);
    void callLayer(const CTraceEntry& driver);
    void compareAnswer(const CTraceEntry& driver, const QJsonValue& answer);
    void gesture(const CTraceEntry& driver);
    void goOnInside(const CTraceEntry& call);
    bool isPainting() const;

    const std::shared_ptr<ReplayProgress> m_progress;
    ReplayStage& m_stage;
    std::shared_ptr<ReplayHandler> m_handler;
    std::map<qint64, qint64> m_running; // events on other threads: number and recorded end
    EventThreads m_threads;
    QTimer m_poll;
    QElapsedTimer m_idle; // since the last step
    qint64 m_steps = -1;  // when m_idle was started
    int m_rounds = 0;     // of the event loop since the last step
    bool m_isPosted = false;
    bool m_isFinished = false;
};
