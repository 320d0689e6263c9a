#include "host/simulator/CommandInput.h"

#include <sys/signalfd.h>

#include <csignal>
#include <utility>

#include <unistd.h>

namespace {

constexpr int kMaxLineBytes = 1024;

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

CommandInput::CommandInput(int descriptor, QObject* parent)
    : QObject(parent)
    , m_descriptor(descriptor)
    , m_notifier(descriptor, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { read(); });
}

/// Reads once: the descriptor is known to have something, and may block afterwards.
void CommandInput::read()
{
    QByteArray bytes(kMaxLineBytes, '\0');
    const auto size = ::read(m_descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (size <= 0) {
        m_notifier.setEnabled(false);
        emit ended();
        return;
    }
    m_pending.append(bytes.constData(), static_cast<int>(size));
    for (int end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
        const QByteArray line = m_pending.left(end);
        m_pending.remove(0, end + 1);
        take(line);
    }
    if (m_pending.size() > kMaxLineBytes) {
        m_pending.clear();
        m_skips = true;
    }
}

void CommandInput::take(QByteArray line)
{
    if (std::exchange(m_skips, false))
        line = "(a line that is too long)";
    const QString text = QString::fromUtf8(line).simplified();
    if (!text.isEmpty())
        emit lineRead(text);
}

EndSignals::EndSignals(QObject* parent)
    : QObject(parent)
    , m_descriptor(endDescriptor())
    , m_notifier(m_descriptor, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier.setEnabled(false);
        emit endAsked();
    });
}

EndSignals::~EndSignals()
{
    m_notifier.setEnabled(false);
    close(m_descriptor);
}
