#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPersistentModelIndex>
#include <QTreeView>

/// A tree of one column in the host's look: no header, no horizontal scroll bar, rows painted whole
/// with one background that tells their state, and menus asked for by mouse and keyboard alike.
///
/// The arrow of a row that can be expanded is painted by the delegate, within the first 25 pixels
/// of the row's rectangle; a click there toggles the row and leaves the selection alone.
///
/// Where the selection model does not let a row become current, the keys that move, expand and
/// edit go by the selected row instead; with Shift or Ctrl they go by the current one.
///
/// The view filters the events of its viewport, so that a derived class meets them in eventFilter()
/// first and may consume them. GUI thread. Not supported: more than one column, right-to-left.
class HOSTWIDGETS_EXPORT CTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CTreeView(QWidget* parent = nullptr);

    /// The row under the mouse; invalid for none.
    const QPersistentModelIndex& hoveredIndex() const { return m_hovered; }

signals:
    /// The menu of the row `index` was asked for, at `pos` in the viewport. The row is selected.
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
    /// Asks for the menu of a row: by mouse, of the one below it, which is selected first unless it
    /// is already; by keyboard, of the current row if it is selected, else of the topmost selected
    /// one, which is scrolled into view.
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    void scrollContentsBy(int dx, int dy) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

    /// `point`, or the nearest one that is in the viewport.
    QPoint pointInView(const QPoint& point) const;

    /// Paint the background of a row inside `row`: of one that is selected, of one under the mouse,
    /// and of any other. State_HasFocus in the option is a row that the keyboard stands on.
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
    QModelIndex pageFrom(const QModelIndex& row, Step next) const;
    void requestMenu();
    void anchorRange();
    bool handleKey(QKeyEvent* event);
    void goTo(const QModelIndex& index);
    void setHovered(const QModelIndex& index);
    void setFocusShown(bool shown);
    void updateRow(const QModelIndex& index);

    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_anchor; // of ranges that Shift makes; Qt's own where invalid
    QModelIndex m_focusRow;         // while painting
    bool m_focusShown = false;
    bool m_arrowPressed = false;
};
