#pragma once

#include "processortree/model/IdentityIndex.h"

#include <QList>
#include <QUuid>

class QStandardItem;

/// A processor that gets no row, because the tree does not hold its group.
struct LeftOut
{
    QUuid processor;
    QUuid group;
};

/// Fills the empty `root` of a tree with the host's records in host order, as appending each group
/// and each processor would, and adds what it has made to `known`. Processors of unknown groups are
/// added to `leftOut` instead.
///
/// Every parent gets its rows in one go: attaching them one by one costs as much again.
void fillTree(QStandardItem& root, const QList<ProcessorGroupNode>& groups,
              const QList<ProcessorNode>& processors, CIdentityIndex::Rows& known,
              QList<LeftOut>& leftOut);

/// Leaves the first of the records that share an identity, groups before processors, and none with
/// a null identity.
void dropRepeats(QList<ProcessorGroupNode>& groups, QList<ProcessorNode>& processors);
