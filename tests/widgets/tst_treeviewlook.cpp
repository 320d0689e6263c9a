#include "host/widgets/HostTheme.h"
#include "host/widgets/ProcessorDelegate.h"
#include "host/widgets/TreeView.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/SampleTree.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

/// What the host's tree shows besides its rows: the focus, and the scroll bar over its right edge.
class TreeViewLookTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldShowFocusThatCodeMoves();
    void shouldShowFocusAgainAsItWasLeft();
    void shouldStartFromTheFirstRow();
    void shouldTakeTheOutlineOffTheFirstRow();
    void shouldFillRowsFromEdgeToEdge();
    void shouldKeepTheWidthOfRowsBesideTheScrollBar();
    void shouldBeScrolledByItsBarAndTheWheel();
};

namespace {

/// Knows the row that has the focus outline.
class View final : public CTreeView
{
public:
    /// Paints the view, and returns that row.
    QString outlined()
    {
        m_outlined.clear();
        viewport()->grab();
        return m_outlined;
    }

    QRegion repainted;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        repainted += event->region();
        CTreeView::paintEvent(event);
    }

    void DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override
    {
        note(option, row);
        CTreeView::DrawSelectRow(painter, option, row);
    }

    void DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override
    {
        note(option, row);
        CTreeView::DrawNormalRow(painter, option, row);
    }

private:
    void note(const QStyleOptionViewItem& option, const QRect& row) const
    {
        if (option.state & QStyle::State_HasFocus)
            m_outlined += indexAt(row.center()).data().toString();
    }

    mutable QString m_outlined;
};

struct ShownView
{
    explicit ShownView(int height = 400)
    {
        view.setItemDelegate(&delegate);
        view.setModel(&tree.model);
        view.expandAll();
        view.resize(240, height);
        view.show();
        view.activateWindow();
        isActive = QTest::qWaitForWindowActive(&view);
    }

    void focus(Qt::FocusReason reason)
    {
        view.clearFocus();
        view.setFocus(reason);
    }

    void click(const QModelIndex& row)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(row).center());
    }

    QModelIndex first() const { return tree.model.index(0, 0); }

    SampleTree tree;
    CProcessorDelegate delegate;
    View view;
    bool isActive = false;
};

} // namespace

void TreeViewLookTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeViewLookTest::shouldShowFocusThatCodeMoves()
{
    ShownView shown;
    QVERIFY(shown.isActive);
    shown.click(shown.tree.processor(1));
    QCOMPARE(shown.view.outlined(), QString());
    shown.focus(Qt::OtherFocusReason);
    QCOMPARE(shown.view.outlined(), QStringLiteral("1"));
    shown.focus(Qt::MouseFocusReason);
    QCOMPARE(shown.view.outlined(), QString());
}

void TreeViewLookTest::shouldShowFocusAgainAsItWasLeft()
{
    ShownView shown;
    QVERIFY(shown.isActive);
    shown.click(shown.tree.processor(1));
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        shown.focus(reason);
        QCOMPARE(shown.view.outlined(), QString());
    }
    QTest::keyClick(&shown.view, Qt::Key_Down);
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        shown.view.clearFocus();
        QCOMPARE(shown.view.outlined(), QString());
        shown.view.setFocus(reason);
        QCOMPARE(shown.view.outlined(), QStringLiteral("2"));
    }
}

/// Whoever comes by Tab would not see where the keyboard is, nor get anywhere.
void TreeViewLookTest::shouldStartFromTheFirstRow()
{
    ShownView shown;
    QVERIFY(shown.isActive);
    shown.focus(Qt::TabFocusReason);
    shown.view.selectionModel()->clear();
    QCOMPARE(shown.view.outlined(), shown.first().data().toString());
    QTest::keyClick(&shown.view, Qt::Key_Down);
    QCOMPARE(shown.view.outlined(), QStringLiteral("A"));
    QCOMPARE(names(shown.view.selectionModel()->selectedIndexes()), QStringLiteral("A"));
}

void TreeViewLookTest::shouldTakeTheOutlineOffTheFirstRow()
{
    ShownView shown;
    QVERIFY(shown.isActive);
    shown.focus(Qt::TabFocusReason);
    shown.view.selectionModel()->clear();
    const QRect first = shown.view.visualRect(shown.first());
    for (const bool isSelected : {true, false}) {
        QCoreApplication::processEvents();
        shown.view.repainted = {};
        // Like a group of the processor tree, which never becomes current.
        shown.view.selectionModel()->select(shown.tree.processor(3),
                                            isSelected ? QItemSelectionModel::Select
                                                       : QItemSelectionModel::Deselect);
        QTRY_VERIFY(shown.view.repainted.contains(first.topLeft()));
        QVERIFY(shown.view.repainted.contains(first.bottomRight()));
    }
}

void TreeViewLookTest::shouldFillRowsFromEdgeToEdge()
{
    ShownView shown;
    shown.click(shown.tree.processor(1));
    const QImage picture = shown.view.grab().toImage();
    const QRect row = shown.view.visualRect(shown.tree.processor(1));
    const QColor fill = shown.view.palette().color(QPalette::Highlight);
    QCOMPARE(picture.width(), 240);
    for (const int x : {0, 239})
        QCOMPARE(picture.pixelColor(x, row.center().y()), fill);
    // Rows keep a distance to each other.
    for (const int y : {row.top(), row.bottom()})
        QCOMPARE(picture.pixelColor(120, y), hostColors().window);
}

void TreeViewLookTest::shouldKeepTheWidthOfRowsBesideTheScrollBar()
{
    ShownView shown;
    const QScrollBar* const bar = shown.view.verticalScrollBar();
    QVERIFY(!bar->isVisible());
    QCOMPARE(shown.view.visualRect(shown.tree.processor(1)).right(), 239);
    for (const int width : {240, 320}) {
        shown.view.resize(width, 100);
        QTRY_VERIFY(bar->isVisible());
        QCOMPARE(shown.view.visualRect(shown.first()).right(), width - 1);
        QCOMPARE(bar->geometry(), QRect(width - 10, 0, 10, 100));
        QCOMPARE(shown.view.childAt(width - 5, 50), bar);
    }
    shown.view.resize(240, 400);
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(shown.view.visualRect(shown.tree.processor(1)).right(), 239);
}

void TreeViewLookTest::shouldBeScrolledByItsBarAndTheWheel()
{
    ShownView shown(100);
    QScrollBar* const bar = shown.view.verticalScrollBar();
    QTRY_VERIFY(bar->isVisible());
    const auto top = [&shown] { return shown.view.visualRect(shown.first()).top(); };
    QCOMPARE(top(), 0);
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(5, 10));
    QMouseEvent move(QEvent::MouseMove, QPoint(5, 30), bar->mapToGlobal(QPoint(5, 30)),
                     Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(bar, &move);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(5, 30));
    const int dragged = top();
    QVERIFY(dragged < 0);
    QVERIFY(!shown.view.selectionModel()->hasSelection());
    QWidget* const viewport = shown.view.viewport();
    for (QWidget* below : {viewport, static_cast<QWidget*>(bar)}) {
        const int before = top();
        QWheelEvent wheel(QPointF(5, 50), below->mapToGlobal(QPoint(5, 50)), QPoint(),
                          QPoint(0, below == bar ? -120 : 120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(below, &wheel);
        QVERIFY(below == bar ? top() < before : top() > before);
    }
}

TSA_TEST_MAIN(TreeViewLookTest)

#include "tst_treeviewlook.moc"
