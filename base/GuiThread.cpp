#include "base/GuiThread.h"

#include <QCoreApplication>
#include <QThread>

bool isGuiThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

bool isThreadOf(const QObject& object)
{
    return object.thread() == QThread::currentThread();
}
