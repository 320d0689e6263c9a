#include "host/workbench/trace/ThreadEnd.h"

#include <QCoreApplication>
#include <QThread>

namespace {

constexpr unsigned long kStepMs = 5;

} // namespace

void waitForEnd(QThread& thread)
{
    while (!thread.wait(kStepMs))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
