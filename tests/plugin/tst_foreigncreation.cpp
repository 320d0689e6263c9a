#include "base/GuiCalls.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <thread>

/// In a process of its own: nothing here has touched the bridge or the panel yet.
class ForeignCreationTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldCreateTheBridgeOnceOnTheGuiThread();
    void shouldBuildNoPanelOnAnotherThread();
};

void ForeignCreationTest::shouldCreateTheBridgeOnceOnTheGuiThread()
{
    HostThread one;
    HostThread two;
    std::atomic<int> ready{0};
    CTargetSelectData* found[2] = {};
    const auto race = [&](int which) {
        ++ready;
        while (ready < 2)
            std::this_thread::yield();
        found[which] = CTargetSelectData::Instance();
    };
    auto first = one.post([&] { race(0); });
    auto second = two.post([&] { race(1); });
    first.wait();
    second.wait();
    QVERIFY(found[0]);
    QCOMPARE(found[0], found[1]);
    QCOMPARE(CTargetSelectData::Instance(), found[0]);
    QCOMPARE(found[0]->thread(), QThread::currentThread());
    QCOMPARE(found[0]->GetModel()->thread(), QThread::currentThread());
    QCOMPARE(found[0]->guiCalls().thread(), QThread::currentThread());
}

void ForeignCreationTest::shouldBuildNoPanelOnAnotherThread()
{
    HostThread thread;
    CTargetSelectArea* built = nullptr;
    QVERIFY(thread.run([&] { built = CTargetSelectArea::Instance(); }));
    QVERIFY(!built);

    TestPanel panel;
    panel.host().setProject({}, {testProcessor(1)});
    QVERIFY(thread.run([&] {
        built = CTargetSelectArea::Instance();
        panel.notify<QUuid>(18, testId(1));
    }));
    QCOMPARE(built, &panel.area());
    QCOMPARE(panel.dump(), QStringLiteral("All processors(1)[1]"));
}

TSA_TEST_MAIN(ForeignCreationTest)
#include "tst_foreigncreation.moc"
