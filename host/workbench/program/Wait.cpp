#include "host/workbench/program/Wait.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace {

constexpr int kLookAgainMs = 5;

} // namespace

bool waitUntil(const std::function<bool()>& condition, int limitMs)
{
    const QDeadlineTimer deadline(limitMs);
    // Wakes the loop below, which sleeps while no event arrives.
    QTimer lookAgain;
    lookAgain.start(kLookAgainMs);
    QEventLoop loop;
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
