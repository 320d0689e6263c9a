#pragma once

#include <QStyledItemDelegate>

#include <memory>

class SvgIcons;

/// Draws the rows of search results: on the style's background an icon of the processor's state,
/// its name, and below it how it is addressed. A name whose end has no room shows whole in a tool
/// tip. GUI thread.
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
