#include "host/widgets/PureImageBtn.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/DialogDriver.h"

#include <QSignalSpy>

namespace {
/// What a host can see of a lock.
struct Locks
{
    explicit Locks(ShownPanel& shown)
        : add(shown.area().findChild<CPureImageBtn*>()->isEnabled())
        , ipManagement(shown.ipManagement()->isEnabled())
        , selector(shown.selector()->isEnabled())
        , view(shown.view()->isLocked())
    {
    }

    bool add;
    bool ipManagement;
    bool selector;
    bool view;
};

} // namespace

/// What the host does to the panel through its layer interface.
class LayerOperationsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldHandOutItsWidget();
    void shouldInitialiseInOrder();
    void shouldInitialiseAnew();
    void shouldReconnectOnly();
    void shouldAlwaysSayThatItWorked();
    void shouldStandItsEndWhileItIsInitialised_data();
    void shouldStandItsEndWhileItIsInitialised();
    void shouldPassTheDetectionResultOn();
    void shouldHandOutTheTree();
    void shouldLeaveOutWhatTheHostRefuses();
    void shouldOfferNoAdditionWhileReadOnly();
    void shouldSelectAndReportOnTheHostsBehalf();
    void shouldNotSelectWhatItDoesNotHave();
    void shouldLockAtOnce();
    void shouldApplyALock_data();
    void shouldApplyALock();
    void shouldKeepALockedButtonFromTheUser();
    void shouldStayReadOnlyWhenUnlocked();
    void shouldRemoveAllGroupsWithTheirProcessors();
    void shouldRepaintTheTreeForWarnings();
    void shouldHandOutTheHostsProcessors();
};

void LayerOperationsTest::shouldHandOutItsWidget()
{
    ShownPanel shown;
    QCOMPARE(shown.area().GetWidget(), &shown.area());
}

void LayerOperationsTest::shouldInitialiseInOrder()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    shown.panel.notify(16);
    shown.host().observer = nullptr;
    shown.host().clearCalls();
    QStringList steps;
    QSignalSpy resets(&shown.panel.model(), &QAbstractItemModel::modelReset);
    shown.host().inside = [&](const QString& name) {
        steps.append(name + QLatin1Char(' ') + QString::number(resets.count()));
    };
    QVERIFY(shown.area().Initialize());
    // The observer before the reset, the question behind it.
    QCOMPARE(steps, QStringList({QStringLiteral("SetObserver 0"),
                                 QStringLiteral("IsIpManagementAvailable 1")}));
    QCOMPARE(shown.host().observer, static_cast<CObserver*>(CTargetSelectData::Instance()));
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(0)[]"));
}

void LayerOperationsTest::shouldInitialiseAnew()
{
    ShownPanel shown;
    for (const bool available : {true, false, true}) {
        shown.host().ipManagementAvailable = available;
        QVERIFY(shown.area().Initialize());
        QCOMPARE(shown.ipManagement()->isVisible(), available);
        shown.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
        shown.panel.notify(16);
        QVERIFY(shown.view()->isExpanded(shown.panel.model().index(0, 0)));
        QVERIFY(shown.view()->isExpanded(shown.panel.model().getItem(testId(100))->index()));
    }
}

void LayerOperationsTest::shouldReconnectOnly()
{
    ShownPanel shown;
    shown.host().setProject({}, {testProcessor(1)});
    shown.panel.notify(16);
    auto next = std::make_shared<FakeHandler>();
    shown.area().m_controlHandler = next;
    QVERIFY(shown.area().Reconnect());
    QCOMPARE(next->callNames(), QStringList({QStringLiteral("SetObserver")}));
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void LayerOperationsTest::shouldAlwaysSayThatItWorked()
{
    ShownPanel shown;
    shown.area().m_controlHandler.reset();
    QVERIFY(shown.area().Initialize());
    QVERIFY(shown.area().Reconnect());
    QVERIFY(!shown.ipManagement()->isVisible());
}

void LayerOperationsTest::shouldStandItsEndWhileItIsInitialised_data()
{
    QTest::addColumn<QString>("question");
    QTest::newRow("SetObserver") << QStringLiteral("SetObserver");
    QTest::newRow("IsIpManagementAvailable") << QStringLiteral("IsIpManagementAvailable");
}

void LayerOperationsTest::shouldStandItsEndWhileItIsInitialised()
{
    QFETCH(QString, question);
    ShownPanel shown;
    shown.host().inside = [&](const QString& name) {
        if (name == question)
            delete CTargetSelectArea::Existing();
    };
    QVERIFY(shown.area().Initialize());
    QVERIFY(!CTargetSelectArea::Existing());
}

void LayerOperationsTest::shouldPassTheDetectionResultOn()
{
    ShownPanel shown;
    for (const quint32 result : {0U, 0xE0832001U, 0xFFFFFFFFU}) {
        shown.host().detectResult = result;
        QCOMPARE(shown.area().DetectDevices(), result);
    }
    QCOMPARE(shown.host().callCount(QStringLiteral("DetectAllDevices")), 3);
    QCOMPARE(shown.host().calls().size(), 3);
}

void LayerOperationsTest::shouldHandOutTheTree()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100), testGroup(101)},
                            {testProcessor(1, 100), testProcessor(2), testProcessor(3, 100)});
    shown.panel.notify(16);
    shown.host().clearCalls();
    ProcessorTreeSnapshot tree;
    tree.processors.append(testProcessor(9)); // what was in it is gone afterwards
    shown.area().GetProcessorTree(tree, false);
    QCOMPARE(tree.groups.size(), 2);
    QCOMPARE(tree.groups.at(0).processors.size(), 2);
    QCOMPARE(tree.groups.at(0).processors.at(1).id, testId(3));
    QCOMPARE(tree.groups.at(1).processors.size(), 0);
    QCOMPARE(tree.processors.size(), 1);
    QCOMPARE(shown.host().callNames(), QStringList());
}

void LayerOperationsTest::shouldLeaveOutWhatTheHostRefuses()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    shown.host().acceptProcessor = [](const ProcessorNode& node) { return node.id == testId(2); };
    ProcessorTreeSnapshot tree;
    shown.area().GetProcessorTree(tree, true);
    QCOMPARE(tree.groups.size(), 1);
    QCOMPARE(tree.groups.at(0).processors.size(), 0);
    QCOMPARE(tree.processors.size(), 1);
}

void LayerOperationsTest::shouldOfferNoAdditionWhileReadOnly()
{
    ShownPanel shown;
    QVERIFY(Locks(shown).add);
    shown.area().SetReadOnly(true);
    QVERIFY(shown.panel.data().IsReadOnly());
    QVERIFY(!Locks(shown).add);
    // The rest stays as it is.
    QVERIFY(Locks(shown).ipManagement);
    QVERIFY(Locks(shown).selector);
    QVERIFY(!Locks(shown).view);
    shown.area().SetReadOnly(false);
    QVERIFY(!shown.panel.data().IsReadOnly());
    QVERIFY(Locks(shown).add);
}

void LayerOperationsTest::shouldSelectAndReportOnTheHostsBehalf()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    shown.view()->collapseAll();
    shown.area().SetCurrentProcessor(testId(2));
    shown.area().SetCurrentProcessor(testId(1));
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(1));
    QCOMPARE(shown.view()->selectionModel()->selectedIndexes().size(), 1);
    QVERIFY(shown.view()->isExpanded(shown.panel.model().getItem(testId(100))->index()));
    QCOMPARE(shown.host().selections.size(), 2);
    QCOMPARE(shown.host().selections.last().focus, testId(1));
    QCOMPARE(shown.host().selections.last().processors, QList<QUuid>({testId(1)}));
    QCOMPARE(shown.host().selections.last().previous, testId(2));
}

void LayerOperationsTest::shouldNotSelectWhatItDoesNotHave()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    shown.area().SetCurrentProcessor(testId(2));
    const QModelIndex group = shown.panel.model().getItem(testId(100))->index();
    shown.view()->collapse(group);
    shown.host().clearCalls();
    for (const quint32 id : {77U, 0U, 2U})
        shown.area().SetCurrentProcessor(testId(id));
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(2));
    QVERIFY(!shown.view()->isExpanded(group));
    QCOMPARE(shown.host().callCount(QStringLiteral("ReportSelection")), 0);
}

void LayerOperationsTest::shouldLockAtOnce()
{
    ShownPanel shown;
    shown.area().SetOperationLock(7, true);
    Locks now(shown);
    QVERIFY(!now.add && !now.ipManagement && !now.selector && now.view);
    shown.area().SetOperationLock(8, false);
    now = Locks(shown);
    QVERIFY(now.add && now.ipManagement && now.selector && !now.view);
    // The other key keeps what it was told; the tree alone follows it.
    shown.area().ApplyOperationLock(7);
    now = Locks(shown);
    QVERIFY(!now.add && now.ipManagement && now.selector && now.view);
}

void LayerOperationsTest::shouldApplyALock_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<bool>("addEnabled");
    QTest::newRow("a locked key") << 1 << false << true << false;
    QTest::newRow("an unlocked key") << 2 << false << false << true;
    QTest::newRow("a key never set") << 3 << false << false << true;
    QTest::newRow("a negative key never set") << -1 << false << false << true;
    QTest::newRow("a locked key, read-only") << 1 << true << true << false;
    QTest::newRow("an unlocked key, read-only") << 2 << true << false << false;
    QTest::newRow("a key never set, read-only") << 3 << true << false << false;
}

void LayerOperationsTest::shouldApplyALock()
{
    QFETCH(int, key);
    QFETCH(bool, readOnly);
    QFETCH(bool, locked);
    QFETCH(bool, addEnabled);
    ShownPanel shown;
    for (const bool lockLast : {true, false}) {
        shown.area().SetReadOnly(readOnly);
        shown.area().SetOperationLock(lockLast ? 2 : 1, !lockLast);
        shown.area().SetOperationLock(lockLast ? 1 : 2, lockLast);
        shown.area().ApplyOperationLock(key);
        QCOMPARE(Locks(shown).view, locked);
        QCOMPARE(Locks(shown).add, addEnabled);
    }
    shown.area().SetReadOnly(false);
}

void LayerOperationsTest::shouldKeepALockedButtonFromTheUser()
{
    ShownPanel shown;
    shown.area().onDetectStrategyChanged(2);
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.host().clearCalls();
    shown.area().SetOperationLock(1, true);
    const DialogDriver nobodyOpensADialog;
    QTest::mouseClick(shown.ipManagement(), Qt::LeftButton);
    QTest::mouseClick(shown.selector(), Qt::LeftButton);
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.selector()->currentIndex(), 0);
    QCOMPARE(shown.host().callNames(), QStringList());
    // New device sets and another strategy do not unlock them.
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(3));
    shown.area().onDetectStrategyChanged(0);
    shown.area().onDetectStrategyChanged(2);
    QVERIFY(!Locks(shown).selector);
    QVERIFY(!Locks(shown).ipManagement);
    // Detecting devices is not one of the locked operations.
    QTest::mouseClick(shown.detection(), Qt::LeftButton);
    QCOMPARE(shown.host().callCount(QStringLiteral("DetectAllDevices")), 1);
}

void LayerOperationsTest::shouldStayReadOnlyWhenUnlocked()
{
    ShownPanel shown;
    shown.area().SetReadOnly(true);
    shown.area().SetOperationLock(1, true);
    shown.area().SetOperationLock(1, false);
    QVERIFY(!Locks(shown).add);
    QVERIFY(!Locks(shown).view);
    shown.area().SetReadOnly(false);
    QVERIFY(Locks(shown).add);
}

void LayerOperationsTest::shouldRemoveAllGroupsWithTheirProcessors()
{
    ShownPanel shown;
    shown.host().setProject(
        {testGroup(100), testGroup(101), testGroup(102)},
        {testProcessor(1, 100), testProcessor(2), testProcessor(3, 102), testProcessor(4)});
    shown.panel.notify(16);
    shown.area().RemoveAllGroups();
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(2)[2,4]"));
    shown.area().RemoveAllGroups();
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(2)[2,4]"));
}

void LayerOperationsTest::shouldRepaintTheTreeForWarnings()
{
    class Paints final : public QObject
    {
    public:
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                ++count;
            return QObject::eventFilter(watched, event);
        }
        int count = 0;
    };

    ShownPanel shown;
    QVERIFY(QTest::qWaitForWindowExposed(&shown.window));
    QCoreApplication::processEvents();
    Paints paints;
    shown.view()->viewport()->installEventFilter(&paints);
    shown.area().UpdateMonitorWarningState();
    QTRY_COMPARE(paints.count, 1);
    shown.panel.notify(37);
    QTRY_COMPARE(paints.count, 2);
}

void LayerOperationsTest::shouldHandOutTheHostsProcessors()
{
    ShownPanel shown;
    shown.host().setProject({}, {testProcessor(3), testProcessor(1), testProcessor(2)});
    const QList<ProcessorNode> all = shown.area().GetAllProcessorNodes();
    QCOMPARE(all.size(), 3);
    QCOMPARE(all.at(0).id, testId(3));
    QCOMPARE(all.at(2).id, testId(2));
    shown.area().m_controlHandler.reset();
    QVERIFY(shown.area().GetAllProcessorNodes().isEmpty());
}

TSA_TEST_MAIN(LayerOperationsTest)
#include "tst_layeroperations.moc"
