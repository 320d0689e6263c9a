#pragma once

#include "base/PaintScope.h"

#include <QBitmap>
#include <QListView>
#include <QPainter>

/// The list of search results. Its viewport leaves the rounded corners free.
class CResultList final : public QListView
{
    Q_OBJECT

public:
    static constexpr int kCornerRadius = 8;

    static void paintBackground(QPainter& painter, const QRect& rect)
    {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(41, 41, 45));
        painter.drawRoundedRect(rect, kCornerRadius, kCornerRadius);
    }

    CResultList() { setViewportMargins(0, kCornerRadius, 0, kCornerRadius); }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const CPaintScope painting;
        QListView::paintEvent(event);
    }

    /// Without a compositor, the corners of a translucent window are black unless it is masked.
    void resizeEvent(QResizeEvent* event) override
    {
        QListView::resizeEvent(event);
        QPixmap shape(size());
        shape.fill(Qt::transparent);
        QPainter painter(&shape);
        paintBackground(painter, rect());
        painter.end();
        setMask(shape.mask());
    }

    /// Without a current row, QListView moves to the first row for every key.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override
    {
        const bool entersAtEnd = action == MoveEnd || action == MovePageUp;
        if (!currentIndex().isValid() && entersAtEnd)
            return model()->index(model()->rowCount() - 1, 0);
        return QListView::moveCursor(action, modifiers);
    }
};
