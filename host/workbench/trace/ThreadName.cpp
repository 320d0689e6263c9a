#include "host/workbench/trace/ThreadName.h"

#include "host/common/WorkThread.h"

#include <QCoreApplication>
#include <QThread>

namespace {

thread_local const char* t_name = nullptr;

} // namespace

QString currentThreadName()
{
    if (t_name)
        return QLatin1String(t_name);
    const QThread* current = QThread::currentThread();
    if (QCoreApplication::instance() && QCoreApplication::instance()->thread() == current)
        return QStringLiteral("GUI");
    if (dynamic_cast<const CWorkThread*>(current))
        return QStringLiteral("work");
    return QStringLiteral("other");
}

void nameCurrentThread(const char* name)
{
    t_name = name;
}
