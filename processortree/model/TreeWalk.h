#pragma once

#include <QList>
#include <QUuid>

class QModelIndex;
class QStandardItem;

/// Appends the identities of the processors below `parent`, which is valid, depth first.
void collectProcessors(const QModelIndex& parent, QList<QUuid>& found);

/// Returns whether `item` is `ancestor` or stands below it.
bool isSelfOrBelow(const QStandardItem* item, const QStandardItem* ancestor);
