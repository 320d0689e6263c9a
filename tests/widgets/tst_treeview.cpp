#include "host/widgets/HostTheme.h"
#include "host/widgets/ProcessorDelegate.h"
#include "host/widgets/ProcessorItemSelectionModel.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/TreeViewForm.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHoverEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

class TestTreeView final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldRequestTheMenuOfTheRowUnderTheMouse();
    void shouldKeepTheSelectionOnARightClickInIt();
    void shouldSelectTheRowWhoseMenuIsAskedFor();
    void shouldRequestTheMenuByKeyboard();
    void shouldScrollTheRowIntoViewForItsMenu();
    void shouldToggleByTheArrow();
    void shouldNotSelectOrDragFromTheArrow();
    void shouldToggleGroupsByDoubleClicks();
    void shouldMoveThroughRowsThatCannotBeCurrent();
    void shouldMoveByPages();
    void shouldCollapseAndExpandByKeys();
    void shouldEditTheRowWithTheKeyboardFocus();
    void shouldPaintRowsForTheirStates();
    void shouldShowFocusToKeyboardUsersOnly();
    void shouldRepaintOnlyTheRowsThatTheMouseLeavesAndEnters();
    void shouldFollowTheRowUnderTheMouseOnRemoval();
    void shouldPaintNoPanelOfTheStyle();
    void shouldLetDerivedViewsConsumeEvents();
    void shouldNotScrollHorizontally();
    void shouldWorkWithoutAModel();
};

void TestTreeView::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestTreeView::shouldRequestTheMenuOfTheRowUnderTheMouse()
{
    Form form;
    const QPoint position = form.at(form.tree.processor(2));
    form.rightClick(position);
    QCOMPARE(form.asked.count(), 1);
    QCOMPARE(form.askedRow(), QStringLiteral("2"));
    QCOMPARE(form.asked.last().at(1).toPoint(), position);
    form.rightClick(form.view.viewport()->rect().bottomRight());
    QCOMPARE(form.asked.count(), 1);
}

void TestTreeView::shouldKeepTheSelectionOnARightClickInIt()
{
    Form form;
    form.click(form.at(form.tree.processor(1)));
    form.click(form.at(form.tree.processor(3)), Qt::LeftButton, Qt::ControlModifier);
    form.rightClick(form.at(form.tree.processor(1)));
    QCOMPARE(form.askedRow(), QStringLiteral("1"));
    QCOMPARE(form.selected(), QStringLiteral("1 3"));
    form.rightClick(form.at(form.tree.processor(4)));
    QCOMPARE(form.askedRow(), QStringLiteral("4"));
    QCOMPARE(form.selected(), QStringLiteral("4"));
}

void TestTreeView::shouldSelectTheRowWhoseMenuIsAskedFor()
{
    Form form;
    form.click(form.at(form.tree.processor(1)));
    form.rightClick(form.at(form.tree.a()));
    QCOMPARE(form.selected(), QStringLiteral("A"));
    form.rightClick(form.at(form.tree.processor(2)), Qt::ControlModifier);
    QCOMPARE(form.selected(), QStringLiteral("2"));
    form.rightClick({2, form.arrow(form.tree.b()).y()});
    QCOMPARE(form.askedRow(), QStringLiteral("B"));
    QCOMPARE(form.selected(), QStringLiteral("B"));
    QVERIFY(form.view.isExpanded(form.tree.b()));
}

void TestTreeView::shouldRequestTheMenuByKeyboard()
{
    Form form;
    form.menuKey();
    QCOMPARE(form.asked.count(), 0);
    form.click(form.at(form.tree.processor(2)));
    form.click(form.at(form.tree.processor(1)), Qt::LeftButton, Qt::ControlModifier);
    form.menuKey();
    QCOMPARE(form.askedRow(), QStringLiteral("1"));
    QCOMPARE(form.asked.last().at(1).toPoint(),
             form.view.visualRect(form.tree.processor(1)).bottomLeft());
    QCOMPARE(form.selected(), QStringLiteral("1 2"));

    form.pressKey(Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(form.asked.count(), 2);
    form.view.setContextMenuPolicy(Qt::PreventContextMenu);
    form.pressKey(Qt::Key_F10, Qt::ShiftModifier);
    form.menuKey();
    QCOMPARE(form.asked.count(), 2);
    form.view.setContextMenuPolicy(Qt::DefaultContextMenu);

    // The row does not become current.
    form.click(form.at(form.tree.b()));
    form.click(form.at(form.tree.a()), Qt::LeftButton, Qt::ControlModifier);
    form.menuKey();
    QCOMPARE(form.askedRow(), QStringLiteral("A"));
}

void TestTreeView::shouldScrollTheRowIntoViewForItsMenu()
{
    Form form(90);
    form.click(form.at(form.tree.a()));
    form.view.verticalScrollBar()->setValue(form.view.verticalScrollBar()->maximum());
    QVERIFY(form.view.visualRect(form.tree.a()).bottom() < 0);
    form.menuKey();
    QCOMPARE(form.askedRow(), QStringLiteral("A"));
    QVERIFY(form.view.viewport()->rect().contains(form.view.visualRect(form.tree.a()).center()));
    QVERIFY(form.view.viewport()->rect().contains(form.asked.last().at(1).toPoint()));
}

void TestTreeView::shouldToggleByTheArrow()
{
    Form form;
    form.click(form.at(form.tree.processor(4)));
    form.click(form.arrow(form.tree.a()));
    QVERIFY(!form.view.isExpanded(form.tree.a()));
    QCOMPARE(form.selected(), QStringLiteral("4"));
    form.click(form.arrow(form.tree.a()));
    QVERIFY(form.view.isExpanded(form.tree.a()));
    form.doubleClick(form.arrow(form.tree.a()));
    QVERIFY(form.view.isExpanded(form.tree.a()));
    form.click(form.arrow(form.tree.all()));
    QVERIFY(!form.view.isExpanded(form.tree.all()));
    form.click(form.arrow(form.tree.all()));

    // Processors and empty groups have no arrow.
    form.click(form.arrow(form.tree.processor(1)));
    QCOMPARE(form.selected(), QStringLiteral("1"));
    form.click({2, form.arrow(form.tree.processor(2)).y()});
    QCOMPARE(form.selected(), QStringLiteral("2"));
    form.tree.groupB->removeRow(0);
    form.click(form.arrow(form.tree.b()));
    QCOMPARE(form.selected(), QStringLiteral("B"));
}

void TestTreeView::shouldNotSelectOrDragFromTheArrow()
{
    Form form;
    form.click(form.at(form.tree.processor(4)));
    QTest::mousePress(form.view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      form.arrow(form.tree.b()));
    QMouseEvent move(QEvent::MouseMove, form.at(form.tree.processor(1)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(form.view.viewport(), &move);
    QTest::mouseRelease(form.view.viewport(), Qt::LeftButton, Qt::NoModifier,
                        form.at(form.tree.processor(1)));
    QCOMPARE(form.selected(), QStringLiteral("4"));
    form.click(form.at(form.tree.processor(1)));
    QCOMPARE(form.selected(), QStringLiteral("1"));
}

void TestTreeView::shouldToggleGroupsByDoubleClicks()
{
    Form form;
    const QPoint position = form.at(form.tree.a());
    form.doubleClick(position);
    QVERIFY(!form.view.isExpanded(form.tree.a()));
    QCOMPARE(form.selected(), QStringLiteral("A"));
    form.doubleClick(position);
    QVERIFY(form.view.isExpanded(form.tree.a()));
    QVERIFY(!form.view.findChild<QLineEdit*>());
}

void TestTreeView::shouldMoveThroughRowsThatCannotBeCurrent()
{
    Form form;
    form.click(form.at(form.tree.all()));
    QStringList way;
    for (int step = 0; step < 8; ++step) {
        form.pressKey(Qt::Key_Down);
        way += form.selected();
    }
    QCOMPARE(way.join(QLatin1Char(' ')), QStringLiteral("A 1 2 B 3 4 5 5"));
    way.clear();
    for (int step = 0; step < 7; ++step) {
        form.pressKey(Qt::Key_Up);
        way += form.selected();
    }
    QCOMPARE(way.join(QLatin1Char(' ')), QStringLiteral("4 3 B 2 1 A All(5)"));
}

void TestTreeView::shouldMoveByPages()
{
    // The height of "A[1,2".
    Form form(32 + 2 * 42 + 2);
    form.click(form.at(form.tree.all()));
    QStringList way;
    for (int step = 0; step < 4; ++step) {
        form.pressKey(Qt::Key_PageDown);
        way += form.selected();
        QVERIFY(form.view.viewport()->rect().contains(
            form.at(form.view.selectionModel()->selectedIndexes().first())));
    }
    QCOMPARE(way.join(QLatin1Char(' ')), QStringLiteral("1 B 4 5"));
    form.pressKey(Qt::Key_PageUp);
    QCOMPARE(form.selected(), QStringLiteral("4"));
    form.pressKey(Qt::Key_Home);
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
    form.pressKey(Qt::Key_End);
    QCOMPARE(form.selected(), QStringLiteral("5"));
}

void TestTreeView::shouldCollapseAndExpandByKeys()
{
    Form form;
    form.click(form.at(form.tree.processor(2)));
    form.pressKey(Qt::Key_Left);
    QCOMPARE(form.selected(), QStringLiteral("A"));
    form.pressKey(Qt::Key_Left);
    QVERIFY(!form.view.isExpanded(form.tree.a()));
    form.pressKey(Qt::Key_Right);
    QVERIFY(form.view.isExpanded(form.tree.a()));
    form.pressKey(Qt::Key_Right);
    QCOMPARE(form.selected(), QStringLiteral("1"));
    form.pressKey(Qt::Key_Right);
    QCOMPARE(form.selected(), QStringLiteral("1"));
    form.pressKey(Qt::Key_Left);
    form.pressKey(Qt::Key_Left);
    form.pressKey(Qt::Key_Left);
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
    form.pressKey(Qt::Key_Left);
    form.pressKey(Qt::Key_Left);
    QVERIFY(!form.view.isExpanded(form.tree.all()));
    QCOMPARE(form.selected(), QStringLiteral("All(5)"));
}

void TestTreeView::shouldEditTheRowWithTheKeyboardFocus()
{
    Form form;
    form.click(form.at(form.tree.processor(1)));
    form.click(form.at(form.tree.a()));
    form.pressKey(Qt::Key_F2);
    auto* editor = form.view.findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("A"));
    QTest::keyClick(editor, Qt::Key_Escape);
    form.click(form.at(form.tree.processor(1)));
    QTRY_VERIFY(!form.view.findChild<QLineEdit*>());
    form.pressKey(Qt::Key_F2);
    editor = form.view.findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("1"));
}

void TestTreeView::shouldPaintRowsForTheirStates()
{
    Form form;
    form.click(form.at(form.tree.processor(1)));
    form.hover(form.at(form.tree.processor(2)));
    form.view.painted.clear();
    form.view.viewport()->grab();
    QCOMPARE(form.view.painted.join(QStringLiteral(", ")),
             QStringLiteral("All(5) normal, A normal, 1 selected, 2 hovered, B normal, 3 normal, "
                            "4 normal, 5 normal"));
    form.hover(form.at(form.tree.processor(1)));
    form.view.setEnabled(false);
    form.view.painted.clear();
    form.view.viewport()->grab();
    QCOMPARE(form.view.painted.filter(QStringLiteral("selected")).size(), 1);
    QVERIFY(form.view.painted.filter(QStringLiteral("hovered")).isEmpty());
}

void TestTreeView::shouldShowFocusToKeyboardUsersOnly()
{
    Form form;
    const auto focused = [&form] {
        form.view.painted.clear();
        form.view.viewport()->grab();
        return form.view.painted.filter(QStringLiteral("focus")).join(QStringLiteral(", "));
    };
    QTRY_VERIFY(form.view.hasFocus());
    form.click(form.at(form.tree.processor(1)));
    QCOMPARE(focused(), QString());
    form.pressKey(Qt::Key_Up);
    QCOMPARE(focused(), QStringLiteral("A selected focus"));
    form.pressKey(Qt::Key_Down);
    QCOMPARE(focused(), QStringLiteral("1 selected focus"));
    form.click(form.at(form.tree.processor(2)));
    QCOMPARE(focused(), QString());
    form.view.clearFocus();
    form.view.setFocus(Qt::TabFocusReason);
    QCOMPARE(focused(), QStringLiteral("2 selected focus"));
}

void TestTreeView::shouldRepaintOnlyTheRowsThatTheMouseLeavesAndEnters()
{
    Form form;
    form.hover(form.at(form.tree.processor(1)));
    QTRY_VERIFY(form.view.repainted.contains(form.at(form.tree.processor(1))));
    QCoreApplication::processEvents();
    form.view.repainted = {};
    form.hover(form.at(form.tree.processor(1)) + QPoint(3, 3));
    form.hover(form.at(form.tree.processor(3)));
    QVERIFY(form.view.hoveredIndex() == form.tree.processor(3));
    QTRY_VERIFY(form.view.repainted.contains(form.at(form.tree.processor(3))));
    const auto rowOf = [&form](int number) {
        QRect row = form.view.visualRect(form.tree.processor(number));
        row.setLeft(0);
        return QRegion(row);
    };
    QCOMPARE(form.view.repainted, rowOf(1) + rowOf(3));
    QHoverEvent leave(QEvent::HoverLeave, QPoint(-1, -1), QPoint());
    QCoreApplication::sendEvent(form.view.viewport(), &leave);
    QVERIFY(!form.view.hoveredIndex().isValid());
}

void TestTreeView::shouldFollowTheRowUnderTheMouseOnRemoval()
{
    Form form;
    form.hover(form.at(form.tree.processor(1)));
    form.tree.groupA->removeRow(0);
    QVERIFY(!form.view.hoveredIndex().isValid());
    form.hover(form.at(form.tree.processor(2)));
    QCOMPARE(form.view.hoveredIndex().data().toString(), QStringLiteral("2"));
    form.tree.model.clear();
    QVERIFY(!form.view.hoveredIndex().isValid());
    form.view.viewport()->grab();
}

void TestTreeView::shouldPaintNoPanelOfTheStyle()
{
    Form form;
    form.click(form.at(form.tree.processor(1)));
    const QRect row = form.view.visualRect(form.tree.processor(1));
    const QImage image = form.view.viewport()->grab().toImage();
    const QColor highlight = form.view.palette().color(QPalette::Highlight);
    const int right = image.width() - 1;
    QCOMPARE(image.pixelColor(right - 20, row.center().y()), highlight);
    QCOMPARE(image.pixelColor(10, row.center().y()), highlight);
    QCOMPARE(image.pixelColor(right - 5, row.center().y()), hostColors().window);
    QCOMPARE(image.pixelColor(right - 20, row.top()), hostColors().window);
}

void TestTreeView::shouldLetDerivedViewsConsumeEvents()
{
    Form form;
    form.view.consumesPresses = true;
    form.click(form.at(form.tree.processor(1)));
    QCOMPARE(form.selected(), QString());
    form.view.consumesPresses = false;
    form.click(form.at(form.tree.processor(1)));
    QCOMPARE(form.selected(), QStringLiteral("1"));
}

void TestTreeView::shouldNotScrollHorizontally()
{
    Form form;
    form.tree.processors.at(0)->setText(QString(300, QLatin1Char('W')));
    form.view.scrollTo(form.tree.processor(1));
    QCOMPARE(form.view.horizontalScrollBar()->maximum(), 0);
    QVERIFY(!form.view.horizontalScrollBar()->isVisible());
    QCOMPARE(form.view.visualRect(form.tree.processor(1)).right(),
             form.view.viewport()->rect().right());
    QVERIFY(form.view.isHeaderHidden());
    QCOMPARE(form.view.verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
}

void TestTreeView::shouldWorkWithoutAModel()
{
    View view;
    view.resize(200, 200);
    view.show();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_F2, Qt::Key_Home})
        QTest::keyClick(&view, key);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    for (const auto reason : {QContextMenuEvent::Keyboard, QContextMenuEvent::Mouse}) {
        QContextMenuEvent menu(reason, QPoint(20, 20), QPoint());
        QCoreApplication::sendEvent(&view, &menu);
    }
    QVERIFY(view.painted.isEmpty());
    view.setModel(nullptr);
    QVERIFY(!view.hoveredIndex().isValid());
}

TSA_TEST_MAIN(TestTreeView)

#include "tst_treeview.moc"
