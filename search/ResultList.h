#pragma once

#include "processortree/PaintScope.h"

#include <QListView>

/// The list of search results, which keeps its rows off its round corners.
class CResultList final : public QListView
{
    Q_OBJECT

public:
    static constexpr int kCornerRadius = 8;

    CResultList() { setViewportMargins(0, kCornerRadius, 0, kCornerRadius); }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const CPaintScope painting;
        QListView::paintEvent(event);
    }
};
