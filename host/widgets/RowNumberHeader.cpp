#include "host/widgets/RowNumberHeader.h"

#include <QPainter>
#include <QStyleOptionHeader>

RowNumberHeader::RowNumberHeader(QWidget* parent)
    : QHeaderView(Qt::Vertical, parent)
{
    setDefaultAlignment(Qt::AlignCenter);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setSectionsClickable(true);
}

void RowNumberHeader::paintSection(QPainter* painter, const QRect& rect, int section) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();

    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = rect;
    option.section = section;
    option.text = numberOf(section);
    option.textAlignment = defaultAlignment();
    if (!option.text.isEmpty())
        style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
}

QSize RowNumberHeader::sectionSizeFromContents(int section) const
{
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = section;
    option.text = numberOf(section);
    const QSize named = QHeaderView::sectionSizeFromContents(section);
    if (option.text.isEmpty())
        return named;
    return style()
        ->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this)
        .expandedTo(named);
}

/// Returns the row number; empty if the model provides a text.
QString RowNumberHeader::numberOf(int section) const
{
    const bool named = model() && model()->headerData(section, Qt::Vertical).isValid();
    return named ? QString() : QString::number(visualIndex(section) + 1);
}
