#include "host/widgets/ComboBox.h"
#include "host/widgets/IPLineEdit.h"
#include "host/widgets/SpinBox.h"
#include "tests/processortree/DrivenTree.h"

namespace {

const QStringList kQuestions = {QStringLiteral("UsesIpAddressing"),
                                QStringLiteral("IsIpManagementAvailable"),
                                QStringLiteral("IsLanUsbMode")};

const QStringList kRequests = {QStringLiteral("AddProcessors"),
                               QStringLiteral("AddProcessorsWithIps"),
                               QStringLiteral("AddProcessorsFromIpList"),
                               QStringLiteral("SetNewProcessorOutputs"),
                               QStringLiteral("AddIPAddress"),
                               QStringLiteral("SaveIPList")};

/// Fills in the addresses 192.168.7.1 onwards, or the number 2, and confirms.
void fillIn(QWidget& dialog)
{
    const auto fields = dialog.findChildren<CIPLineEdit*>();
    for (int n = 0; n < fields.size(); ++n)
        fields.at(n)->setText(QStringLiteral("192.168.7.%1").arg(n + 1));
    if (auto* count = dialog.findChild<CSpinBox*>())
        count->setValue(2);
    if (auto* outputs = dialog.findChild<CComboBox*>())
        outputs->setCurrentIndex(outputs->findData(16));
    clickButton(dialog, QStringLiteral("OK"));
}

} // namespace

Q_DECLARE_METATYPE(AddKind)

class TreeViewAddingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTakeThePathTheHostWants_data();
    void shouldTakeThePathTheHostWants();
    void shouldAddToTheSelectedGroup_data();
    void shouldAddToTheSelectedGroup();
    void shouldProposeTheHostsOutputs();
    void shouldProposeTheOutputsChosenLast();
    void shouldSendNoOutputsThatNobodyChose();
    void shouldStandOnTheNewest_data();
    void shouldStandOnTheNewest();
    void shouldLeaveTheUserWhereHeWent();
    void shouldNotDisturbARename();
    void shouldAddOnlyWhatTheDialogProduced();
    void shouldAddNothingOnceReadOnly();
    void shouldNameANewGroup_data();
    void shouldNameANewGroup();
    void shouldOutliveAViewDestroyedMeanwhile_data();
    void shouldOutliveAViewDestroyedMeanwhile();
    void shouldOutliveAViewDestroyedByANewGroup();
};

void TreeViewAddingTest::shouldTakeThePathTheHostWants_data()
{
    QTest::addColumn<bool>("usesIp");
    QTest::addColumn<bool>("managed");
    QTest::addColumn<bool>("lanUsb");
    QTest::addColumn<AddKind>("kind");
    QTest::addColumn<QString>("requests");
    const AddKind kinds[] = {AddKind::One, AddKind::Two, AddKind::Custom};
    const char* const names[] = {"one", "two", "custom"};
    const char* const byCount[] = {"AddProcessors(10,1)", "AddProcessors(10,2)",
                                   "AddProcessors(10,2) SetNewProcessorOutputs(16)"};
    const char* const byAddress[] = {"AddProcessorsWithIps(10,192.168.7.1)",
                                     "AddProcessorsWithIps(10,192.168.7.1,192.168.7.2)",
                                     "AddProcessorsWithIps(10,192.168.7.1,192.168.7.2)"};
    const char* const fromList[] = {
        "AddIPAddress(192.168.7.1()) SaveIPList() AddProcessorsFromIpList(10,192.168.7.1())",
        "AddIPAddress(192.168.7.1()) AddIPAddress(192.168.7.2()) SaveIPList() "
        "AddProcessorsFromIpList(10,192.168.7.1(),192.168.7.2())",
        "AddIPAddress(192.168.7.1()) AddIPAddress(192.168.7.2()) SaveIPList() "
        "AddProcessorsFromIpList(10,192.168.7.1(),192.168.7.2())"};
    for (int flags = 0; flags < 8; ++flags) {
        const bool usesIp = flags & 1;
        const bool managed = flags & 2;
        const bool lanUsb = flags & 4;
        const auto& requests = managed && !lanUsb ? fromList : usesIp ? byAddress : byCount;
        for (int n = 0; n < 3; ++n) {
            QTest::addRow("%s, ip %d, managed %d, usb %d", names[n], usesIp, managed, lanUsb)
                << usesIp << managed << lanUsb << kinds[n] << requests[n];
        }
    }
}

void TreeViewAddingTest::shouldTakeThePathTheHostWants()
{
    QFETCH(bool, usesIp);
    QFETCH(bool, managed);
    QFETCH(bool, lanUsb);
    QFETCH(AddKind, kind);
    QFETCH(QString, requests);
    const bool hasDialog = usesIp || (managed && !lanUsb) || kind == AddKind::Custom;
    for (const bool confirms : {false, true}) {
        if (!confirms && !hasDialog)
            continue;
        DrivenTree tree;
        tree.host().ipList = QStringList{QStringLiteral("192.168.0.10(Left)")};
        tree.host().usesIpAddressing = usesIp;
        tree.host().ipManagementAvailable = managed;
        tree.host().lanUsbMode = lanUsb;
        tree.select({10});
        if (hasDialog && confirms)
            tree.driver.then(fillIn);
        else if (hasDialog)
            tree.driver.thenEscape();
        tree.view->AddProcessors(kind);
        QCOMPARE(tree.asked(kRequests), confirms ? requests : QString());
        QCOMPARE(tree.host().callNames().mid(0, 3), kQuestions);
        QVERIFY(!tree.view->signalsBlocked());
    }
}

void TreeViewAddingTest::shouldAddToTheSelectedGroup_data()
{
    QTest::addColumn<QList<quint32>>("rows");
    QTest::addColumn<QString>("request");
    using Rows = QList<quint32>;
    QTest::newRow("nothing") << Rows{} << "AddProcessors(0,1)";
    QTest::newRow("root") << Rows{0} << "AddProcessors(0,1)";
    QTest::newRow("group") << Rows{11} << "AddProcessors(11,1)";
    QTest::newRow("groups") << Rows{11, 10} << "AddProcessors(11,1)";
    QTest::newRow("in a group") << Rows{2} << "AddProcessors(10,1)";
    QTest::newRow("under the root") << Rows{3} << "AddProcessors(0,1)";
    QTest::newRow("first of several") << Rows{3, 2} << "AddProcessors(0,1)";
}

void TreeViewAddingTest::shouldAddToTheSelectedGroup()
{
    QFETCH(QList<quint32>, rows);
    QFETCH(QString, request);
    DrivenTree tree;
    tree.select(rows);
    tree.view->collapseAll();
    tree.view->AddProcessors(AddKind::One);
    QCOMPARE(tree.asked(kRequests), request);
    QVERIFY(tree.view->isExpanded(
        tree.index(request.mid(14).section(QLatin1Char(','), 0, 0).toUInt())));
}

void TreeViewAddingTest::shouldProposeTheHostsOutputs()
{
    DrivenTree tree;
    tree.host().fixedOutputCount = 20;
    tree.driver.then([](QWidget& dialog) {
        QVERIFY(!dialog.findChild<CComboBox*>());
        clickButton(dialog, QStringLiteral("OK"));
    });
    tree.view->AddProcessors(AddKind::Custom);
    QCOMPARE(tree.asked(kRequests),
             QStringLiteral("AddProcessors(0,1) SetNewProcessorOutputs(20)"));
}

void TreeViewAddingTest::shouldProposeTheOutputsChosenLast()
{
    DrivenTree tree;
    // Adds with what the box says, or with the choice by the key, and returns what it said first.
    const auto proposed = [&](const QList<Qt::Key>& keys, bool confirms = true) {
        QString text;
        tree.driver.then([&](QWidget& dialog) {
            auto* outputs = dialog.findChild<CComboBox*>();
            text = outputs->currentText();
            for (const Qt::Key key : keys)
                QTest::keyClick(outputs, key);
            clickButton(dialog, confirms ? QStringLiteral("OK") : QStringLiteral("Cancel"));
        });
        tree.view->AddProcessors(AddKind::Custom);
        return text;
    };
    QCOMPARE(proposed({}), QStringLiteral("2"));
    QCOMPARE(tree.asked(kRequests), QStringLiteral("AddProcessors(0,1) SetNewProcessorOutputs(2)"));
    QCOMPARE(proposed({Qt::Key_Down, Qt::Key_Down}), QStringLiteral("2"));
    QCOMPARE(proposed({Qt::Key_Down}, false), QStringLiteral("6"));
    tree.host().clearCalls();
    QCOMPARE(proposed({}), QStringLiteral("6"));
    QCOMPARE(tree.asked(kRequests), QStringLiteral("AddProcessors(0,1) SetNewProcessorOutputs(6)"));
    // What the host fixes is no choice of the user's.
    tree.host().fixedOutputCount = 20;
    tree.driver.then([](QWidget& dialog) { clickButton(dialog, QStringLiteral("OK")); });
    tree.view->AddProcessors(AddKind::Custom);
    tree.host().fixedOutputCount = 0;
    QCOMPARE(proposed({}), QStringLiteral("6"));
}

/// The host fixes a number that the box does not hold, but no longer when the dialog asks.
void TreeViewAddingTest::shouldSendNoOutputsThatNobodyChose()
{
    DrivenTree tree;
    tree.host().fixedOutputCount = 7;
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetFixedOutputCount") && tree.host().callCount(name) > 1)
            tree.host().fixedOutputCount = 0;
    };
    tree.driver.then([](QWidget& dialog) {
        QCOMPARE(dialog.findChild<CComboBox*>()->currentIndex(), -1);
        clickButton(dialog, QStringLiteral("OK"));
    });
    tree.view->AddProcessors(AddKind::Custom);
    tree.host().inside = nullptr;
    QCOMPARE(tree.asked(kRequests), QStringLiteral("AddProcessors(0,1)"));
}

void TreeViewAddingTest::shouldStandOnTheNewest_data()
{
    QTest::addColumn<bool>("early");
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("early, one by one") << true << false;
    QTest::newRow("early, at once") << true << true;
    QTest::newRow("late, one by one") << false << false;
    QTest::newRow("late, at once") << false << true;
}

void TreeViewAddingTest::shouldStandOnTheNewest()
{
    QFETCH(bool, early);
    QFETCH(bool, atOnce);
    DrivenTree tree;
    tree.host().setProcessor(testProcessor(5, 11));
    tree.host().setProcessor(testProcessor(6, 11));
    tree.select({11});
    tree.view->collapse(tree.index(11));
    const auto arrive = [&] {
        if (atOnce) {
            tree.panel.notify<QList<QUuid>>(19, {testId(5), testId(6)});
        } else {
            tree.panel.notify<QUuid>(18, testId(5));
            tree.panel.notify<QUuid>(18, testId(6));
        }
    };
    if (early)
        tree.doInside(QStringLiteral("AddProcessors"), arrive);
    tree.view->AddProcessors(AddKind::Two);
    if (!early)
        arrive();
    QCOMPARE(tree.current(), QStringLiteral("6"));
    QCOMPARE(tree.selected(), QStringLiteral("6"));
    QVERIFY(tree.view->isExpanded(tree.index(11)));
    QVERIFY(tree.view->isExpanded(tree.index(0)));
    QVERIFY(tree.view->viewport()->rect().contains(tree.place(6)));
    tree.host().setProcessor(testProcessor(7));
    tree.panel.notify<QUuid>(18, testId(7));
    QCOMPARE(tree.selected(), QStringLiteral("6"));
}

void TreeViewAddingTest::shouldLeaveTheUserWhereHeWent()
{
    DrivenTree tree;
    tree.host().setProcessor(testProcessor(5));
    tree.view->AddProcessors(AddKind::One);
    QTest::mouseClick(tree.view->viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(3));
    tree.panel.notify<QUuid>(18, testId(5));
    QCOMPARE(tree.selected(), QStringLiteral("3"));

    tree.host().setProcessor(testProcessor(6));
    tree.view->AddProcessors(AddKind::One);
    tree.activate();
    QTest::keyClick(tree.view.data(), Qt::Key_Down);
    tree.panel.notify<QUuid>(18, testId(6));
    QCOMPARE(tree.selected(), QStringLiteral("4"));
}

void TreeViewAddingTest::shouldNotDisturbARename()
{
    DrivenTree tree;
    tree.host().canRename = true;
    tree.host().setProcessor(testProcessor(5));
    tree.select({3});
    tree.view->AddProcessors(AddKind::One);
    tree.activate();
    QTest::keyClick(tree.view.data(), Qt::Key_F2);
    const QPointer<QLineEdit> editor = tree.editor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("Lef"));
    tree.panel.notify<QUuid>(18, testId(5));
    QCOMPARE(tree.editor(), editor.data());
    QCOMPARE(editor->text(), QStringLiteral("Lef"));
    QCOMPARE(tree.selected(), QStringLiteral("3"));
    QCOMPARE(tree.asked({QStringLiteral("RenameProcessor")}), QString());
}

void TreeViewAddingTest::shouldAddOnlyWhatTheDialogProduced()
{
    DrivenTree tree;
    tree.host().ipManagementAvailable = true;
    tree.doInside(QStringLiteral("RefreshIPList"),
                  [&] { tree.host().ipList.append(QStringLiteral("192.168.0.77(Found)")); });
    tree.select({10});
    tree.driver.then(fillIn);
    tree.view->AddProcessors(AddKind::One);
    QVERIFY(tree.host().ipList.contains(QStringLiteral("192.168.0.77(Found)")));
    QCOMPARE(tree.asked({QStringLiteral("AddProcessorsFromIpList")}),
             QStringLiteral("AddProcessorsFromIpList(10,192.168.7.1())"));
}

void TreeViewAddingTest::shouldAddNothingOnceReadOnly()
{
    DrivenTree tree;
    tree.select({10});
    tree.driver.then([&](QWidget& dialog) {
        tree.panel.data().SetReadOnly(true);
        clickButton(dialog, QStringLiteral("OK"));
    });
    tree.view->AddProcessors(AddKind::Custom);
    QCOMPARE(tree.asked(kRequests), QString());
}

void TreeViewAddingTest::shouldNameANewGroup_data()
{
    QTest::addColumn<bool>("early");
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("early") << true << false;
    QTest::newRow("late") << false << false;
    QTest::newRow("late, in a reset") << false << true;
}

void TreeViewAddingTest::shouldNameANewGroup()
{
    QFETCH(bool, early);
    QFETCH(bool, atOnce);
    DrivenTree tree;
    tree.host().createdGroup = testId(12);
    tree.host().setGroup(testGroup(12, QStringLiteral("Group 3")));
    tree.select({1});
    const auto arrive = [&] {
        if (atOnce)
            tree.panel.notify(16);
        else
            tree.panel.notify<QUuid>(17, testId(12));
    };
    if (early)
        tree.doInside(QStringLiteral("CreateGroup"), arrive);
    tree.view->AddGroup();
    QCOMPARE(tree.asked({QStringLiteral("CreateGroup")}), QStringLiteral("CreateGroup(Group 3)"));
    if (!early)
        arrive();
    QCOMPARE(tree.selected(), QStringLiteral("Group 3"));
    QVERIFY(tree.editor());
    QCOMPARE(tree.editor()->text(), QStringLiteral("Group 3"));
    tree.editor()->setText(QStringLiteral("Left"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_COMPARE(tree.index(12).data().toString(), QStringLiteral("Left"));
}

void TreeViewAddingTest::shouldOutliveAViewDestroyedMeanwhile_data()
{
    QTest::addColumn<int>("path");
    QTest::addColumn<bool>("hasDialog");
    QTest::addColumn<QString>("question");
    for (const char* question : {"UsesIpAddressing", "IsIpManagementAvailable", "IsLanUsbMode"})
        QTest::newRow(question) << 0 << false << question;
    QTest::newRow("GetFixedOutputCount") << 0 << false << "GetFixedOutputCount";
    QTest::newRow("GetIPList") << 2 << false << "GetIPList";
    QTest::newRow("dialog of numbers") << 0 << true << "";
    QTest::newRow("AddProcessors") << 0 << true << "AddProcessors";
    QTest::newRow("SetNewProcessorOutputs") << 0 << true << "SetNewProcessorOutputs";
    QTest::newRow("dialog of addresses") << 1 << true << "";
    QTest::newRow("CheckIPAddress") << 1 << false << "CheckIPAddress";
    QTest::newRow("AddProcessorsWithIps") << 1 << true << "AddProcessorsWithIps";
    QTest::newRow("dialog of the list") << 2 << true << "";
    QTest::newRow("AddIPAddress") << 2 << true << "AddIPAddress";
    QTest::newRow("SaveIPList") << 2 << true << "SaveIPList";
    QTest::newRow("AddProcessorsFromIpList") << 2 << true << "AddProcessorsFromIpList";
}

void TreeViewAddingTest::shouldOutliveAViewDestroyedMeanwhile()
{
    QFETCH(int, path);
    QFETCH(bool, hasDialog);
    QFETCH(QString, question);
    DrivenTree tree;
    tree.host().usesIpAddressing = path == 1;
    tree.host().ipManagementAvailable = path == 2;
    tree.select({10});
    tree.doInside(question, [&] { delete tree.view; });
    if (hasDialog) {
        tree.driver.then([&](QWidget& dialog) {
            if (question.isEmpty())
                delete tree.view;
            else
                fillIn(dialog);
        });
    }
    tree.view->AddProcessors(AddKind::Custom);
    QVERIFY(!tree.view);
    QVERIFY(question.isEmpty() || tree.host().callCount(question) > 0);
}

void TreeViewAddingTest::shouldOutliveAViewDestroyedByANewGroup()
{
    for (const char* question : {"CreateGroup", "ReportSelection"}) {
        DrivenTree tree;
        tree.host().createdGroup = testId(12);
        tree.host().setGroup(testGroup(12));
        tree.doInside(QLatin1String(question), [&] { delete tree.view; });
        tree.view->AddGroup();
        tree.panel.notify<QUuid>(17, testId(12));
        QVERIFY2(!tree.view, question);
    }
    for (const char* question : {"GetProcessorNode", "ReportSelection"}) {
        DrivenTree tree;
        tree.host().setProcessor(testProcessor(5));
        tree.select({3});
        tree.view->AddProcessors(AddKind::One);
        tree.doInside(QLatin1String(question), [&] { delete tree.view; });
        tree.model().AppendProcessor(testProcessor(5));
        QVERIFY2(!tree.view, question);
    }
}

TSA_TEST_MAIN(TreeViewAddingTest)

#include "tst_treeviewadding.moc"
