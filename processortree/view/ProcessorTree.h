#pragma once

#include <QHash>
#include <QMap>
#include <QUuid>
#include <QWidget>

#include <functional>

class CActionLineEdit;
class CProcessorCompleter;
class CProcessorTreeModel;
class CProcessorTreeView;
class CPureImageBtn;
class IPanelBridge;
class QAction;
class QModelIndex;

/// The processor tree with what belongs to it: a search field and a button that adds, above the
/// tree of the project. Keys: Ctrl+F goes to the search field, Escape empties that and goes back to
/// the tree.
///
/// GUI thread. The host may change the tree, or destroy the panel, whenever it is asked.
class CProcessorTree final : public QWidget
{
    Q_OBJECT

public:
    /// Shows `model`. Bridge and model outlive the tree.
    CProcessorTree(IPanelBridge& bridge, CProcessorTreeModel& model, QWidget* parent = nullptr);
    ~CProcessorTree() override;

    /// Makes the processor `id` the one selected row and expands the tree; nothing happens when it
    /// is selected already, or is no processor of the tree. Without `report` nobody hears of it.
    void SelectProcessor(const QUuid& id, bool report);

    /// Remembers `locked` for `key`, and takes it at once: a locked panel adds nothing, and its
    /// tree is locked. Once five keys or more are the same, key 0 is too.
    void SetOperationLock(int key, bool locked);

    /// Takes what is remembered for `key`; a key that was never set is not locked.
    void ApplyOperationLock(int key);

    /// Follows the read-only flag, which just changed: the button adds unless that is set.
    void UpdateAddButton();

    /// Forgets what is selected, and how rows were expanded: all are now.
    void ResetView();

    /// Repaints the rows, which show whether there is something to warn of.
    void UpdateMonitorWarnings();

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    enum class Entry { Group, One, Two, Custom };

    void createSearch();
    void createAddButton();
    void createAddMenu();
    void createTree();
    void createLayout();
    void retranslate();

    void chooseResult(const QModelIndex& index);
    void leaveSearch();

    void refreshMenu();
    void run(Entry entry);
    void runFromMenu(const std::function<void()>& step);

    bool mayAdd() const;
    void setAddEnabled(bool enabled);
    void setLocked(bool locked);

    IPanelBridge& m_bridge;
    CProcessorTreeModel& m_model;     // the bridge's
    CActionLineEdit* m_search;        // Qt child
    QAction* m_searchAction;          // the field's
    CPureImageBtn* m_addButton;       // Qt child
    CProcessorCompleter* m_completer; // Qt child
    CProcessorTreeView* m_treeView;   // Qt child
    QMap<Entry, QAction*> m_entries;  // the menu's, which is the button's
    QHash<int, bool> m_locks;
    int m_stepsFromMenu = 0; // that are running
};
