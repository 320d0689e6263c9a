#include "processortree/model/ProcessorItem.h"

#include <QSize>
#include <QVariant>

namespace {

constexpr int kProcessorRowHeight = 42;
constexpr int kOtherRowHeight = 32;

} // namespace

CProcessorItem::CProcessorItem(EPrcTreeNodeType type)
    : CProcessorItem(type, QUuid::createUuid())
{
}

CProcessorItem::CProcessorItem(EPrcTreeNodeType type, const QUuid& uuid)
    : m_uuid(uuid)
{
    const bool isProcessor = type == NodeProcessor;
    setData(QVariant::fromValue(type), NodeTypeRole);
    setData(QSize(0, isProcessor ? kProcessorRowHeight : kOtherRowHeight), Qt::SizeHintRole);
    setDragEnabled(isProcessor);
    setData(m_uuid, UuidRole);
}

CProcessorItem::~CProcessorItem() = default;

QStandardItem* CProcessorItem::clone() const
{
    QStandardItem* copy = QStandardItem::clone();
    const CRecordHandle record = recordHandle(data(NodeDataRole));
    if (record.cell())
        copy->setData(QVariant::fromValue(record.cell()->load()), NodeDataRole);
    return copy;
}

void CProcessorItem::setUuid(const QUuid& uuid)
{
    m_uuid = uuid;
    setData(m_uuid, UuidRole);
}

CProcessorItem* makeGroupItem(const ProcessorGroupNode& group)
{
    auto* item = new CProcessorItem(NodeGroup, group.id);
    item->setText(group.name);
    item->setData(QVariant::fromValue(group), NodeDataRole);
    return item;
}

CProcessorItem* makeProcessorItem(const ProcessorNode& processor, const CRecordHandle& record)
{
    auto* item = new CProcessorItem(NodeProcessor, processor.id);
    item->setText(processor.name);
    item->setData(QVariant::fromValue(record), NodeDataRole);
    record.cell()->isOf(item);
    return item;
}
