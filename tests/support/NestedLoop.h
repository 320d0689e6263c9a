#pragma once

#include <QEventLoop>
#include <QMetaObject>

#include <functional>

/// Runs `action` as an event of an event loop of its own, as when a host handles events while it is
/// asked. What the action leaves to be deleted later is deleted as soon as such a loop does that.
inline void runInNestedLoop(const std::function<void()>& action)
{
    QEventLoop loop;
    const auto runAndQuit = [&] {
        action();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    };
    QMetaObject::invokeMethod(&loop, runAndQuit, Qt::QueuedConnection);
    loop.exec();
}

/// Either that, or at once.
inline void runWithin(bool nestedLoop, const std::function<void()>& action)
{
    if (nestedLoop)
        runInNestedLoop(action);
    else
        action();
}
