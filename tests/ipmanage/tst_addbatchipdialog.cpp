#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "host/widgets/SpinBox.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

namespace {

CSpinBox* countField(const QWidget& dialog)
{
    return dialog.findChild<CSpinBox*>();
}

/// Fills the form by typing.
void fill(QWidget& dialog, int count, const QString& start)
{
    CSpinBox* field = countField(dialog);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, QString::number(count));
    retype(addressField(dialog), start);
}

QStringList dotted(const QList<quint32>& addresses)
{
    QStringList texts;
    for (const quint32 address : addresses)
        texts.append(addressText(address));
    return texts;
}

/// Returns "10.0.0.1" to "10.0.0.3" for "10.0.0.", 1, 3.
QStringList range(const QString& prefix, int first, int last)
{
    QStringList texts;
    for (int octet = first; octet <= last; ++octet)
        texts.append(prefix + QString::number(octet));
    return texts;
}

} // namespace

class AddBatchIPDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldHaveTheSameTitleInBothModes_data();
    void shouldHaveTheSameTitleInBothModes();
    void shouldLimitTheCount_data();
    void shouldLimitTheCount();
    void shouldRefuseAnEmptyStart();
    void shouldCarryIntoTheNextThirdOctet();
    void shouldSkipRejectedAddresses();
    void shouldAddEachAddressAsItIsFound();
    void shouldEndWithoutAFreeAddress();
    void shouldContinueAfterTheEndOfTheAddressSpace();
    void shouldChangeNothingWhenCancelled();
    void shouldFollowTheLanguage();
};

void AddBatchIPDialogTest::shouldHaveTheSameTitleInBothModes_data()
{
    QTest::addColumn<bool>("forList");
    QTest::newRow("list") << true;
    QTest::newRow("processors") << false;
}

void AddBatchIPDialogTest::shouldHaveTheSameTitleInBothModes()
{
    QFETCH(bool, forList);
    DialogTest test;
    CAddBatchIPDialog dialog(forList, &test.window);
    test.driver.then([&](QWidget& shown) {
        QCOMPARE(shown.windowTitle(), QStringLiteral("Custom add processor"));
        QCOMPARE(shown.size(), QSize(260, 146));
        QCOMPARE(countField(shown)->size(), QSize(172, 24));
        QCOMPARE(countField(shown)->accessibleName(), QStringLiteral("Number"));
        QCOMPARE(countField(shown)->value(), 1);
        QVERIFY(countField(shown)->y() < addressField(shown)->y());
        QVERIFY(!addressField(shown)->text().isEmpty());
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void AddBatchIPDialogTest::shouldLimitTheCount_data()
{
    QTest::addColumn<bool>("forList");
    QTest::addColumn<int>("taken");
    QTest::addColumn<int>("most");
    QTest::newRow("empty list") << true << 0 << 255;
    QTest::newRow("250 entries") << true << 250 << 5;
    QTest::newRow("254 entries") << true << 254 << 1;
    QTest::newRow("255 entries") << true << 255 << 1;
    QTest::newRow("300 entries") << true << 300 << 1;
    QTest::newRow("a host that counts wrongly") << true << -7 << 255;
    QTest::newRow("no processors") << false << 0 << 255;
    QTest::newRow("250 processors") << false << 250 << 5;
    QTest::newRow("255 processors") << false << 255 << 1;
}

void AddBatchIPDialogTest::shouldLimitTheCount()
{
    QFETCH(bool, forList);
    QFETCH(int, taken);
    QFETCH(int, most);
    DialogTest test;
    if (forList) {
        test.host().ipCount = taken;
    } else {
        QList<ProcessorNode> processors;
        for (int n = 1; n <= taken; ++n)
            processors.append(testProcessor(static_cast<quint32>(n)));
        test.host().setProject({}, processors);
    }
    test.host().clearCalls();
    CAddBatchIPDialog dialog(forList, &test.window);
    QCOMPARE(test.host().callCount(QStringLiteral("GetIPCount")), forList ? 1 : 0);
    QCOMPARE(test.host().callCount(QStringLiteral("GetAllProcessorNodes")), forList ? 0 : 1);
    test.driver.then([&](QWidget& shown) {
        QCOMPARE(countField(shown)->minimum(), 1);
        QCOMPARE(countField(shown)->maximum(), most);
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void AddBatchIPDialogTest::shouldRefuseAnEmptyStart()
{
    DialogTest test;
    CAddBatchIPDialog dialog(true, &test.window);
    const auto empty = [](QWidget& shown) { retype(addressField(shown), QString()); };
    QCOMPARE(test.refusal(dialog, empty), QStringLiteral("IP address is unreasonable."));
    QCOMPARE(test.asked(), QStringList());
}

void AddBatchIPDialogTest::shouldCarryIntoTheNextThirdOctet()
{
    DialogTest test;
    CAddBatchIPDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        fill(shown, 10, QStringLiteral("10.0.7.250"));
        test.host().clearCalls();
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    const QStringList run =
        range(QStringLiteral("10.0.7."), 250, 255) + range(QStringLiteral("10.0.8."), 1, 4);
    QCOMPARE(dotted(dialog.addresses()), run);
    QStringList checks;
    for (const QString& address : run) {
        if (address != QLatin1String("10.0.8.1"))
            checks.append(QStringLiteral("CheckIPAddress(%1,true)").arg(address));
    }
    QCOMPARE(test.asked(), checks);
}

void AddBatchIPDialogTest::shouldSkipRejectedAddresses()
{
    DialogTest test;
    CAddBatchIPDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        fill(shown, 4, QStringLiteral("10.0.0.10"));
        test.host().checkIp = [](quint32 address, bool) {
            return address % 2 != 0 ? quint32{IPCHECK_USED} : 0;
        };
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dotted(dialog.addresses()),
             QStringList({QStringLiteral("10.0.0.10"), QStringLiteral("10.0.0.12"),
                          QStringLiteral("10.0.0.14"), QStringLiteral("10.0.0.16")}));
}

void AddBatchIPDialogTest::shouldAddEachAddressAsItIsFound()
{
    DialogTest test;
    CAddBatchIPDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        fill(shown, 3, QStringLiteral("10.0.0.254"));
        test.host().clearCalls();
        QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.asked(), QStringList({QStringLiteral("CheckIPAddress(10.0.0.254,false)"),
                                        QStringLiteral("AddIPAddress(10.0.0.254())"),
                                        QStringLiteral("CheckIPAddress(10.0.0.255,false)"),
                                        QStringLiteral("AddIPAddress(10.0.0.255())"),
                                        QStringLiteral("AddIPAddress(10.0.1.1())"),
                                        QStringLiteral("SaveIPList")}));
    QCOMPARE(dialog.addresses(), QList<quint32>());
}

void AddBatchIPDialogTest::shouldEndWithoutAFreeAddress()
{
    DialogTest test;
    CAddBatchIPDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        fill(shown, 255, QStringLiteral("10.0.250.10"));
        test.host().checkIp = [](quint32 address, bool) {
            return address != 0x0A00FA0A ? quint32{IPCHECK_USED} : 0;
        };
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    // The first address of each third octet up to 255 is not checked.
    QCOMPARE(dotted(dialog.addresses()),
             QStringList({QStringLiteral("10.0.250.10"), QStringLiteral("10.0.251.1"),
                          QStringLiteral("10.0.252.1"), QStringLiteral("10.0.253.1"),
                          QStringLiteral("10.0.254.1"), QStringLiteral("10.0.255.1")}));
}

void AddBatchIPDialogTest::shouldContinueAfterTheEndOfTheAddressSpace()
{
    DialogTest test;
    CAddBatchIPDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        fill(shown, 5, QStringLiteral("255.254.255.254"));
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dotted(dialog.addresses()),
             QStringList({QStringLiteral("255.254.255.254"), QStringLiteral("255.254.255.255"),
                          QStringLiteral("255.255.0.2"), QStringLiteral("255.255.0.3")}));
}

void AddBatchIPDialogTest::shouldChangeNothingWhenCancelled()
{
    DialogTest test;
    CAddBatchIPDialog dialog(true, &test.window);
    test.host().clearCalls();
    test.driver.thenEscape();
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void AddBatchIPDialogTest::shouldFollowTheLanguage()
{
    DialogTest test;
    CAddBatchIPDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(shown.windowTitle(), QStringLiteral("自定义添加处理器"));
        QCOMPARE(countField(shown)->accessibleName(), QStringLiteral("数量"));
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(AddBatchIPDialogTest)
#include "tst_addbatchipdialog.moc"
