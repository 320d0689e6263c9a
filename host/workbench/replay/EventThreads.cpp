#include "host/workbench/replay/EventThreads.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <utility>

namespace {

constexpr unsigned long kJoinStepMs = 5;

} // namespace

EventThreads::EventThreads() = default;

/// Processes the events of the GUI thread meanwhile, because a delivery may need them.
EventThreads::~EventThreads()
{
    for (auto& [name, lane] : m_lanes)
        lane.thread->quit();
    for (auto& [name, lane] : m_lanes) {
        while (!lane.thread->wait(kJoinStepMs))
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

void EventThreads::run(const QString& thread, std::function<void()> work)
{
    Lane& lane = m_lanes[thread];
    if (!lane.thread) {
        lane.thread = std::make_unique<QThread>();
        lane.thread->setObjectName(thread);
        lane.context = std::make_unique<QObject>();
        lane.context->moveToThread(lane.thread.get());
        lane.thread->start();
    }
    QMetaObject::invokeMethod(lane.context.get(), std::move(work), Qt::QueuedConnection);
}
