#include "host/simulator/CommandInput.h"

#include <QSemaphore>

#include <array>
#include <cerrno>
#include <mutex>
#include <thread>
#include <utility>

#include <unistd.h>
#ifdef Q_OS_UNIX
#include <poll.h>
#endif

namespace {

constexpr int kMaxLineBytes = 1024;

/// Returns what could be read, empty at the end of the input. A descriptor may be non-blocking
/// because another process that shares it has made it so.
QByteArray readFrom(int descriptor)
{
    std::array<char, kMaxLineBytes> buffer{};
    while (true) {
        const auto size = ::read(descriptor, buffer.data(), kMaxLineBytes);
        if (size >= 0)
            return {buffer.data(), static_cast<int>(size)};
        if (errno == EINTR)
            continue;
#ifdef Q_OS_UNIX
        if (errno == EAGAIN) {
            pollfd input{descriptor, POLLIN, 0};
            if (poll(&input, 1, -1) > 0 || errno == EINTR)
                continue;
        }
#endif
        return {};
    }
}

} // namespace

/// What this object and its thread have in common.
struct CommandInput::Shared
{
    QSemaphore room{1}; // for what is read and not taken yet
    std::mutex mutex;
    CommandInput* input = nullptr; // null once it is gone

    static void read(int descriptor, const std::shared_ptr<Shared>& shared);
};

void CommandInput::Shared::read(int descriptor, const std::shared_ptr<Shared>& shared)
{
    bool isOpen = true;
    while (isOpen) {
        shared->room.acquire();
        const QByteArray bytes = readFrom(descriptor);
        const std::lock_guard guard(shared->mutex);
        CommandInput* const input = shared->input;
        isOpen = input && !bytes.isEmpty();
        if (input) {
            QMetaObject::invokeMethod(
                input, [input, bytes] { input->take(bytes); }, Qt::QueuedConnection);
        }
    }
}

CommandInput::CommandInput(int descriptor, QObject* parent)
    : QObject(parent)
    , m_shared(std::make_shared<Shared>())
{
    m_shared->input = this;
    std::thread(Shared::read, descriptor, m_shared).detach();
}

CommandInput::~CommandInput()
{
    const std::lock_guard guard(m_shared->mutex);
    m_shared->input = nullptr;
    m_shared->room.release();
}

void CommandInput::take(const QByteArray& bytes)
{
    if (bytes.isEmpty()) {
        takeLine(std::exchange(m_pending, {}));
        emit ended();
        return;
    }
    m_pending.append(bytes);
    for (int end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
        const QByteArray line = m_pending.left(end);
        m_pending.remove(0, end + 1);
        takeLine(line);
    }
    if (m_pending.size() > kMaxLineBytes) {
        m_pending.clear();
        m_skips = true;
    }
    m_shared->room.release();
}

void CommandInput::takeLine(QByteArray line)
{
    if (std::exchange(m_skips, false))
        line = "(a line that is too long)";
    const QString text = QString::fromUtf8(line).simplified();
    if (!text.isEmpty())
        emit lineRead(text);
}
