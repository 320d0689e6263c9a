#pragma once

#include "Interface/ProcessorNode.h"
#include "host/widgets/TreeView.h"
#include "processortree/view/OfferedAdditions.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSet>
#include <QUuid>

#include <functional>

class CArrivalWatch;
class CEmptyTreeHint;
class CProcessorTreeDelegate;
class CProcessorTreeModel;
class CTreeMenu;
class IPanelBridge;
class QDrag;
class QLineEdit;
class QShortcut;

/// The tree of the project's processors, with everything that a user does to it: menus, adding,
/// renaming, grouping, moving by drag and drop, deleting.
///
/// Only the selection, the current row, what is expanded and the start of an edit are the view's
/// own affair. Rows that come are expanded, except below groups that the user closed. Every change
/// is asked of the host, and takes place when the host says so. Keys: F2 renames, Delete deletes or
/// ungroups, Ctrl+A selects all, Ctrl+G groups the selected processors where the menu of several
/// would, Ctrl+X marks the selected processors and Ctrl+V moves them onto the selected row, as a
/// drop would, Escape takes that mark back, Menu and Shift+F10 open the row's menu. With Shift or
/// Ctrl the keys that move go from processor to processor, past the groups between them. A name
/// that is typed is searched for among the processors that are shown.
///
/// GUI thread. The host may change the tree, or destroy the view, whenever it is asked.
class CProcessorTreeView final : public CTreeView
{
    Q_OBJECT

public:
    explicit CProcessorTreeView(IPanelBridge& bridge, QWidget* parent = nullptr);
    ~CProcessorTreeView() override;

    /// Gives the view a selection model of its own over `model`, a CProcessorTreeModel.
    void setModel(QAbstractItemModel* model) override;

    /// For a panel that ends inside a step (see CPanelStep), when Qt may be in the middle of one of
    /// the view's events: leaves it, and does nothing any more.
    void outlivePanel();

    /// A locked view shows, and lets pick, but neither its "More" button nor its keys nor its menus
    /// do anything, nothing is dragged or dropped, and an open field drops what was typed.
    void SetLocked(bool locked);
    bool isLocked() const { return m_locked; }

    /// Returns whether a row leaves the selection to move, or is put back into it.
    bool isMovingRows() const { return m_isMoving; }

    /// Returns whether row `index` is marked to be moved (Ctrl+X).
    bool isCut(const QModelIndex& index) const;

    /// The slot of that name, where `isAllowed` says whether it may be. Asked behind the dialogs,
    /// under which the host may have forbidden it.
    void AddProcessors(AddKind kind, const std::function<bool()>& isAllowed);

public slots:
    void reset() override;
    void selectAll() override;
    void keyboardSearch(const QString& search) override;

    /// Creates a group, and has the user name it.
    void AddGroup();

    /// Adds processors to the group that is selected, or that the selected processor is in; unless
    /// the view is locked, or the tree is read-only.
    void AddProcessors(AddKind kind);

    /// Deletes the selected processors, or ungroups the selected group.
    void DeleteSelection();

    /// Opens the field in which the user renames the selected row.
    void RenameSelection();

    /// Opens the menu of row `index` at `pos` in the viewport.
    void OnNotifyMoreClicked(const QModelIndex& index, const QPoint& pos);
    void OnRightMenuEvent(const QModelIndex& index, const QPoint& pos);

signals:
    /// Other rows are marked to be moved, or none any more.
    void cutChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void changeEvent(QEvent* event) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QVector<int>& roles = QVector<int>()) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override;
    void DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                      const QRect& row) const override;
    void DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QRect& row) const override;

private:
    /// Tells whether a view is still there, and part of a panel.
    class Life final
    {
    public:
        explicit Life(const CProcessorTreeView* view)
            : m_view(view)
        {
        }
        explicit operator bool() const { return m_view && !m_view->m_retired; }

    private:
        QPointer<const CProcessorTreeView> m_view;
    };

    /// A row that moves, as it was when it left its place.
    struct MovingRow
    {
        QUuid id;
        QPersistentModelIndex parent;
        int row = -1;
        bool isSelected = false;
        bool isCurrent = false;
        bool isStanding = false; // the one that the user stands on
        QPointer<QLineEdit> field;
    };

    CProcessorTreeModel* treeModel() const;
    QWidget* dialogParent();
    void changeTree(const std::function<void(CProcessorTreeModel&)>& change);
    QList<QPersistentModelIndex> selectedRows() const;
    void addShortcut(const QKeySequence& keys, void (CProcessorTreeView::*action)());
    QLineEdit* openField() const;
    void openEditor(const QModelIndex& index);
    void detachField(QLineEdit* field);
    void attachField(QLineEdit* field, const QModelIndex& index);
    static void dropField(QLineEdit* field);
    void followUser(const std::function<void()>& act);
    void expandOpen();
    bool dragsOthers(const QMouseEvent& event) const;
    bool isAtEdge(const QPoint& position) const;

    bool isReadOnly() const;
    bool mayChange() const;
    void appendHostEntries(CTreeMenu& menu, EPrcTreeNodeType type, const QUuid& id);
    void addAdditionEntries(CTreeMenu& menu);
    void addRenameEntry(CTreeMenu& menu, const QPersistentModelIndex& index);
    void addDeleteEntry(CTreeMenu& menu);
    void addProcessorEntries(CTreeMenu& menu, const QPersistentModelIndex& index);
    void addGroupEntries(CTreeMenu& menu, const QPersistentModelIndex& index);
    void addFrontPanelEntry(CTreeMenu& menu, const QUuid& id);
    bool offersSelectionMenu() const;
    void runSelectionMenu(const QModelIndex& index, const QPoint& pos);
    bool mayGroupSelection() const;
    void groupSelection();
    void deleteByKey();

    QUuid createGroup();
    QUuid targetGroup() const;
    void onGroupArrived(const QUuid& id);
    void onProcessorArrived(const QUuid& id);
    void onGroupToFillArrived(const QUuid& id);
    void moveTo(const QList<QUuid>& processors, const QUuid& group);
    void selectMoved(const QList<QUuid>& moved);
    static QModelIndex dropTarget(const QModelIndex& index, bool* nowhere);
    bool moveOnto(const QList<QUuid>& processors, const QModelIndex& index);
    void cutSelection();
    void pasteCut();
    void setCut(const QList<QUuid>& processors);
    void setDropTarget(const QModelIndex& index);
    void runDrag();
    QRect wholeRow(const QModelIndex& index) const;
    QPixmap dragPicture(const QModelIndexList& rows, const QRect& part);
    QList<QPersistentModelIndex> rowsOf(const QList<QUuid>& processors) const;
    QList<QUuid> selectedProcessors() const;
    void abandonDrag();
    QModelIndex standingRow() const;
    void replaceRemoved(const QModelIndex& parent, int first, int last);
    void takeOver(const QModelIndex& parent, int above, int below);
    bool keepMoving(const QModelIndex& parent, int first, int last);
    void onMoveEnded(const QUuid& id);
    void selectReturned();
    void putBack(const MovingRow& moved, const QModelIndex& index);
    void replaceLost(const MovingRow& lost);

    IPanelBridge& m_bridge;
    CProcessorTreeDelegate* m_delegate; // Qt child
    CArrivalWatch* m_arrivals;          // Qt child
    CArrivalWatch* m_groupToFill;       // Qt child
    CEmptyTreeHint* m_emptyHint;        // Qt child
    QList<QUuid> m_toGroup;             // processors that go into that group
    QList<QShortcut*> m_shortcuts;      // Qt children
    QList<QUuid> m_cut;                 // processors that wait for the group that they go into
    QPersistentModelIndex m_editedRow;  // the last one that got a field for its name
    QSet<QUuid> m_closed;               // groups, by the user
    QUuid m_editedId;
    QPointer<QLineEdit> m_field;             // on that row, until it closes
    QList<MovingRow> m_movingRows;           // on their way
    QList<QPersistentModelIndex> m_returned; // rows that have moved and are to be selected again
    int m_batches = 0;                       // moves of several rows that are under way, nested
    QPersistentModelIndex m_dropTarget;      // while something is dragged over it
    QPointer<QDrag> m_drag;                  // the one of its rows that is under way; Qt child
    QList<QUuid> m_dragged;                  // processors that were selected when it started
    QString m_typed;                         // of the name that the user searches for
    QElapsedTimer m_sinceKey;                // invalid before the first one
    int m_outputs = 0;                       // of new processors, as the user chose last
    int m_pendingDeletions = 0;
    int m_removedSoFar = 0;
    bool m_isByUser = false;      // what happens
    bool m_isCurrentDue = false;  // to be shown
    bool m_isMenuByKey = false;   // the one that is asked for
    bool m_isMoving = false;      // see isMovingRows()
    bool m_editsReadOnly = false; // the field was opened in a read-only tree
    bool m_locked = false;
    bool m_retired = false;
};
