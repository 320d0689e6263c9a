#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QPersistentModelIndex>
#include <QTreeView>

/// A tree of one column in the host's look: no header, no horizontal scroll bar, rows painted whole
/// with one background that tells their state, and menus asked for by mouse and keyboard alike. The
/// view filters the events of its viewport, so that a derived class sees them in `eventFilter`
/// first and may consume them. GUI thread.
class HOSTWIDGETS_EXPORT CTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CTreeView(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;

    /// The row under the mouse; invalid for none.
    QModelIndex hoveredIndex() const { return m_hovered; }

signals:
    /// The menu of the row `index` was asked for, at `pos` in the viewport.
    void RightMenuEvent(const QModelIndex& index, const QPoint& pos);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Asks for the menu of a row: by mouse of the one under it, which belongs to the selection by
    /// then; by keyboard of the current row if it is selected, else of the topmost selected one.
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect,
                      const QModelIndex& index) const override;

    /// Paint the background of a row, behind its texts, inside `row`: of one that is selected, of
    /// one under the mouse, and of any other.
    virtual void DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                               const QRect& row) const;
    virtual void DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const;
    virtual void DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                               const QRect& row) const;

private:
    QPersistentModelIndex m_hovered;
};
