#include "base/NodeType.h"

#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QStandardItem>
#include <QVariant>

std::optional<EPrcTreeNodeType> nodeType(const QVariant& value)
{
    const int typeId = qMetaTypeId<EPrcTreeNodeType>();
    if (value.userType() == typeId)
        return value.value<EPrcTreeNodeType>();
    QVariant converted = value;
    if (!value.isValid() || !converted.convert(typeId))
        return std::nullopt;
    return converted.value<EPrcTreeNodeType>();
}

std::optional<EPrcTreeNodeType> nodeType(const QStandardItem& item)
{
    return nodeType(item.data(NodeTypeRole));
}

std::optional<EPrcTreeNodeType> nodeType(const QModelIndex& index)
{
    return nodeType(index.data(NodeTypeRole));
}

std::optional<EPrcTreeNodeType> nodeType(const QPersistentModelIndex& index)
{
    return nodeType(QModelIndex(index));
}
