#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QObject>

#include <cstddef>
#include <exception>
#include <mutex>

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
