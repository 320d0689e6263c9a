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

/// A list of the processors that match what the user types, below a search field. The field keeps
/// the focus while the list is open: keys reach the list first and, unless they move in it, the
/// field. GUI thread.
///
/// A row is chosen as soon as it is selected, by the mouse or by a key that moves in the list; or
/// by Return, Enter, Tab or Select when it is current. That closes the list. Without a choice it
/// closes on Escape, Shift+Tab, Alt+F4, a press of the mouse elsewhere, when the focus goes
/// elsewhere, and when the field can no longer be used (see CPlaceWatch).
///
/// A key that the open list passes on is an event of the field alone: event filters on the field do
/// not see it, nor do its parents.
class CProcessorCompleter final : public QObject
{
    Q_OBJECT

public:
    /// For `field`, which is not owned and may go first. The processors are those of the bridge's
    /// model.
    explicit CProcessorCompleter(QWidget* field, QObject* parent = nullptr);
    ~CProcessorCompleter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Lists the processors that match `text`, and opens the list. An empty text closes it, and
    /// nothing is emitted then.
    void setFilterText(const QString& text);

    /// Makes row `index` of the list current; with `select` chooses it while the list is open, or
    /// takes back the selection when it is invalid.
    void select(const QModelIndex& index, bool select);

    /// Whether the list is open.
    bool isOpen() const;

signals:
    /// The user chose `index` of the tree model; or the list closed without a choice, then it is
    /// invalid. Once each time the list closes. The receiver may destroy the completer.
    void activated(const QModelIndex& index);

private:
    void createPopup();
    void createModels();
    void connectPopup();
    void showPopup();
    void placePopup();
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
    // Also held by whoever is in the middle of one of its events.
    std::shared_ptr<QListView> m_popup;
    CProcessorFilterProxyModel* m_filter = nullptr; // Qt child
    CProcessorFilterModel* m_list = nullptr;        // Qt child
    CPlaceWatch m_placeWatch;
    QPersistentModelIndex m_current; // row of the tree model
    bool m_filterActive = true;      // not while an event is on its way to the field
    bool m_focusOutHeld = false;     // kept from the field, which has lost the focus
};
