#pragma once

#include <QHash>
#include <QModelIndex>
#include <QString>

#include <vector>

/// What a search looks at in the rows of the tree, kept from one keystroke to the next, and what it
/// found there. Reading a row takes several times as long as looking for a text in it.
///
/// It holds indexes of the tree as they are: whoever owns it forgets them when rows change.
class CSearchedRows final
{
public:
    struct Row
    {
        QString name;  ///< With the case folded, letter by letter.
        QString shown; ///< The address or the number that the row is shown with.
        bool isRead = false;
        bool isFound = false;
        quint32 search = 0; ///< The search that isFound belongs to.
    };

    /// The row at `row` below `parent`; not read when it is new here.
    Row& at(int row, const QModelIndex& parent);

    /// Has the rows below `parent` from `first` to `last` read anew.
    void forget(const QModelIndex& parent, int first, int last);

    void forgetAll();

private:
    QHash<QModelIndex, int> m_places; // of m_branches, by parent
    std::vector<std::vector<Row>> m_branches;
    QModelIndex m_lastParent;
    int m_lastPlace = -1; // of m_lastParent; -1 for none
};
