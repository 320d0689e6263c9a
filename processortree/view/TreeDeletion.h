#pragma once

#include <QList>
#include <QPersistentModelIndex>
#include <QUuid>

class CProcessorTreeModel;
class QWidget;

/// What the user wants deleted, after all checks and questions.
struct TreeDeletion
{
    QList<QUuid> processors; ///< To delete.
    QUuid group;             ///< To ungroup; the processors stay.

    bool isEmpty() const { return processors.isEmpty() && group.isNull(); }
};

/// Goes through the selected rows, in the order of the selection: tells the user what cannot be
/// deleted, and asks about what can. At most one group is ungrouped at a time. Empty when there is
/// nothing to do. GUI thread; boxes are modal over `parent`, which may be gone afterwards.
TreeDeletion askForDeletion(const CProcessorTreeModel& model,
                            const QList<QPersistentModelIndex>& selected, QWidget* parent);
