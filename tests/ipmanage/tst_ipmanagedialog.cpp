#include "Interface/IPStatusCodes.h"
#include "base/IPText.h"
#include "tests/ipmanage/ManageTest.h"
#include "tests/support/Chinese.h"

#include <QFile>
#include <QHeaderView>
#include <QIcon>
#include <QImage>

namespace {

const QString kFull =
    QStringLiteral("The number of IP addresses exceeds 255, and some IP addresses are not added.");

} // namespace

class IPManageDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldHaveItsSizesAndTexts();
    void shouldHaveItsIcons();
    void shouldNameItsButtonsAndMenu();
    void shouldEnableAddAndImportForAnEmptyList();
    void shouldFollowTheSelection();
    void shouldReadOnline_data();
    void shouldReadOnline();
    void shouldAddOne();
    void shouldAddSeveral();
    void shouldNotAddToAFullList_data();
    void shouldNotAddToAFullList();
    void shouldStillReadOnlineIntoAFullList();
    void shouldEditTheCurrentEntry();
    void shouldDeleteTheSelectedEntries();
    void shouldDeleteAllSelectedEntriesAtOnce();
    void shouldDeleteEntriesOfAnyForm();
    void shouldClearAfterAQuestion_data();
    void shouldClearAfterAQuestion();
    void shouldFollowTheLanguage();
};

void IPManageDialogTest::shouldHaveItsIcons()
{
    DialogTest test;
    const CIPManageDialog dialog(&test.window);
    for (const char* name : {"Add", "Edit", "Delete", "Clear", "Import", "Export"}) {
        const QToolButton* tool = nullptr;
        for (const QToolButton* candidate : dialog.findChildren<QToolButton*>()) {
            if (candidate->toolTip() == QLatin1String(name))
                tool = candidate;
        }
        QVERIFY(tool);
        const QString path = QStringLiteral(":/Image/Target/IPManage/%1/%2.svg");
        const auto drawn = [&](const char* state) {
            return QIcon(path.arg(QLatin1String(name), QLatin1String(state)))
                .pixmap(20, 20)
                .toImage();
        };
        QCOMPARE(tool->icon().pixmap(20, 20).toImage(), drawn("normal"));
        if (QFile::exists(path.arg(QLatin1String(name), QLatin1String("disabled")))) {
            QCOMPARE(tool->icon().pixmap(QSize(20, 20), QIcon::Disabled).toImage(),
                     drawn("disabled"));
        }
        const bool hasDisabled = qstrcmp(name, "Add") != 0 && qstrcmp(name, "Import") != 0;
        QCOMPARE(QFile::exists(path.arg(QLatin1String(name), QLatin1String("disabled"))),
                 hasDisabled);
    }
}

void IPManageDialogTest::shouldHaveItsSizesAndTexts()
{
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        QCOMPARE(shown.windowTitle(), QStringLiteral("IP address management"));
        QCOMPARE(shown.size(), QSize(648, 393));
        QVERIFY(drive.view().height() >= 326);
        QCOMPARE(drive.view().geometry().bottom(), shown.rect().bottom());
        QCOMPARE(drive.view().objectName(), QStringLiteral("IPManage"));
        QCOMPARE(drive.view().columnWidth(0), 238);
        QCOMPARE(drive.view().columnWidth(1), 406);
        QVERIFY(drive.view().paintAlternatingRowColorsForEmptyArea());
        const QHeaderView* header = drive.view().horizontalHeader();
        QCOMPARE(header->sectionResizeMode(0), QHeaderView::Fixed);
        QVERIFY(!header->sectionsClickable());
        QCOMPARE(drive.view().model()->headerData(0, Qt::Horizontal).toString(),
                 QStringLiteral("IP address"));
        QCOMPARE(drive.view().model()->headerData(1, Qt::Horizontal).toString(),
                 QStringLiteral("Name"));
        const QWidget* toolBar = drive.button("Add")->parentWidget();
        QCOMPARE(toolBar->height(), 37);
        int left = 14;
        for (const char* name : {"Add", "Edit", "Delete", "Clear", "Import", "Export"}) {
            const auto* tool = qobject_cast<QToolButton*>(drive.button(name));
            QCOMPARE(tool->x(), left);
            QCOMPARE(tool->y(), 8);
            QCOMPARE(tool->size(), QSize(24, 24));
            QCOMPARE(tool->iconSize(), QSize(20, 20));
            QCOMPARE(tool->property("ToolLocation").toInt(), 3);
            QVERIFY(!tool->icon().isNull());
            left += tool->width() + 5;
        }
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldNameItsButtonsAndMenu()
{
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            const auto* add = qobject_cast<QToolButton*>(drive.button("Add"));
            QCOMPARE(add->toolTip(), QStringLiteral("Add"));
            QCOMPARE(add->popupMode(), QToolButton::InstantPopup);
            QCOMPARE(add->arrowType(), Qt::NoArrow);
            drive.click("Add");
            drive.close();
        })
        .then([&](QWidget& menu) {
            QCOMPARE(menu.height(), 104);
            QStringList texts;
            for (const QAction* action : menu.actions())
                texts.append(action->text());
            QCOMPARE(texts, QStringList({QStringLiteral("Read IP from online processors"),
                                         QStringLiteral("Add an IP address..."),
                                         QStringLiteral("Add multiple IP addresses...")}));
            QTest::keyClick(&menu, Qt::Key_Escape);
        });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldEnableAddAndImportForAnEmptyList()
{
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        QCOMPARE(drive.rows(), 0);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Import"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldFollowTheSelection()
{
    DialogTest test;
    test.host().ipList = manageEntries(4);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Clear Import Export"));
        drive.clickRow(1);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Edit Delete Clear Import Export"));
        drive.clickRow(3, Qt::ControlModifier);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Delete Clear Import Export"));
        drive.clickRow(0, Qt::ShiftModifier);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Delete Clear Import Export"));
        drive.clickRow(2);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Edit Delete Clear Import Export"));
        drive.clickRow(2, Qt::ControlModifier);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Clear Import Export"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldReadOnline_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("reloads");
    QTest::newRow("success") << 0u << QString() << true;
    QTest::newRow("full") << quint32{IPLIST_FULL} << kFull << false;
    QTest::newRow("nobody online")
        << quint32{IPLIST_ONLINE_EMPTY}
        << QStringLiteral("Online IP gets successfully, but the number of IP addresses is 0.")
        << false;
    QTest::newRow("any other") << 0xE0831029u << QString() << false;
}

void IPManageDialogTest::shouldReadOnline()
{
    QFETCH(quint32, code);
    QFETCH(QString, message);
    QFETCH(bool, reloads);
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.host().readOnlineResult = code;
    QString shownMessage;
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        test.host().ipList = manageEntries(2);
        test.host().clearCalls();
        if (!message.isEmpty())
            test.driver.thenReadMessage(shownMessage);
        drive.pickAdd(test.driver, 0);
        QCOMPARE(test.host().callCount(QStringLiteral("ReadOnlineIPAddresses")), 1);
        QCOMPARE(test.host().callCount(QStringLiteral("GetIPNameLists")), reloads ? 1 : 0);
        QCOMPARE(drive.rows(), reloads ? 2 : 0);
        QCOMPARE(drive.enabled().contains(QLatin1String("Export")), reloads);
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(shownMessage, message);
}

void IPManageDialogTest::shouldAddOne()
{
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.pickAdd(test.driver, 1);
            QCOMPARE(drive.rows(), 1);
            QCOMPARE(drive.cell(0, 0), QStringLiteral("10.0.0.5"));
            QCOMPARE(drive.cell(0, 1), QStringLiteral("Hall"));
            QCOMPARE(drive.enabled(), QStringLiteral("Add Clear Import Export"));
            drive.close();
        })
        .then([&](QWidget& entry) {
            QCOMPARE(entry.windowTitle(), QStringLiteral("Add IP"));
            retype(addressField(entry), QStringLiteral("10.0.0.5"));
            typeInto(nameField(entry), QStringLiteral("Hall"));
            clickButton(entry, QStringLiteral("OK"));
        });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.host().callCount(QStringLiteral("SaveIPList")), 1);
}

void IPManageDialogTest::shouldAddSeveral()
{
    DialogTest test;
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.pickAdd(test.driver, 2);
            QCOMPARE(drive.rows(), 1);
            QCOMPARE(drive.cell(0, 0), QStringLiteral("10.0.0.5"));
            QCOMPARE(drive.cell(0, 1), QString());
            drive.close();
        })
        .then([&](QWidget& entry) {
            QCOMPARE(entry.windowTitle(), QStringLiteral("Custom add processor"));
            retype(addressField(entry), QStringLiteral("10.0.0.5"));
            clickButton(entry, QStringLiteral("OK"));
        });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldNotAddToAFullList_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("count");
    QTest::newRow("one, 255") << 1 << 255;
    QTest::newRow("several, 255") << 2 << 255;
    QTest::newRow("one, 300") << 1 << 300;
}

void IPManageDialogTest::shouldNotAddToAFullList()
{
    QFETCH(int, entry);
    QFETCH(int, count);
    DialogTest test;
    test.host().ipList = manageEntries(count);
    CIPManageDialog dialog(&test.window);
    QString message;
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            QCOMPARE(drive.rows(), 255);
            drive.pickAdd(test.driver, entry);
            drive.close();
        })
        .thenReadMessage(message);
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(message, kFull);
    QCOMPARE(test.host().callCount(QStringLiteral("CheckIPAddress")), 0);
}

void IPManageDialogTest::shouldStillReadOnlineIntoAFullList()
{
    DialogTest test;
    test.host().ipList = manageEntries(255);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        drive.pickAdd(test.driver, 0);
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
    QCOMPARE(test.host().callCount(QStringLiteral("ReadOnlineIPAddresses")), 1);
}

void IPManageDialogTest::shouldEditTheCurrentEntry()
{
    DialogTest test;
    test.host().ipList =
        QStringList({QStringLiteral("10.0.0.1(One)"), QStringLiteral("10.0.0.2(Two (left))"),
                     QStringLiteral("10.0.0.3(Three)")});
    test.host().ipNames =
        QStringList({QStringLiteral("One"), QStringLiteral("Two (left)"), QStringLiteral("Three")});
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            drive.clickRow(1);
            drive.click("Edit");
            QCOMPARE(drive.cell(1, 0), QStringLiteral("10.0.0.9"));
            QCOMPARE(drive.enabled(), QStringLiteral("Add Clear Import Export"));
            drive.close();
        })
        .then([&](QWidget& entry) {
            QCOMPARE(addressField(entry)->text(), QStringLiteral("10.0.0.2"));
            QCOMPARE(nameField(entry)->text(), QStringLiteral("Two (left)"));
            retype(addressField(entry), QStringLiteral("10.0.0.9"));
            clickButton(entry, QStringLiteral("OK"));
        });
    QCOMPARE(dialog.exec(), 0);
    QVERIFY(test.asked().contains(QStringLiteral("ModifyIPAddress(1,10.0.0.9(Two (left)))")));
}

void IPManageDialogTest::shouldDeleteTheSelectedEntries()
{
    DialogTest test;
    test.host().ipList = manageEntries(5);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        drive.clickRow(3);
        drive.clickRow(1, Qt::ControlModifier);
        test.host().clearCalls();
        drive.click("Delete");
        QStringList deletions = test.asked().filter(QStringLiteral("DeleteIPAddress"));
        QCOMPARE(deletions, QStringList({QStringLiteral("DeleteIPAddress(10.0.0.4)"),
                                         QStringLiteral("DeleteIPAddress(10.0.0.2)")}));
        QCOMPARE(test.host().callCount(QStringLiteral("SaveIPList")), 0);
        QCOMPARE(drive.rows(), 3);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Clear Import Export"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldDeleteAllSelectedEntriesAtOnce()
{
    DialogTest test;
    test.host().ipList = manageEntries(255);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        drive.clickRow(0);
        QTest::keyClick(&drive.view(), Qt::Key_A, Qt::ControlModifier);
        drive.click("Delete");
        QCOMPARE(test.host().callCount(QStringLiteral("DeleteIPAddress")), 255);
        QCOMPARE(drive.rows(), 0);
        QCOMPARE(drive.enabled(), QStringLiteral("Add Import"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

void IPManageDialogTest::shouldDeleteEntriesOfAnyForm()
{
    DialogTest test;
    test.host().ipList =
        QStringList({QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2(a)(b)"),
                     QStringLiteral("10.0.0.3(厅)"), QStringLiteral("nonsense(x)")});
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        drive.clickRow(0);
        QTest::keyClick(&drive.view(), Qt::Key_A, Qt::ControlModifier);
        test.host().clearCalls();
        drive.click("Delete");
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
    const QStringList deletions = test.asked().filter(QStringLiteral("DeleteIPAddress"));
    QCOMPARE(deletions, QStringList({QStringLiteral("DeleteIPAddress(10.0.0.1)"),
                                     QStringLiteral("DeleteIPAddress(10.0.0.2)"),
                                     QStringLiteral("DeleteIPAddress(10.0.0.3)"),
                                     QStringLiteral("DeleteIPAddress(0.0.0.0)")}));
}

void IPManageDialogTest::shouldClearAfterAQuestion_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("cleared");
    QTest::newRow("yes") << QStringLiteral("Yes") << true;
    QTest::newRow("no") << QStringLiteral("No") << false;
    QTest::newRow("Enter") << QStringLiteral("Enter") << true;
    QTest::newRow("Escape") << QStringLiteral("Escape") << false;
}

void IPManageDialogTest::shouldClearAfterAQuestion()
{
    QFETCH(QString, answer);
    QFETCH(bool, cleared);
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver
        .then([&](QWidget& shown) {
            const ManageDriver drive(shown);
            test.host().clearCalls();
            drive.click("Clear");
            QCOMPARE(drive.rows(), cleared ? 0 : 3);
            QCOMPARE(drive.enabled(), cleared ? QStringLiteral("Add Import")
                                              : QStringLiteral("Add Clear Import Export"));
            drive.close();
        })
        .then([&](QWidget& question) {
            QCOMPARE(messageOf(question),
                     QStringLiteral("Are you sure you want to clear all ips?"));
            QCOMPARE(question.width(), 330);
            if (answer == QLatin1String("Enter"))
                QTest::keyClick(question.focusWidget(), Qt::Key_Return);
            else if (answer == QLatin1String("Escape"))
                QTest::keyClick(&question, Qt::Key_Escape);
            else
                clickButton(question, answer);
        });
    QCOMPARE(dialog.exec(), 0);
    const QStringList expected =
        cleared ? QStringList({QStringLiteral("ClearIPList"), QStringLiteral("SaveIPList")})
                : QStringList();
    QCOMPARE(test.asked().mid(0, expected.size()), expected);
    QCOMPARE(test.host().callCount(QStringLiteral("ClearIPList")), cleared ? 1 : 0);
}

void IPManageDialogTest::shouldFollowTheLanguage()
{
    DialogTest test;
    test.host().ipList = manageEntries(3);
    CIPManageDialog dialog(&test.window);
    test.driver.then([&](QWidget& shown) {
        const ManageDriver drive(shown);
        {
            const Chinese chinese;
            QVERIFY(chinese.isLoaded());
            QTRY_COMPARE(shown.windowTitle(), QStringLiteral("IP 地址管理"));
            const auto* add = qobject_cast<QToolButton*>(buttonOf(shown, QStringLiteral("添加")));
            QVERIFY(add);
            QCOMPARE(add->toolTip(), QStringLiteral("添加"));
            QCOMPARE(add->menu()->actions().at(1)->text(), QStringLiteral("添加一个 IP 地址..."));
            QCOMPARE(drive.view().model()->headerData(1, Qt::Horizontal).toString(),
                     QStringLiteral("名称"));
        }
        QTRY_COMPARE(shown.windowTitle(), QStringLiteral("IP address management"));
        QCOMPARE(drive.view().model()->headerData(1, Qt::Horizontal).toString(),
                 QStringLiteral("Name"));
        drive.close();
    });
    QCOMPARE(dialog.exec(), 0);
}

TSA_TEST_MAIN(IPManageDialogTest)
#include "tst_ipmanagedialog.moc"
