#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "ipmanage/ModifyIPDialog.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/support/Chinese.h"

namespace {

const QString kOwn = QStringLiteral("10.0.0.1");
const QString kOther = QStringLiteral("10.0.0.2");

/// Fills the list with two entries, whose addresses count as used.
void fillList(FakeHandler& host)
{
    host.ipList = QStringList({kOwn + QStringLiteral("(Hall)"), kOther + QStringLiteral("()")});
    host.checkIp = [&host](quint32 address, bool) {
        for (const QString& entry : qAsConst(host.ipList)) {
            if (addressOfText(addressOfEntry(entry)) == address)
                return quint32{IPCHECK_USED};
        }
        return quint32{0};
    };
    host.clearCalls();
}

/// Retypes the name in the next dialog and presses `button`.
void renameTo(DialogTest& test, const QString& name, const QString& button)
{
    test.driver.then([&test, name, button](QWidget& shown) {
        retype(nameField(shown), name);
        test.host().clearCalls();
        clickButton(shown, button);
    });
}

} // namespace

class ModifyIPDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowTheEntry();
    void shouldLoadEntriesOfAnyForm_data();
    void shouldLoadEntriesOfAnyForm();
    void shouldAcceptTheUnchangedAddressWithANewName();
    void shouldStoreANewAddressWithoutSaving();
    void shouldRefuseAnotherUsedAddress();
    void shouldRefuseTheUnchangedAddressForOtherReasons();
    void shouldRefuseAnEmptyAddress();
    void shouldOpenBesideItsParent();
    void shouldChangeNothingWhenCancelled();
    void shouldFollowTheLanguage();
};

void ModifyIPDialogTest::shouldShowTheEntry()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    QCOMPARE(test.asked(),
             QStringList({QStringLiteral("RefreshIPList"), QStringLiteral("GetIPEntry(0)")}));
    test.driver.then([&](QWidget& shown) {
        QCOMPARE(shown.windowTitle(), QStringLiteral("Change IP address"));
        QCOMPARE(shown.size(), QSize(260, 146));
        QCOMPARE(addressField(shown)->text(), kOwn);
        QCOMPARE(addressField(shown)->size(), QSize(172, 24));
        QCOMPARE(nameField(shown)->text(), QStringLiteral("Hall"));
        QCOMPARE(nameField(shown)->maxLength(), 32);
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

void ModifyIPDialogTest::shouldLoadEntriesOfAnyForm_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("address");
    QTest::newRow("plain") << QStringLiteral("10.0.0.1(Hall)") << kOwn;
    QTest::newRow("several parentheses") << QStringLiteral("10.0.0.1(Hall (left))") << kOwn;
    QTest::newRow("none") << kOwn << kOwn;
    QTest::newRow("no address") << QStringLiteral("(Hall)") << QString();
    QTest::newRow("nonsense") << QStringLiteral("what?") << QString();
    QTest::newRow("no such row") << QString() << QString();
}

void ModifyIPDialogTest::shouldLoadEntriesOfAnyForm()
{
    QFETCH(QString, entry);
    QFETCH(QString, address);
    DialogTest test;
    test.host().ipList = QStringList(entry);
    const CModifyIPDialog dialog(0, QString(), &test.window);
    QCOMPARE(addressField(dialog)->text(), address);
}

void ModifyIPDialogTest::shouldAcceptTheUnchangedAddressWithANewName()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    renameTo(test, QStringLiteral("Foyer"), QStringLiteral("OK"));
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.asked(), QStringList({QStringLiteral("CheckIPAddress(10.0.0.1,false)"),
                                        QStringLiteral("ModifyIPAddress(0,10.0.0.1(Foyer))")}));
}

void ModifyIPDialogTest::shouldStoreANewAddressWithoutSaving()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(1, QString(), &test.window);
    test.driver.then([&](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("10.0.0.77"));
        test.host().clearCalls();
        QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    });
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(test.asked(), QStringList({QStringLiteral("CheckIPAddress(10.0.0.77,false)"),
                                        QStringLiteral("ModifyIPAddress(1,10.0.0.77())")}));
}

void ModifyIPDialogTest::shouldRefuseAnotherUsedAddress()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    const auto useAnother = [](QWidget& shown) { retype(addressField(shown), kOther); };
    QCOMPARE(test.refusal(dialog, useAnother), QStringLiteral("IP address has been used."));
    QCOMPARE(addressField(dialog)->text(), kOther);
    QCOMPARE(test.host().callCount(QStringLiteral("ModifyIPAddress")), 0);
}

void ModifyIPDialogTest::shouldRefuseTheUnchangedAddressForOtherReasons()
{
    DialogTest test;
    fillList(test.host());
    test.host().checkIp = [](quint32, bool) { return quint32{IPCHECK_GATEWAY}; };
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    QCOMPARE(test.refusal(dialog),
             QStringLiteral("The IP address is the same as the default gateway."));
    QCOMPARE(test.host().callCount(QStringLiteral("ModifyIPAddress")), 0);
}

void ModifyIPDialogTest::shouldRefuseAnEmptyAddress()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    const auto cutShort = [](QWidget& shown) {
        retype(addressField(shown), QStringLiteral("10.0.0"));
    };
    QCOMPARE(test.refusal(dialog, cutShort), QStringLiteral("IP address is unreasonable."));
    QCOMPARE(test.asked(), QStringList());
}

void ModifyIPDialogTest::shouldOpenBesideItsParent()
{
    DialogTest test;
    test.window.setGeometry(500, 450, 300, 200);
    const CModifyIPDialog dialog(0, QString(), &test.window);
    // The position of a window includes its frame, which depends on the platform.
    QCOMPARE(dialog.pos(), test.window.pos() + QPoint(-300 + 37, -200 + 83));
}

void ModifyIPDialogTest::shouldChangeNothingWhenCancelled()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    renameTo(test, QStringLiteral("Foyer"), QStringLiteral("Cancel"));
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.asked(), QStringList());
}

void ModifyIPDialogTest::shouldFollowTheLanguage()
{
    DialogTest test;
    fillList(test.host());
    CModifyIPDialog dialog(0, QStringLiteral("Hall"), &test.window);
    test.driver.then([&](QWidget& shown) {
        const Chinese chinese;
        QVERIFY(chinese.isLoaded());
        QTRY_COMPARE(shown.windowTitle(), QStringLiteral("修改 IP 地址"));
        QVERIFY(nameField(shown));
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(ModifyIPDialogTest)
#include "tst_modifyipdialog.moc"
