#pragma once

#include <QListView>

/// The list of search results. Its viewport leaves the rounded corners free.
class CResultList final : public QListView
{
    Q_OBJECT

public:
    static constexpr int kCornerRadius = 8;

    CResultList() { setViewportMargins(0, kCornerRadius, 0, kCornerRadius); }

protected:
    /// Without a current row, QListView moves to the first row for every key.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override
    {
        const bool entersAtEnd = action == MoveEnd || action == MovePageUp;
        if (!currentIndex().isValid() && entersAtEnd)
            return model()->index(model()->rowCount() - 1, 0);
        return QListView::moveCursor(action, modifiers);
    }
};
