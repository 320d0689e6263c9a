#pragma once

#include "Interface/ProcessorNode.h"
#include "processortree/model/IdentityIndex.h"
#include "processortree/model/RisingOrder.h"
#include "processortree/model/RowMoves.h"
#include "processortree/model/TreeFill.h"

#include <QList>
#include <QPersistentModelIndex>
#include <QStandardItemModel>
#include <QUuid>

#include <functional>
#include <utility>

class CProcessorItem;

/// The processors of the host's project as a tree of one column: the "All processors(N)" root,
/// under it the groups, then the processors that belong to no group; every group holds its
/// processors.
///
/// The host's events change it through the slots, which the bridge calls by name; views change it
/// through setData() and moveProcessors(). Records come from the host's handler.
///
/// Thread: GUI thread, but for findRow(). No operation reports an error: one that names an unknown
/// identity, or meets a row whose type cannot be read, does nothing there.
///
/// Not supported: more than one column, groups within groups, moves within one parent.
class CProcessorTreeModel final : public QStandardItemModel
{
    Q_OBJECT

public:
    explicit CProcessorTreeModel(QObject* parent = nullptr);
    ~CProcessorTreeModel() override;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                  const QModelIndex& destinationParent, int destinationChild) override;

    /// Makes the root row, "All processors(0)". The model has to be empty: a second call would add
    /// a second root row and make that the root.
    void initRoot();

    /// Back to the root row alone, whatever the model holds.
    void clearToRoot();

    /// Rewrites the root's text with the number of processors that stand in the tree.
    void updateRootText();

    /// The first row of that identity in depth-first order, the root for its own; null for none.
    /// Takes constant time.
    QStandardItem* getItem(const QUuid& uuid) const;

    /// Type and record of the same row, for any thread; nothing for an unknown identity.
    std::optional<CIdentityIndex::Row> findRow(const QUuid& uuid) const;

    /// Number of processor rows, in groups and outside. Takes constant time, as groupCount() does;
    /// both leave out rows that are about to be removed.
    int getAllProcessorCount() const { return m_index.processorCount(); }

    /// Number of group rows.
    int groupCount() const { return m_index.groupCount(); }

    /// Identities of the processors below `index`, depth first.
    QList<QUuid> getChildProcessor(const QModelIndex& index) const;

    /// Gives row `item` the changed record `processor`. A processor that is addressed by IP and has
    /// another address than before is taken out and placed anew; `item` is gone then. The root,
    /// which a null identity leads to, stays as it is.
    void updateProcessor(QStandardItem* item, const ProcessorNode& processor);

    /// Gives the row of a group the changed record `group`; its processors stay.
    void updateGroup(QStandardItem* item, const ProcessorGroupNode& group);

    /// Takes out the processors that reset() and AppendProcessors() left out since the last call,
    /// because the tree does not hold their group: each with its group.
    QList<LeftOut> takeLeftOut() { return std::exchange(m_leftOut, {}); }

    /// Moves processors under group `targetId`, or under the root for a null one, each to its place
    /// there, brings the records of the processors and groups up to date and reports the new
    /// membership to the host. Returns the moved ones at their new places; those that stood there
    /// already are left out.
    QList<QPersistentModelIndex> moveProcessors(const QList<QPersistentModelIndex>& indexes,
                                                const QUuid& targetId);

    /// Removes every group with the processors in it; the root's text follows.
    void removeAllGroups();

    /// Returns whether the tree holds what the host has: not before the first fill, and not while
    /// the host is asked for another one.
    bool isFilled() const { return m_isFilled; }

    /// Returns whether an insertion or removal of rows is being announced. No other one may begin
    /// until every listener has heard of it.
    bool isChanging() const { return m_changes > 0; }

    /// Returns whether rows are about to be removed.
    bool isRemoving() const { return m_removals > 0; }

    /// The rows that are removed to come again at another place.
    const CRowMoves& moves() const { return m_moves; }

    /// Adds a group above the row `row` of the root.
    CProcessorItem* insertGroup(const ProcessorGroupNode& group, int row);

    /// Sets what is called each time that isChanging() ends.
    void setOnChanged(std::function<void()> tell) { m_onChanged = std::move(tell); }

    /// Tells views that the records of `processors` were replaced behind the model's back.
    void announceRecords(const QList<QUuid>& processors);

public slots:
    /// Fills the tree anew with the host's groups and processors; without a handler rows stay.
    /// Of those that share an identity the first one gets a row, groups before processors, and one
    /// with a null identity gets none. Afterwards the root's text counts the host's processors,
    /// with those that got no row and those whose group the host did not list.
    void reset();

    /// Adds a group behind the other groups and returns its row; null without a root, or when
    /// somebody who heard of the row removed it.
    CProcessorItem* AppendGroup(const ProcessorGroupNode& group);

    /// Adds a processor at its place; nowhere when its group is unknown.
    void AppendProcessor(const ProcessorNode& processor);

    /// Adds the host's processors of these identities, in one model reset; one for which the host
    /// answers with another identity is left out.
    void AppendProcessors(const QList<QUuid>& processors);

    /// Removes a processor; or a group, whose processors move to the root first.
    void removeNode(const QUuid& uuid);

    /// Removes one after the other.
    void removeNodes(const QList<QUuid>& uuids);

private:
    class Batch;
    class Change;
    class Move;

    bool fill(const QList<ProcessorGroupNode>& groups, const QList<ProcessorNode>& processors);
    QStandardItem* groupItem(const QUuid& groupId) const;
    CProcessorItem* insertProcessor(const ProcessorNode& processor, QStandardItem* parent);
    void indexMade(const QStandardItem& parent, int row);
    void indexRow(QStandardItem* item);
    void setRootCount(int count);
    void emptyGroup(const QPersistentModelIndex& group);
    void replaceProcessor(const QUuid& known, const ProcessorNode& processor);
    CIdentityIndex::Row rowOf(const QStandardItem& item) const;
    void storeProcessor(QStandardItem* item, const CRecordHandle& record,
                        const ProcessorNode& processor);
    void announceRecord(const QStandardItem& item);
    void modifyProcessor(QStandardItem* item, const std::function<void(ProcessorNode&)>& change);
    QPersistentModelIndex moveProcessor(const QModelIndex& index,
                                        const QPersistentModelIndex& target);
    void changeMembership(const QPersistentModelIndex& moved, const QPersistentModelIndex& source);

    bool isSearched(const QStandardItem* parent) const;
    void onRowsInserted(const QModelIndex& parent, int first, int last);
    void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
    void onRowsRemoved();
    void onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                       const QVector<int>& roles);
    void adoptRecord(QStandardItem* item);
    void adoptRecords(QStandardItem* item);
    void onRestructured();
    void onModelReset();

    QStandardItem* m_root = nullptr; // owned by the model, below its invisible root
    QString m_rootText;              // as the model wrote it
    int m_rootCount = 0;             // that it shows
    CIdentityIndex m_index;
    CRisingOrder m_order;
    const CIdentityTable::Entry* m_made = nullptr; // the row that the model is inserting
    bool m_isCellKept = false; // the next dataChanged is about a record whose cell is the same
    QList<LeftOut> m_leftOut;
    bool m_rebuildDue = false;
    bool m_isFilled = false;
    int m_removals = 0; // that are announced, nested ones
    int m_changes = 0;  // nested ones
    CRowMoves m_moves;
    std::function<void()> m_onChanged;
};
