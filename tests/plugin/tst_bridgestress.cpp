#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/support/HostThread.h"
#include "tests/support/Seed.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QAbstractItemModelTester>
#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QSortFilterProxyModel>
#include <QTest>
#include <QTreeView>

#include <atomic>
#include <chrono>
#include <future>

namespace {
constexpr quint32 kGroups = 8;
constexpr quint32 kProcessors = 120;
constexpr quint32 kFirstGroup = 1000;

ProcessorNode randomProcessor(quint32 n, QRandomGenerator& random)
{
    const quint32 group = random() % 3 == 0 ? 0 : kFirstGroup + random() % kGroups;
    ProcessorNode processor = random() % 2 == 0
                                  ? testProcessor(n, group)
                                  : testIpProcessor(n, 0x0A000000 + random() % 50, group);
    processor.online = random() % 2 == 0;
    return processor;
}

/// A host at full rate: changes its project and raises the event that says so, without a pause.
class Hammer final
{
public:
    Hammer(TestPanel& panel, quint32 seedOfRun)
        : m_panel(panel)
        , m_random(seedOfRun)
    {
    }

    void raiseOne()
    {
        const quint32 n = 1 + m_random() % kProcessors;
        const quint32 group = kFirstGroup + m_random() % kGroups;
        m_panel.host().setProcessor(randomProcessor(n, m_random));
        switch (m_random() % 12) {
        case 0:
            m_panel.notify<QUuid>(17, testId(group));
            break;
        case 1:
        case 2:
        case 3:
            m_panel.notify<QUuid>(18, testId(n));
            break;
        case 4:
            m_panel.notify<QList<QUuid>>(19, {testId(n), testId(n % kProcessors + 1)});
            break;
        case 5:
            m_panel.notify<QUuid>(20, testId(m_random() % 8 == 0 ? group : n));
            break;
        case 6:
            m_panel.notify<QList<QUuid>>(21, {testId(n), testId(n % kProcessors + 1)});
            break;
        case 7:
            m_panel.notify<QUuid>(25, testId(n));
            break;
        case 8:
            m_panel.notify<QUuid, SPrjProcessor>(26, testId(n), SPrjProcessor());
            break;
        case 9:
        case 10:
            m_panel.notify<QList<QUuid>>(39,
                                         {testId(n), testId(n % kProcessors + 1), testId(group)});
            break;
        default:
            m_panel.notify(m_random() % 20 == 0 ? 16 : 30);
            break;
        }
    }

private:
    TestPanel& m_panel;
    QRandomGenerator m_random;
};

/// Reads what a view reads, and what code beside it does.
void readEverything(TestPanel& panel, QRandomGenerator& random)
{
    CProcessorTreeModel& model = panel.model();
    const QModelIndex root = model.index(0, 0);
    qint64 sum = 0;
    for (int row = 0; row < model.rowCount(root); ++row) {
        const QModelIndex child = model.index(row, 0, root);
        sum += child.data().toString().size();
        sum += child.data(NodeDataRole).value<ProcessorNode>().name.size();
    }
    if (const QStandardItem* item = model.getItem(testId(1 + random() % kProcessors)))
        sum += item->data(NodeDataRole).value<ProcessorNode>().number;
    QVERIFY(sum >= 0);
    panel.data().IsReadOnly();
    ProcessorTreeSnapshot snapshot;
    panel.area().GetProcessorTree(snapshot, random() % 8 == 0);
}

void moveSomething(TestPanel& panel, QRandomGenerator& random)
{
    QStandardItem* item = panel.model().getItem(testId(1 + random() % kProcessors));
    if (!item)
        return;
    const quint32 target = random() % 4 == 0 ? 0 : kFirstGroup + random() % kGroups;
    panel.model().moveProcessors({item->index()}, testId(target));
}

} // namespace

/// Events at full rate from one foreign thread, monitor states on the work thread, and a GUI thread
/// that reads, walks, moves and paints all the while.
class BridgeStressTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepGoingUnderFullLoad();
    void shouldTakeABurstOfAppends();
};

void BridgeStressTest::shouldKeepGoingUnderFullLoad()
{
    const quint32 seedOfRun = firstSeed();
    qInfo("TSA_SEED=%u", seedOfRun);
    const int events = qEnvironmentVariableIsSet("TSA_STRESS_EVENTS")
                           ? qEnvironmentVariableIntValue("TSA_STRESS_EVENTS")
                           : 6000;

    QWidget window;
    window.resize(220, 600);
    TestPanel panel;
    const QAbstractItemModelTester tester(&panel.model());
    QSortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setFilterRole(Qt::DisplayRole);
    proxy.setSourceModel(&panel.model());
    QTreeView filtered(&window);
    filtered.setModel(&proxy);
    filtered.setGeometry(0, 400, 220, 200);
    panel.area().setParent(&window);
    panel.area().setGeometry(0, 0, 220, 400);
    window.show();
    panel.area().show();
    QList<ProcessorGroupNode> groups;
    for (quint32 n = 0; n < kGroups; ++n)
        groups.append(testGroup(kFirstGroup + n));
    panel.host().setProject(groups, {});
    panel.host().currentProcessor = testId(3);
    panel.notify(16);

    HostThread host;
    std::atomic<int> raised{0};
    Hammer hammer(panel, seedOfRun);
    const auto done = host.post([&] {
        for (; raised < events; ++raised) {
            hammer.raiseOne();
            if (raised % 256 == 0)
                panel.host().clearCalls();
        }
    });

    QRandomGenerator random(seedOfRun + 1);
    int rounds = 0;
    QDeadlineTimer limit(std::chrono::minutes(5));
    while (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        QVERIFY2(!limit.hasExpired(),
                 qPrintable(QStringLiteral("locked up at event %1").arg(raised)));
        QCoreApplication::processEvents();
        readEverything(panel, random);
        if (++rounds % 4 == 0)
            moveSomething(panel, random);
        if (rounds % 16 == 0)
            window.grab();
        if (rounds % 64 == 0)
            filtered.expandAll();
    }
    QCOMPARE(raised.load(), events);

    // What is still queued takes effect; then tree, root text and look-ups agree.
    panel.notify<int>(0, 77);
    QTRY_COMPARE(panel.area().detectStrategy(), 77);
    panel.model().updateRootText();
    const int count = panel.model().getAllProcessorCount();
    QCOMPARE(panel.model().index(0, 0).data().toString(),
             QStringLiteral("All processors(%1)").arg(count));
    QCOMPARE(panel.model().getChildProcessor(panel.model().index(0, 0)).size(), count);
    for (const QUuid& id : panel.model().getChildProcessor(panel.model().index(0, 0)))
        QVERIFY(panel.model().getItem(id));
}

void BridgeStressTest::shouldTakeABurstOfAppends()
{
    constexpr quint32 kBurst = 3000;

    QWidget window;
    window.resize(220, 400);
    TestPanel panel;
    QSortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setSourceModel(&panel.model());
    QTreeView filtered(&window);
    filtered.setModel(&proxy);
    window.show();
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= kBurst; ++n)
        processors.append(testProcessor(n));
    panel.host().setProject({}, processors);

    HostThread host;
    const auto done = host.post([&] {
        for (quint32 n = 1; n <= kBurst; ++n) {
            panel.notify<QUuid>(18, testId(n));
            if (n % 4 == 0)
                panel.notify<QList<QUuid>>(39, {testId(n), testId(n / 2)});
        }
    });
    QTRY_VERIFY_WITH_TIMEOUT(done.wait_for(std::chrono::seconds(0)) == std::future_status::ready,
                             120000);
    QCOMPARE(panel.model().getAllProcessorCount(), static_cast<int>(kBurst));
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), static_cast<int>(kBurst));
}

TSA_TEST_MAIN(BridgeStressTest)
#include "tst_bridgestress.moc"
