#include "plugin/TargetSelectData.h"
#include "tests/plugin/Bridge.h"

#include <QComboBox>
#include <QLabel>
#include <QTreeView>

/// Events that the panel around the tree hears of.
class BridgeForwardingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Bridge::addThreads(); }

    void shouldForwardTheDetectionStrategy();
    void shouldForwardDeviceSets();
    void shouldForwardTheLanUsbAddress();
    void shouldForwardTheCurrentProcessor();
    void shouldAskAgainWhenTheUserPickedMeanwhile();
    void shouldIgnoreTheEchoOfASelection();
    void shouldRepaintForMonitorWarnings_data();
    void shouldRepaintForMonitorWarnings();
};

void BridgeForwardingTest::shouldForwardTheDetectionStrategy()
{
    Bridge bridge;
    bridge.notify<int>(0, 2);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 2);
    bridge.notify<int>(0, 1);
    bridge.notify<int>(0, 3);
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 3);
}

void BridgeForwardingTest::shouldForwardDeviceSets()
{
    Bridge bridge;
    auto* selector = bridge.panel.area().findChild<QComboBox*>();
    bridge.notify<GUID, QList<SDeviceSetInfo>>(1, deviceSet(2).id, {deviceSet(1), deviceSet(2)});
    QTRY_COMPARE(selector->count(), 2);
    QVERIFY(selector->isVisibleTo(&bridge.panel.area()));
    QCOMPARE(selector->currentText(), QStringLiteral("Set 2"));
}

void BridgeForwardingTest::shouldForwardTheLanUsbAddress()
{
    Bridge bridge;
    auto* label = bridge.panel.area().findChild<QLabel*>();
    bridge.panel.host().lanUsbMode = true;
    bridge.panel.host().lanUsbIps = {0xC0A80001, 0xC0A80002};
    bridge.notify(29);
    QTRY_COMPARE(label->text(), QStringLiteral("Processor1 IP: 192.168.0.1"));
    QVERIFY(label->isVisibleTo(&bridge.panel.area()));
}

void BridgeForwardingTest::shouldForwardTheCurrentProcessor()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
    bridge.panel.host().currentProcessor = testId(2);
    bridge.panel.host().clearCalls();

    bridge.notify(30);

    QTRY_COMPARE(
        bridge.panel.area().findChild<QTreeView*>()->currentIndex().data(UuidRole).toUuid(),
        testId(2));
    QCOMPARE(bridge.askedOn(QStringLiteral("GetCurrentProcessorId")), bridge.updateThread());
}

void BridgeForwardingTest::shouldAskAgainWhenTheUserPickedMeanwhile()
{
    Bridge bridge;
    FakeHandler& host = bridge.panel.host();
    host.setProject({}, {testProcessor(1), testProcessor(2)});
    bridge.notify(16);
    QTRY_COMPARE(bridge.panel.dump(), QStringLiteral("All processors(2)[1,2]"));
    host.currentProcessor = testId(1);
    host.clearCalls();
    // The user's choice is reported while the host still answers with the one before.
    int asked = 0;
    host.inside = [&](const QString& name) {
        if (name != QLatin1String("GetCurrentProcessorId"))
            return;
        if (++asked == 1) {
            bridge.panel.data().SetSelectionEchoGuard(true);
            bridge.panel.data().SetSelectionEchoGuard(false);
        } else {
            host.currentProcessor = testId(2);
        }
    };

    bridge.notify(30);

    QTRY_COMPARE(
        bridge.panel.area().findChild<QTreeView*>()->currentIndex().data(UuidRole).toUuid(),
        testId(2));
    host.inside = nullptr;
    QCOMPARE(host.callCount(QStringLiteral("GetCurrentProcessorId")), 2);
}

void BridgeForwardingTest::shouldIgnoreTheEchoOfASelection()
{
    Bridge bridge;
    bridge.panel.host().setProject({}, {testProcessor(1)});
    bridge.notify(16);
    bridge.panel.host().currentProcessor = testId(1);
    bridge.panel.host().clearCalls();
    bridge.panel.data().SetSelectionEchoGuard(true);
    bridge.notify(30);
    bridge.notify<int>(0, 9);
    // Jobs run in order: once the later event has arrived, the earlier one would have.
    QTRY_COMPARE(bridge.panel.area().detectStrategy(), 9);
    QVERIFY(!bridge.panel.host().callNames().contains(QStringLiteral("GetCurrentProcessorId")));
    QVERIFY(!bridge.panel.area().findChild<QTreeView*>()->currentIndex().isValid());

    bridge.panel.data().SetSelectionEchoGuard(false);
    bridge.notify(30);
    QTRY_VERIFY(bridge.panel.area().findChild<QTreeView*>()->currentIndex().isValid());
}

void BridgeForwardingTest::shouldRepaintForMonitorWarnings_data()
{
    QTest::addColumn<quint32>("event");
    QTest::newRow("monitor warnings") << 37U;
    // No row is listed, so nothing but the repaint that follows can be seen.
    QTest::newRow("monitor states") << 39U;
}

void BridgeForwardingTest::shouldRepaintForMonitorWarnings()
{
    QFETCH(quint32, event);
    class PaintCounter final : public QObject
    {
    public:
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };

    Bridge bridge;
    PaintCounter counter;
    QWidget window;
    window.resize(220, 400);
    bridge.panel.area().setParent(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* viewport = bridge.panel.area().findChild<QTreeView*>()->viewport();
    viewport->installEventFilter(&counter);
    QCoreApplication::processEvents();
    const int before = counter.paints;

    if (event == 37)
        bridge.notify(event);
    else
        bridge.notify<QList<QUuid>>(event, {});

    QTRY_VERIFY(counter.paints > before);
}

TSA_TEST_MAIN(BridgeForwardingTest)

#include "tst_bridgeforwarding.moc"
