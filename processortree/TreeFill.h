#pragma once

#include "processortree/IdentityIndex.h"

#include <QList>

class QStandardItem;

/// Fills the empty `root` of a tree with the host's records in host order, as appending each group
/// and each processor would, and returns what it has made. Processors of unknown groups are left
/// out.
///
/// Every parent gets its rows in one go: attaching them one by one costs as much again.
CIdentityIndex::Rows fillTree(QStandardItem& root, const QList<ProcessorGroupNode>& groups,
                              const QList<ProcessorNode>& processors);
