#include "host/workbench/faults/FaultThread.h"

#include "host/workbench/trace/ThreadName.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>

namespace {

constexpr unsigned long kJoinStepMs = 5;

} // namespace

FaultThread::FaultThread()
{
    m_there.moveToThread(&m_thread);
    m_thread.setObjectName(QStringLiteral("fault"));
    m_thread.start();
    QMetaObject::invokeMethod(
        &m_there, [] { nameCurrentThread("fault"); }, Qt::QueuedConnection);
}

FaultThread::~FaultThread()
{
    stop();
}

void FaultThread::callLater(int milliseconds, const std::function<void()>& act)
{
    QMetaObject::invokeMethod(
        &m_there, [this, milliseconds, act] { QTimer::singleShot(milliseconds, &m_there, act); },
        Qt::QueuedConnection);
}

void FaultThread::stop()
{
    m_thread.quit();
    while (!m_thread.wait(kJoinStepMs))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
