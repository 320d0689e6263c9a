#include "host/widgets/ProcessorDelegate.h"
#include "processortree/ProcessorSelectionModel.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPaintEvent>
#include <QRegion>
#include <QSignalSpy>

namespace {

const QString kUntouched = QStringLiteral("All processors(4)[G10[1,2],G11[],3,4]");

std::unique_ptr<QMimeData> processors(WholeTree& tree)
{
    return std::unique_ptr<QMimeData>(tree.model().mimeData(tree.selection()->selectedIndexes()));
}

bool enter(const WholeTree& tree, const QMimeData& data, const QPoint& position)
{
    QDragEnterEvent event(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &event);
    return event.isAccepted();
}

bool move(const WholeTree& tree, const QMimeData& data, const QPoint& position)
{
    QDragMoveEvent event(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &event);
    return event.isAccepted();
}

bool drop(const WholeTree& tree, const QMimeData& data, const QPoint& position)
{
    QDropEvent event(position, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(tree.viewport(), &event);
    return event.isAccepted();
}

void press(const WholeTree& tree, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(tree.view, key, modifiers);
}

void moveMouse(const WholeTree& tree, const QPoint& position, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QMouseEvent event(QEvent::MouseMove, position, tree.viewport()->mapToGlobal(position),
                      Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(tree.viewport(), &event);
}

/// What a widget has been painted of.
class PaintedRegion final : public QObject
{
public:
    explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }

    QRegion region;
};

} // namespace

class TreeViewEventsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseForeignData();
    void shouldAcceptDropsWhereTheyMayGo();
    void shouldAcceptButNotMoveOverOneOutside();
    void shouldAcceptThatADragLeaves();
    void shouldSwallowTheMouseAtTheEdge();
    void shouldKeepItsRowsOffTheEdge();
    void shouldSelectAGroupButKeepTheCurrentRow();
    void shouldExpandByDoubleClickAndKeys();
    void shouldInstallItsSelectionModel();
    void shouldRewriteTheRootText();
    void shouldRenameByKey();
    void shouldNotRenameTheRootNorWhatTheHostForbids();
    void shouldLeaveKeysToTheEditor();
    void shouldSelectAllByKey();
    void shouldExtendTheSelectionPastGroups();
    void shouldExtendTheSelectionFromWhereTheKeysLed();
    void shouldPaintTheWholeRowThatKeysLeave();
    void shouldExtendTheSelectionToEitherEnd();
    void shouldMoveTheCurrentRowPastGroups();
    void shouldOpenTheMenuByKey();
    void shouldDoNothingWhenLocked();
    void shouldRename_data();
    void shouldRename();
    void shouldStandEventsWhileRenaming_data();
    void shouldStandEventsWhileRenaming();
    void shouldStandAResetDuringADrag();
    void shouldStandAResetUnderAMenu();
    void shouldStandTheRootBeingRemoved();
};

void TreeViewEventsTest::shouldRefuseForeignData()
{
    WholeTree tree;
    tree.select({1});
    QMimeData foreign;
    foreign.setText(QStringLiteral("PROCESSOR INFO"));
    QVERIFY(!enter(tree, foreign, tree.place(11)));
    const auto data = processors(tree);
    QVERIFY(enter(tree, *data, tree.place(11))); // a drop needs a target
    QVERIFY(!drop(tree, foreign, tree.place(11)));
    QCOMPARE(tree.panel.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

void TreeViewEventsTest::shouldAcceptDropsWhereTheyMayGo()
{
    WholeTree tree;
    tree.select({3});
    const auto data = processors(tree);
    QVERIFY(enter(tree, *data, tree.place(1)));
    QVERIFY(move(tree, *data, tree.place(1)));
    QVERIFY(move(tree, *data, tree.place(10)));
    QVERIFY(move(tree, *data, tree.place(0)));
    QVERIFY(move(tree, *data, tree.nowhere()));
    QVERIFY(!move(tree, *data, tree.place(4)));
    tree.host().restrictedMode = true;
    QVERIFY(!move(tree, *data, tree.place(1)));
    QVERIFY(!move(tree, *data, tree.nowhere()));
    tree.host().restrictedMode = false;

    tree.view->collapse(tree.index(10));
    QVERIFY(drop(tree, *data, tree.place(10)));
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2,3],G11[],4]"));
    QCOMPARE(tree.moves(), QStringLiteral("3>10"));
    QCOMPARE(tree.selected(), QStringLiteral("3"));
    QVERIFY(tree.view->isExpanded(tree.index(10)));
}

void TreeViewEventsTest::shouldAcceptButNotMoveOverOneOutside()
{
    WholeTree tree;
    tree.select({1});
    const auto data = processors(tree);
    QVERIFY(enter(tree, *data, tree.place(4)));
    QVERIFY(drop(tree, *data, tree.place(4)));
    QCOMPARE(tree.panel.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

void TreeViewEventsTest::shouldAcceptThatADragLeaves()
{
    WholeTree tree;
    tree.select({1});
    const auto data = processors(tree);
    QVERIFY(enter(tree, *data, tree.place(10)));
    QVERIFY(move(tree, *data, tree.place(10)));
    QDragLeaveEvent event;
    event.ignore();
    QApplication::sendEvent(tree.viewport(), &event);
    QVERIFY(event.isAccepted());
}

void TreeViewEventsTest::shouldSwallowTheMouseAtTheEdge()
{
    WholeTree tree;
    tree.select({3});
    const int width = tree.viewport()->width();
    const int y = tree.place(1).y();
    for (const int x : {width - 10, width - 1}) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, {x, y});
        QCOMPARE(tree.selected(), QStringLiteral("3"));
    }
    const int group = tree.place(10).y();
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, {width - 5, group});
    QVERIFY(tree.view->isExpanded(tree.index(10)));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, {width - 11, y});
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

void TreeViewEventsTest::shouldKeepItsRowsOffTheEdge()
{
    WholeTree tree;
    tree.select({3});
    CTreeView plain;
    plain.setItemDelegate(new CProcessorDelegate(&plain));
    plain.setModel(&tree.model());
    plain.expandAll();
    plain.resize(tree.view->size());
    plain.selectionModel()->select(tree.index(3), QItemSelectionModel::ClearAndSelect);
    // Where the painted row ends: the last pixel that differs from those below all rows.
    const auto rowEnd = [&](QTreeView& view) {
        const QImage picture = view.viewport()->grab().toImage();
        const int y = view.visualRect(tree.index(3)).center().y();
        const QColor nothing = picture.pixelColor(picture.width() - 1, picture.height() - 5);
        int x = picture.width() - 1;
        while (x > 0 && picture.pixelColor(x, y) == nothing)
            --x;
        return picture.width() - x;
    };
    QCOMPARE(rowEnd(*tree.view), rowEnd(plain) + 10);
}

void TreeViewEventsTest::shouldSelectAGroupButKeepTheCurrentRow()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(3));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(11));
    QCOMPARE(tree.selected(), QStringLiteral("G11"));
    QCOMPARE(tree.view->currentIndex(), tree.index(3));
    // Held, it is not dragged, and does not select what the mouse comes over.
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, tree.place(11));
    moveMouse(tree, tree.place(3), Qt::LeftButton);
    moveMouse(tree, tree.place(4), Qt::LeftButton);
    QCOMPARE(tree.selected(), QStringLiteral("G11"));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    QCOMPARE(tree.selected(), QStringLiteral("G11"));

    tree.select({3});
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier})
        moveMouse(tree, tree.place(1), Qt::LeftButton, modifier);
    QCOMPARE(tree.selected(), QStringLiteral("3"));
}

void TreeViewEventsTest::shouldExpandByDoubleClickAndKeys()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(10));
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.place(10));
    QVERIFY(!tree.view->isExpanded(tree.index(10)));
    QVERIFY(!tree.editor());
    press(tree, Qt::Key_Right);
    QVERIFY(tree.view->isExpanded(tree.index(10)));
    press(tree, Qt::Key_Down);
    QCOMPARE(tree.selected(), QStringLiteral("1"));
    press(tree, Qt::Key_Left);
    QCOMPARE(tree.selected(), QStringLiteral("G10"));
    press(tree, Qt::Key_Left);
    QVERIFY(!tree.view->isExpanded(tree.index(10)));
}

void TreeViewEventsTest::shouldInstallItsSelectionModel()
{
    WholeTree tree;
    QVERIFY(qobject_cast<CProcessorSelectionModel*>(tree.selection()));
    QCOMPARE(tree.selection()->model(), &tree.model());
    CProcessorTreeModel other;
    other.initRoot();
    tree.view->setModel(&other);
    QVERIFY(qobject_cast<CProcessorSelectionModel*>(tree.selection()));
    QCOMPARE(tree.selection()->model(), &other);
    QCOMPARE(tree.view->findChildren<CProcessorSelectionModel*>().size(), 1);
    tree.view->setModel(nullptr);
    QVERIFY(!tree.view->model());
    press(tree, Qt::Key_F2);
    press(tree, Qt::Key_Delete);
    QVERIFY(!tree.editor());
}

void TreeViewEventsTest::shouldRewriteTheRootText()
{
    WholeTree tree;
    tree.model().setData(tree.root(), QStringLiteral("Alle"), Qt::DisplayRole);
    QEvent event(QEvent::LanguageChange);
    QApplication::sendEvent(tree.view, &event);
    QCOMPARE(tree.panel.dump(), kUntouched);
}

void TreeViewEventsTest::shouldRenameByKey()
{
    WholeTree tree;
    tree.select({11});
    press(tree, Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClicks(tree.editor(), QStringLiteral("New"));
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(4)[G10[1,2],New[],3,4]"));
    tree.select({1, 2});
    press(tree, Qt::Key_F2);
    QTRY_VERIFY(!tree.editor());
}

void TreeViewEventsTest::shouldNotRenameTheRootNorWhatTheHostForbids()
{
    WholeTree tree;
    tree.selection()->select(tree.root(), QItemSelectionModel::ClearAndSelect);
    press(tree, Qt::Key_F2);
    QVERIFY(!tree.editor());
    ProcessorNode guarded = testProcessor(3);
    guarded.hostFlag13 = true;
    tree.host().setProcessor(guarded);
    tree.select({3});
    press(tree, Qt::Key_F2); // the host says no to it by itself
    QVERIFY(!tree.editor());
    QCOMPARE(tree.host().callCount(QStringLiteral("CanRenameProcessor")), 1);
}

void TreeViewEventsTest::shouldLeaveKeysToTheEditor()
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

void TreeViewEventsTest::shouldSelectAllByKey()
{
    WholeTree tree;
    tree.view->collapseAll();
    press(tree, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2,3,4"));
}

void TreeViewEventsTest::shouldExtendTheSelectionPastGroups()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    const auto extend = [&](Qt::Key key) {
        press(tree, key, Qt::ShiftModifier);
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

    // What a closed group holds is not seen, and not selected.
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(3));
    tree.view->collapse(tree.index(10));
    QCOMPARE(extend(Qt::Key_Up), QStringLiteral("3"));
    tree.view->expand(tree.index(10));
    for (const char* selected : {"2,3", "1,2,3", "1,2,3"})
        QCOMPARE(extend(Qt::Key_Up), QLatin1String(selected));
}

void TreeViewEventsTest::shouldExtendTheSelectionFromWhereTheKeysLed()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    press(tree, Qt::Key_Up);
    press(tree, Qt::Key_Up);
    press(tree, Qt::Key_Up);
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    press(tree, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    press(tree, Qt::Key_Down);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ShiftModifier, tree.place(1));
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(4));
    press(tree, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("3,4"));
}

void TreeViewEventsTest::shouldPaintTheWholeRowThatKeysLeave()
{
    WholeTree tree;
    press(tree, Qt::Key_Down, Qt::ShiftModifier);
    press(tree, Qt::Key_Down, Qt::ShiftModifier);
    const QRect left = tree.view->visualRect(tree.view->currentIndex());
    QVERIFY(left.left() > 0);
    QCoreApplication::processEvents();
    PaintedRegion painted(*tree.viewport());
    press(tree, Qt::Key_Down, Qt::ShiftModifier);
    // Left of the item too: the outline goes round the row.
    QTRY_VERIFY(painted.region.contains(QPoint(0, left.center().y())));
}

void TreeViewEventsTest::shouldExtendTheSelectionToEitherEnd()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(2));
    press(tree, Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QCOMPARE(tree.view->currentIndex(), tree.index(1));
    press(tree, Qt::Key_PageDown, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("2,3,4"));
    press(tree, Qt::Key_PageUp, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    // The last row is a group.
    tree.model().removeNodes({testId(3), testId(4)});
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    press(tree, Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(tree.selected(), QStringLiteral("1,2"));
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
}

void TreeViewEventsTest::shouldMoveTheCurrentRowPastGroups()
{
    WholeTree tree;
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(2));
    press(tree, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(tree.view->currentIndex(), tree.index(3));
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    press(tree, Qt::Key_Space, Qt::ControlModifier);
    QCOMPARE(tree.selected(), QStringLiteral("2,3"));
    press(tree, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(tree.view->currentIndex(), tree.index(2));
}

void TreeViewEventsTest::shouldOpenTheMenuByKey()
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
            press(tree, Qt::Key_F10, Qt::ShiftModifier);
        }
        QVERIFY(driver.isDone());
    }
    QCOMPARE(opened, 2);
}

void TreeViewEventsTest::shouldDoNothingWhenLocked()
{
    WholeTree tree;
    tree.host().showNodeMoreButton = true;
    tree.select({11});
    tree.view->SetLocked(true);
    QVERIFY(tree.view->isLocked());
    const DialogDriver driver; // fails the test when anything opens
    press(tree, Qt::Key_F2);
    QVERIFY(!tree.editor());
    press(tree, Qt::Key_Delete);
    press(tree, Qt::Key_F10, Qt::ShiftModifier);
    const QRect row = tree.view->visualRect(tree.index(11));
    const QPoint button(row.left() + row.width() - 30, row.center().y());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, button);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, tree.place(11));
    QApplication::sendEvent(tree.viewport(), &menu);
    QCOMPARE(tree.host().callCount(QStringLiteral("Ungroup")), 0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(3));
    QCOMPARE(tree.selected(), QStringLiteral("3"));

    tree.view->SetLocked(false);
    press(tree, Qt::Key_F2);
    QVERIFY(tree.editor());
}

void TreeViewEventsTest::shouldRename_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("name");
    QTest::newRow("accepted") << QStringLiteral(" New ") << true << QStringLiteral("New");
    QTest::newRow("refused") << QStringLiteral("New") << false << QStringLiteral("1");
    QTest::newRow("blanks") << QStringLiteral("   ") << true << QStringLiteral("1");
}

void TreeViewEventsTest::shouldRename()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    WholeTree tree;
    tree.host().acceptRename = accepted;
    tree.select({1});
    press(tree, Qt::Key_F2);
    QVERIFY(tree.editor());
    QTest::keyClicks(tree.editor(), typed);
    QTest::keyClick(tree.editor(), Qt::Key_Return);
    QTRY_VERIFY(!tree.editor());
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QTEST(tree.index(1).data().toString(), "name");
}

void TreeViewEventsTest::shouldStandEventsWhileRenaming_data()
{
    QTest::addColumn<quint32>("event");
    QTest::addColumn<bool>("asked"); // raised by the host that is asked, not before
    for (const bool asked : {false, true}) {
        for (const quint32 event : {16U, 20U, 21U, 25U})
            QTest::addRow("%u %s", event, asked ? "inside" : "before") << event << asked;
    }
}

void TreeViewEventsTest::shouldStandEventsWhileRenaming()
{
    QFETCH(quint32, event);
    QFETCH(bool, asked);
    WholeTree tree;
    tree.select({1});
    press(tree, Qt::Key_F2);
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

void TreeViewEventsTest::shouldStandAResetDuringADrag()
{
    WholeTree tree;
    tree.select({1});
    const auto data = processors(tree);
    const QPoint group = tree.place(11);
    QVERIFY(enter(tree, *data, group));
    QVERIFY(move(tree, *data, group));
    tree.host().setProject({}, {});
    tree.panel.notify(16);
    QVERIFY(!tree.view->grab().isNull());
    QVERIFY(drop(tree, *data, group));
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(0)[]"));
    QCOMPARE(tree.moves(), QString());
}

void TreeViewEventsTest::shouldStandAResetUnderAMenu()
{
    WholeTree tree;
    tree.select({1});
    DialogDriver driver;
    driver.then([&](QWidget& menu) {
        tree.host().setProject({}, {});
        tree.panel.notify(16);
        QTest::keyClick(&menu, Qt::Key_Escape);
    });
    tree.view->OnRightMenuEvent(tree.index(1), tree.place(1));
    QVERIFY(driver.isDone());
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(0)[]"));
    press(tree, Qt::Key_Down);
    QVERIFY(!tree.view->grab().isNull());
}

void TreeViewEventsTest::shouldStandTheRootBeingRemoved()
{
    WholeTree tree;
    tree.select({1});
    press(tree, Qt::Key_F2);
    const QPointer<QLineEdit> editor = tree.editor();
    QVERIFY(editor);
    QVERIFY(tree.model().removeRow(0));
    QTRY_VERIFY(!editor || !editor->isVisible());
    QVERIFY(!tree.view->currentIndex().isValid());
    QCOMPARE(tree.selected(), QString());
    press(tree, Qt::Key_Down);
    QVERIFY(!tree.view->grab().isNull());
    tree.model().clearToRoot();
    tree.panel.notify(16);
    QCOMPARE(tree.panel.dump(), kUntouched);
    tree.view->expandAll();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

QTEST_MAIN(TreeViewEventsTest)
#include "tst_treeviewevents.moc"
