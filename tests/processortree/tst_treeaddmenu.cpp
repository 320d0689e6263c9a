#include "host/widgets/HostTheme.h"
#include "tests/processortree/DrivenPanel.h"
#include "tests/support/NestedLoop.h"

/// The menu of the tree panel's button, from which processors and groups are added.
class TreeAddMenuTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldOfferWhatTheHostAllows_data();
    void shouldOfferWhatTheHostAllows();
    void shouldAskAnewForEveryOpening();
    void shouldRunItsEntries_data();
    void shouldRunItsEntries();
    void shouldOpenItsMenuByKeys();
    void shouldCloseItsMenuBeforeATriggeredEntryActs();
    void shouldCloseItsMenuByAnotherClick();
    void shouldOutliveAPanelDestroyedByTheMenu_data();
    void shouldOutliveAPanelDestroyedByTheMenu();
    void shouldOutliveAPanelDestroyedUnderTheMenu();
    void shouldOutliveAPanelDestroyedByAnEntry_data();
    void shouldOutliveAPanelDestroyedByAnEntry();
    void shouldStandAModelThatChangesUnderTheMenu();
};

void TreeAddMenuTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeAddMenuTest::shouldOfferWhatTheHostAllows_data()
{
    QTest::addColumn<int>("listed");
    QTest::addColumn<bool>("permitted");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("entries");
    const QString oneAndCustom = kAddGroup + QStringLiteral("|--|Add 1 processor|Custom adds...");
    const QString disabled =
        kAddGroup + QStringLiteral("|--|(Add 1 processor)|(Add 2 processor)|(Custom adds...)");
    const std::pair<int, QString> limits[] = {{0, kAddAll},
                                              {1, kAddAll},
                                              {252, kAddAll},
                                              {253, kAddAll},
                                              {254, oneAndCustom},
                                              {255, kAddGroup + QStringLiteral("|--")},
                                              {256, kAddGroup + QStringLiteral("|--")},
                                              {300, kAddGroup + QStringLiteral("|--")}};
    for (const auto& [listed, entries] : limits)
        QTest::addRow("%d listed", listed) << listed << true << true << entries;
    QTest::newRow("none listed, so nothing asked") << 0 << false << false << kAddAll;
    QTest::newRow("not permitted") << 4 << false << true << kAddGroup + QStringLiteral("|--");
    QTest::newRow("disabled") << 4 << true << false << disabled;
}

void TreeAddMenuTest::shouldOfferWhatTheHostAllows()
{
    QFETCH(int, listed);
    QFETCH(bool, permitted);
    QFETCH(bool, enabled);
    QFETCH(QString, entries);
    DrivenPanel panel;
    panel.listProcessors(listed);
    panel.host().canAdd = permitted;
    panel.host().addEnabled = enabled;
    QCOMPARE(panel.offered(), entries);
}

void TreeAddMenuTest::shouldAskAnewForEveryOpening()
{
    DrivenPanel panel;
    QCOMPARE(panel.host().callCount(QStringLiteral("GetAllProcessorNodes")), 0);
    QCOMPARE(panel.offered(), kAddAll);
    panel.host().addEnabled = false;
    QVERIFY(panel.offered().contains(QLatin1String("(Add 1 processor)")));
    panel.listProcessors(255);
    QCOMPARE(panel.offered(), kAddGroup + QStringLiteral("|--"));
    panel.listProcessors(4);
    panel.host().addEnabled = true;
    QCOMPARE(panel.offered(), kAddAll);
    QCOMPARE(panel.host().callCount(QStringLiteral("GetAllProcessorNodes")), 4);
}

void TreeAddMenuTest::shouldRunItsEntries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("argument");
    QTest::newRow("group") << kAddGroup << "CreateGroup"
                           << "Group 3";
    QTest::newRow("one") << "Add 1 processor"
                         << "AddProcessors"
                         << "%1,1";
    QTest::newRow("two") << "Add 2 processor"
                         << "AddProcessors"
                         << "%1,2";
    QTest::newRow("custom") << "Custom adds..."
                            << "AddProcessors"
                            << "%1,1";
}

void TreeAddMenuTest::shouldRunItsEntries()
{
    QFETCH(QString, entry);
    QFETCH(QString, call);
    QFETCH(QString, argument);
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(2), false);
    panel.host().clearCalls();
    panel.driver.then([&](QWidget& menu) { choose(menu, entry); });
    if (entry.startsWith(QLatin1String("Custom")))
        panel.driver.then([](QWidget& dialog) { clickButton(dialog, QStringLiteral("OK")); });
    panel.press();
    QCOMPARE(panel.asked(), call);
    for (const FakeHandler::Call& made : panel.host().calls()) {
        if (made.name == call)
            QCOMPARE(made.argument, argument.contains(QLatin1Char('%'))
                                        ? argument.arg(testId(10).toString())
                                        : argument);
    }
    QVERIFY(panel.menu().isHidden());
}

void TreeAddMenuTest::shouldOpenItsMenuByKeys()
{
    DrivenPanel panel;
    panel.button().setFocus();
    panel.driver.then([](QWidget& menu) {
        QCOMPARE(static_cast<QMenu&>(menu).activeAction()->text(), kAddGroup);
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    QTest::keyClick(&panel.button(), Qt::Key_Space);
    QCOMPARE(panel.asked(), QStringLiteral("AddProcessors"));
}

void TreeAddMenuTest::shouldCloseItsMenuBeforeATriggeredEntryActs()
{
    DrivenPanel panel;
    bool wasClosed = false;
    panel.doInside(QStringLiteral("CreateGroup"), [&] { wasClosed = panel.menu().isHidden(); });
    panel.driver.then([](QWidget& menu) { menu.actions().constFirst()->trigger(); });
    panel.press();
    QCOMPARE(panel.asked(), QStringLiteral("CreateGroup"));
    QVERIFY(wasClosed);
}

void TreeAddMenuTest::shouldCloseItsMenuByAnotherClick()
{
    DrivenPanel panel;
    const QPoint onButton = panel.button().mapTo(&panel.window, QPoint(8, 8));
    bool closed = false;
    panel.driver.then([&](QWidget& menu) {
        // The platform delivers events to windows, not to widgets.
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, onButton);
        closed = menu.isHidden();
    });
    QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, onButton);
    QVERIFY(closed);
    QCoreApplication::processEvents();
    QVERIFY(panel.menu().isHidden());
    QVERIFY(!panel.button().isDown());
    QCOMPARE(panel.asked(), QString());
}

void TreeAddMenuTest::shouldOutliveAPanelDestroyedByTheMenu_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("nested");
    for (const char* question :
         {"GetAllProcessorNodes", "CanAddProcessors", "IsAddProcessorsEnabled"}) {
        for (const bool nested : {false, true}) {
            const char* where = nested ? ", nested loop" : "";
            QTest::addRow("%s, mouse%s", question, where) << question << false << nested;
            QTest::addRow("%s, key%s", question, where) << question << true << nested;
        }
    }
}

void TreeAddMenuTest::shouldOutliveAPanelDestroyedByTheMenu()
{
    QFETCH(QString, question);
    QFETCH(bool, byKey);
    QFETCH(bool, nested);
    DrivenPanel panel;
    panel.button().setFocus();
    const QPointer<QMenu> menu(&panel.menu());
    panel.doInside(question, [&] { runWithin(nested, [&] { delete panel.tree; }); });
    if (byKey)
        QTest::keyClick(&panel.button(), Qt::Key_Down);
    else
        QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
    QTRY_VERIFY(!menu);
}

void TreeAddMenuTest::shouldOutliveAPanelDestroyedUnderTheMenu()
{
    DrivenPanel panel;
    panel.driver.then([&](QWidget&) { delete panel.tree; });
    QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
}

void TreeAddMenuTest::shouldOutliveAPanelDestroyedByAnEntry_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("nested");
    const struct
    {
        const char* name;
        QString entry;
        const char* question;
    } rows[] = {
        {"group", kAddGroup, "CreateGroup"},
        {"one, path", QStringLiteral("Add 1 processor"), "UsesIpAddressing"},
        {"one", QStringLiteral("Add 1 processor"), "AddProcessors"},
        {"custom, path", QStringLiteral("Custom adds..."), "IsIpManagementAvailable"},
        {"custom, dialog", QStringLiteral("Custom adds..."), ""},
    };
    for (const auto& row : rows) {
        QTest::addRow("%s", row.name) << row.entry << row.question << false;
        QTest::addRow("%s, nested loop", row.name) << row.entry << row.question << true;
    }
}

void TreeAddMenuTest::shouldOutliveAPanelDestroyedByAnEntry()
{
    QFETCH(QString, entry);
    QFETCH(QString, question);
    QFETCH(bool, nested);
    DrivenPanel panel;
    const QPointer<QMenu> menu(&panel.menu());
    const auto end = [&] { runWithin(nested, [&] { delete panel.tree; }); };
    panel.doInside(question, end);
    panel.driver.then([&](QWidget& opened) { choose(opened, entry); });
    if (question.isEmpty())
        panel.driver.then([&](QWidget&) { end(); });
    QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
    QTRY_VERIFY(!menu);
}

void TreeAddMenuTest::shouldStandAModelThatChangesUnderTheMenu()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(2), false);
    panel.doInside(QStringLiteral("GetAllProcessorNodes"), [&] { panel.fill({}, {}); });
    panel.driver.then([&](QWidget& menu) {
        panel.fill({testGroup(12)}, {testProcessor(7, 12)});
        choose(menu, QStringLiteral("Add 1 processor"));
    });
    panel.press();
    QCOMPARE(panel.asked(), QStringLiteral("AddProcessors"));
    QCOMPARE(panel.panel.dump(), QStringLiteral("All processors(1)[G12[7]]"));
}

TSA_TEST_MAIN(TreeAddMenuTest)

#include "tst_treeaddmenu.moc"
