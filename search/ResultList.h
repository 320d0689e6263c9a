#pragma once

#include <QListView>

/// The list of search results. Its viewport leaves the rounded corners free.
class CResultList final : public QListView
{
    Q_OBJECT

public:
    static constexpr int kCornerRadius = 8;

    CResultList() { setViewportMargins(0, kCornerRadius, 0, kCornerRadius); }
};
