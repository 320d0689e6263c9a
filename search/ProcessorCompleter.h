#pragma once

#include "search/PlaceWatch.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <memory>

class CProcessorFilterModel;
class CProcessorFilterProxyModel;
class QKeyEvent;
class QListView;
class QModelIndex;
class QWidget;

/// A popup below a search field that lists the processors matching the typed text. The field keeps
/// the focus while the list is open. Keys go to the list first; those that do not move in the list
/// are passed on to the field. GUI thread.
///
/// Selecting a row, by the mouse or by a key that moves in the list, chooses it; Return, Enter, Tab
/// and Select choose the current row. A choice closes the list. The list closes without a choice on
/// Escape, Shift+Tab, Alt+F4, a mouse press outside of it, a change of focus, and when the field
/// can no longer be used (see CPlaceWatch).
///
/// A key that is passed on is delivered to the field's event() only. Event filters on the field and
/// the field's parents do not receive it.
///
/// While the list is open, the accessible description of the field is the number of results.
class CProcessorCompleter final : public QObject
{
    Q_OBJECT

public:
    /// Searches `tree`, which outlives the completer: processors and groups with the roles of
    /// Interface/ProcessorNode.h. `field` is not owned and may be destroyed first.
    CProcessorCompleter(QWidget* field, QAbstractItemModel& tree, QObject* parent = nullptr);
    ~CProcessorCompleter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Opens the list with the processors that match `text`. An empty text closes the list without
    /// a signal.
    void setFilterText(const QString& text);

    /// Makes row `index` of the list current. With `select` the row is also selected, which chooses
    /// it if the list is open; an invalid `index` clears the selection.
    void select(const QModelIndex& index, bool select);

    /// Returns whether the list is open.
    bool isOpen() const;

signals:
    /// Emitted once each time the list closes: `index` is the chosen index of the tree model, or
    /// invalid without a choice. The receiver may destroy the completer.
    void activated(const QModelIndex& index);

private:
    void createPopup();
    void createModels(QAbstractItemModel& tree);
    void connectPopup();
    void showPopup();
    void placePopup();
    void announceCount() const;
    void onRowsChanged();
    void onOrderChanged();
    void retranslate();

    void choose(const QModelIndex& row);
    void dismiss();
    void dismissLater();
    void hidePopup();
    void clearChoice();
    void followCurrent(const QModelIndex& row);
    QModelIndex treeIndex(const QModelIndex& row) const;

    bool filterField(QEvent* event);
    bool filterPopup(QEvent* event);
    bool pressKey(QKeyEvent& event);
    void pressForwardedKey(QKeyEvent& event);
    void moveCurrent(int step);
    void forward(QEvent& event);
    void onFocusChanged(const QWidget* focus);
    void onClose();
    void paintBackground() const;

    QPointer<QWidget> m_field; // not owned
    // Shared: code that handles one of its events holds it until the event ends.
    std::shared_ptr<QListView> m_popup;
    CProcessorFilterProxyModel* m_filter = nullptr; // Qt child
    CProcessorFilterModel* m_list = nullptr;        // Qt child
    CPlaceWatch m_placeWatch;
    QPersistentModelIndex m_current; // index of the tree model
    bool m_filterActive = true;      // false while an event is delivered to the field
    bool m_focusOutHeld = false;     // a FocusOut event of the field was swallowed
};
