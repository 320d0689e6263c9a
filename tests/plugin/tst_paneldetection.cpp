#include "tests/plugin/ShownPanel.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/NestedLoop.h"

#include <QMenu>

namespace {

const QString kAll = QStringLiteral("DetectAllDevices");
const QString kProcessors = QStringLiteral("DetectProcessorsOnly");
const QString kMode = QStringLiteral("IsRestrictedMode");

/// What a detection asked the host; a panel that paints itself asks other things.
QStringList detections(const FakeHandler& host)
{
    QStringList names;
    for (const QString& name : host.callNames()) {
        if (name == kAll || name == kProcessors || name == kMode)
            names.append(name);
    }
    return names;
}

/// Opens the button's menu by keys and picks entry `entry`, counted from the top.
void pickByKeys(CMenuToolButton& button, int entry)
{
    DialogDriver driver;
    driver.then([entry](QWidget& menu) {
        for (int n = 0; n < entry; ++n)
            QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Down);
}

/// The same by the mouse.
void pickByMouse(CMenuToolButton& button, int entry)
{
    DialogDriver driver;
    driver.then([entry](QWidget& window) {
        auto* menu = qobject_cast<QMenu*>(&window);
        const QRect place = menu->actionGeometry(menu->actions().at(entry));
        QTest::mouseClick(menu, Qt::LeftButton, {}, place.center());
    });
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(button.width() - 5, button.height() / 2));
}

} // namespace

/// The detection button of the panel, and its menu.
class PanelDetectionTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldHaveItsShape();
    void shouldDetectAllDevicesOnAClick_data();
    void shouldDetectAllDevicesOnAClick();
    void shouldDetectWhatIsPicked_data();
    void shouldDetectWhatIsPicked();
    void shouldBeDisabledWhileTheHostDetects();
    void shouldNotStartAnotherDetectionMeanwhile();
    void shouldKeepTheFocusOfWhoWorksByKeyboard();
    void shouldStandTheEndOfThePanel_data();
    void shouldStandTheEndOfThePanel();
    void shouldGoWithThePanelThoughDisabled();
    void shouldStandAHandlerThatIsTakenAway();
};

void PanelDetectionTest::shouldHaveItsShape()
{
    ShownPanel shown;
    CMenuToolButton* button = shown.detection();
    QCOMPARE(button->parentWidget(), &shown.area());
    QCOMPARE(button->text(), QStringLiteral("Detect devices"));
    QCOMPARE(button->objectName(), QString());
    QCOMPARE(button->width(), 200);
    QCOMPARE(button->x(), 10);
    QVERIFY(button->isVisible());
    const QList<QAction*> entries = button->menu()->actions();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.at(0)->text(), QStringLiteral("All devices"));
    QCOMPARE(entries.at(1)->text(), QStringLiteral("Processors only"));
    for (const QAction* entry : entries)
        QVERIFY(!entry->data().isValid());
}

void PanelDetectionTest::shouldDetectAllDevicesOnAClick_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the mouse") << 0;
    QTest::newRow("Space") << static_cast<int>(Qt::Key_Space);
    QTest::newRow("Enter") << static_cast<int>(Qt::Key_Return);
}

void PanelDetectionTest::shouldDetectAllDevicesOnAClick()
{
    QFETCH(int, key);
    ShownPanel shown;
    if (key == 0)
        QTest::mouseClick(shown.detection(), Qt::LeftButton);
    else
        QTest::keyClick(shown.detection(), static_cast<Qt::Key>(key));
    QCOMPARE(detections(shown.host()), QStringList({kAll}));
}

void PanelDetectionTest::shouldDetectWhatIsPicked_data()
{
    QTest::addColumn<bool>("mouse");
    QTest::addColumn<int>("entry");
    QTest::addColumn<bool>("restricted");
    QTest::addColumn<QString>("expected");
    for (const bool mouse : {false, true}) {
        const char* by = mouse ? "mouse" : "keys";
        QTest::addRow("all, %s", by) << mouse << 0 << false << kAll;
        QTest::addRow("all in restricted mode, %s", by) << mouse << 0 << true << kAll;
        QTest::addRow("processors, %s", by) << mouse << 1 << false << kProcessors;
        QTest::addRow("processors in restricted mode, %s", by) << mouse << 1 << true << kAll;
    }
}

void PanelDetectionTest::shouldDetectWhatIsPicked()
{
    QFETCH(bool, mouse);
    QFETCH(int, entry);
    QFETCH(bool, restricted);
    QFETCH(QString, expected);
    ShownPanel shown;
    shown.host().restrictedMode = restricted;
    if (mouse)
        pickByMouse(*shown.detection(), entry);
    else
        pickByKeys(*shown.detection(), entry);
    // The mode matters to the second entry only.
    QCOMPARE(detections(shown.host()),
             entry == 0 ? QStringList({expected}) : QStringList({kMode, expected}));
}

void PanelDetectionTest::shouldBeDisabledWhileTheHostDetects()
{
    ShownPanel shown;
    QList<bool> enabled;
    shown.host().inside = [&](const QString& name) {
        if (name == kAll || name == kProcessors || name == kMode)
            enabled.append(shown.detection()->isEnabled());
    };
    QTest::mouseClick(shown.detection(), Qt::LeftButton);
    pickByKeys(*shown.detection(), 1);
    QCOMPARE(enabled, QList<bool>({false, false, false}));
    QVERIFY(shown.detection()->isEnabled());
}

void PanelDetectionTest::shouldNotStartAnotherDetectionMeanwhile()
{
    ShownPanel shown;
    shown.host().inside = [&](const QString& name) {
        if (name != kAll)
            return;
        // A host that handles events while it detects.
        QTest::mouseClick(shown.detection(), Qt::LeftButton);
        shown.detection()->menu()->actions().at(0)->trigger();
    };
    QTest::mouseClick(shown.detection(), Qt::LeftButton);
    QCOMPARE(detections(shown.host()), QStringList({kAll}));
}

void PanelDetectionTest::shouldKeepTheFocusOfWhoWorksByKeyboard()
{
    ShownPanel shown;
    shown.detection()->setFocus();
    QTest::keyClick(shown.detection(), Qt::Key_Space);
    QVERIFY(shown.detection()->hasFocus());
    // What the host wants in focus stays there.
    shown.host().inside = [&](const QString& name) {
        if (name == kAll)
            shown.view()->setFocus();
    };
    QTest::keyClick(shown.detection(), Qt::Key_Space);
    QVERIFY(shown.view()->hasFocus());
}

void PanelDetectionTest::shouldStandTheEndOfThePanel_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("nested");
    const auto add = [](const QString& question, const char* way) {
        QTest::addRow("%s, %s", qPrintable(question), way)
            << question << QString::fromLatin1(way) << false;
        QTest::addRow("%s, %s, nested loop", qPrintable(question), way)
            << question << QString::fromLatin1(way) << true;
    };
    for (const char* way : {"mouse", "key", "menu by keys", "menu by mouse"})
        add(kAll, way);
    for (const char* way : {"menu by keys", "menu by mouse"}) {
        add(kMode, way);
        add(kProcessors, way);
    }
}

void PanelDetectionTest::shouldStandTheEndOfThePanel()
{
    QFETCH(QString, question);
    QFETCH(QString, way);
    QFETCH(bool, nested);
    ShownPanel shown;
    const QPointer<CMenuToolButton> button(shown.detection());
    shown.host().inside = [&](const QString& name) {
        if (name == question)
            runWithin(nested, [] { delete CTargetSelectArea::Existing(); });
    };
    const int entry = question == kAll ? 0 : 1;
    if (way == QLatin1String("mouse"))
        QTest::mouseClick(button, Qt::LeftButton);
    else if (way == QLatin1String("key"))
        QTest::keyClick(button, Qt::Key_Space);
    else if (way == QLatin1String("menu by keys"))
        pickByKeys(*button, entry);
    else
        pickByMouse(*button, entry);
    QVERIFY(!CTargetSelectArea::Existing());
    // Nothing of it is left behind.
    QTRY_VERIFY(!button);
}

/// By somebody else: no detection is under way.
void PanelDetectionTest::shouldGoWithThePanelThoughDisabled()
{
    ShownPanel shown;
    const QPointer<CMenuToolButton> button(shown.detection());
    button->setEnabled(false);
    delete CTargetSelectArea::Existing();
    QTRY_VERIFY(!button);
}

void PanelDetectionTest::shouldStandAHandlerThatIsTakenAway()
{
    ShownPanel shown;
    shown.host().inside = [&](const QString& name) {
        if (name == kMode)
            shown.area().m_controlHandler.reset();
    };
    pickByKeys(*shown.detection(), 1);
    QCOMPARE(detections(shown.host()), QStringList({kMode}));
    QVERIFY(shown.detection()->isEnabled());
    QTest::mouseClick(shown.detection(), Qt::LeftButton);
    QVERIFY(shown.detection()->isEnabled());
}

TSA_TEST_MAIN(PanelDetectionTest)
#include "tst_paneldetection.moc"
