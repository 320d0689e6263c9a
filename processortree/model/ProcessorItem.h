#pragma once

#include "base/RecordCell.h"

#include <QStandardItem>
#include <QUuid>

/// One row of the processor tree. Owned by the model it is inserted into. GUI thread.
class CProcessorItem final : public QStandardItem
{
public:
    /// A row of kind `type` with a random identity, which setUuid() replaces.
    explicit CProcessorItem(EPrcTreeNodeType type);

    /// A row of kind `type` with a known identity. Cheaper: random ones are drawn from the system.
    CProcessorItem(EPrcTreeNodeType type, const QUuid& uuid);
    ~CProcessorItem() override;

    /// A plain item with the same data. What a processor's holds of the record is a copy, which
    /// does not follow this row's.
    QStandardItem* clone() const override;

    /// Gives the row its identity, under UuidRole too.
    void setUuid(const QUuid& uuid);

private:
    QUuid m_uuid;
};

/// The row of a group, with its record; without processors.
CProcessorItem* makeGroupItem(const ProcessorGroupNode& group);

/// The row of a processor, which leads to its record by `record`: a handle to a cell of its own.
CProcessorItem* makeProcessorItem(const ProcessorNode& processor, const CRecordHandle& record);
