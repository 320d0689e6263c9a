#include "tests/support/HostThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <utility>

namespace {

/// Runs work on the GUI thread. Not a queued functor: ThreadSanitizer does not see what Qt's own
/// code orders.
class GuiRunner final : public QObject
{
public:
    GuiRunner() { moveToThread(QCoreApplication::instance()->thread()); }

    void run(const std::function<void()>& work)
    {
        std::packaged_task<void()> task(work);
        const auto done = task.get_future();
        {
            const std::lock_guard guard(m_mutex);
            m_tasks.push_back(std::move(task));
        }
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        done.wait();
    }

protected:
    void customEvent(QEvent* event) override
    {
        Q_UNUSED(event)
        std::packaged_task<void()> task;
        {
            const std::lock_guard guard(m_mutex);
            task = std::move(m_tasks.front());
            m_tasks.pop_front();
        }
        task();
    }

private:
    std::mutex m_mutex;
    std::deque<std::packaged_task<void()>> m_tasks;
};

} // namespace

HostThread::HostThread()
    : m_thread([this] { work(); })
{
    post([this] { m_qtThread = QThread::currentThread(); }).wait();
}

HostThread::~HostThread()
{
    run([] {});
    {
        const std::lock_guard guard(m_mutex);
        m_end = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

std::future<void> HostThread::post(std::function<void()> work)
{
    std::packaged_task<void()> task(std::move(work));
    auto done = task.get_future();
    {
        const std::lock_guard guard(m_mutex);
        m_work.push_back(std::move(task));
    }
    m_changed.notify_all();
    return done;
}

bool HostThread::run(std::function<void()> work, int limitMs)
{
    // An event loop, for it wakes at once when the other thread waits for an event to be handled.
    QEventLoop loop;
    QTimer::singleShot(limitMs, &loop, &QEventLoop::quit);
    const auto done = post(std::move(work));
    const auto ended = post(
        [&loop] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); });
    loop.exec();
    const bool inTime = done.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    if (!inTime)
        QTest::qFail("the host's thread does not come back", __FILE__, __LINE__);
    ended.wait();
    return inTime;
}

void HostThread::work()
{
    for (;;) {
        std::unique_lock guard(m_mutex);
        m_changed.wait(guard, [this] { return m_end || !m_work.empty(); });
        if (m_work.empty())
            return;
        auto task = std::move(m_work.front());
        m_work.pop_front();
        guard.unlock();
        task();
    }
}

bool comesBack(const std::future<void>& done)
{
    return done.wait_for(kSoon) == std::future_status::ready;
}

void onGuiThread(const std::function<void()>& work)
{
    static auto* const runner = new GuiRunner;
    runner->run(work);
}
