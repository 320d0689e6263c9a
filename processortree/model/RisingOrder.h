#pragma once

#include "base/RecordCell.h"

#include <QHash>

#include <vector>

class QStandardItem;

/// Finds the place of a processor among its siblings as insertionRow() does, in logarithmic time
/// where their addresses rise: rows other than processors first, then processors addressed by IP in
/// rising order, then those without an address. Elsewhere it takes insertionRow()'s linear time.
///
/// Remembers the keys by which the rows of a parent stand. The model tells it of every change of
/// rows and of records; what the work thread writes into a cell changes no such key. GUI thread.
class CRisingOrder final
{
public:
    /// The row of `parent` at which a processor with `key` belongs.
    int insertionRow(const QStandardItem& parent, const CRecordCell::Key& key);

    /// The rows of `parent` from `first` to `last` are new.
    void onInserted(const QStandardItem& parent, int first, int last);

    /// The row of `parent` at `row` is new, a processor that stands there by `key`.
    void onInserted(const QStandardItem& parent, int row, const CRecordCell::Key& key);

    /// The records of these rows have changed.
    void onChanged(const QStandardItem& parent, int first, int last);

    /// These rows are about to be removed.
    void onAboutToBeRemoved(const QStandardItem& parent, int first, int last);

    /// Anything may have changed.
    void clear() { m_branches.clear(); }

private:
    /// The rows of one parent, by what their addresses say of their place. The rank of a row that
    /// was removed may stay until the next change: a processor with a new address comes again near
    /// by, so that few ranks have to move.
    struct Branch
    {
        std::vector<qint64> ranks;
        int vacant = kNone; // the rank that has no row
        bool rises = true;

        int rowCount() const;
        void closeGap();
        void moveGap(int row);
    };
    static constexpr int kNone = -1;

    const Branch& branch(const QStandardItem& parent);
    Branch* find(const QStandardItem& parent, int row);

    QHash<const QStandardItem*, Branch> m_branches; // by parent, which the model owns
};
