#include "plugin/NetUsbTipDlg.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/DialogDriver.h"

#include <QApplication>

namespace {

std::vector<LanUsbProcessorInfo> warning(const char* device)
{
    return {{"192.168.0.1", "Stage", device}};
}

/// The device that a warning on the screen names first.
QString deviceIn(const QWidget& dialog)
{
    return dialog.accessibleDescription().section(QLatin1Char(' '), 0, 0);
}

} // namespace

/// The warnings that a host asks for by ShowLanUsbWarning().
class LanUsbWarningsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReturnBeforeTheWarningIsShown();
    void shouldWarnWithACopy();
    void shouldWarnOneAfterTheOther();
    void shouldWarnWhileAWarningIsOpen();
    void shouldWarnBeforeThePanelIsShown();
    void shouldNotWarnForAPanelThatIsGone();
    void shouldCloseTheWarningWithThePanel();
    void shouldDropWaitingWarningsWithThePanel();
    void shouldWarnForTheNextPanel();
};

void LanUsbWarningsTest::shouldReturnBeforeTheWarningIsShown()
{
    ShownPanel shown;
    DialogDriver driver;
    driver.then([&](QWidget& dialog) {
        QVERIFY(qobject_cast<CNetUsbTipDlg*>(&dialog));
        QCOMPARE(dialog.parentWidget(), &shown.area());
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    shown.area().ShowLanUsbWarning(warning("Device"));
    QVERIFY(!driver.isDone());
    QVERIFY(!QApplication::activeModalWidget());
    QTRY_VERIFY(driver.isDone());
    QTRY_VERIFY(!QApplication::activeModalWidget());
    // It does not stay behind.
    QVERIFY(!shown.area().findChild<CNetUsbTipDlg*>());
}

void LanUsbWarningsTest::shouldWarnWithACopy()
{
    ShownPanel shown;
    QString device;
    DialogDriver driver;
    driver.then([&](QWidget& dialog) {
        device = deviceIn(dialog);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    auto processors = warning("Before");
    shown.area().ShowLanUsbWarning(processors);
    processors = warning("After");
    processors.clear();
    QTRY_COMPARE(device, QStringLiteral("Before"));
}

void LanUsbWarningsTest::shouldWarnOneAfterTheOther()
{
    ShownPanel shown;
    QStringList devices;
    DialogDriver driver;
    for (int n = 0; n < 3; ++n) {
        driver.then([&](QWidget& dialog) {
            devices.append(deviceIn(dialog));
            QCOMPARE(shown.area().findChildren<CNetUsbTipDlg*>().size(), 1);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }
    for (const char* device : {"First", "Second", "Third"})
        shown.area().ShowLanUsbWarning(warning(device));
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(devices, QStringList({QStringLiteral("First"), QStringLiteral("Second"),
                                   QStringLiteral("Third")}));
}

void LanUsbWarningsTest::shouldWarnWhileAWarningIsOpen()
{
    ShownPanel shown;
    QStringList devices;
    DialogDriver driver;
    driver.then([&](QWidget& dialog) {
        shown.area().ShowLanUsbWarning(warning("Second"));
        QCoreApplication::processEvents();
        // The first one stays in front until it is answered.
        QCOMPARE(QApplication::activeModalWidget(), &dialog);
        devices.append(deviceIn(dialog));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    driver.then([&](QWidget& dialog) {
        devices.append(deviceIn(dialog));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    shown.area().ShowLanUsbWarning(warning("First"));
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(devices, QStringList({QStringLiteral("First"), QStringLiteral("Second")}));
}

void LanUsbWarningsTest::shouldWarnBeforeThePanelIsShown()
{
    TestPanel panel;
    bool shown = false;
    DialogDriver driver;
    driver.then([&](QWidget& dialog) {
        shown = dialog.isVisible();
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    panel.area().ShowLanUsbWarning(warning("Device"));
    QTRY_VERIFY(shown);
    QVERIFY(!panel.area().isVisible());
}

void LanUsbWarningsTest::shouldNotWarnForAPanelThatIsGone()
{
    ShownPanel shown;
    const DialogDriver nobodyOpensADialog;
    shown.area().ShowLanUsbWarning(warning("Device"));
    delete &shown.area();
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activeModalWidget());
}

void LanUsbWarningsTest::shouldCloseTheWarningWithThePanel()
{
    ShownPanel shown;
    DialogDriver driver;
    driver.then([&](QWidget&) { delete &shown.area(); });
    shown.area().ShowLanUsbWarning(warning("Device"));
    QTRY_VERIFY(driver.isDone());
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(!CTargetSelectArea::Existing());
}

void LanUsbWarningsTest::shouldDropWaitingWarningsWithThePanel()
{
    ShownPanel shown;
    DialogDriver driver;
    driver.then([&](QWidget&) { delete &shown.area(); });
    shown.area().ShowLanUsbWarning(warning("First"));
    shown.area().ShowLanUsbWarning(warning("Second"));
    QTRY_VERIFY(driver.isDone());
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activeModalWidget());
}

void LanUsbWarningsTest::shouldWarnForTheNextPanel()
{
    for (int n = 0; n < 2; ++n) {
        ShownPanel shown;
        DialogDriver driver;
        driver.thenEnter();
        shown.area().ShowLanUsbWarning(warning("Device"));
        QTRY_VERIFY(driver.isDone());
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }
}

TSA_TEST_MAIN(LanUsbWarningsTest)
#include "tst_lanusbwarnings.moc"
