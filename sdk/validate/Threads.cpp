#include "sdk/validate/Threads.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// Ends an event loop when all threads have come to their end. An event of its own, which
/// ThreadSanitizer can follow: it does not see what Qt's own code orders.
class Ending final : public QObject
{
    Q_OBJECT

public:
    explicit Ending(std::size_t threads)
        : m_running(threads)
    {
    }

    /// Any thread.
    void end(const std::exception_ptr& thrown)
    {
        const std::lock_guard guard(m_mutex);
        if (thrown && !m_thrown)
            m_thrown = thrown;
        if (--m_running == 0)
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    std::exception_ptr wait()
    {
        m_loop.exec();
        const std::lock_guard guard(m_mutex);
        return m_thrown;
    }

protected:
    void customEvent(QEvent* event) override
    {
        Q_UNUSED(event)
        m_loop.quit();
    }

private:
    std::mutex m_mutex;
    std::size_t m_running;
    std::exception_ptr m_thrown;
    QEventLoop m_loop;
};

} // namespace

bool isGuiThread()
{
    return QCoreApplication::instance()
           && QThread::currentThread() == QCoreApplication::instance()->thread();
}

void elsewhere(const std::function<void()>& work)
{
    elsewhere(QList<std::function<void()>>{work});
}

void elsewhere(const QList<std::function<void()>>& works)
{
    Ending ending(static_cast<std::size_t>(works.size()));
    std::vector<std::thread> threads;
    for (const auto& work : works) {
        threads.emplace_back([&ending, work] {
            std::exception_ptr thrown;
            try {
                work();
            } catch (...) {
                thrown = std::current_exception();
            }
            ending.end(thrown);
        });
    }
    const std::exception_ptr thrown = ending.wait();
    for (std::thread& thread : threads)
        thread.join();
    if (thrown)
        std::rethrow_exception(thrown);
}

bool waitUntil(const std::function<bool()>& isSo, int limitMs)
{
    const QDeadlineTimer deadline(limitMs);
    while (!isSo()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        QTimer::singleShot(2, &loop, &QEventLoop::quit);
        loop.exec();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void settle()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

#include "Threads.moc"
