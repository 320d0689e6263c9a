#pragma once

#include <QStyledItemDelegate>

#include <memory>

class SvgIcons;

/// Paints the rows of the search results: an icon for the state of the processor, its name, and
/// below it the address or number. Shows an elided name whole in a tool tip. GUI thread.
class CCompleterProcessorDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CCompleterProcessorDelegate(QObject* parent = nullptr);
    ~CCompleterProcessorDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    std::shared_ptr<SvgIcons> m_icons;
};
