#pragma once

#include "host/widgets/ProcessorDelegate.h"

/// Draws the rows of search results: as the host does, without a button and without editors. GUI
/// thread.
class CProcessorTreeSearchDelegate final : public CProcessorDelegate
{
    Q_OBJECT

public:
    using CProcessorDelegate::CProcessorDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// None.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
};
