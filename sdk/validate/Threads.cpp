#include "sdk/validate/Threads.h"

#include "sdk/validate/Ending.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <exception>
#include <memory>
#include <thread>
#include <vector>

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
