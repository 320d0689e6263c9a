#pragma once

#include "Interface/ProcessorNode.h"

#include <optional>

class QModelIndex;
class QPersistentModelIndex;
class QStandardItem;
class QVariant;

/// The node type in `value`, which holds it as such or as something that converts to it. Nothing
/// when it does neither: such a row has no type and every traversal passes it over.
std::optional<EPrcTreeNodeType> nodeType(const QVariant& value);

std::optional<EPrcTreeNodeType> nodeType(const QStandardItem& item);

std::optional<EPrcTreeNodeType> nodeType(const QModelIndex& index);

std::optional<EPrcTreeNodeType> nodeType(const QPersistentModelIndex& index);
