#pragma once

#include "host/widgets/ProcessorItemSelectionModel.h"

#include <QUuid>

#include <functional>

class IPanelBridge;
class QAbstractItemView;

/// The selection in the processor tree: only processors become current, and every real change is
/// reported to the host, except one that the host makes itself: in reply (see
/// IPanelBridge::IsSelectionEchoGuarded()), or while the signals are blocked. The host may
/// change the tree, or the selection, while it is told: what it does then is the last word. GUI
/// thread.
class CProcessorSelectionModel final : public CProcessorItemSelectionModel
{
    Q_OBJECT

public:
    /// Over the processor tree model `model`, for `view`, which becomes the parent.
    CProcessorSelectionModel(IPanelBridge& bridge, QAbstractItemModel* model,
                             QAbstractItemView* view);

    using CProcessorItemSelectionModel::select;

    /// Selects rows, or makes one current, as they were before they moved: the host is not told.
    void restore(const QItemSelection& rows);
    void restoreCurrent(const QModelIndex& index);

public slots:
    /// Ignored for rows other than processors.
    void setCurrentIndex(const QModelIndex& index,
                         QItemSelectionModel::SelectionFlags command) override;
    void select(const QItemSelection& selection,
                QItemSelectionModel::SelectionFlags command) override;

private:
    void report(QModelIndexList selected) const;
    void tellHost(const std::function<void()>& tell) const;

    IPanelBridge& m_bridge;
    QUuid m_previous; // the processor that was current before the current one
};
