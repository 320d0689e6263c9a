// The menu of several selected rows, and what it does: grouping.

#include "tests/processortree/DrivenTree.h"

#include <QScrollBar>

class SelectionMenuTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldOfferTheMenuOfSeveral_data();
    void shouldOfferTheMenuOfSeveral();
    void shouldOpenTheMenuOfSeveralOnlyThen();
    void shouldOpenTheMenuOfSeveralWithinTheView_data();
    void shouldOpenTheMenuOfSeveralWithinTheView();
    void shouldOpenTheMenuOfSeveralInAClosedGroup();
    void shouldGroupTheSelected_data();
    void shouldGroupTheSelected();
    void shouldGroupByKeyOnlyWhatTheMenuWould();
    void shouldNotGroupOnceForbidden_data();
    void shouldNotGroupOnceForbidden();
};

void SelectionMenuTest::shouldOfferTheMenuOfSeveral_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("redundant");
    QTest::addColumn<bool>("blocked");
    QTest::addColumn<QString>("entries");
    QTest::newRow("all") << false << false << false
                         << "Add processor group|--|Delete|Host|--|Highlight the front panel";
    QTest::newRow("redundant") << false << true << false
                               << "Delete|Host|--|Highlight the front panel";
    QTest::newRow("blocked") << false << false << true
                             << "Add processor group|--|Host|--|Highlight the front panel";
    QTest::newRow("read-only") << true << false << false << "(Delete)|Host";
}

void SelectionMenuTest::shouldOfferTheMenuOfSeveral()
{
    QFETCH(bool, readOnly);
    QFETCH(bool, redundant);
    QFETCH(bool, blocked);
    QFETCH(QString, entries);
    DrivenTree tree;
    ProcessorNode second = testProcessor(2, 10);
    second.redundancyMode = redundant ? 1 : 0;
    tree.host().setProcessor(second);
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = QList<QUuid>{testId(1), testId(2)};
    tree.host().frontPanelAvailable = true;
    if (blocked)
        tree.host().deleteBlocked = QList<QUuid>{testId(2)};
    tree.host().appendEntries = [](QMenu& menu) { menu.addAction(QStringLiteral("Host")); };
    tree.panel.data().SetReadOnly(readOnly);
    tree.select({1, 2});
    QString offered;
    int width = 0;
    tree.driver.then([&](QWidget& menu) {
        offered = entriesOf(menu);
        width = menu.minimumWidth();
        menu.close();
    });
    tree.rightClick(2);
    QCOMPARE(offered, entries);
    QCOMPARE(width, 240);
    QCOMPARE(tree.asked({QStringLiteral("AppendContextMenu")}),
             QStringLiteral("AppendContextMenu(2,2,%1)")
                 .arg(readOnly ? QLatin1String("true") : QLatin1String("false")));
}

void SelectionMenuTest::shouldOpenTheMenuOfSeveralOnlyThen()
{
    for (int missing = 0; missing < 3; ++missing) {
        DrivenTree tree;
        tree.host().selectionMode = missing == 0 ? 1 : 2;
        tree.host().selectedProcessors.append(testId(1));
        if (missing != 1)
            tree.host().selectedProcessors.append(testId(2));
        tree.host().restrictedMode = missing == 2;
        tree.select({1, 2});
        QString offered;
        tree.driver.then([&](QWidget& menu) {
            offered = entriesOf(menu);
            menu.close();
        });
        tree.rightClick(1);
        QVERIFY(offered.contains(QLatin1String("Rename")));
    }
}

void SelectionMenuTest::shouldOpenTheMenuOfSeveralWithinTheView_data()
{
    QTest::addColumn<bool>("isMenuKey");
    QTest::addColumn<bool>("isAbove"); // the current row, out of view; else it is below
    for (const bool isAbove : {true, false}) {
        const char* where = isAbove ? "above" : "below";
        QTest::addRow("Shift+F10, row %s", where) << false << isAbove;
        QTest::addRow("menu key, row %s", where) << true << isAbove;
    }
}

void SelectionMenuTest::shouldOpenTheMenuOfSeveralWithinTheView()
{
    QFETCH(bool, isMenuKey);
    QFETCH(bool, isAbove);
    DrivenTree tree;
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= 60; ++n)
        processors.append(testProcessor(n));
    tree.fill({}, processors);
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = QList<QUuid>{testId(30), testId(31)};
    tree.select({30, 31});
    QScrollBar* const bar = tree.view->verticalScrollBar();
    const int scrolled = isAbove ? bar->maximum() : 0;
    bar->setValue(scrolled);
    const QWidget* viewport = tree.view->viewport();
    QVERIFY(!viewport->rect().intersects(tree.view->visualRect(tree.index(30))));

    QPoint place;
    tree.driver.then([&](QWidget& menu) {
        place = viewport->mapFromGlobal(menu.pos());
        QVERIFY(static_cast<QMenu&>(menu).activeAction());
        menu.close();
    });
    if (isMenuKey) {
        // Qt sends this event for the Menu key.
        const QPoint row = tree.view->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, row, tree.view->mapToGlobal(row));
        QApplication::sendEvent(tree.view, &event);
    } else {
        QTest::keyClick(tree.view.data(), Qt::Key_F10, Qt::ShiftModifier);
    }
    QVERIFY(viewport->rect().contains(place));
    QCOMPARE(place.y(), isAbove ? 0 : viewport->height() - 1);
    QCOMPARE(bar->value(), scrolled);
    QCOMPARE(tree.asked({QStringLiteral("AppendContextMenu")}),
             QStringLiteral("AppendContextMenu(2,30,false)"));
}

void SelectionMenuTest::shouldOpenTheMenuOfSeveralInAClosedGroup()
{
    DrivenTree tree;
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = QList<QUuid>{testId(1), testId(2)};
    tree.select({1, 2});
    tree.view->collapse(tree.index(10));
    tree.driver.then([](QWidget& menu) { menu.close(); });
    QTest::keyClick(tree.view.data(), Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(tree.asked({QStringLiteral("AppendContextMenu")}),
             QStringLiteral("AppendContextMenu(2,1,false)"));
}

void SelectionMenuTest::shouldGroupTheSelected_data()
{
    QTest::addColumn<bool>("early");
    QTest::addColumn<bool>("atOnce");
    QTest::addColumn<bool>("byKey");
    for (const bool byKey : {false, true}) {
        const char* by = byKey ? "by key" : "by menu";
        QTest::addRow("early, %s", by) << true << false << byKey;
        QTest::addRow("late, %s", by) << false << false << byKey;
        QTest::addRow("late, in a reset, %s", by) << false << true << byKey;
    }
}

void SelectionMenuTest::shouldGroupTheSelected()
{
    QFETCH(bool, early);
    QFETCH(bool, atOnce);
    QFETCH(bool, byKey);
    DrivenTree tree;
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = QList<QUuid>{testId(2), testId(3)};
    tree.host().createdGroup = testId(12);
    tree.host().setGroup(testGroup(12, QStringLiteral("Group 3")));
    tree.select({2, 3});
    const auto arrive = [&] {
        if (atOnce)
            tree.panel.notify(16);
        else
            tree.panel.notify<QUuid>(17, testId(12));
    };
    if (early)
        tree.doInside(QStringLiteral("CreateGroup"), arrive);
    if (byKey) {
        QTest::keyClick(tree.view.data(), Qt::Key_G, Qt::ControlModifier);
    } else {
        tree.driver.then(
            [](QWidget& menu) { choose(menu, QStringLiteral("Add processor group")); });
        tree.rightClick(3);
    }
    QCOMPARE(tree.asked({QStringLiteral("CreateGroup")}), QStringLiteral("CreateGroup(Group 3)"));
    if (!early)
        arrive();
    QTRY_COMPARE(tree.panel.dump(),
                 QStringLiteral("All processors(4)[G10[1],G11[],Group 3[2,3],4]"));
    QCOMPARE(tree.selected(), QStringLiteral("2,3"));
    QVERIFY(tree.view->isExpanded(tree.index(12)));
}

void SelectionMenuTest::shouldGroupByKeyOnlyWhatTheMenuWould()
{
    ProcessorNode backedUp = testProcessor(2, 10);
    backedUp.redundancyMode = 1;
    const auto groupsWith = [](const std::function<void(DrivenTree&)>& change) {
        DrivenTree tree;
        tree.host().selectionMode = 2;
        tree.host().selectedProcessors = QList<QUuid>{testId(2), testId(3)};
        tree.select({2, 3});
        change(tree);
        QTest::keyClick(tree.view.data(), Qt::Key_G, Qt::ControlModifier);
        return !tree.asked({QStringLiteral("CreateGroup")}).isEmpty();
    };
    QVERIFY(groupsWith([](DrivenTree&) {}));
    QVERIFY(!groupsWith([](DrivenTree& tree) { tree.host().selectionMode = 1; }));
    QVERIFY(!groupsWith([](DrivenTree& tree) { tree.host().selectedProcessors.removeLast(); }));
    QVERIFY(!groupsWith([](DrivenTree& tree) { tree.host().restrictedMode = true; }));
    QVERIFY(!groupsWith([](DrivenTree& tree) { tree.panel.data().SetReadOnly(true); }));
    QVERIFY(!groupsWith([&](DrivenTree& tree) { tree.host().setProcessor(backedUp); }));
}

void SelectionMenuTest::shouldNotGroupOnceForbidden_data()
{
    QTest::addColumn<bool>("byLock"); // else read-only
    QTest::addColumn<QString>("question");
    for (const bool byLock : {false, true}) {
        for (const char* question : {"GetSelectionMode", "GetProcessorNode", "CreateGroup", ""})
            QTest::addRow("%s, %s", byLock ? "lock" : "read-only", question) << byLock << question;
    }
}

void SelectionMenuTest::shouldNotGroupOnceForbidden()
{
    QFETCH(bool, byLock);
    QFETCH(QString, question);
    DrivenTree tree;
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = QList<QUuid>{testId(2), testId(3)};
    tree.host().createdGroup = testId(12);
    tree.host().setGroup(testGroup(12));
    tree.select({2, 3});
    const auto forbid = [&] {
        if (byLock)
            tree.view->SetLocked(true);
        else
            tree.panel.data().SetReadOnly(true);
    };
    tree.doInside(question, forbid);
    QTest::keyClick(tree.view.data(), Qt::Key_G, Qt::ControlModifier);
    const bool isCreated = question.isEmpty() || question == QLatin1String("CreateGroup");
    QCOMPARE(!tree.asked({QStringLiteral("CreateGroup")}).isEmpty(), isCreated);
    if (question.isEmpty())
        forbid();
    tree.panel.notify<QUuid>(17, testId(12));
    QTRY_VERIFY(tree.index(12).isValid());
    QCoreApplication::processEvents();
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],G11[],G12[],3,4]"));
    QVERIFY(tree.host().memberships.isEmpty());
}

TSA_TEST_MAIN(SelectionMenuTest)
#include "tst_selectionmenu.moc"
