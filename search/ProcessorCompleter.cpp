#include "search/ProcessorCompleter.h"

#include "base/GuiThread.h"
#include "base/LogCategories.h"
#include "base/PaintScope.h"
#include "host/widgets/ToolTip.h"
#include "search/CompleterProcessorDelegate.h"
#include "search/PopupPlace.h"
#include "search/ProcessorFilterModel.h"
#include "search/ProcessorFilterProxyModel.h"
#include "search/ResultList.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QScreen>

#include <utility>

namespace {

constexpr int kPopupHeight = 270;
constexpr int kCornerRadius = CResultList::kCornerRadius;
constexpr int kListTextPixels = 12;
constexpr QRgb kHint = qRgb(115, 115, 128);

bool isCancel(const QKeyEvent& event)
{
    return event.matches(QKeySequence::Cancel) || event.key() == Qt::Key_Backtab;
}

bool isClosingChord(const QKeyEvent& event)
{
    return event.key() == Qt::Key_F4 && event.modifiers().testFlag(Qt::AltModifier);
}

/// Returns whether the open list uses the key, so that it must not trigger a shortcut.
bool isListKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Select:
        return true;
    default:
        return isCancel(event) || isClosingChord(event);
    }
}

} // namespace

CProcessorCompleter::CProcessorCompleter(QWidget* field, QAbstractItemModel& tree, QObject* parent)
    : QObject(parent)
    , m_field(field)
{
    if (field)
        field->installEventFilter(this);
    createPopup();
    createModels(tree);
    connectPopup();
    connect(&m_placeWatch, &CPlaceWatch::moved, this, &CProcessorCompleter::placePopup);
    connect(&m_placeWatch, &CPlaceWatch::lost, this, &CProcessorCompleter::dismissLater);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* now) { onFocusChanged(now); });
    retranslate();
}

CProcessorCompleter::~CProcessorCompleter()
{
    m_placeWatch.stop();
    m_popup->removeEventFilter(this);
    m_popup->disconnect(this);
    m_popup->selectionModel()->disconnect(this);
    m_popup->hide();
    // The popup may be handling an event and still need the models.
    m_list->setParent(m_popup.get());
    m_filter->setParent(m_popup.get());
}

void CProcessorCompleter::createPopup()
{
    m_popup =
        std::shared_ptr<QListView>(new CResultList, [](QListView* popup) { popup->deleteLater(); });
    m_popup->setObjectName(QStringLiteral("ProcessorCompleter"));
    m_popup->setFocusPolicy(Qt::NoFocus);
    m_popup->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    m_popup->setAttribute(Qt::WA_TranslucentBackground);
    m_popup->setFrameShape(QFrame::NoFrame);
    m_popup->viewport()->setAutoFillBackground(false);
    m_popup->viewport()->setAttribute(Qt::WA_Hover);
    m_popup->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_popup->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_popup->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_popup->setSelectionMode(QAbstractItemView::SingleSelection);
    m_popup->setFocusProxy(m_field);
    m_popup->installEventFilter(this);
    m_popup->setItemDelegate(new CCompleterProcessorDelegate(m_popup.get()));
}

void CProcessorCompleter::createModels(QAbstractItemModel& tree)
{
    m_filter = new CProcessorFilterProxyModel(this);
    m_filter->setSourceModel(&tree);
    m_list = new CProcessorFilterModel(this);
    m_list->setSourceModel(m_filter);
    m_popup->setModel(m_list);
    connect(m_list, &CProcessorFilterModel::rowsAdded, this, &CProcessorCompleter::onRowsChanged);
    connect(m_list, &CProcessorFilterModel::rowsRemed, this, &CProcessorCompleter::onRowsChanged);
    // The list does not announce these changes. It has applied them by now, because it was
    // connected earlier.
    connect(&tree, &QAbstractItemModel::modelReset, this, [this] {
        m_popup->reset();
        onRowsChanged();
    });
    connect(&tree, &QAbstractItemModel::layoutChanged, this, &CProcessorCompleter::onOrderChanged);
    connect(&tree, &QAbstractItemModel::dataChanged, this, &CProcessorCompleter::onOrderChanged);
}

void CProcessorCompleter::connectPopup()
{
    // After a choice inside its event handler, the list view continues: it selects the row again,
    // or emits clicked() when the mouse button is released. A closed list ignores both.
    connect(m_popup.get(), &QListView::clicked, this, [this](const QModelIndex& row) {
        const auto popup = m_popup;
        if (isOpen())
            choose(row);
    });
    const QItemSelectionModel* selection = m_popup->selectionModel();
    connect(selection, &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                const auto popup = m_popup;
                const QModelIndexList rows = selected.indexes();
                if (rows.isEmpty())
                    return;
                if (isOpen())
                    choose(rows.first());
                else
                    clearChoice();
            });
    connect(selection, &QItemSelectionModel::currentChanged, this,
            &CProcessorCompleter::followCurrent);
}

bool CProcessorCompleter::eventFilter(QObject* watched, QEvent* event)
{
    const auto popup = m_popup;
    if (popup && watched == popup.get())
        return filterPopup(event);
    if (watched == m_field)
        return filterField(event);
    return QObject::eventFilter(watched, event);
}

void CProcessorCompleter::setFilterText(const QString& text)
{
    Q_ASSERT(isThreadOf(*this));
    m_filter->setFilterText(text);
    qCDebug(lcSearch, "\"%s\" finds %d processors", qPrintable(text), m_list->rowCount());
    if (!text.isEmpty())
        showPopup();
    else if (isOpen())
        hidePopup();
}

void CProcessorCompleter::select(const QModelIndex& index, bool select)
{
    const auto popup = m_popup;
    QItemSelectionModel* selection = popup->selectionModel();
    const QPointer<CProcessorCompleter> alive(this);
    if (select && !treeIndex(index).isValid()) {
        selection->clear();
    } else {
        // Before the selection, because choosing a row may change and close the list.
        selection->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        if (select)
            selection->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    if (!alive)
        return;
    const QModelIndex current = popup->currentIndex();
    if (current.isValid())
        popup->scrollTo(current);
    else
        popup->scrollToTop();
}

bool CProcessorCompleter::isOpen() const
{
    return m_popup->isVisible();
}

void CProcessorCompleter::showPopup()
{
    if (!m_field)
        return;
    if (!isOpen()) {
        clearChoice();
        m_placeWatch.start(m_field);
    }
    m_popup->scrollToTop();
    placePopup();
    m_popup->show();
    announceCount();
}

/// The field keeps the focus, so assistive technology reads a change of its description.
void CProcessorCompleter::announceCount() const
{
    if (!m_field)
        return;
    const int found = m_list->rowCount();
    m_field->setAccessibleDescription(found > 0 ? tr("Processors found: %1").arg(found)
                                                : tr("No content found in the search."));
}

void CProcessorCompleter::placePopup()
{
    if (!m_field)
        return;
    const QRect field(m_field->mapToGlobal(QPoint(0, 0)), m_field->size());
    const QScreen* screen = QGuiApplication::screenAt(field.center());
    if (!screen)
        screen = m_field->screen();
    m_popup->setGeometry(popupPlace(field, kPopupHeight, screen->availableGeometry()));
}

/// Called after a model reset, in which the popup lost its current row.
void CProcessorCompleter::onRowsChanged()
{
    onOrderChanged();
    if (isOpen()) {
        placePopup();
        announceCount();
    }
}

/// The popup identifies rows by number, so the current row must be set to that of its processor.
void CProcessorCompleter::onOrderChanged()
{
    if (m_current.isValid()) { // mapping is expensive without a current row
        const QModelIndex row = m_list->mapFromSource(m_filter->mapFromSource(m_current));
        m_popup->selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
    }
    m_popup->update();
    m_popup->viewport()->update();
}

void CProcessorCompleter::retranslate()
{
    m_popup->setAccessibleName(tr("Search results"));
    if (isOpen())
        announceCount();
    m_popup->update();
    m_popup->viewport()->update();
}

/// Emits after the popup is closed, because the receiver may open a dialog.
void CProcessorCompleter::choose(const QModelIndex& row)
{
    Q_ASSERT(isThreadOf(*this));
    const QPersistentModelIndex index = treeIndex(row);
    if (index.isValid())
        qCDebug(lcSearch, "%s is chosen", qPrintable(index.data(UuidRole).toUuid().toString()));
    else
        qCInfo(lcSearch, "row %d, which is chosen, stands for no processor", row.row());
    const QPointer<CProcessorCompleter> alive(this);
    hidePopup();
    emit activated(index);
    if (alive && m_field)
        m_field->clearFocus();
}

void CProcessorCompleter::dismiss()
{
    if (!isOpen())
        return;
    hidePopup();
    emit activated(QModelIndex());
}

/// Closes the list at once and emits queued, because the receiver may destroy the panel.
void CProcessorCompleter::dismissLater()
{
    if (!isOpen())
        return;
    qCDebug(lcSearch, "the list closes: its field is out of reach");
    hidePopup();
    QMetaObject::invokeMethod(
        this, [this] { emit activated(QModelIndex()); }, Qt::QueuedConnection);
}

void CProcessorCompleter::hidePopup()
{
    m_placeWatch.stop();
    if (isOpen())
        CToolTip::HideText();
    m_popup->hide();
    if (m_field)
        m_field->setAccessibleDescription(QString());
    clearChoice();
    if (std::exchange(m_focusOutHeld, false) && m_field && !m_field->hasFocus()) {
        QFocusEvent focusOut(QEvent::FocusOut, Qt::OtherFocusReason);
        forward(focusOut);
    }
}

void CProcessorCompleter::clearChoice()
{
    m_popup->selectionModel()->clear();
    m_current = QPersistentModelIndex();
}

void CProcessorCompleter::followCurrent(const QModelIndex& row)
{
    m_current = treeIndex(row);
    if (row.isValid() && !m_current.isValid())
        m_popup->selectionModel()->clearCurrentIndex();
}

QModelIndex CProcessorCompleter::treeIndex(const QModelIndex& row) const
{
    return m_filter->mapToSource(m_list->mapToSource(row));
}

bool CProcessorCompleter::filterField(QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusOut:
        m_focusOutHeld = m_filterActive && isOpen();
        return m_focusOutHeld;
    case QEvent::FocusIn:
        m_focusOutHeld = false;
        return false;
    default:
        return false;
    }
}

bool CProcessorCompleter::filterPopup(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return pressKey(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Back)
            return false;
        forward(*event);
        return true;
    case QEvent::ShortcutOverride:
        if (isListKey(*static_cast<QKeyEvent*>(event)))
            event->accept();
        else
            forward(*event);
        return true;
    case QEvent::InputMethod:
    case QEvent::InputMethodQuery: // some platforms ask the open popup for its focus
        forward(*event);
        return true;
    case QEvent::MouseButtonPress:
        if (m_popup->rect().contains(static_cast<QMouseEvent*>(event)->pos()))
            return false;
        dismiss();
        return true;
    case QEvent::Paint:
        paintBackground();
        return true;
    case QEvent::Close:
        onClose();
        return false;
    case QEvent::LanguageChange:
        retranslate();
        return false;
    default:
        return false;
    }
}

/// Returns whether the key is handled; otherwise the list view handles it.
bool CProcessorCompleter::pressKey(QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
        moveCurrent(-1);
        break;
    case Qt::Key_Down:
        moveCurrent(1);
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return false;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (event.modifiers().testFlag(Qt::ControlModifier))
            return false;
        forward(event);
        break;
    default:
        pressForwardedKey(event);
        break;
    }
    event.accept();
    return true;
}

void CProcessorCompleter::pressForwardedKey(QKeyEvent& event)
{
    const QPointer<CProcessorCompleter> alive(this);
    forward(event);
    if (!alive || !isOpen())
        return;
    if (isCancel(event) || isClosingChord(event)) {
        dismiss();
        return;
    }
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Select:
        if (m_popup->currentIndex().isValid())
            choose(m_popup->currentIndex());
        else
            dismiss();
        break;
    default:
        onFocusChanged(QApplication::focusWidget());
        break;
    }
}

/// Moves by `step` and wraps at both ends. Without a current row, starts at the first or last one.
void CProcessorCompleter::moveCurrent(int step)
{
    const int rows = m_list->rowCount();
    if (rows == 0)
        return;
    const QModelIndex current = m_popup->currentIndex();
    const int from = current.isValid() ? current.row() : (step > 0 ? -1 : rows);
    select(m_list->index((from + step + rows) % rows, 0), true);
}

/// Delivers to the field only. Its parents would handle events that it ignores, such as Escape in a
/// dialog.
void CProcessorCompleter::forward(QEvent& event)
{
    if (!m_field)
        return;
    const QPointer<CProcessorCompleter> alive(this);
    const bool wasActive = std::exchange(m_filterActive, false);
    const auto restore = qScopeGuard([this, alive, wasActive] {
        if (alive)
            m_filterActive = wasActive;
    });
    static_cast<QObject*>(m_field)->event(&event);
}

void CProcessorCompleter::onFocusChanged(const QWidget* focus)
{
    if (m_filterActive && focus && focus != m_field)
        dismiss();
}

void CProcessorCompleter::onClose()
{
    if (!isOpen())
        return;
    const QPointer<CProcessorCompleter> alive(this);
    dismiss();
    if (alive && m_field)
        m_field->clearFocus();
}

void CProcessorCompleter::paintBackground() const
{
    const CPaintScope painting;
    QPainter painter(m_popup.get());
    CResultList::paintBackground(painter, m_popup->rect());
    if (m_list->rowCount() > 0)
        return;
    QFont font = m_popup->font();
    font.setPixelSize(kListTextPixels);
    painter.setFont(font);
    painter.setPen(QColor(kHint));
    const QRect room = m_popup->rect().adjusted(kCornerRadius, 0, -kCornerRadius, 0);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No content found in the search."));
}
