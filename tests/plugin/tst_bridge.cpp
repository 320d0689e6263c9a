#include "plugin/TargetSelectData.h"
#include "processortree/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QTest>

class BridgeTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldFillTheTreeFromAForeignThread();
};

void BridgeTest::shouldFillTheTreeFromAForeignThread()
{
    const WarningTrap warnings;
    TestPanel panel;
    const QAbstractItemModelTester tester(&panel.model());
    HostThread host;
    panel.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});

    host.run([&] { panel.notify(16); });
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(2)[G100[1],2]"));
    host.run([&] { panel.notify<QUuid>(20, testId(1)); });
    QTRY_COMPARE(panel.dump(), QStringLiteral("All processors(1)[G100[],2]"));
    host.run([&] { panel.notify<QUuid>(18, testId(1)); });
    QCOMPARE(panel.dump(), QStringLiteral("All processors(2)[G100[1],2]"));
}

QTEST_MAIN(BridgeTest)
#include "tst_bridge.moc"
