#pragma once

#include <QHeaderView>

/// The header at the left of a table. Numbers the rows from 1 as long as the model has no text for
/// them, which QHeaderView leaves blank.
class RowNumberHeader final : public QHeaderView
{
    Q_OBJECT

public:
    explicit RowNumberHeader(QWidget* parent);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sectionSizeFromContents(int section) const override;

private:
    QString numberOf(int section) const;
};
