#include "host/widgets/HostTheme.h"
#include "tests/ipmanage/ManageTest.h"

#include <QImage>
#include <QSignalSpy>

/// The management dialog by keyboard and double click.
class IPManageKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldBeUsableByKeyboard();
    void shouldPressButtonsByAltKeys();
    void shouldShowTheFocusOfTheTableWhole();
    void shouldDeleteByKey();
    void shouldEditByKeyOrDoubleClick_data();
    void shouldEditByKeyOrDoubleClick();
};

void IPManageKeysTest::shouldBeUsableByKeyboard()
{
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        QApplication::setActiveWindow(&shown);
        QStringList stops;
        for (int n = 0; n < 6; ++n) {
            stops.append(shown.focusWidget()->accessibleName());
            QTest::keyClick(shown.focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(stops, QStringList({QStringLiteral("Add"), QStringLiteral("Clear"),
                                     QStringLiteral("Import"), QStringLiteral("Export"),
                                     QStringLiteral("IP addresses"), QStringLiteral("Add")}));
        QTest::keyClick(shown.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(shown.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(shown.focusWidget(), &drive.view());
        QTest::keyClick(&drive.view(), Qt::Key_Down);
        QTest::keyClick(&drive.view(), Qt::Key_Down);
        const QImage before = drive.view().viewport()->grab().toImage();
        QTest::keyClick(&drive.view(), Qt::Key_Up, Qt::ControlModifier);
        QVERIFY(before != drive.view().viewport()->grab().toImage());
        while (shown.focusWidget() != drive.button("Delete"))
            QTest::keyClick(shown.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(shown.focusWidget(), Qt::Key_Space);
        QCOMPARE(test.host().ipList.size(), 2);
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageKeysTest::shouldPressButtonsByAltKeys()
{
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            QApplication::setActiveWindow(&shown);
            const ManageDriver drive(shown);
            QSignalSpy edits(drive.button("Edit"), &QAbstractButton::clicked);
            QTest::keyClick(&drive.view(), Qt::Key_E, Qt::AltModifier);
            drive.clickRow(1);
            QSignalSpy deletions(drive.button("Delete"), &QAbstractButton::clicked);
            QTest::keyClick(&drive.view(), Qt::Key_D, Qt::AltModifier);
            QTRY_COMPARE(deletions.count(), 1);
            QCOMPARE(edits.count(), 0);
            QCOMPARE(drive.rows(), 2);
            QTest::keyClick(&drive.view(), Qt::Key_A, Qt::AltModifier);
            drive.close();
        })
        .thenEscape();
    QCOMPARE(dialog.exec(), 0);
}

void IPManageKeysTest::shouldShowTheFocusOfTheTableWhole()
{
    ApplyHostTheme(*qApp);
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        QApplication::setActiveWindow(&shown);
        const ManageDriver drive(shown);
        drive.view().setFocus();
        const QImage image = shown.grab().toImage();
        const QRect ring = drive.view().geometry().adjusted(1, 0, -1, -1);
        const QColor accent = hostColors().accent;
        QCOMPARE(image.pixelColor(ring.center().x(), ring.top()), accent);
        QCOMPARE(image.pixelColor(ring.center().x(), ring.bottom()), accent);
        QCOMPARE(image.pixelColor(ring.left(), ring.center().y()), accent);
        QCOMPARE(image.pixelColor(ring.right(), ring.center().y()), accent);
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
    qApp->setStyleSheet(QString());
}

void IPManageKeysTest::shouldDeleteByKey()
{
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        QApplication::setActiveWindow(&shown);
        const ManageDriver drive(shown);
        drive.clickRow(0);
        drive.clickRow(0, Qt::ControlModifier);
        QTest::keyClick(&drive.view(), Qt::Key_Delete);
        QCOMPARE(drive.rows(), 3);
        drive.clickRow(0);
        drive.clickRow(1, Qt::ControlModifier);
        QTest::keyClick(&drive.view(), Qt::Key_Delete);
        QCOMPARE(drive.rows(), 1);
        QCOMPARE(drive.cell(0, 0), QStringLiteral("10.0.0.3"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.host().callCount(QStringLiteral("DeleteIPAddress")), 2);
    QCOMPARE(test.host().callCount(QStringLiteral("SaveIPList")), 0);
}

void IPManageKeysTest::shouldEditByKeyOrDoubleClick_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("F2") << true;
    QTest::newRow("double click") << false;
}

void IPManageKeysTest::shouldEditByKeyOrDoubleClick()
{
    QFETCH(bool, byKey);
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    const auto edit = [&](const ManageDriver& drive, int row, Qt::KeyboardModifiers modifiers) {
        drive.clickRow(row, modifiers);
        if (byKey) {
            QTest::keyClick(&drive.view(), Qt::Key_F2);
        } else {
            QTest::mouseDClick(drive.view().viewport(), Qt::LeftButton, modifiers,
                               drive.view().visualRect(drive.view().currentIndex()).center());
        }
    };
    int edited = 0;
    test.driver.then([&](QWidget& shown) {
        QApplication::setActiveWindow(&shown);
        const ManageDriver drive(shown);
        drive.clickRow(0);
        edit(drive, 2, Qt::ShiftModifier);
        QCOMPARE(edited, 0);
        test.driver.then([&](QWidget& entry) {
            QCOMPARE(entry.windowTitle(), QStringLiteral("Change IP address"));
            QCOMPARE(addressField(entry)->text(), QStringLiteral("10.0.0.2"));
            ++edited;
            QTest::keyClick(&entry, Qt::Key_Escape);
        });
        edit(drive, 1, Qt::NoModifier);
        QCOMPARE(edited, 1);
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(IPManageKeysTest)
#include "tst_ipmanagekeys.moc"
