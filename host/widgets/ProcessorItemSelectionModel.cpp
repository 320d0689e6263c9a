#include "host/widgets/ProcessorItemSelectionModel.h"

#include "host/widgets/ProcessorRow.h"

#include <algorithm>

namespace {

using Kind = std::optional<EPrcTreeNodeType>;

/// The rows of a selection by kind. Adjacent rows form one range.
class RowsByKind final
{
public:
    explicit RowsByKind(const QItemSelection& selection)
    {
        for (const QItemSelectionRange& range : selection) {
            for (int row = range.top(); range.isValid() && row <= range.bottom(); ++row)
                add(range, row);
        }
    }

    QItemSelection of(const Kind& kind) const
    {
        switch (kind.value_or(NodeRoot)) {
        case NodeProcessor:
            return m_processors;
        case NodeGroup:
            return m_groups;
        case NodeRoot:
            break;
        }
        return kind ? m_root : QItemSelection();
    }

    /// Returns the kind to select if nothing else decides.
    Kind preferredKind() const
    {
        for (const EPrcTreeNodeType kind : {NodeProcessor, NodeGroup, NodeRoot}) {
            if (!of(kind).isEmpty())
                return kind;
        }
        return std::nullopt;
    }

private:
    void add(const QItemSelectionRange& range, int row)
    {
        const QModelIndex first = range.model()->index(row, range.left(), range.parent());
        const QModelIndex last = range.model()->index(row, range.right(), range.parent());
        const Kind kind = processorRowType(first);
        if (kind == NodeProcessor)
            append(m_processors, first, last);
        else if (kind == NodeGroup)
            append(m_groups, first, last);
        else if (kind == NodeRoot)
            append(m_root, first, last);
    }

    static void append(QItemSelection& rows, const QModelIndex& first, const QModelIndex& last)
    {
        if (!rows.isEmpty()) {
            QItemSelectionRange& run = rows.last();
            if (run.bottom() + 1 == first.row() && run.parent() == first.parent()
                && run.left() == first.column() && run.right() == last.column()) {
                run = QItemSelectionRange(run.topLeft(), last);
                return;
            }
        }
        rows.append(QItemSelectionRange(first, last));
    }

    QItemSelection m_processors;
    QItemSelection m_groups;
    QItemSelection m_root;
};

Kind kindOf(const QItemSelection& selection)
{
    const auto valid = std::find_if(selection.cbegin(), selection.cend(),
                                    [](const auto& range) { return range.isValid(); });
    return valid == selection.cend() ? std::nullopt : processorRowType(valid->topLeft());
}

} // namespace

CProcessorItemSelectionModel::CProcessorItemSelectionModel(QAbstractItemModel* model,
                                                           QObject* parent)
    : QItemSelectionModel(model, parent)
{
}

void CProcessorItemSelectionModel::select(const QItemSelection& selection,
                                          QItemSelectionModel::SelectionFlags command)
{
    if (selection.isEmpty() || !(command & (Select | Toggle))) {
        QItemSelectionModel::select(selection, command);
        return;
    }

    const RowsByKind asked(selection);
    const Kind present = kindOf(this->selection());
    const bool adds = !(command & Clear);
    const bool continues = adds || command & Current;
    QItemSelection taken;
    if (present && continues)
        taken = asked.of(present);
    if (taken.isEmpty() && (!present || !adds))
        taken = asked.of(asked.preferredKind());
    if (!taken.isEmpty() || !adds)
        QItemSelectionModel::select(taken, command);
}
