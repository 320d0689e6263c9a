#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <vector>

class AccessibleTree;
class QAbstractItemModel;
class QItemSelectionModel;

/// Announces to assistive technology what happens in a processor tree: the keyboard moves to
/// another row, also to one that cannot become current, rows are expanded or collapsed, and what
/// was told of a row has changed. Does nothing while no assistive technology runs. GUI thread.
class TreeAnnouncer final : public QObject
{
    Q_OBJECT

public:
    /// `tree` owns the announcer.
    explicit TreeAnnouncer(AccessibleTree& tree);

    /// Listens to the model and the selection that the view has now. Called when somebody asks for
    /// rows: nobody has to hear of those that nobody knows.
    void follow();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followModel();
    void followSelection();
    void onCurrentChanged(const QModelIndex& row);
    void onDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void onRowsChanged(QModelIndex parent);
    void announceExpansion(const QModelIndex& row);
    void announceFocusLater();
    void announceFocus();

    AccessibleTree& m_tree;
    QPointer<QAbstractItemModel> m_model;
    QPointer<QItemSelectionModel> m_selection;
    std::vector<QMetaObject::Connection> m_connections;
    QPersistentModelIndex m_focusRow; // as last announced
    bool m_isFocusDue = false;
};
