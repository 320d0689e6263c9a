#pragma once

#include "search/SearchText.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <vector>

class CProcessorFilterProxyModel;
class CProcessorTreeModel;
class QModelIndex;
class QStandardItem;

/// The processors of the tree that a filter lets through, in ascending order of their numbers,
/// equal ones in the order of the tree. Those with such rows below them are left out.
///
/// They are found in the tree itself, and what a search looks at there is kept from one text to the
/// next: a filter that is asked for all its rows takes many times as long over them as over the
/// looking for a text.
///
/// GUI thread.
class CFoundProcessors final : public QObject
{
    Q_OBJECT

public:
    struct Change
    {
        bool haveGone = false;
        bool haveCome = false;
    };

    /// `filter`, which owns the object, knows what is looked for.
    CFoundProcessors(CProcessorTreeModel& tree, const CProcessorFilterProxyModel& filter);
    ~CFoundProcessors() override;

    const CProcessorTreeModel* tree() const;

    /// Their rows. Each of them is in the tree, also while the tree changes.
    const std::vector<QStandardItem*>& items() const { return m_items; }

    /// Follows the tree from now on, or again when it was reset. Nothing is found before.
    void follow();

    /// Looks for the filter's text. Tells nobody: tell() does.
    Change look();

    void tell(const Change& change);

    /// Reads the tree anew, if it has changed without a word.
    void refresh();

signals:
    /// Some were lost, or others found, because rows of the tree came, went or were changed, or
    /// another text is looked for.
    void changed(bool haveGone, bool haveCome);

    /// They are others, or in another order, because the tree is another, or in another order.
    void refreshed();

private:
    /// A row of the tree, found or not.
    struct Row
    {
        QStandardItem* item;
        int place; // in the tree
        bool isProcessor;
        bool isBelowOne;
        qint32 number;
        SSearchedRow searched;
        bool isFound; // was so when it was last looked at
    };

    const CSearchText& text() const;
    void connectTree();
    void readTree(bool areOthersNew);
    void collect(const QStandardItem& parent, bool areBelowOne);
    static void read(Row& row);
    void readRows(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void sort();
    bool isAnyFoundBelow(const QStandardItem& item) const;
    bool isLeaving(const QStandardItem& parent, int row) const;
    void lookAgain(bool haveGone);
    void forgetTree();
    void onRowsInserted();
    void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
    void onRowsRemoved();
    void onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                       const QVector<int>& roles);

    QPointer<CProcessorTreeModel> m_tree;
    const CProcessorFilterProxyModel& m_filter;
    std::vector<Row> m_rows; // by number, then by place
    bool m_isFollowing = false;
    bool m_isRead = false;                        // m_rows are those of the tree
    bool m_isLooking = false;                     // otherwise none of them is found
    bool m_isResetting = true;                    // nothing of the tree is to be kept
    const QStandardItem* m_leavingFrom = nullptr; // the row above those about to go
    int m_firstLeaving = 0;
    int m_lastLeaving = 0;
    bool m_haveGone = false; // some of them were found
    std::vector<QStandardItem*> m_items;
};
