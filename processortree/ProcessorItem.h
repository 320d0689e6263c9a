#pragma once

#include "Interface/ProcessorNode.h"

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

    /// Gives the row its identity, under UuidRole too.
    void setUuid(const QUuid& uuid);

private:
    QUuid m_uuid;
};
