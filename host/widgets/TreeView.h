#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPersistentModelIndex>
#include <QTreeView>

/// A tree with one column in the host's look. It has no header and no horizontal scroll bar. Each
/// row has one background for its state. Context menus can be requested by mouse and keyboard.
///
/// The scroll bar lies over the right edge of the viewport, so that rows keep their width when it
/// appears. Derived classes and delegates keep it clear.
///
/// The delegate paints the arrow of a row that can be expanded in the first 25 pixels of the row's
/// rectangle. A click there toggles the row and does not change the selection.
///
/// If the selection model does not let a row become current, keys that move, expand and edit use
/// the selected row; with Shift or Ctrl they use the current one. Where no row is either, they
/// start from the first one.
///
/// The view is an event filter on its viewport, so a derived class can handle these events in
/// eventFilter(). GUI thread. Not supported: several columns, right-to-left layouts.
class HOSTWIDGETS_EXPORT CTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CTreeView(QWidget* parent = nullptr);

    /// Returns the row under the mouse, or an invalid index.
    const QPersistentModelIndex& hoveredIndex() const { return m_hovered; }

signals:
    /// Emitted when the context menu of the row `index` is requested at `pos` in the viewport. The
    /// row is selected.
    void RightMenuEvent(const QModelIndex& index, const QPoint& pos);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Requests the context menu of a row. By mouse, it is the row below it, which is selected
    /// first if it is not yet. By keyboard, it is the current row if selected, else the topmost
    /// selected row, which is scrolled into view.
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void resizeEvent(QResizeEvent* event) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    void scrollContentsBy(int dx, int dy) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

    /// Returns the point in the viewport that is nearest to `point`.
    QPoint pointInView(const QPoint& point) const;

    /// Paint the background of a selected row, of a row under the mouse, and of any other row in
    /// the rectangle `row`. State_HasFocus marks the row that has the keyboard focus.
    virtual void DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                               const QRect& row) const;
    virtual void DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const;
    virtual void DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                               const QRect& row) const;

private:
    using Step = QModelIndex (QTreeView::*)(const QModelIndex&) const;

    bool isOnArrow(const QPoint& position) const;
    QModelIndex keyboardRow() const;
    QModelIndex firstRow() const;
    QModelIndex startRow() const;
    QModelIndex pageFrom(const QModelIndex& row, Step next) const;
    void requestMenu();
    void anchorRange();
    bool handleKey(QKeyEvent* event);
    void goTo(const QModelIndex& index);
    void setHovered(const QModelIndex& index);
    void setFocusShown(bool shown);
    void floatScrollBar();
    void placeScrollBar();
    void updateRow(const QModelIndex& index);

    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_anchor; // of ranges with Shift; if invalid, Qt's own is used
    QModelIndex m_focusRow;         // valid while painting
    bool m_focusShown = true;       // until the mouse is used
    bool m_arrowPressed = false;
};
