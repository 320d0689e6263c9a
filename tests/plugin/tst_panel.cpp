#include "Interface/TargetSelectArea.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/ProcessorTreeModel.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>
#include <QTreeView>

namespace {

SDeviceSetInfo deviceSet(quint32 n)
{
    SDeviceSetInfo set{};
    set.id.Data1 = n;
    return set;
}

/// A panel in a window of its own, as a host docks it.
class ShownPanel final
{
public:
    ShownPanel()
    {
        window.resize(220, 500);
        panel.area().setParent(&window);
        window.show();
        panel.area().show();
    }

    QComboBox* selector() { return panel.area().findChild<QComboBox*>(); }
    QLabel* label() { return panel.area().findChild<QLabel*>(); }
    QTreeView* view() { return panel.area().findChild<QTreeView*>(); }

    const WarningTrap warnings;
    QWidget window;
    TestPanel panel;
};

} // namespace

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
    void shouldInitialiseAndReconnect();
    void shouldPassTheDetectionResultOn();
    void shouldShowDeviceSetsOnlyWhenThereIsAChoice_data();
    void shouldShowDeviceSetsOnlyWhenThereIsAChoice();
    void shouldAskTheHostAboutAnotherDeviceSet();
    void shouldRestoreTheDeviceSetThatTheHostKeeps();
    void shouldStandNewDeviceSetsInsideTheQuestion();
    void shouldStandItsOwnEndInsideTheQuestion();
    void shouldShowTheFirstLanUsbAddress();
    void shouldSelectTheHostsProcessorInSilence();
    void shouldSelectAndReportOnTheHostsBehalf();
    void shouldExpandWhatArrives();
    void shouldFollowALanguageChange();
    void shouldPaintItsStyleSheet();
};

void PanelTest::shouldRefuseANullLayer()
{
    const WarningTrap warnings;
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

    const WarningTrap warnings;
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
    const WarningTrap warnings;
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
    const WarningTrap warnings;
    IAbstractLayerInterface* layer = nullptr;
    QWidget window;
    QVERIFY(TargetSelectArea_Init(&layer, &window));
    delete layer;
    QVERIFY(!CTargetSelectArea::Existing());
    QCOMPARE(window.children().size(), 0);
}

void PanelTest::shouldReleaseTheHandlerWithThePanel()
{
    const WarningTrap warnings;
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
    const WarningTrap warnings;
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
    CTargetSelectArea& area = shown.panel.area();
    QCOMPARE(area.objectName(), QStringLiteral("TargetSelectArea"));
    QCOMPARE(area.width(), 220);
    QCOMPARE(area.focusPolicy(), Qt::ClickFocus);
    QCOMPARE(area.layout()->contentsMargins(), QMargins(0, 11, 0, 0));
    QCOMPARE(area.layout()->spacing(), 8);
    QCOMPARE(shown.selector()->width(), 200);
    QCOMPARE(shown.label()->width(), 200);
    QVERIFY(!shown.selector()->isVisible());
    QVERIFY(!shown.label()->isVisible());
    QVERIFY(shown.view()->isVisible());
}

void PanelTest::shouldInitialiseAndReconnect()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().observer = nullptr;
    QVERIFY(panel.area().Reconnect());
    QVERIFY(panel.host().observer);
    panel.host().observer = nullptr;
    QVERIFY(panel.area().Initialize());
    QVERIFY(panel.host().observer);
    QCOMPARE(panel.dump(), QStringLiteral("All processors(0)[]"));
}

void PanelTest::shouldPassTheDetectionResultOn()
{
    const WarningTrap warnings;
    TestPanel panel;
    panel.host().detectResult = 0xE0832001;
    QCOMPARE(panel.area().DetectDevices(), 0xE0832001U);
    QCOMPARE(panel.host().callNames(), QStringList({QStringLiteral("DetectAllDevices")}));
}

void PanelTest::shouldShowDeviceSetsOnlyWhenThereIsAChoice_data()
{
    QTest::addColumn<int>("sets");
    QTest::addColumn<quint32>("current");
    QTest::addColumn<bool>("shown");
    QTest::newRow("none") << 0 << 0U << false;
    QTest::newRow("one") << 1 << 1U << false;
    QTest::newRow("two, the second current") << 2 << 2U << true;
    QTest::newRow("two, none current") << 2 << 0U << false;
    QTest::newRow("two, an unknown one current") << 2 << 9U << false;
}

void PanelTest::shouldShowDeviceSetsOnlyWhenThereIsAChoice()
{
    QFETCH(int, sets);
    QFETCH(quint32, current);
    QFETCH(bool, shown);
    ShownPanel panel;
    QList<SDeviceSetInfo> list;
    for (int n = 1; n <= sets; ++n)
        list.append(deviceSet(static_cast<quint32>(n)));
    // From a state in which one was shown.
    panel.panel.area().onCurrentDeviceSetChanged(deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    panel.panel.host().clearCalls();

    panel.panel.area().onCurrentDeviceSetChanged(deviceSet(current).id, list);

    QCOMPARE(panel.selector()->isVisible(), shown);
    QCOMPARE(panel.selector()->count(), shown ? sets : 0);
    // A hidden selector is connected to nothing.
    panel.selector()->addItem(QStringLiteral("another"));
    panel.selector()->setCurrentIndex(panel.selector()->count() - 1);
    QCOMPARE(panel.panel.host().callCount(QStringLiteral("ConfirmDeviceSetChange")), 0);
}

void PanelTest::shouldAskTheHostAboutAnotherDeviceSet()
{
    ShownPanel shown;
    shown.panel.area().onCurrentDeviceSetChanged(deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    QCOMPARE(shown.panel.host().callCount(QStringLiteral("ConfirmDeviceSetChange")), 0);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 1"));
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.panel.host().callCount(QStringLiteral("ConfirmDeviceSetChange")), 1);
    QCOMPARE(shown.panel.host().calls().last().argument, QStringLiteral("1"));
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
}

void PanelTest::shouldRestoreTheDeviceSetThatTheHostKeeps()
{
    ShownPanel shown;
    shown.panel.area().onCurrentDeviceSetChanged(deviceSet(2).id,
                                                 {deviceSet(1), deviceSet(2), deviceSet(3)});
    shown.panel.host().confirmDeviceSet = false;
    QSignalSpy changes(shown.selector(), qOverload<int>(&QComboBox::currentIndexChanged));
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    // The user's own step alone is announced, not the step back.
    QCOMPARE(changes.count(), 1);
    QCOMPARE(shown.panel.host().callCount(QStringLiteral("ConfirmDeviceSetChange")), 1);
}

void PanelTest::shouldStandNewDeviceSetsInsideTheQuestion()
{
    ShownPanel shown;
    CTargetSelectArea& area = shown.panel.area();
    area.onCurrentDeviceSetChanged(deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    shown.panel.host().inside = [&](const QString& name) {
        if (name == QLatin1String("ConfirmDeviceSetChange"))
            area.onCurrentDeviceSetChanged(deviceSet(2).id,
                                           {deviceSet(2), deviceSet(3), deviceSet(1)});
    };
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    shown.panel.host().inside = nullptr;
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    shown.panel.host().confirmDeviceSet = false;
    QTest::keyClick(shown.selector(), Qt::Key_End);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
}

void PanelTest::shouldStandItsOwnEndInsideTheQuestion()
{
    const WarningTrap warnings;
    TestPanel panel;
    auto host = std::make_shared<FakeHandler>();
    panel.area().m_controlHandler = host;
    panel.area().onCurrentDeviceSetChanged(deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    auto* selector = panel.area().findChild<QComboBox*>();
    host->confirmDeviceSet = false;
    host->inside = [&](const QString& name) {
        if (name == QLatin1String("ConfirmDeviceSetChange")) {
            // The combo box is still sending its signal.
            selector->setParent(nullptr);
            delete &panel.area();
        }
    };
    selector->setCurrentIndex(1);
    QVERIFY(!CTargetSelectArea::Existing());
    delete selector;
}

void PanelTest::shouldShowTheFirstLanUsbAddress()
{
    ShownPanel shown;
    shown.panel.host().lanUsbIps = {0xC0A80001, 0x0A000001};
    shown.panel.area().onLANUSBGetProcessorIP();
    QVERIFY(!shown.label()->isVisible());
    shown.panel.host().lanUsbMode = true;
    shown.panel.area().onLANUSBGetProcessorIP();
    QVERIFY(shown.label()->isVisible());
    QCOMPARE(shown.label()->text(), QStringLiteral("Processor1 IP: 192.168.0.1"));
    shown.panel.host().lanUsbIps.clear();
    shown.panel.area().onLANUSBGetProcessorIP();
    QVERIFY(!shown.label()->isVisible());
}

void PanelTest::shouldSelectTheHostsProcessorInSilence()
{
    ShownPanel shown;
    shown.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    QSignalSpy selections(shown.view()->selectionModel(), &QItemSelectionModel::selectionChanged);
    shown.panel.area().onCurrentProcessorChanged(testId(1));
    QCOMPARE(shown.view()->selectionModel()->selectedIndexes().size(), 1);
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(1));
    shown.panel.area().onCurrentProcessorChanged(testId(55));
    shown.panel.area().onCurrentProcessorChanged(QUuid());
    shown.panel.area().onCurrentProcessorChanged(testId(100));
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(1));
    QCOMPARE(selections.count(), 0);
}

void PanelTest::shouldSelectAndReportOnTheHostsBehalf()
{
    ShownPanel shown;
    shown.panel.host().setProject({}, {testProcessor(1), testProcessor(2)});
    shown.panel.notify(16);
    QSignalSpy selections(shown.view()->selectionModel(), &QItemSelectionModel::selectionChanged);
    shown.panel.area().SetCurrentProcessor(testId(2));
    QCOMPARE(selections.count(), 1);
    shown.panel.area().SetCurrentProcessor(testId(2));
    shown.panel.area().SetCurrentProcessor(testId(77));
    QCOMPARE(selections.count(), 1);
    QCOMPARE(shown.view()->currentIndex().data(UuidRole).toUuid(), testId(2));
}

void PanelTest::shouldExpandWhatArrives()
{
    ShownPanel shown;
    shown.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    shown.panel.notify(16);
    const QModelIndex group = shown.panel.model().getItem(testId(100))->index();
    QVERIFY(shown.view()->isExpanded(group));
    shown.view()->collapse(group);
    shown.panel.host().setProcessor(testProcessor(2, 100));
    shown.panel.notify<QUuid>(18, testId(2));
    QVERIFY(shown.view()->isExpanded(group));
}

void PanelTest::shouldFollowALanguageChange()
{
    ShownPanel shown;
    shown.panel.host().setProject({}, {testProcessor(1)});
    shown.panel.notify(16);
    shown.panel.area().onCurrentDeviceSetChanged(deviceSet(1).id, {deviceSet(1), deviceSet(2)});
    shown.panel.host().deviceSetTexts = QStringList{QStringLiteral("eins"), QStringLiteral("zwei")};
    QTranslator translator;
    QVERIFY(translator.load(
        QStringLiteral(":/TargetSelectArea/translations/TargetSelectArea_zh_CN.qm")));
    QCoreApplication::installTranslator(&translator);
    QTRY_COMPARE(shown.panel.dump(), QString::fromUtf8("全部处理器(1)[1]"));
    QCOMPARE(shown.selector()->itemText(0), QStringLiteral("eins"));
    QCOMPARE(shown.selector()->itemText(1), QStringLiteral("zwei"));
    // A host that names more texts than there are entries, or none, breaks nothing.
    shown.panel.host().deviceSetTexts =
        QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    QCoreApplication::removeTranslator(&translator);
    QTRY_COMPARE(shown.panel.dump(), QStringLiteral("All processors(1)[1]"));
    QCOMPARE(shown.selector()->count(), 2);
    QCOMPARE(shown.selector()->itemText(1), QStringLiteral("b"));
}

void PanelTest::shouldPaintItsStyleSheet()
{
    ShownPanel shown;
    shown.window.setStyleSheet(QStringLiteral("#TargetSelectArea { background: #123456; }"));
    const QImage image = shown.panel.area().grab().toImage();
    QCOMPARE(image.pixelColor(3, 3), QColor(0x12, 0x34, 0x56));
}

QTEST_MAIN(PanelTest)
#include "tst_panel.moc"
