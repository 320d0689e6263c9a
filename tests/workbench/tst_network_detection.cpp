#include "tests/workbench/NetworkUnderTest.h"

#include <QDialog>
#include <QHash>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>

#include <functional>

namespace {

constexpr quint32 kCancelled = 0xE0830001;
constexpr int kSilenceMs = 500; ///< Far more than an answer takes in a slow build.

/// Calls `act` from the event loop of the next detection, when it has found all processors.
void duringDetection(NetworkUnderTest& test, int count, const std::function<void()>& act)
{
    auto* once = new QObject(&test.workbench.window);
    QObject::connect(&test.workbench.store(), &ProjectStore::changed, once,
                     [&test, count, once, act] {
                         if (test.onlineCount() < count)
                             return;
                         test.workbench.store().disconnect(once);
                         once->deleteLater();
                         QTimer::singleShot(0, qApp, act);
                     });
}

} // namespace

/// The window and the panel before the built simulator.
class NetworkDetectionTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldFindAll_data();
    void shouldFindAll();
    void shouldAskOnlyTheIpList();
    void shouldFindNobodyWithoutASimulator();
    void shouldBeCancelledByTheUser_data();
    void shouldBeCancelledByTheUser();
    void shouldTakeNoOtherInput();
    void shouldEndWithWhatItWorksOn_data();
    void shouldEndWithWhatItWorksOn();
    void shouldTakeASilentProcessorOffline_data();
    void shouldTakeASilentProcessorOffline();
    void shouldKeepToTheProcessorsAfterUndo();
    void shouldFindOneAgainThatMissedADetection();
    void shouldUndoADetectionAtOnce();
    void shouldPassLightAndNameBothWays();
    void shouldKeepStrangersOut_data();
    void shouldKeepStrangersOut();
    void shouldGiveUpAStrangerOnTheConnection_data();
    void shouldGiveUpAStrangerOnTheConnection();
    void shouldCheckTheFieldsOfTheDialog();

private:
    const TestSettings m_settings;
};

void NetworkDetectionTest::shouldFindAll_data()
{
    QTest::addColumn<int>("strategy");
    QTest::addColumn<Notifier::Delivery>("delivery");
    using Delivery = Notifier::Delivery;
    QTest::newRow("by broadcast") << 0 << Delivery::NotifyingThread;
    QTest::newRow("by the IP list") << kDetectByAddress << Delivery::NotifyingThread;
    QTest::newRow("by broadcast, events on the GUI thread") << 0 << Delivery::GuiThread;
    QTest::newRow("by the IP list, events on the GUI thread")
        << kDetectByAddress << Delivery::GuiThread;
}

void NetworkDetectionTest::shouldFindAll()
{
    QFETCH(int, strategy);
    QFETCH(Notifier::Delivery, delivery);
    NetworkUnderTest test(50, strategy);
    test.workbench.session.notifier().setDelivery(delivery);
    const auto* bar = test.workbench.window.statusBar()->findChild<QProgressBar*>();
    int steps = 0;
    connect(&test.workbench.session, &Session::detectionProceeded, bar, [&](int done, int total) {
        steps += bar->isVisible() && bar->value() == done && done < total ? 1 : 0;
    });
    const int deviceSets = test.logged(QStringLiteral("1 CurrentDeviceSetChanged("));
    QCOMPARE(test.detect(), 7U);
    QVERIFY(steps > 0);
    QVERIFY(!bar->isVisible());
    QCOMPARE(test.message(), QStringLiteral("Processors found: 50"));
    QCOMPARE(test.project().processors.size(), 50);
    for (quint32 at = 0; at < 50; ++at) {
        const ProcessorNode node = test.at(kFirst + at);
        QCOMPARE(node.name, QStringLiteral("Device %1").arg(at + 1));
        QCOMPARE(node.redundancyMode, at % 2 == 0 ? 1 : 2);
        QVERIFY(node.online && node.reachedByIp);
    }
    test.workbench.waitForPanel();
    QVERIFY(test.workbench.panelTree().contains(QStringLiteral("Device 50")));
    QCOMPARE(test.logged(QStringLiteral("1 CurrentDeviceSetChanged(")), deviceSets + 1);
    const auto events = [&] {
        return test.logged(QStringLiteral("18 ProcessorAdded("))
               + test.logged(QStringLiteral("19 ProcessorsAdded("))
               + test.logged(QStringLiteral("39 MonitorStateChanged("));
    };
    const int before = events();
    QVERIFY(before > 0);

    // They are known now, and nothing has changed.
    test.workbench.handler()->DetectProcessorsOnly();
    QCOMPARE(test.message(), QStringLiteral("Processors found: 50"));
    test.workbench.waitForPanel();
    QCOMPARE(events(), before);
}

void NetworkDetectionTest::shouldAskOnlyTheIpList()
{
    NetworkUnderTest test(4, kDetectByAddress);
    test.workbench.store().changeIpList([](IpList& list) {
        list.remove(kFirst + 3);
        list.append({0xC0A80001, QStringLiteral("elsewhere")});
        return true;
    });
    test.detect();
    QCOMPARE(test.message(), QStringLiteral("Processors found: 3"));
    QVERIFY(test.at(kFirst + 3).id.isNull());
    QVERIFY(test.at(0xC0A80001).id.isNull());
    QCOMPARE(test.logged(QStringLiteral("1 addresses outside 127.0.0.0/8 are not asked")), 1);
}

void NetworkDetectionTest::shouldFindNobodyWithoutASimulator()
{
    NetworkUnderTest test(2);
    test.detect();
    QCOMPARE(test.onlineCount(), 2);
    test.simulator.kill();
    QCOMPARE(test.detect(), 7U);
    QCOMPARE(test.message(), QStringLiteral("Processors found: 0"));
    QCOMPARE(test.onlineCount(), 0);
    QCOMPARE(test.project().processors.size(), 2);
}

void NetworkDetectionTest::shouldBeCancelledByTheUser_data()
{
    QTest::addColumn<QString>("by");
    QTest::newRow("Escape") << QStringLiteral("Escape");
    QTest::newRow("button") << QStringLiteral("button");
    QTest::newRow("closing") << QStringLiteral("closing");
}

void NetworkDetectionTest::shouldBeCancelledByTheUser()
{
    QFETCH(QString, by);
    NetworkUnderTest test(5);
    test.setNetwork(&NetworkSettings::probeTimeoutMs, kLongMs);
    auto* button = test.workbench.window.statusBar()->findChild<QPushButton*>();
    const QShortcut escape(QKeySequence(Qt::Key_Escape), &test.workbench.window);
    duringDetection(test, 5, [&] {
        QWindow* window = test.workbench.window.windowHandle();
        QCoreApplication::sendPostedEvents();
        if (by == QLatin1String("Escape"))
            // A shortcut of somebody else's does not take it away.
            QTest::keyClick(window, Qt::Key_Escape);
        else if (by == QLatin1String("button"))
            QTest::mouseClick(window, Qt::LeftButton, {},
                              button->mapTo(&test.workbench.window, button->rect().center()));
        else
            window->close();
    });
    QCOMPARE(test.detect(), kCancelled);
    QCOMPARE(test.message(), QStringLiteral("Detection cancelled; processors found: 5"));
    QVERIFY(!button->isVisible());
    QVERIFY(test.workbench.window.isVisible());
    // What was found before is kept and watched.
    QCOMPARE(test.onlineCount(), 5);
    test.simulator.command(QStringLiteral("light 1 on"));
    QTRY_VERIFY(test.isLit(kFirst));
    // The next one is none the worse for it.
    test.setNetwork(&NetworkSettings::probeTimeoutMs, kShortMs);
    QCOMPARE(test.detect(), 7U);
}

void NetworkDetectionTest::shouldTakeNoOtherInput()
{
    NetworkUnderTest test(5);
    auto* bar = test.workbench.window.menuBar();
    bool isMenuOpen = false;
    duringDetection(test, 5, [&] {
        QWindow* window = test.workbench.window.windowHandle();
        QTest::keyClick(window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::mouseClick(window, Qt::LeftButton, {},
                          bar->mapTo(&test.workbench.window, QPoint(10, 10)));
        QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(10, 10));
        isMenuOpen = QApplication::activePopupWidget() != nullptr;
    });
    QCOMPARE(test.detect(), 7U);
    QVERIFY(!isMenuOpen);
    QCOMPARE(test.project().processors.size(), 5);
    // Afterwards everything works again.
    QTest::keyClick(test.workbench.window.windowHandle(), Qt::Key_P,
                    Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(test.project().processors.size(), 6);
}

void NetworkDetectionTest::shouldEndWithWhatItWorksOn_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("panel") << QStringLiteral("panel");
    QTest::newRow("project") << QStringLiteral("project");
    QTest::newRow("network") << QStringLiteral("network");
}

void NetworkDetectionTest::shouldEndWithWhatItWorksOn()
{
    QFETCH(QString, what);
    NetworkUnderTest test(5);
    test.setNetwork(&NetworkSettings::probeTimeoutMs, kLongMs);
    const auto handler = test.workbench.handler();
    duringDetection(test, 5, [&] {
        if (what == QLatin1String("panel"))
            test.workbench.action(ActionId::ClosePanel)->trigger();
        else if (what == QLatin1String("project"))
            test.workbench.store().replace(smallProject());
        else
            test.workbench.store().setNetwork({});
    });
    QCOMPARE(handler->DetectAllDevices(), kCancelled);
    if (what != QLatin1String("project"))
        return;
    // The processors of the former project do not get into this one.
    test.simulator.command(QStringLiteral("light 1 on"));
    test.simulator.command(QStringLiteral("kill 2"));
    QCOMPARE(test.project().processors.size(), 4);
    QVERIFY(test.project().litFrontPanels.isEmpty());
    test.workbench.waitForPanel();
}

void NetworkDetectionTest::shouldTakeASilentProcessorOffline_data()
{
    QTest::addColumn<QString>("end");
    QTest::newRow("dead") << QStringLiteral("kill 2");
    QTest::newRow("hanging") << QStringLiteral("mute 2");
}

void NetworkDetectionTest::shouldTakeASilentProcessorOffline()
{
    QFETCH(QString, end);
    NetworkUnderTest test(3);
    test.setNetwork(&NetworkSettings::deadTimeoutMs, kSilenceMs);
    test.detect();
    test.workbench.waitForPanel();
    const int before = test.logged(QStringLiteral("25 ProcessorChanged("));
    QVERIFY(test.simulator.command(end).startsWith(QStringLiteral("ok")));
    QTRY_VERIFY(!test.at(kFirst + 1).online);
    QTRY_COMPARE(test.onlineCount(), 2);
    QTRY_VERIFY(test.logged(QStringLiteral("25 ProcessorChanged(")) > before);
    QVERIFY(test.logged(QStringLiteral("127.0.1.2 has not been heard of for 500 ms")) > 0);

    QVERIFY(test.simulator.command(QStringLiteral("start 2")).startsWith(QStringLiteral("ok")));
    QTRY_VERIFY(test.at(kFirst + 1).online);
    QTRY_VERIFY(test.logged(QStringLiteral("25 ProcessorChanged(")) > before + 1);
    QVERIFY(test.logged(QStringLiteral("127.0.1.2 is back")) > 0);

    // One that says so itself is offline at once, and back at once.
    test.simulator.command(QStringLiteral("online 3 off"));
    QTRY_VERIFY(!test.at(kFirst + 2).online);
    test.simulator.command(QStringLiteral("online 3 on"));
    QTRY_VERIFY(test.at(kFirst + 2).online);
    test.workbench.waitForPanel();
}

void NetworkDetectionTest::shouldKeepToTheProcessorsAfterUndo()
{
    NetworkUnderTest test(3);
    test.setNetwork(&NetworkSettings::deadTimeoutMs, kSilenceMs);
    test.detect();
    test.workbench.waitForPanel();
    History& history = test.workbench.session.history();

    // What has died is not brought back by undo.
    QVERIFY(test.workbench.store().renameProcessor(test.at(kFirst).id, QStringLiteral("Other")));
    QTRY_VERIFY(history.canUndo());
    test.simulator.command(QStringLiteral("kill 2"));
    QTRY_VERIFY(!test.at(kFirst + 1).online);
    history.undo();
    QTRY_COMPARE(test.at(kFirst).name, QStringLiteral("Device 1"));
    QTRY_VERIFY(!test.at(kFirst + 1).online);

    // What is removed and back is watched as before.
    test.workbench.store().removeProcessors({test.at(kFirst + 2).id});
    QVERIFY(test.at(kFirst + 2).id.isNull());
    QTRY_VERIFY(history.canUndo());
    history.undo();
    QTRY_VERIFY(test.at(kFirst + 2).online);
    test.simulator.command(QStringLiteral("kill 3"));
    QTRY_VERIFY(!test.at(kFirst + 2).online);
    QCOMPARE(test.onlineCount(), 1);
}

void NetworkDetectionTest::shouldFindOneAgainThatMissedADetection()
{
    NetworkUnderTest test(2, kDetectByAddress);
    test.detect();
    QCOMPARE(test.onlineCount(), 2);
    // Its connection lives, and it does not answer this time.
    test.setNetwork(&NetworkSettings::deadTimeoutMs, 20000);
    test.simulator.pause();
    test.detect();
    QCOMPARE(test.onlineCount(), 0);
    test.simulator.goOn();
    QTRY_COMPARE(test.onlineCount(), 2);
}

void NetworkDetectionTest::shouldUndoADetectionAtOnce()
{
    NetworkUnderTest test(3);
    QCOMPARE(test.project().processors.size(), 0);
    test.simulator.command(QStringLiteral("mute 2"));
    duringDetection(test, 2, [&] { test.simulator.command(QStringLiteral("start 2")); });
    test.detect();
    QVERIFY(test.project().processors.size() >= 2);
    History& history = test.workbench.session.history();
    QTRY_VERIFY(history.canUndo());
    history.undo();
    QTRY_COMPARE(test.project().processors.size(), 0);
}

void NetworkDetectionTest::shouldPassLightAndNameBothWays()
{
    NetworkUnderTest test(3);
    test.detect();
    const QUuid id = test.at(kFirst + 1).id;
    const auto handler = test.workbench.handler();
    QVERIFY(!handler->IsFrontPanelHighlighted(id));
    handler->SetFrontPanelHighlight(true);
    QTRY_VERIFY(test.simulator.lines().join(QString()).contains(QStringLiteral(" lit Device 2")));
    QVERIFY(test.simulator.waitForLine(QStringLiteral("changed 127.0.1.2"))
                .contains(QStringLiteral(" lit ")));

    test.simulator.command(QStringLiteral("light 2 off"));
    QTRY_VERIFY(!test.isLit(kFirst + 1));
    test.simulator.command(QStringLiteral("light 3 on"));
    QTRY_VERIFY(test.isLit(kFirst + 2));

    QVERIFY(handler->RenameProcessor(id, QStringLiteral("Stage left")));
    QTRY_VERIFY(test.simulator.lines().join(QString()).contains(QStringLiteral("Stage left")));
    test.simulator.command(QStringLiteral("name 2 Stage right"));
    QTRY_COMPARE(test.at(kFirst + 1).name, QStringLiteral("Stage right"));
    test.simulator.command(QStringLiteral("outputs 2 33"));
    QTRY_COMPARE(test.at(kFirst + 1).hostAttribute11, 33);
    test.workbench.waitForPanel();
    QTRY_VERIFY(test.workbench.panelTree().contains(QStringLiteral("Stage right")));
    // Nothing came back to a processor that reported it.
    QVERIFY(!test.simulator.lines().join(QString()).contains(QStringLiteral("Stage right")));
}

void NetworkDetectionTest::shouldKeepStrangersOut_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"wrong token", "malformed", "oversize", "other port", "flood"})
        QTest::newRow(kind) << QString::fromUtf8(kind);
}

void NetworkDetectionTest::shouldKeepStrangersOut()
{
    QFETCH(QString, kind);
    NetworkUnderTest test(3, kDetectByAddress);
    test.workbench.store().changeIpList([](IpList& list) {
        return list.append({kStranger, QString()}) == IpRefusal::None;
    });
    Stranger stranger(kStranger, test.simulator.port());
    stranger.usesOtherPort = kind == QLatin1String("other port");
    stranger.byDatagram = [&](quint32 token) -> QByteArrayList {
        const QByteArray right = encode(StateMessage{token, named("Stranger")});
        if (kind == QLatin1String("wrong token"))
            return {encode(StateMessage{0, named("Stranger")}),
                    encode(StateMessage{token + 1, named("Stranger")})};
        if (kind == QLatin1String("malformed"))
            return {right.left(right.size() - 1), "[]", QByteArray("\0\xFF", 2), right + '}'};
        if (kind == QLatin1String("oversize"))
            return {right + QByteArray(kMaxMessageBytes, ' '), QByteArray(60000, 'x')};
        QByteArrayList answers{right};
        for (int count = 0; kind == QLatin1String("flood") && count < 500; ++count)
            answers.prepend("{}");
        return answers;
    };
    test.detect();
    QVERIFY(stranger.probes > 0);
    // A flood may push out the one true answer, and nothing else.
    QVERIFY(kind == QLatin1String("flood") || test.at(kStranger).id.isNull());
    QCOMPARE(test.onlineCount(), test.project().processors.size());
    for (quint32 at = 0; at < 3; ++at)
        QVERIFY(test.at(kFirst + at).online);
    QVERIFY(test.logged(QStringLiteral("they are no answers of processors that were asked")) > 0);
}

void NetworkDetectionTest::shouldGiveUpAStrangerOnTheConnection_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("silence") << QByteArray();
    QTest::newRow("no line end") << QByteArray(100000, 'x');
    QTest::newRow("malformed, and of a workbench")
        << "{}\nnonsense\n\n" + encode(LightMessage{true}) + '\n';
}

void NetworkDetectionTest::shouldGiveUpAStrangerOnTheConnection()
{
    QFETCH(QByteArray, answer);
    NetworkUnderTest test(2);
    test.workbench.store().addProcessors(QUuid(), QList<quint32>{kStranger});
    Stranger stranger(kStranger, test.simulator.port());
    stranger.byDatagram = [](quint32 token) {
        return QByteArrayList{encode(StateMessage{token, named("Stranger")})};
    };
    stranger.overConnection = answer;
    test.setNetwork(&NetworkSettings::deadTimeoutMs, kSilenceMs);
    test.detect();
    QCOMPARE(test.at(kStranger).name, QStringLiteral("Stranger"));
    QTRY_VERIFY(stranger.connections > 0);
    QTRY_VERIFY(!test.at(kStranger).online);
    QTRY_COMPARE(test.onlineCount(), 2);
    // It may still turn out to be a processor.
    stranger.overConnection = encode(StateMessage{0, named("Friend")}) + '\n';
    QTRY_COMPARE(test.at(kStranger).name, QStringLiteral("Friend"));
    QTRY_VERIFY(test.at(kStranger).online);
}

void NetworkDetectionTest::shouldCheckTheFieldsOfTheDialog()
{
    NetworkUnderTest test(1);
    test.workbench.action(ActionId::Network)->trigger();
    auto* dialog = openDialog<QDialog>();
    QHash<QString, QSpinBox*> fields;
    for (auto* field : dialog->findChildren<QSpinBox*>())
        fields.insert(field->accessibleName(), field);
    QCOMPARE(fields.size(), 4);
    QSpinBox* port = fields.value(QStringLiteral("Port"));
    QCOMPARE(port->minimum(), 1024);
    QCOMPARE(port->maximum(), 65535);
    QCOMPARE(port->value(), int{test.simulator.port()});
    const NetworkSettings before = test.project().network;
    fields.value(QStringLiteral("Ask whether alive every"))->setValue(1001);
    fields.value(QStringLiteral("Offline after a silence of"))->setValue(2001);
    QTest::keyClick(dialog, Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    QVERIFY(test.project().network == before);
    fields.value(QStringLiteral("Offline after a silence of"))->setValue(2002);
    QTest::keyClick(dialog, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    NetworkSettings wanted = before;
    wanted.aliveIntervalMs = 1001;
    wanted.deadTimeoutMs = 2002;
    QVERIFY(test.project().network == wanted);
    QVERIFY(test.workbench.store().isModified());
}

TSA_TEST_MAIN(NetworkDetectionTest)

#include "tst_network_detection.moc"
