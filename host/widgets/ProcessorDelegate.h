#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QStyledItemDelegate>

/// Paints the rows of a processor tree from their roles (see ProcessorTreeRole): a processor with
/// an icon of its state, its name, and its address or number below; a group with its arrow, name
/// and count of members; the root with its text. Where nothing else is known, the plain text.
/// Shows a name that is elided whole in a tool tip. GUI thread.
class HOSTWIDGETS_EXPORT CProcessorDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The row's Qt::SizeHintRole. The width is 0: a row is as wide as its view.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};
