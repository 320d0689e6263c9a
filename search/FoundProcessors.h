#pragma once

#include "search/SearchText.h"

#include <QObject>
#include <QPointer>
#include <QStandardItemModel>
#include <QVector>

#include <vector>

class CProcessorFilterProxyModel;
class QModelIndex;

/// The processors of the tree that match a filter's text, sorted by number and then by their order
/// in the tree. A processor with matching rows below it is left out.
///
/// They are searched in the tree itself, in a table of the searched texts that is kept from one
/// text to the next. A QSortFilterProxyModel that is asked for all its rows needs many times as
/// long to map the rows as to match them.
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

    /// `filter` owns the object and provides the text.
    CFoundProcessors(QStandardItemModel& tree, const CProcessorFilterProxyModel& filter);
    ~CFoundProcessors() override;

    const QStandardItemModel* tree() const;

    /// Returns their rows. All of them are in the tree, also while the tree changes.
    const std::vector<QStandardItem*>& items() const { return m_items; }

    /// Follows the tree from now on, or again after a reset. Nothing is found before the first
    /// call.
    void follow();

    /// Searches for the filter's text. Emits no signal; pass the result to tell().
    Change look();

    void tell(const Change& change);

    /// Reads the tree again, after a change that it did not announce.
    void refresh();

signals:
    /// Emitted when processors were lost or found, because rows of the tree were inserted, removed
    /// or changed, or the text is another one.
    void changed(bool haveGone, bool haveCome);

    /// Emitted when the processors or their order changed together with the tree or the order of
    /// its rows.
    void refreshed();

private:
    /// A row of the tree, whether it matches or not.
    struct Row
    {
        QStandardItem* item;
        int place; // position in the tree, depth first
        bool isProcessor;
        bool isBelowOne;
        qint32 number;
        SSearchedRow searched;
        bool isFound; // result of the last search
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

    QPointer<QStandardItemModel> m_tree;
    const CProcessorFilterProxyModel& m_filter;
    std::vector<Row> m_rows; // sorted by number, then by place
    bool m_isFollowing = false;
    bool m_isRead = false;                        // m_rows is up to date
    bool m_isLooking = false;                     // a text is searched for
    bool m_isResetting = true;                    // the items of the tree must not be used
    const QStandardItem* m_leavingFrom = nullptr; // parent of the rows that are being removed
    int m_firstLeaving = 0;
    int m_lastLeaving = 0;
    bool m_haveGone = false; // some of the rows being removed were found
    std::vector<QStandardItem*> m_items;
};
