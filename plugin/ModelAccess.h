#pragma once

#include "processortree/model/IdentityIndex.h"

#include <QUuid>

#include <optional>
#include <shared_mutex>

class CProcessorTreeModel;

/// The bridge's read-write lock over the model pointer, and what threads other than the GUI thread
/// may do with the model: find rows by identity, and replace their records.
///
/// The lock is held for a look-up, a few records or a walk of the tree, never while anybody else is
/// called or waited for; so it needs no order and nobody stands at it.
class CModelAccess final
{
public:
    explicit CModelAccess(CProcessorTreeModel& model);
    CModelAccess(const CModelAccess&) = delete;
    CModelAccess& operator=(const CModelAccess&) = delete;

    /// Takes the model away from all others, before it is deleted. GUI thread.
    void end();

    /// The row of `id` at the moment. Any thread.
    std::optional<CIdentityIndex::Row> find(const QUuid& id) const;

    /// Replaces the record in `cell` if that is the record of the row of `id` and was not replaced
    /// since `version`. Returns whether it did. Any thread.
    bool replaceRecord(const QUuid& id, const CRecordCell* cell, quint32 version,
                       const ProcessorNode& record);

    /// Calls `walk` with the model while no record is replaced. GUI thread.
    template <typename Walk>
    void read(Walk walk) const
    {
        const std::shared_lock guard(m_lock);
        if (m_model)
            walk(*m_model);
    }

private:
    mutable std::shared_mutex m_lock;
    CProcessorTreeModel* m_model; // owned by the bridge
};
