#include "host/workbench/replay/EventThreads.h"

#include "host/workbench/trace/ThreadEnd.h"

#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <utility>

EventThreads::EventThreads() = default;

EventThreads::~EventThreads()
{
    for (auto& [name, lane] : m_lanes)
        lane.thread->quit();
    for (auto& [name, lane] : m_lanes)
        waitForEnd(*lane.thread);
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
