#pragma once

#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QTest>
#include <QThread>

#include <optional>

/// The panel, its model under the tester, and a way to deliver events on either kind of thread.
class Bridge final
{
public:
    Bridge()
        : tester(&panel.model())
    {
        QFETCH_GLOBAL(bool, foreign);
        if (foreign)
            thread.emplace();
    }

    /// Global rows: has every test function run once for each kind of thread.
    static void addThreads()
    {
        QTest::addColumn<bool>("foreign");
        QTest::newRow("foreign thread") << true;
        QTest::newRow("GUI thread") << false;
    }

    template <typename... Args>
    void notify(quint32 event, Args... arguments)
    {
        if (thread)
            thread->run([&] { panel.notify<Args...>(event, arguments...); });
        else
            panel.notify<Args...>(event, arguments...);
    }

    /// The thread on which events arrive.
    QThread* updateThread() { return thread ? thread->qtThread() : QThread::currentThread(); }

    QThread* askedOn(const QString& name)
    {
        for (const FakeHandler::Call& call : panel.host().calls()) {
            if (call.name == name)
                return call.thread;
        }
        return nullptr;
    }

    TestPanel panel;
    const QAbstractItemModelTester tester;
    std::optional<HostThread> thread;
};
