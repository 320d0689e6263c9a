#include "host/widgets/ProcessorDelegate.h"
#include "processortree/view/ProcessorSelectionModel.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QHoverEvent>
#include <QMimeData>

namespace {

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

void moveMouse(const WholeTree& tree, const QPoint& position, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QMouseEvent event(QEvent::MouseMove, position, tree.viewport()->mapToGlobal(position),
                      Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(tree.viewport(), &event);
}

} // namespace

/// The tree under mouse events, drags, and changes by the host.
class TreeViewEventsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseForeignData();
    void shouldAcceptDropsWhereTheyMayGo();
    void shouldAcceptButNotMoveOverOneOutside();
    void shouldAcceptThatADragLeaves();
    void shouldSwallowTheMouseAtTheEdge();
    void shouldLightUpNoRowAtTheEdge();
    void shouldShowWhereADropGoes();
    void shouldKeepItsRowsOffTheEdge();
    void shouldSelectAGroupButKeepTheCurrentRow();
    void shouldInstallItsSelectionModel();
    void shouldRewriteTheRootText();
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

void TreeViewEventsTest::shouldLightUpNoRowAtTheEdge()
{
    WholeTree tree;
    const auto hover = [&](int x, QEvent::Type kind = QEvent::HoverMove) {
        QHoverEvent event(kind, QPoint(x, tree.place(1).y()), QPoint(-1, -1));
        QApplication::sendEvent(tree.viewport(), &event);
        return QModelIndex(tree.view->hoveredIndex());
    };
    const int width = tree.viewport()->width();
    QCOMPARE(hover(width - 11), tree.index(1));
    QCOMPARE(hover(width - 10), QModelIndex());
    QCOMPARE(hover(width - 11), tree.index(1));
    QCOMPARE(hover(width - 1, QEvent::HoverEnter), QModelIndex());
}

/// Over empty space that is the project.
void TreeViewEventsTest::shouldShowWhereADropGoes()
{
    WholeTree tree;
    tree.select({1});
    const auto data = processors(tree);
    const auto picture = [&](quint32 n) {
        const QModelIndex row = n == 0 ? tree.root() : tree.index(n);
        return tree.viewport()->grab(tree.view->visualRect(row)).toImage();
    };
    const QImage project = picture(0);
    const QImage group = picture(11);
    QVERIFY(enter(tree, *data, tree.place(11)));
    QVERIFY(move(tree, *data, tree.place(11)));
    QVERIFY(picture(11) != group);
    QCOMPARE(picture(0), project);
    QVERIFY(move(tree, *data, tree.nowhere()));
    QCOMPARE(picture(11), group);
    QVERIFY(picture(0) != project);
    QVERIFY(!move(tree, *data, tree.place(4)));
    QCOMPARE(picture(0), project);
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
    tree.press(Qt::Key_F2);
    tree.press(Qt::Key_Delete);
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
    tree.press(Qt::Key_Down);
    QVERIFY(!tree.view->grab().isNull());
}

void TreeViewEventsTest::shouldStandTheRootBeingRemoved()
{
    WholeTree tree;
    tree.select({1});
    tree.press(Qt::Key_F2);
    const QPointer<QLineEdit> editor = tree.editor();
    QVERIFY(editor);
    QVERIFY(tree.model().removeRow(0));
    QTRY_VERIFY(!editor || !editor->isVisible());
    QVERIFY(!tree.view->currentIndex().isValid());
    QCOMPARE(tree.selected(), QString());
    tree.press(Qt::Key_Down);
    QVERIFY(!tree.view->grab().isNull());
    tree.model().clearToRoot();
    tree.panel.notify(16);
    QCOMPARE(tree.panel.dump(), kUntouched);
    tree.view->expandAll();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.place(1));
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

TSA_TEST_MAIN(TreeViewEventsTest)
#include "tst_treeviewevents.moc"
