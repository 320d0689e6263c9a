#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QStyledItemDelegate>

#include <memory>

class SvgIcons;

/// Paints the content of the rows of a processor tree from their roles (see ProcessorTreeRole): a
/// processor with an icon of its state, its name, below it how it is addressed, and a mark when the
/// host watches it with a warning (ProcessorNode::hostFlag17); a group with its arrow, name and
/// count of members; any other row with its text. The background is the view's. The texts end 40
/// pixels before the right edge, which leaves room for a button. A row whose texts are elided shows
/// them whole in a tool tip. GUI thread.
class HOSTWIDGETS_EXPORT CProcessorDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CProcessorDelegate(QObject* parent = nullptr);
    ~CProcessorDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// As high as the row's Qt::SizeHintRole says. The width is 0: a row is as wide as its view.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    std::shared_ptr<SvgIcons> m_icons;
};
