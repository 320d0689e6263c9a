#include "tests/processortree/PaintedRegion.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QScopeGuard>

/// The keys of the tree and of the editor of a name.
class TreeViewKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldExpandByDoubleClickAndKeys();
    void shouldRenameByKey();
    void shouldNotRenameTheRootNorWhatTheHostForbids();
    void shouldLeaveKeysToTheEditor();
    void shouldSelectAllByKey();
    void shouldExtendTheSelectionPastGroups();
    void shouldExtendTheSelectionFromWhereTheKeysLed();
    void shouldExtendTheSelectionFromTheHostsChoice_data();
    void shouldExtendTheSelectionFromTheHostsChoice();
    void shouldKeepTheStartOfARangeThroughOtherKeys();
    void shouldPaintTheWholeRowThatKeysLeave();
    void shouldExtendTheSelectionToEitherEnd();
    void shouldMoveTheCurrentRowPastGroups();
    void shouldSearchPastGroups();
    void shouldSearchByWholeNames();
    void shouldSearchInTheRowsThatAreShown();
    void shouldOpenTheMenuByKey();
    void shouldDoNothingWhenLocked();
    void shouldRename_data();
    void shouldRename();
    void shouldKeepTheHostsNameInAFieldLeftAlone();
    void shouldKeepATypedNameThatWasCut();
    void shouldStandEventsWhileRenaming_data();
    void shouldStandEventsWhileRenaming();
};

void TreeViewKeysTest::shouldExpandByDoubleClickAndKeys()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(10));
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.place(10));
    QVERIFY(!tree.view->isExpanded(tree.index(10)));
    QVERIFY(!tree.editor());
    tree.press(Qt::Key_Right);
    QVERIFY(tree.view->isExpanded(tree.index(10)));
    tree.press(Qt::Key_Down);
    QCOMPARE(tree.selected(), QStringLiteral("1"));
    tree.press(Qt::Key_Left);
    QCOMPARE(tree.selected(), QStringLiteral("G10"));
    tree.press(Qt::Key_Left);
    QVERIFY(!tree.view->isExpanded(tree.index(10)));
}

void TreeViewKeysTest::shouldRenameByKey()
{
    WholeTree tree;
    tree.select({11});
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClicks(tree.editor(), QStringLiteral("New"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],New[],3,4]"));
    tree.select({1, 2});
    tree.press(Qt::Key_F2);
    QTRY_VERIFY(!tree.editor());
}

void TreeViewKeysTest::shouldNotRenameTheRootNorWhatTheHostForbids()
{
    WholeTree tree;
    tree.selection()->select(tree.root(), QItemSelectionModel::ClearAndSelect);
    tree.press(Qt::Key_F2);
    QVERIFY(!tree.editor());
    ProcessorNode guarded = testProcessor(3);
    guarded.hostFlag13 = true;
    tree.host().setProcessor(guarded);
    tree.select({3});
    tree.press(Qt::Key_F2); // the host says no to it by itself
    QVERIFY(!tree.editor());
    QCOMPARE(tree.host().callCount(QStringLiteral("CanRenameProcessor")), 1);
}

void TreeViewKeysTest::shouldLeaveKeysToTheEditor()
{
    WholeTree tree;
    tree.select({11});
    tree.view->RenameSelection();
    QPointer<QLineEdit> editor = tree.editor();
    QVERIFY(editor);
    editor->setText(QStringLiteral("abc"));
    editor->setCursorPosition(0);
    QTest::keyClick(editor, Qt::Key_Delete);
    QCOMPARE(editor->text(), QStringLiteral("bc"));
    QTest::keyClick(editor, Qt::Key_F2);
    QTest::keyClick(editor, Qt::Key_G, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(editor->selectedText(), QStringLiteral("bc"));
    QCOMPARE(tree.selected(), QStringLiteral("G11"));
    QCOMPARE(tree.host().callCount(QStringLiteral("Ungroup")), 0);
    tree.view->RenameSelection(); // open already
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Escape);
    QCOMPARE(tree.panel.dump(), kUntouched);
}

void TreeViewKeysTest::shouldSelectAllByKey()
{
    WholeTree tree;
    tree.view->collapseAll();
    tree.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2,3,4"));
}

void TreeViewKeysTest::shouldExtendTheSelectionPastGroups()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    const auto extend = [&](Qt::Key key) {
        tree.press(key, Qt::ShiftModifier);
        return tree.selected();
    };
    for (const char* selected : {"1,2", "1,2,3", "1,2,3,4", "1,2,3,4"})
        QCOMPARE(extend(Qt::Key_Down), QLatin1String(selected));
    QCOMPARE(tree.view->currentIndex(), tree.index(4));
    QCOMPARE(tree.host().selections.last().processors,
             QList<QUuid>({testId(1), testId(2), testId(3), testId(4)}));
    for (const char* selected : {"1,2,3", "1,2", "1", "1"})
        QCOMPARE(extend(Qt::Key_Up), QLatin1String(selected));
    QCOMPARE(tree.view->currentIndex(), tree.index(1));

    // Rows of a collapsed group are not visible, and not selected.
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(3));
    tree.view->collapse(tree.index(10));
    QCOMPARE(extend(Qt::Key_Up), QStringLiteral("3"));
    tree.view->expand(tree.index(10));
    for (const char* selected : {"2,3", "1,2,3", "1,2,3"})
        QCOMPARE(extend(Qt::Key_Up), QLatin1String(selected));
}

void TreeViewKeysTest::shouldExtendTheSelectionFromWhereTheKeysLed()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    tree.press(Qt::Key_Up);
    tree.press(Qt::Key_Up);
    tree.press(Qt::Key_Up);
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    tree.press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    tree.press(Qt::Key_Down);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ShiftModifier, tree.place(1));
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    tree.press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("3,4"));
}

void TreeViewKeysTest::shouldExtendTheSelectionFromTheHostsChoice_data()
{
    QTest::addColumn<bool>("byKeys"); // what led to the former choice
    QTest::addColumn<int>("choice");  // 0 by the host, 1 by typing the name
    QTest::addColumn<bool>("byClick");
    for (const bool byKeys : {true, false}) {
        for (const bool byClick : {true, false}) {
            for (const int choice : {0, 1})
                QTest::addRow("%s, %s, %s", byKeys ? "keys" : "mouse", choice ? "typed" : "host",
                              byClick ? "click" : "key")
                    << byKeys << choice << byClick;
        }
    }
}

void TreeViewKeysTest::shouldExtendTheSelectionFromTheHostsChoice()
{
    QFETCH(bool, byKeys);
    QFETCH(int, choice);
    QFETCH(bool, byClick);
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    if (byKeys)
        tree.press(Qt::Key_Down);
    if (choice == 0)
        tree.select({4});
    else
        QTest::keyClick(tree.view, '4');
    QCOMPARE(tree.selected(), QStringLiteral("4"));
    if (byClick)
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ShiftModifier, tree.place(3));
    else
        tree.press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("3,4"));
}

void TreeViewKeysTest::shouldKeepTheStartOfARangeThroughOtherKeys()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    for (int step = 0; step < 3; ++step)
        tree.press(Qt::Key_Up);
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    tree.press(Qt::Key_Control, Qt::ControlModifier);
    tree.press(Qt::Key_C, Qt::ControlModifier);
    tree.press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    // After Ctrl has moved the current row, a range begins there.
    tree.press(Qt::Key_Down, Qt::ControlModifier);
    tree.press(Qt::Key_Down, Qt::ControlModifier);
    tree.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("3,4"));
}

void TreeViewKeysTest::shouldPaintTheWholeRowThatKeysLeave()
{
    WholeTree tree;
    tree.press(Qt::Key_Down, Qt::ShiftModifier);
    tree.press(Qt::Key_Down, Qt::ShiftModifier);
    const QRect left = tree.view->visualRect(tree.view->currentIndex());
    QVERIFY(left.left() > 0);
    QCoreApplication::processEvents();
    PaintedRegion painted(*tree.viewport());
    tree.press(Qt::Key_Down, Qt::ShiftModifier);
    // Left of the item too: the outline goes round the row.
    QTRY_VERIFY(painted.region.contains(QPoint(0, left.center().y())));
}

void TreeViewKeysTest::shouldExtendTheSelectionToEitherEnd()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(2));
    tree.press(Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QCOMPARE(tree.view->currentIndex(), tree.index(1));
    tree.press(Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("2,3,4"));
    tree.press(Qt::Key_PageUp, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    // The last row is a group.
    tree.model().removeNodes({testId(3), testId(4)});
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    tree.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
}

void TreeViewKeysTest::shouldMoveTheCurrentRowPastGroups()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(2));
    tree.press(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(tree.view->currentIndex(), tree.index(3));
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    tree.press(Qt::Key_Space, Qt::ControlModifier);
    QCOMPARE(tree.selected(), QStringLiteral("2,3"));
    tree.press(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
}

void TreeViewKeysTest::shouldSearchPastGroups()
{
    WholeTree tree;
    for (const auto& [n, name] : {std::pair<quint32, const char*>{2, "Gate"}, {4, "garden"}}) {
        ProcessorNode processor = testProcessor(n, n == 2 ? 10 : 0);
        processor.name = QString::fromLatin1(name);
        tree.host().setProcessor(processor);
        tree.panel.notify<QUuid>(25, testId(n));
    }
    // The groups G10 and G11 stand before and between them.
    for (const quint32 hit : {2U, 4U, 2U}) {
        tree.press(Qt::Key_G);
        QCOMPARE(tree.view->currentIndex(), tree.index(hit));
        QVERIFY(tree.selection()->isSelected(tree.index(hit)));
    }
}

void TreeViewKeysTest::shouldSearchByWholeNames()
{
    WholeTree tree;
    tree.host().setProject({testGroup(2)},
                           {testProcessor(21, 2), testProcessor(22, 2), testProcessor(23)});
    tree.panel.notify(16);
    const int interval = QApplication::keyboardInputInterval();
    const auto restore = qScopeGuard([&] { QApplication::setKeyboardInputInterval(interval); });
    QApplication::setKeyboardInputInterval(60000);
    QTest::keyClicks(tree.view, QStringLiteral("23"));
    QCOMPARE(tree.view->currentIndex(), tree.index(23));
    tree.press(Qt::Key_X); // no name begins with "23x"
    QCOMPARE(tree.view->currentIndex(), tree.index(23));
}

void TreeViewKeysTest::shouldSearchInTheRowsThatAreShown()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(2));
    tree.view->collapse(tree.index(10));
    tree.press(Qt::Key_1);
    QVERIFY(tree.view->currentIndex() != tree.index(1));
    tree.press(Qt::Key_1);
    QVERIFY(tree.view->currentIndex() != tree.index(1));
    tree.view->setModel(nullptr);
    tree.press(Qt::Key_1);
    QVERIFY(!tree.view->currentIndex().isValid());
}

void TreeViewKeysTest::shouldOpenTheMenuByKey()
{
    WholeTree tree;
    tree.select({11});
    int opened = 0;
    for (const bool isMenuKey : {false, true}) {
        DialogDriver driver;
        driver.then([&](QWidget& menu) {
            ++opened;
            QTest::keyClick(&menu, Qt::Key_Escape);
        });
        if (isMenuKey) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, tree.viewport()->rect().center());
            QApplication::sendEvent(tree.view, &event);
        } else {
            tree.press(Qt::Key_F10, Qt::ShiftModifier);
        }
        QVERIFY(driver.isDone());
    }
    QCOMPARE(opened, 2);
}

void TreeViewKeysTest::shouldDoNothingWhenLocked()
{
    WholeTree tree;
    tree.host().showNodeMoreButton = true;
    tree.select({11});
    tree.view->SetLocked(true);
    QVERIFY(tree.view->isLocked());
    const DialogDriver driver; // fails the test when anything opens
    tree.press(Qt::Key_F2);
    QVERIFY(!tree.editor());
    tree.press(Qt::Key_Delete);
    tree.press(Qt::Key_F10, Qt::ShiftModifier);
    const QRect row = tree.view->visualRect(tree.index(11));
    const QPoint button(row.left() + row.width() - 30, row.center().y());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, button);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, tree.place(11));
    QApplication::sendEvent(tree.viewport(), &menu);
    QCOMPARE(tree.host().callCount(QStringLiteral("Ungroup")), 0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(3));
    QCOMPARE(tree.selected(), QStringLiteral("3"));

    tree.view->SetLocked(false);
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
}

void TreeViewKeysTest::shouldRename_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("name");
    QTest::newRow("accepted") << QStringLiteral(" New ") << true << QStringLiteral("New");
    QTest::newRow("refused") << QStringLiteral("New") << false << QStringLiteral("1");
    QTest::newRow("blanks") << QStringLiteral("   ") << true << QStringLiteral("1");
}

void TreeViewKeysTest::shouldRename()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    WholeTree tree;
    tree.host().acceptRename = accepted;
    tree.select({1});
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClicks(tree.editor(), typed);
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QTEST(tree.index(1).data().toString(), "name");
}

void TreeViewKeysTest::shouldKeepTheHostsNameInAFieldLeftAlone()
{
    WholeTree tree;
    tree.select({1});
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClick(tree.editor(), Qt::Key_X);
    QTest::keyClick(tree.editor(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(tree.editor()->text(), QStringLiteral("1"));
    ProcessorNode renamed = testProcessor(1, 10);
    renamed.name = QStringLiteral("Host");
    tree.host().setProcessor(renamed);
    tree.panel.notify<QUuid>(20, testId(4)); // leaves the view with rows to lay out
    tree.panel.notify<QUuid>(25, testId(1));
    QCOMPARE(tree.editor()->text(), QStringLiteral("Host"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(3)[G10[Host,2],G11[],3]"));
}

void TreeViewKeysTest::shouldKeepATypedNameThatWasCut()
{
    WholeTree tree;
    tree.host().nameMaxBytes = 10;
    tree.select({1});
    tree.press(Qt::Key_F2);
    QVERIFY(tree.editor());
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("\u4E3B\u63A7\u4E3B\u63A7"));
    QCoreApplication::sendEvent(tree.editor(), &typed);
    const QString cut = QStringLiteral("\u4E3B\u63A7\u4E3B");
    QCOMPARE(tree.editor()->text(), cut);
    ProcessorNode online = testProcessor(1, 10);
    online.online = true;
    tree.host().setProcessor(online);
    tree.panel.notify<QUuid>(25, testId(1));
    QCOMPARE(tree.editor()->text(), cut);
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_COMPARE(tree.panel.dump(),
                 QStringLiteral("All processors(4)[G10[%1,2],G11[],3,4]").arg(cut));
}

void TreeViewKeysTest::shouldStandEventsWhileRenaming_data()
{
    QTest::addColumn<quint32>("event");
    QTest::addColumn<bool>("asked"); // raised by the host that is asked, not before
    for (const bool asked : {false, true}) {
        for (const quint32 event : {16U, 20U, 21U, 25U})
            QTest::addRow("%u %s", event, asked ? "inside" : "before") << event << asked;
    }
}

void TreeViewKeysTest::shouldStandEventsWhileRenaming()
{
    QFETCH(quint32, event);
    QFETCH(bool, asked);
    WholeTree tree;
    tree.select({1});
    tree.press(Qt::Key_F2);
    const QPointer<QLineEdit> editor = tree.editor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("New"));
    const auto raise = [&] {
        if (event == 16)
            tree.host().setProject({}, {});
        else if (event == 25)
            tree.host().setProcessor([] {
                ProcessorNode renamed = testProcessor(1, 10);
                renamed.name = QStringLiteral("Host");
                return renamed;
            }());
        if (event == 16)
            tree.panel.notify(event);
        else if (event == 21)
            tree.panel.notify<QList<QUuid>>(event, {testId(1), testId(2), testId(10)});
        else
            tree.panel.notify<QUuid>(event, testId(1));
    };
    if (asked)
        tree.host().inside = [&](const QString& name) {
            if (name == QLatin1String("RenameProcessor"))
                raise();
        };
    else
        raise();
    if (editor)
        QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
    tree.host().inside = nullptr;
    const QHash<quint32, QString> trees{
        {16, QStringLiteral("All processors(0)[]")},
        {20, QStringLiteral("All processors(3)[G10[2],G11[],3,4]")},
        {21, QStringLiteral("All processors(2)[G11[],3,4]")},
        {25, QStringLiteral("All processors(4)[G10[%1,2],G11[],3,4]")
                 .arg(asked ? QStringLiteral("Host") : QStringLiteral("New"))}};
    QCOMPARE(tree.panel.dump(), trees.value(event));
    QVERIFY(!tree.view->grab().isNull());
}

TSA_TEST_MAIN(TreeViewKeysTest)
#include "tst_treeviewkeys.moc"
