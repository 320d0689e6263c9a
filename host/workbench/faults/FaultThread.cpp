#include "host/workbench/faults/FaultThread.h"

#include "host/workbench/trace/ThreadEnd.h"
#include "host/workbench/trace/ThreadName.h"

#include <QMetaObject>
#include <QTimer>

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
    waitForEnd(m_thread);
}
