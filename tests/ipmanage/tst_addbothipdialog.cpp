#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "ipmanage/AddBothIpDialog.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

class AddBothIpDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowTwoFields();
    void shouldProposeTwoNeighbours_data();
    void shouldProposeTwoNeighbours();
    void shouldLeaveFieldsEmptyWhenTooFewAreFree_data();
    void shouldLeaveFieldsEmptyWhenTooFewAreFree();
    void shouldRefuseInputWithoutAskingTheHost_data();
    void shouldRefuseInputWithoutAskingTheHost();
    void shouldCheckTheFirstAddressFirst_data();
    void shouldCheckTheFirstAddressFirst();
    void shouldAddBothToTheList();
    void shouldReturnBothAddresses();
    void shouldChangeNothingWhenCancelled();
    void shouldFollowTheLanguage();
};

void AddBothIpDialogTest::shouldShowTwoFields()
{
    DialogTest test;
    CAddBothIpDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        QCOMPARE(shown.size(), QSize(260, 146));
        QCOMPARE(shown.windowTitle(), QStringLiteral("Add IP"));
        QCOMPARE(addressField(shown, 0)->accessibleName(), QStringLiteral("IP 1"));
        QCOMPARE(addressField(shown, 1)->accessibleName(), QStringLiteral("IP 2"));
        QCOMPARE(addressField(shown, 1)->size(), QSize(172, 24));
        QVERIFY(addressField(shown, 0)->y() < addressField(shown, 1)->y());
        QVERIFY(!nameField(shown));
        QVERIFY(buttonOf(shown, QStringLiteral("OK"))->isEnabled());
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void AddBothIpDialogTest::shouldProposeTwoNeighbours_data()
{
    QTest::addColumn<bool>("forList");
    QTest::newRow("list") << true;
    QTest::newRow("processors") << false;
}

void AddBothIpDialogTest::shouldProposeTwoNeighbours()
{
    QFETCH(bool, forList);
    DialogTest test;
    test.host().clearCalls();
    const CAddBothIpDialog dialog(forList, &test.window);
    QStringList expected;
    if (forList)
        expected.append(QStringLiteral("RefreshIPList"));
    for (int n = 0; n < 2; ++n) {
        expected.append(QStringLiteral("CheckIPAddress(%1,%2)")
                            .arg(addressField(dialog, n)->text(),
                                 forList ? QStringLiteral("false") : QStringLiteral("true")));
    }
    QCOMPARE(test.asked(), expected);
    QVERIFY(dialog.addresses().at(0) != 0);
    QVERIFY(dialog.addresses().at(0) < dialog.addresses().at(1));
}

void AddBothIpDialogTest::shouldLeaveFieldsEmptyWhenTooFewAreFree_data()
{
    QTest::addColumn<int>("free");
    QTest::addColumn<int>("questions");
    QTest::newRow("none") << 0 << 258;
    QTest::newRow("one") << 1 << 258;
}

void AddBothIpDialogTest::shouldLeaveFieldsEmptyWhenTooFewAreFree()
{
    QFETCH(int, free);
    QFETCH(int, questions);
    DialogTest test;
    int left = free;
    test.host().checkIp = [&](quint32, bool) { return left-- > 0 ? 0 : quint32{IPCHECK_USED}; };
    test.host().clearCalls();
    const CAddBothIpDialog dialog(false, &test.window);
    QCOMPARE(test.host().callCount(QStringLiteral("CheckIPAddress")), questions);
    QCOMPARE(addressField(dialog, 0)->text().isEmpty(), free == 0);
    QCOMPARE(addressField(dialog, 1)->text(), QString());
    QCOMPARE(dialog.addresses().size(), 2);
}

void AddBothIpDialogTest::shouldRefuseInputWithoutAskingTheHost_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("expected");
    const QString address = QStringLiteral("10.0.0.1");
    const QString incomplete = QStringLiteral("10.0.0");
    QTest::newRow("first empty") << QString() << address
                                 << QStringLiteral("IP address 1 is unreasonable.");
    QTest::newRow("first incomplete")
        << incomplete << address << QStringLiteral("IP address 1 is unreasonable.");
    QTest::newRow("second empty") << address << QString()
                                  << QStringLiteral("IP address 2 is unreasonable.");
    QTest::newRow("both empty") << QString() << QString()
                                << QStringLiteral("IP address 1 is unreasonable.");
    QTest::newRow("equal") << address << address
                           << QStringLiteral("IP address 1 is the same as IP address 2.");
}

void AddBothIpDialogTest::shouldRefuseInputWithoutAskingTheHost()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, expected);
    for (const bool forList : {true, false}) {
        DialogTest test;
        CAddBothIpDialog dialog(forList, &test.window);
        QString message;
        test.driver
            .then([&](QWidget& shown) {
                retype(addressField(shown, 0), first);
                retype(addressField(shown, 1), second);
                const QString typed = addressField(shown, 1)->text();
                test.host().clearCalls();
                clickButton(shown, QStringLiteral("OK"));
                QVERIFY(shown.isVisible());
                QCOMPARE(addressField(shown, 1)->text(), typed);
                QTest::keyClick(&shown, Qt::Key_Escape);
            })
            .thenReadMessage(message);
        QCOMPARE(dialog.exec(), 0);
        QCOMPARE(message, expected);
        QCOMPARE(test.asked(), QStringList());
    }
}

void AddBothIpDialogTest::shouldCheckTheFirstAddressFirst_data()
{
    QTest::addColumn<QStringList>("refused");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("asked");
    const QString one = QStringLiteral("CheckIPAddress(10.0.0.1,false)");
    const QString two = QStringLiteral("CheckIPAddress(10.0.0.2,false)");
    const QStringList first(QStringLiteral("10.0.0.1"));
    const QStringList second(QStringLiteral("10.0.0.2"));
    QTest::newRow("first") << first << QStringLiteral("IP address 1 has been used.")
                           << QStringList(one);
    QTest::newRow("second") << second << QStringLiteral("IP address 2 has been used.")
                            << QStringList({one, two});
    QTest::newRow("both") << first + second << QStringLiteral("IP address 1 has been used.")
                          << QStringList(one);
}

void AddBothIpDialogTest::shouldCheckTheFirstAddressFirst()
{
    QFETCH(QStringList, refused);
    QFETCH(QString, message);
    QFETCH(QStringList, asked);
    DialogTest test;
    CAddBothIpDialog dialog(true, &test.window);
    QString shownMessage;
    test.driver
        .then([&](QWidget& shown) {
            retype(addressField(shown, 0), QStringLiteral("10.0.0.1"));
            retype(addressField(shown, 1), QStringLiteral("10.0.0.2"));
            test.host().checkIp = [&](quint32 address, bool) {
                return refused.contains(addressText(address)) ? quint32{IPCHECK_USED} : 0;
            };
            test.host().clearCalls();
            clickButton(shown, QStringLiteral("OK"));
            QTest::keyClick(&shown, Qt::Key_Escape);
        })
        .thenReadMessage(shownMessage);
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(shownMessage, message);
    QCOMPARE(test.asked(), asked);
}

void AddBothIpDialogTest::shouldAddBothToTheList()
{
    DialogTest test;
    CAddBothIpDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown, 0), QStringLiteral("10.0.0.2"));
        retype(addressField(shown, 1), QStringLiteral("10.0.0.1"));
        test.host().clearCalls();
        clickButton(shown, QStringLiteral("OK"));
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.asked(), QStringList({QStringLiteral("CheckIPAddress(10.0.0.2,false)"),
                                        QStringLiteral("CheckIPAddress(10.0.0.1,false)"),
                                        QStringLiteral("AddIPAddress(10.0.0.2())"),
                                        QStringLiteral("AddIPAddress(10.0.0.1())"),
                                        QStringLiteral("SaveIPList")}));
}

void AddBothIpDialogTest::shouldReturnBothAddresses()
{
    DialogTest test;
    CAddBothIpDialog dialog(false, &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown, 0), QStringLiteral("10.0.0.2"));
        retype(addressField(shown, 1), QStringLiteral("10.0.0.1"));
        test.host().clearCalls();
        QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(dialog.addresses(), QList<quint32>({0x0A000002u, 0x0A000001u}));
    QCOMPARE(test.asked(), QStringList({QStringLiteral("CheckIPAddress(10.0.0.2,true)"),
                                        QStringLiteral("CheckIPAddress(10.0.0.1,true)")}));
}

void AddBothIpDialogTest::shouldChangeNothingWhenCancelled()
{
    DialogTest test;
    CAddBothIpDialog dialog(true, &test.window);
    test.host().clearCalls();
    test.driver.then([](QWidget& shown) { clickButton(shown, QStringLiteral("Cancel")); });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void AddBothIpDialogTest::shouldFollowTheLanguage()
{
    DialogTest test;
    CAddBothIpDialog dialog(true, &test.window);
    test.driver.then([&](QWidget& shown) {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(shown.windowTitle(), QStringLiteral("添加 IP"));
        QVERIFY(buttonOf(shown, QStringLiteral("取消")));
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(AddBothIpDialogTest)
#include "tst_addbothipdialog.moc"
