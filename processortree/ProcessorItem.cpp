#include "processortree/ProcessorItem.h"

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

void CProcessorItem::setUuid(const QUuid& uuid)
{
    m_uuid = uuid;
    setData(m_uuid, UuidRole);
}
