#pragma once

#include <QHeaderView>

/// The vertical header of a table. Numbers the rows from 1 if the model has no texts for them,
/// where QHeaderView would leave them blank.
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
