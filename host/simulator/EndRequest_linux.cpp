#include "host/simulator/EndRequest.h"

#include <QSocketNotifier>

#include <sys/signalfd.h>

#include <csignal>
#include <utility>

#include <unistd.h>

namespace {

/// Has SIGTERM and SIGINT come by the descriptor that it returns.
int endDescriptor()
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    return signalfd(-1, &ends, SFD_NONBLOCK | SFD_CLOEXEC);
}

} // namespace

std::unique_ptr<QObject> onEndRequest(std::function<void()> end)
{
    const int descriptor = endDescriptor();
    auto signal = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QSocketNotifier* const notifier = signal.get();
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [notifier, end = std::move(end)] {
                         notifier->setEnabled(false);
                         end();
                     });
    QObject::connect(notifier, &QObject::destroyed, notifier, [descriptor] { close(descriptor); });
    return signal;
}
