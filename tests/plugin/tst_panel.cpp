#include "Interface/TargetSelectArea.h"
#include "base/TargetSelectHandler.h"
#include "host/widgets/Separator.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTree.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"

#include <QMenu>
#include <QMetaMethod>
#include <QSignalSpy>

#include <algorithm>

namespace {
const QString kAvailable = QStringLiteral("IsIpManagementAvailable");

/// The last part of a column's text that the host was asked with, "before|after" for example.
QString argumentOf(const FakeHandler& host, const char* name)
{
    QString argument;
    for (const FakeHandler::Call& call : host.calls()) {
        if (call.name == QLatin1String(name))
            argument = call.argument;
    }
    return argument;
}

} // namespace

/// The panel as a whole: how it is built, and what the host's events do to it.
class PanelTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseANullLayer();
    void shouldHandOutOnePanel();
    void shouldBuildANewPanelAfterItsParentDied();
    void shouldBeDeletedThroughTheLayer();
    void shouldReleaseTheHandlerWithThePanel();
    void shouldNotReachTheHostFromItsConstructor();
    void shouldHaveItsShape();
    void shouldStackItsPartsInOrder();
    void shouldBeReachedByTabInThatOrder();
    void shouldOfferItsSlotsInOrder();
    void shouldShowIpManagementForOneStrategyOnly_data();
    void shouldShowIpManagementForOneStrategyOnly();
    void shouldTellTheHostOfTheIpListBeforeAndAfter_data();
    void shouldTellTheHostOfTheIpListBeforeAndAfter();
    void shouldStandItsEndDuringIpManagement_data();
    void shouldStandItsEndDuringIpManagement();
    void shouldShowTheFirstLanUsbAddress();
    void shouldAskForAddressesInLanUsbModeOnly();
    void shouldFollowTheLanUsbEvent();
    void shouldSelectTheHostsProcessorInSilence();
    void shouldShowIpManagementAsTheHostSaysWithAProcessor();
    void shouldStandItsEndInsideAQuestion_data();
    void shouldStandItsEndInsideAQuestion();
    void shouldChangeItsLanguage();
    void shouldExpandWhatArrives();
    void shouldPaintItsStyleSheet();
};

void PanelTest::shouldRefuseANullLayer()
{
    QWidget window;
    QVERIFY(!TargetSelectArea_Init(nullptr, &window));
    QVERIFY(!CTargetSelectArea::Existing());
    QCOMPARE(window.children().size(), 0);

    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(TargetSelectArea_Init(&layer, &window));
    QVERIFY(layer);
    QCOMPARE(window.children().size(), 1);
}

void PanelTest::shouldHandOutOnePanel()
{
    class BareLayer final : public IAbstractLayerInterface
    {
    };

    QWidget first;
    QWidget second;
    IAbstractLayerInterface* layer = nullptr;
    IAbstractLayerInterface* again = nullptr;
    QVERIFY(TargetSelectArea_Init(&layer, &first));
    QCOMPARE(layer->GetWidget()->parentWidget(), &first);
    QVERIFY(TargetSelectArea_Init(&again, &second));
    QCOMPARE(again, layer);
    QCOMPARE(layer->GetWidget()->parentWidget(), &second);
    QCOMPARE(layer->GetWidget(), CTargetSelectArea::Existing());
    QVERIFY(dynamic_cast<ITargetSelectAreaInterface*>(layer));
    QVERIFY(!BareLayer().GetWidget());
    QVERIFY(BareLayer().Initialize());
    QVERIFY(BareLayer().Reconnect());
}

void PanelTest::shouldBuildANewPanelAfterItsParentDied()
{
    IAbstractLayerInterface* layer = nullptr;
    {
        QWidget window;
        QVERIFY(TargetSelectArea_Init(&layer, &window));
    }
    QVERIFY(!CTargetSelectArea::Existing());
    QWidget window;
    QVERIFY(TargetSelectArea_Init(&layer, &window));
    QCOMPARE(layer->GetWidget()->parentWidget(), &window);
    QVERIFY(layer->Initialize());
}

void PanelTest::shouldBeDeletedThroughTheLayer()
{
    IAbstractLayerInterface* layer = nullptr;
    QWidget window;
    QVERIFY(TargetSelectArea_Init(&layer, &window));
    delete layer;
    QVERIFY(!CTargetSelectArea::Existing());
    QCOMPARE(window.children().size(), 0);
}

void PanelTest::shouldReleaseTheHandlerWithThePanel()
{
    std::weak_ptr<FakeHandler> watched;
    {
        TestPanel panel;
        auto handler = std::make_shared<FakeHandler>();
        watched = handler;
        panel.area().m_controlHandler = handler;
        handler.reset();
        QVERIFY(GetTargetSelectHandler());
        QVERIFY(!watched.expired());
    }
    QVERIFY(watched.expired());
}

void PanelTest::shouldNotReachTheHostFromItsConstructor()
{
    TestPanel panel;
    panel.host().clearCalls();
    const CTargetSelectArea another;
    QCOMPARE(panel.host().callNames(), QStringList());
    // It is not the panel of the process either.
    QCOMPARE(CTargetSelectArea::Existing(), &panel.area());
}

void PanelTest::shouldHaveItsShape()
{
    ShownPanel shown;
    QCOMPARE(shown.area().objectName(), QStringLiteral("TargetSelectArea"));
    QCOMPARE(shown.area().width(), 220);
    QCOMPARE(shown.area().focusPolicy(), Qt::ClickFocus);
    QCOMPARE(shown.area().layout()->contentsMargins(), QMargins(0, 11, 0, 0));
    QCOMPARE(shown.area().layout()->spacing(), 8);
    QCOMPARE(shown.ipManagement()->text(), QStringLiteral("IP address management..."));
    shown.ipManagement()->show();
    QCOMPARE(shown.ipManagement()->width(), 200);
    QCOMPARE(shown.label()->width(), 200);
    QCOMPARE(shown.label()->alignment(), Qt::AlignCenter);
    QVERIFY(!shown.label()->isVisible());
    QVERIFY(shown.view()->isVisible());
}

void PanelTest::shouldStackItsPartsInOrder()
{
    ShownPanel shown;
    shown.ipManagement()->show();
    shown.label()->show();
    shown.selector()->show();
    QCoreApplication::processEvents();
    auto* tree = shown.inColumn<CProcessorTree>();
    const QList<QWidget*> parts{shown.detection(), shown.ipManagement(),         shown.selector(),
                                shown.label(),     shown.inColumn<CSeparator>(), tree};
    int bottom = 11 - 8;
    for (const QWidget* part : parts) {
        QCOMPARE(part->y(), bottom + 8);
        bottom = part->y() + part->height();
    }
    // The tree takes the height that is left, and the width.
    QCOMPARE(bottom, shown.area().height());
    QCOMPARE(tree->width(), 220);
    QVERIFY(tree->height() > shown.area().height() / 2);
}

void PanelTest::shouldBeReachedByTabInThatOrder()
{
    ShownPanel shown;
    shown.ipManagement()->show();
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.detection()->setFocus();
    QList<QWidget*> visited{QApplication::focusWidget()};
    for (int n = 0; n < 2; ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.append(QApplication::focusWidget());
    }
    QCOMPARE(visited, QList<QWidget*>({shown.detection(), shown.ipManagement(), shown.selector()}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(shown.inColumn<CProcessorTree>()->isAncestorOf(QApplication::focusWidget()));
}

void PanelTest::shouldOfferItsSlotsInOrder()
{
    const QMetaObject& metaObject = CTargetSelectArea::staticMetaObject;
    QCOMPARE(metaObject.className(), "CTargetSelectArea");
    QCOMPARE(QByteArray(metaObject.superClass()->className()), QByteArray("QWidget"));
    QStringList slotNames;
    for (int n = metaObject.methodOffset(); n < metaObject.methodCount(); ++n) {
        const QMetaMethod method = metaObject.method(n);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        slotNames.append(QString::fromLatin1(method.name()));
    }
    QCOMPARE(slotNames, QStringList({QStringLiteral("onDetectStrategyChanged"),
                                     QStringLiteral("onCurrentDeviceSetChanged"),
                                     QStringLiteral("onCurrentProcessorChanged"),
                                     QStringLiteral("onLANUSBGetProcessorIP"),
                                     QStringLiteral("UpdateMonitorWarningState")}));
}

void PanelTest::shouldShowIpManagementForOneStrategyOnly_data()
{
    QTest::addColumn<int>("strategy");
    QTest::addColumn<bool>("shown");
    for (const int strategy : {-1, 0, 1, 3, 99})
        QTest::addRow("%d", strategy) << strategy << false;
    QTest::newRow("2") << 2 << true;
}

void PanelTest::shouldShowIpManagementForOneStrategyOnly()
{
    QFETCH(int, strategy);
    QFETCH(bool, shown);
    ShownPanel panel;
    for (const bool before : {false, true}) {
        panel.ipManagement()->setVisible(before);
        panel.area().onDetectStrategyChanged(strategy);
        QCOMPARE(panel.ipManagement()->isVisible(), shown);
    }
    panel.ipManagement()->setVisible(!shown);
    panel.panel.notify<int>(0, strategy);
    QTRY_COMPARE(panel.ipManagement()->isVisible(), shown);
}

void PanelTest::shouldTellTheHostOfTheIpListBeforeAndAfter_data()
{
    QTest::addColumn<bool>("detectionDue");
    QTest::newRow("a detection is due") << true;
    QTest::newRow("none is due") << false;
}

void PanelTest::shouldTellTheHostOfTheIpListBeforeAndAfter()
{
    QFETCH(bool, detectionDue);
    ShownPanel shown;
    shown.host().ipList = QStringList{QStringLiteral("10.0.0.1(A)")};
    shown.host().ipListChanged = detectionDue;
    shown.area().onDetectStrategyChanged(2);
    DialogDriver driver;
    driver.then([&](QWidget& dialog) {
        QCOMPARE(dialog.parentWidget(), &shown.area());
        shown.host().ipList.append(QStringLiteral("10.0.0.2(B)"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QTest::mouseClick(shown.ipManagement(), Qt::LeftButton);
    QVERIFY(driver.isDone());
    QCOMPARE(argumentOf(shown.host(), "IpListChanged"),
             QStringLiteral("10.0.0.1(A)|10.0.0.1(A),10.0.0.2(B)"));
    QCOMPARE(shown.host().callNames().first(), QStringLiteral("GetIPList"));
    QCOMPARE(shown.host().callCount(QStringLiteral("DetectProcessorsOnly")), detectionDue ? 1 : 0);
    QCOMPARE(shown.host().callCount(QStringLiteral("DetectAllDevices")), 0);
}

void PanelTest::shouldStandItsEndDuringIpManagement_data()
{
    QTest::addColumn<QString>("question");
    for (const char* question :
         {"GetIPList", "GetIPNameLists", "IpListChanged", "an open dialog", "DetectProcessorsOnly"})
        QTest::newRow(question) << QString::fromLatin1(question);
}

void PanelTest::shouldStandItsEndDuringIpManagement()
{
    QFETCH(QString, question);
    ShownPanel shown;
    shown.host().ipListChanged = true;
    shown.area().onDetectStrategyChanged(2);
    shown.host().inside = [&](const QString& name) {
        if (name == question)
            delete CTargetSelectArea::Existing();
    };
    DialogDriver driver;
    if (question != QLatin1String("GetIPList") && question != QLatin1String("GetIPNameLists")) {
        driver.then([&](QWidget& dialog) {
            if (question == QLatin1String("an open dialog"))
                delete CTargetSelectArea::Existing();
            else
                QTest::keyClick(&dialog, Qt::Key_Escape);
        });
    }
    QTest::keyClick(shown.ipManagement(), Qt::Key_Space);
    QVERIFY(!CTargetSelectArea::Existing());
    QVERIFY(!QApplication::activeModalWidget());
}

void PanelTest::shouldShowTheFirstLanUsbAddress()
{
    ShownPanel shown;
    shown.host().lanUsbIps = {0xC0A80001, 0x0A000001};
    shown.area().onLANUSBGetProcessorIP();
    QVERIFY(!shown.label()->isVisible());
    shown.host().lanUsbMode = true;
    shown.area().onLANUSBGetProcessorIP();
    QVERIFY(shown.label()->isVisible());
    QCOMPARE(shown.label()->text(), QStringLiteral("Processor1 IP: 192.168.0.1"));
    shown.host().lanUsbIps.clear();
    shown.area().onLANUSBGetProcessorIP();
    QVERIFY(!shown.label()->isVisible());
    shown.host().lanUsbIps = {0, 1};
    shown.area().onLANUSBGetProcessorIP();
    QCOMPARE(shown.label()->text(), QStringLiteral("Processor1 IP: 0.0.0.0"));
    {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(shown.label()->text(), QStringLiteral("处理器1 IP: 0.0.0.0"));
    }
    QTRY_COMPARE(shown.label()->text(), QStringLiteral("Processor1 IP: 0.0.0.0"));
    shown.host().lanUsbMode = false;
    shown.area().onLANUSBGetProcessorIP();
    QVERIFY(!shown.label()->isVisible());
}

void PanelTest::shouldAskForAddressesInLanUsbModeOnly()
{
    ShownPanel shown;
    shown.area().onLANUSBGetProcessorIP();
    QCOMPARE(shown.host().callNames(), QStringList({QStringLiteral("IsLanUsbMode")}));
    shown.host().clearCalls();
    shown.host().lanUsbMode = true;
    shown.area().onLANUSBGetProcessorIP();
    QCOMPARE(shown.host().callNames(), QStringList({QStringLiteral("IsLanUsbMode"),
                                                    QStringLiteral("GetLanUsbProcessorIps")}));
}

void PanelTest::shouldFollowTheLanUsbEvent()
{
    ShownPanel shown;
    shown.host().lanUsbMode = true;
    shown.host().lanUsbIps = {0xC0A80001};
    shown.panel.notify(29);
    QTRY_VERIFY(shown.label()->isVisible());
}

void PanelTest::shouldSelectTheHostsProcessorInSilence()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    shown.view()->collapseAll();
    QSignalSpy selections(shown.view()->selectionModel(), &QItemSelectionModel::selectionChanged);
    shown.area().onCurrentProcessorChanged(testId(1));
    QCOMPARE(shown.view()->selectionModel()->selectedIndexes().size(), 1);
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(1));
    QVERIFY(shown.view()->isExpanded(shown.panel.model().getItem(testId(100))->index()));
    // Unknown, none, a group, the same again: nothing changes.
    for (const quint32 id : {55U, 0U, 100U, 1U})
        shown.area().onCurrentProcessorChanged(testId(id));
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(1));
    QCOMPARE(shown.view()->selectionModel()->selectedIndexes().size(), 1);
    QCOMPARE(selections.count(), 0);
    QCOMPARE(shown.host().callCount(QStringLiteral("ReportSelection")), 0);
    QVERIFY(!shown.panel.data().IsSelectionEchoGuarded());
}

void PanelTest::shouldShowIpManagementAsTheHostSaysWithAProcessor()
{
    ShownPanel shown;
    for (const bool available : {true, false, true}) {
        shown.host().ipManagementAvailable = available;
        shown.area().onCurrentProcessorChanged(testId(77));
        QCOMPARE(shown.ipManagement()->isVisible(), available);
    }
    QCOMPARE(shown.host().callCount(kAvailable), 3);
}

void PanelTest::shouldStandItsEndInsideAQuestion_data()
{
    QTest::addColumn<QString>("question");
    for (const char* question : {"IsLanUsbMode", "GetLanUsbProcessorIps", "IsIpManagementAvailable",
                                 "GetProcessorNode", "DetectAllDevices"})
        QTest::newRow(question) << QString::fromLatin1(question);
}

void PanelTest::shouldStandItsEndInsideAQuestion()
{
    QFETCH(QString, question);
    ShownPanel shown;
    shown.host().setProject({}, {testProcessor(1), testProcessor(2)});
    shown.panel.notify(16);
    shown.host().lanUsbMode = true;
    shown.area().onCurrentProcessorChanged(testId(1));
    shown.host().inside = [&](const QString& name) {
        if (name == question)
            delete CTargetSelectArea::Existing();
    };
    if (question == QLatin1String("DetectAllDevices")) {
        shown.area().DetectDevices();
    } else {
        shown.area().onLANUSBGetProcessorIP();
        if (CTargetSelectArea::Existing())
            shown.area().onCurrentProcessorChanged(testId(2));
    }
    QVERIFY(!CTargetSelectArea::Existing());
}

void PanelTest::shouldChangeItsLanguage()
{
    ShownPanel shown;
    shown.host().setProject({}, {testProcessor(1)});
    shown.panel.notify(16);
    const QList<QAction*> entries = shown.detection()->menu()->actions();
    {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(shown.detection()->text(), QString::fromUtf8("检测设备"));
        QCOMPARE(shown.ipManagement()->text(), QString::fromUtf8("IP 地址管理..."));
        QCOMPARE(entries.at(0)->text(), QString::fromUtf8("所有设备"));
        QCOMPARE(entries.at(1)->text(), QString::fromUtf8("仅处理器"));
        QCOMPARE(shown.panel.dump(), QString::fromUtf8("全部处理器(1)[1]"));
        // The widgets fit.
        QVERIFY(shown.detection()->sizeHint().width() <= 200);
        QVERIFY(shown.ipManagement()->sizeHint().width() <= 200);
    }
    QTRY_COMPARE(shown.detection()->text(), QStringLiteral("Detect devices"));
    QCOMPARE(entries.at(0)->text(), QStringLiteral("All devices"));
    QCOMPARE(entries.at(1)->text(), QStringLiteral("Processors only"));
    QCOMPARE(shown.panel.dump(), QStringLiteral("All processors(1)[1]"));
}

void PanelTest::shouldExpandWhatArrives()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    shown.panel.notify(16);
    const QModelIndex group = shown.panel.model().getItem(testId(100))->index();
    QVERIFY(shown.view()->isExpanded(group));
    shown.view()->collapse(group);
    shown.host().setProcessor(testProcessor(2, 100));
    shown.panel.notify<QUuid>(18, testId(2));
    QVERIFY(shown.view()->isExpanded(group));
}

void PanelTest::shouldPaintItsStyleSheet()
{
    ShownPanel shown;
    shown.window.setStyleSheet(QStringLiteral("#TargetSelectArea { background: #123456; }"));
    const QImage image = shown.area().grab().toImage();
    QCOMPARE(image.pixelColor(3, 3), QColor(0x12, 0x34, 0x56));
}

TSA_TEST_MAIN(PanelTest)
#include "tst_panel.moc"
