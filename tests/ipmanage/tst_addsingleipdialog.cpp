#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/LocalAddresses.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

class AddSingleIPDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldHaveANameFieldForTheListOnly_data();
    void shouldHaveANameFieldForTheListOnly();
    void shouldProposeTheNextFreeAddress_data();
    void shouldProposeTheNextFreeAddress();
    void shouldProposeNothingWhenNothingIsFree();
    void shouldAddToTheListAndSave();
    void shouldReturnTheAddressForAProcessor();
    void shouldLetTheHostCheckAnIncompleteAddress();
    void shouldStayOpenWhenTheListIsTooLong_data();
    void shouldStayOpenWhenTheListIsTooLong();
    void shouldChangeNothingWhenCancelled_data();
    void shouldChangeNothingWhenCancelled();
    void shouldFollowTheLanguage();
};

void AddSingleIPDialogTest::shouldHaveANameFieldForTheListOnly_data()
{
    QTest::addColumn<bool>("forList");
    QTest::addColumn<QSize>("size");
    QTest::newRow("list") << true << QSize(260, 146);
    QTest::newRow("processor") << false << QSize(260, 114);
}

void AddSingleIPDialogTest::shouldHaveANameFieldForTheListOnly()
{
    QFETCH(bool, forList);
    QFETCH(QSize, size);
    DialogTest test;
    CAddSingleIPDialog dialog(forList, &test.window);
    test.driver.then([&](QWidget& shown) {
        QCOMPARE(shown.size(), size);
        QCOMPARE(shown.minimumSize(), size);
        QCOMPARE(shown.maximumSize(), size);
        QCOMPARE(shown.windowTitle(), QStringLiteral("Add IP"));
        QCOMPARE(addressField(shown)->size(), QSize(172, 24));
        QCOMPARE(nameField(shown) != nullptr, forList);
        if (forList) {
            QCOMPARE(nameField(shown)->size(), QSize(172, 24));
            typeInto(nameField(shown), QString(40, QLatin1Char('x')));
            QCOMPARE(nameField(shown)->text(), QString(32, QLatin1Char('x')));
        }
        QVERIFY(buttonOf(shown, QStringLiteral("OK"))->isEnabled());
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void AddSingleIPDialogTest::shouldProposeTheNextFreeAddress_data()
{
    QTest::addColumn<bool>("forList");
    QTest::newRow("list") << true;
    QTest::newRow("processor") << false;
}

void AddSingleIPDialogTest::shouldProposeTheNextFreeAddress()
{
    QFETCH(bool, forList);
    DialogTest test;
    int refusals = 2;
    bool flag = forList;
    test.host().checkIp = [&](quint32, bool processorMode) -> quint32 {
        flag = processorMode;
        return refusals-- > 0 ? quint32{IPCHECK_USED} : 0;
    };
    test.host().clearCalls();
    const CAddSingleIPDialog dialog(forList, &test.window);
    const QStringList asked = test.asked();
    const QString text = addressField(dialog)->text();
    QCOMPARE(flag, !forList);
    QCOMPARE(test.host().callCount(QStringLiteral("RefreshIPList")), forList ? 1 : 0);
    QCOMPARE(asked.size(), forList ? 4 : 3);
    QCOMPARE(asked.first().startsWith(QLatin1String("RefreshIPList")), forList);
    QCOMPARE(asked.last(),
             QStringLiteral("CheckIPAddress(%1,%2)")
                 .arg(text, forList ? QStringLiteral("false") : QStringLiteral("true")));
    QCOMPARE(dialog.address(), addressOfText(text));
    const quint32 base = proposalBase(localAddresses());
    if ((base & 0xFF) < 253)
        QCOMPARE(dialog.address() & 0xFF, (base & 0xFF) + 3);
}

void AddSingleIPDialogTest::shouldProposeNothingWhenNothingIsFree()
{
    DialogTest test;
    test.host().checkIp = [](quint32, bool) { return quint32{IPCHECK_USED}; };
    test.host().clearCalls();
    const CAddSingleIPDialog dialog(false, &test.window);
    QCOMPARE(addressField(dialog)->text(), QString());
    QCOMPARE(dialog.address(), 0u);
    QCOMPARE(test.host().callCount(QStringLiteral("CheckIPAddress")), 257);
}

void AddSingleIPDialogTest::shouldAddToTheListAndSave()
{
    DialogTest test;
    CAddSingleIPDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("192.168.7.20"));
        typeInto(nameField(shown), QStringLiteral("Hall (left), 2"));
        test.host().clearCalls();
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.asked(),
             QStringList({QStringLiteral("CheckIPAddress(192.168.7.20,false)"),
                          QStringLiteral("GetIPCount(0)"),
                          QStringLiteral("AddIPAddress(192.168.7.20(Hall (left), 2))"),
                          QStringLiteral("SaveIPList")}));
}

void AddSingleIPDialogTest::shouldReturnTheAddressForAProcessor()
{
    DialogTest test;
    CAddSingleIPDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("10.0.0.9"));
        test.host().clearCalls();
        QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dialog.address(), 0x0A000009u);
    QCOMPARE(test.asked(), QStringList(QStringLiteral("CheckIPAddress(10.0.0.9,true)")));
}

void AddSingleIPDialogTest::shouldLetTheHostCheckAnIncompleteAddress()
{
    DialogTest test;
    CAddSingleIPDialog dialog(true, &test.window);
    const auto cutShort = [&](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("10.0.0"));
        test.host().checkIp = [](quint32, bool) { return quint32{IPCHECK_STARTS_WITH_ZERO}; };
    };
    QCOMPARE(test.refusal(dialog, cutShort), QStringLiteral("The IP address cannot start with 0."));
    QCOMPARE(test.asked(), QStringList(QStringLiteral("CheckIPAddress(0.0.0.0,false)")));
}

void AddSingleIPDialogTest::shouldStayOpenWhenTheListIsTooLong_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("added");
    QTest::newRow("254") << 254 << true;
    QTest::newRow("255") << 255 << true;
    QTest::newRow("256") << 256 << false;
}

void AddSingleIPDialogTest::shouldStayOpenWhenTheListIsTooLong()
{
    QFETCH(int, count);
    QFETCH(bool, added);
    DialogTest test;
    test.host().ipCount = count;
    CAddSingleIPDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("10.0.0.9"));
        clickButton(shown, QStringLiteral("OK"));
        QCOMPARE(shown.isVisible(), !added);
        QCOMPARE(addressField(shown)->text(), QStringLiteral("10.0.0.9"));
        if (!added)
            QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), added ? 1 : 0);
    QCOMPARE(test.host().callCount(QStringLiteral("AddIPAddress")), added ? 1 : 0);
    QCOMPARE(test.host().callCount(QStringLiteral("SaveIPList")), added ? 1 : 0);
}

void AddSingleIPDialogTest::shouldChangeNothingWhenCancelled_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("Escape") << QString();
    QTest::newRow("Cancel") << QStringLiteral("Cancel");
    QTest::newRow("Close") << QStringLiteral("Close");
}

void AddSingleIPDialogTest::shouldChangeNothingWhenCancelled()
{
    QFETCH(QString, button);
    DialogTest test;
    CAddSingleIPDialog dialog(true, &test.window);
    test.host().clearCalls();
    test.driver.then([&](QWidget& shown) {
        if (button.isEmpty())
            QTest::keyClick(&shown, Qt::Key_Escape);
        else
            clickButton(shown, button);
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void AddSingleIPDialogTest::shouldFollowTheLanguage()
{
    DialogTest test;
    CAddSingleIPDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        {
            const Chinese chinese;
            QVERIFY(chinese.isLoaded());
            QTRY_COMPARE(shown.windowTitle(), QStringLiteral("添加 IP"));
            QVERIFY(nameField(shown));
            QCOMPARE(addressField(shown)->accessibleName(), QStringLiteral("IP 地址"));
            QVERIFY(buttonOf(shown, QStringLiteral("确定")));
        }
        QTRY_COMPARE(shown.windowTitle(), QStringLiteral("Add IP"));
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(AddSingleIPDialogTest)
#include "tst_addsingleipdialog.moc"
