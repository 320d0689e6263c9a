#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QStyledItemDelegate>

#include <memory>

class ElidedTexts;
class SvgIcons;
enum class RowEnd;

/// Paints the content of the rows of a processor tree from their roles (see ProcessorTreeRole). A
/// processor has an icon for its state, with a mark if it has a backup, its name, below it the
/// address or number, and a mark if the host shows a warning for it (ProcessorNode::hostFlag17). A
/// group has an arrow, its name and the number of its members; so does the root, whose text ends
/// with the number. Any other row has its text. The view paints the background. The texts end 10
/// pixels before the right edge, 18 if the row is selected or under the mouse, and 40 if a derived
/// class paints a button there. An address or number that has no room is shown without its label.
/// If a text is elided, a tool tip shows all texts of the row. GUI thread.
class HOSTWIDGETS_EXPORT CProcessorDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CProcessorDelegate(QObject* parent = nullptr);
    ~CProcessorDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// Returns the height from the row's Qt::SizeHintRole, and 0 as the width, because a row is as
    /// wide as its view.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    /// Does the same as paint() and helpEvent() for a row with `end` at its right end.
    void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                  RowEnd end) const;
    bool showHelp(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                  const QModelIndex& index, RowEnd end);

private:
    std::shared_ptr<SvgIcons> m_icons;
    std::unique_ptr<ElidedTexts> m_texts;
};
