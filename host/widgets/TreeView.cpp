#include "host/widgets/TreeView.h"

#include "host/widgets/HostTheme.h"
#include "host/widgets/ProcessorRow.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int kIndentation = 16;
constexpr qreal kCorner = 4;

/// Returns whether focus that comes for `reason` is shown, where it was last `shown` or not.
bool isFocusShown(Qt::FocusReason reason, bool shown)
{
    switch (reason) {
    case Qt::MouseFocusReason:
        return false;
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return shown; // it only comes back
    default:
        return true;
    }
}

/// Returns the part of a row that its background fills. It keeps a distance to other rows.
QRectF panel(const QRect& row)
{
    return QRectF(row).adjusted(0, 1, 0, -1);
}

void fillPanel(QPainter* painter, const QRect& row, const QBrush& brush)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRoundedRect(panel(row), kCorner, kCorner);
    painter->restore();
}

void drawFocus(QPainter* painter, const QStyleOptionViewItem& option, const QRect& row)
{
    if (!(option.state & QStyle::State_HasFocus))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(hostColors().accent);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(panel(row).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    painter->restore();
}

bool isStep(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End
           || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

CTreeView::CTreeView(QWidget* parent)
    : QTreeView(parent)
{
    setHeaderHidden(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    floatScrollBar();
    setSelectionMode(ExtendedSelection);
    // A double click toggles the row and does not edit it.
    setEditTriggers(EditKeyPressed);
    setRootIsDecorated(false);
    setIndentation(kIndentation);
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->installEventFilter(this);
}

bool CTreeView::event(QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        setFocusShown(isFocusShown(static_cast<QFocusEvent*>(event)->reason(), m_focusShown));
    return QTreeView::event(event);
}

bool CTreeView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setHovered(indexAt(static_cast<QHoverEvent*>(event)->pos()));
        break;
    case QEvent::HoverLeave:
        setHovered({});
        break;
    case QEvent::MouseButtonPress:
        setFocusShown(false);
        break;
    default:
        break;
    }
    return QTreeView::viewportEvent(event);
}

void CTreeView::paintEvent(QPaintEvent* event)
{
    m_focusRow = m_focusShown && hasFocus() ? startRow() : QModelIndex();
    QTreeView::paintEvent(event);
    m_focusRow = QModelIndex();
}

void CTreeView::mousePressEvent(QMouseEvent* event)
{
    m_arrowPressed = isOnArrow(event->pos());
    if (!m_arrowPressed) {
        if (event->modifiers() & Qt::ShiftModifier)
            anchorRange();
        else
            m_anchor = QModelIndex();
        QTreeView::mousePressEvent(event);
    } else if (event->button() == Qt::LeftButton) {
        const QModelIndex index = indexAt(event->pos());
        setExpanded(index, !isExpanded(index));
    }
}

void CTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_arrowPressed)
        QTreeView::mouseReleaseEvent(event);
    else if (event->buttons() == Qt::NoButton)
        m_arrowPressed = false;
}

void CTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (isOnArrow(event->pos()))
        CTreeView::mousePressEvent(event);
    else
        QTreeView::mouseDoubleClickEvent(event);
}

/// A mouse press on an arrow does not start a selection or a drag.
void CTreeView::mouseMoveEvent(QMouseEvent* event)
{
    m_arrowPressed = m_arrowPressed && event->buttons() != Qt::NoButton;
    if (!m_arrowPressed)
        QTreeView::mouseMoveEvent(event);
}

void CTreeView::keyPressEvent(QKeyEvent* event)
{
    setFocusShown(true);
    // Some platforms send a context menu event for the Menu key only.
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        requestMenu();
    } else if ((event->modifiers() & ~Qt::KeypadModifier) || !handleKey(event)) {
        const bool isShifted = event->modifiers() & Qt::ShiftModifier;
        const bool isLed = event->modifiers() & Qt::ControlModifier && isStep(event->key());
        const QPointer<CTreeView> alive(this);
        if (isShifted)
            anchorRange();
        QTreeView::keyPressEvent(event);
        if (alive && isLed && !isShifted)
            m_anchor = currentIndex();
    }
}

void CTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    if (!selectionModel())
        return;
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QModelIndex index = keyboardRow();
        if (!index.isValid() || !selectionModel()->isSelected(index))
            return;
        scrollTo(index);
        emit RightMenuEvent(index, pointInView(visualRect(index).bottomLeft()));
        return;
    }
    const QPersistentModelIndex index = indexAt(event->pos());
    if (!index.isValid())
        return;
    if (!selectionModel()->isSelected(index))
        goTo(index);
    if (index.isValid())
        emit RightMenuEvent(index, event->pos());
}

/// Qt updates only the items, but the focus outline surrounds whole rows.
void CTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    updateRow(previous.isValid() ? previous : firstRow());
    updateRow(current);
}

/// The first row has the focus outline where no row is selected.
void CTreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (selected.isEmpty() || deselected.isEmpty())
        updateRow(firstRow());
}

void CTreeView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    placeScrollBar();
}

QPoint CTreeView::pointInView(const QPoint& point) const
{
    const QRect room = viewport()->rect();
    return {qBound(room.left(), point.x(), room.right()),
            qBound(room.top(), point.y(), room.bottom())};
}

/// Sets the row at which a range with Shift starts: the start of the last range, or the row that
/// was reached by keys. Qt knows only where the mouse was pressed.
void CTreeView::anchorRange()
{
    const QItemSelectionModel* selection = selectionModel();
    const bool isGood = selection && m_anchor.isValid()
                        && (selection->isSelected(m_anchor) || m_anchor == currentIndex());
    if (!isGood)
        m_anchor = keyboardRow();
}

void CTreeView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command)
{
    const QRect anchor = visualRect(m_anchor);
    if (anchor.isValid() && command & QItemSelectionModel::Current)
        QTreeView::setSelection({anchor.center(), rect.bottomRight()}, command);
    else
        QTreeView::setSelection(rect, command);
}

/// Scrolling moves another row below the mouse.
void CTreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (m_hovered.isValid())
        setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

/// Does not call the base, which would paint the style's panels behind branches and rows.
void CTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    const bool enabled = option.state & QStyle::State_Enabled && index.flags() & Qt::ItemIsEnabled;
    const bool selected = selectionModel() && selectionModel()->isSelected(index);
    const bool hovered = enabled && index == m_hovered;
    item.state.setFlag(QStyle::State_Enabled, enabled);
    item.state.setFlag(QStyle::State_Selected, selected);
    item.state.setFlag(QStyle::State_MouseOver, hovered);
    item.state.setFlag(QStyle::State_HasFocus, m_focusRow == index);
    if (!enabled)
        item.palette.setCurrentColorGroup(QPalette::Disabled);

    if (selected)
        DrawSelectRow(painter, item, option.rect);
    else if (hovered)
        DrawHoverRow(painter, item, option.rect);
    else
        DrawNormalRow(painter, item, option.rect);

    item.rect = visualRect(index);
    itemDelegate(index)->paint(painter, item, index);
}

void CTreeView::DrawSelectRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const
{
    const bool enabled = option.state & QStyle::State_Enabled;
    fillPanel(painter, row, enabled ? option.palette.highlight() : QBrush(hostColors().field));
    drawFocus(painter, option, row);
}

void CTreeView::DrawHoverRow(QPainter* painter, const QStyleOptionViewItem& option,
                             const QRect& row) const
{
    fillPanel(painter, row, hostColors().popup);
    drawFocus(painter, option, row);
}

void CTreeView::DrawNormalRow(QPainter* painter, const QStyleOptionViewItem& option,
                              const QRect& row) const
{
    drawFocus(painter, option, row); // over the view's own background
}

/// Returns whether `position` is on an arrow or in the indentation in front of it.
bool CTreeView::isOnArrow(const QPoint& position) const
{
    const QModelIndex index = indexAt(position);
    return index.isValid() && itemsExpandable() && model()->hasChildren(index)
           && position.x() < visualRect(index).left() + ProcessorRowMetrics::kArrowColumn;
}

/// Returns the row with the keyboard focus: the current one if it or nothing is selected, else the
/// topmost selected one.
QModelIndex CTreeView::keyboardRow() const
{
    const QModelIndex current = currentIndex();
    if (!selectionModel() || !selectionModel()->hasSelection()
        || selectionModel()->isSelected(current))
        return current;
    const QModelIndexList selected = selectedIndexes();
    const auto topmost = std::min_element(selected.cbegin(), selected.cend(),
                                          [this](const QModelIndex& one, const QModelIndex& two) {
                                              return visualRect(one).top() < visualRect(two).top();
                                          });
    return topmost == selected.cend() ? current : *topmost;
}

QModelIndex CTreeView::firstRow() const
{
    return model() ? model()->index(0, 0, rootIndex()) : QModelIndex();
}

/// Returns the row that keys start from: the one with the keyboard focus, else the first one.
QModelIndex CTreeView::startRow() const
{
    const QModelIndex row = keyboardRow();
    return row.isValid() ? row : firstRow();
}

void CTreeView::requestMenu()
{
    const QPoint corner = visualRect(keyboardRow()).bottomLeft();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, corner, viewport()->mapToGlobal(corner));
    QCoreApplication::sendEvent(this, &menu);
}

/// Handles the keys that use the row with the keyboard focus. Returns whether it was one of them.
bool CTreeView::handleKey(QKeyEvent* event)
{
    const QModelIndex row = startRow();
    if (!row.isValid())
        return false;
    const bool expandable = model()->hasChildren(row);
    switch (event->key()) {
    case Qt::Key_Up:
        goTo(indexAbove(row));
        return true;
    case Qt::Key_Down:
        goTo(indexBelow(row));
        return true;
    case Qt::Key_PageUp:
        goTo(pageFrom(row, &QTreeView::indexAbove));
        return true;
    case Qt::Key_PageDown:
        goTo(pageFrom(row, &QTreeView::indexBelow));
        return true;
    case Qt::Key_Home:
        goTo(moveCursor(MoveHome, Qt::NoModifier));
        return true;
    case Qt::Key_End:
        goTo(moveCursor(MoveEnd, Qt::NoModifier));
        return true;
    case Qt::Key_Left:
        if (expandable && isExpanded(row))
            collapse(row);
        else if (row.parent() != rootIndex())
            goTo(row.parent());
        return true;
    case Qt::Key_Right:
        if (expandable && !isExpanded(row))
            expand(row);
        else if (expandable)
            goTo(indexBelow(row));
        return true;
    case Qt::Key_F2:
        return row != currentIndex() && edit(row, EditKeyPressed, event);
    default:
        return false;
    }
}

/// Returns the last row that can be reached by `next` within one page from `row`.
QModelIndex CTreeView::pageFrom(const QModelIndex& row, Step next) const
{
    const QRect from = visualRect(row);
    const int room = viewport()->height();
    QModelIndex target = (this->*next)(row);
    for (QModelIndex index = target; index.isValid(); index = (this->*next)(index)) {
        if ((visualRect(index) | from).height() > room)
            break;
        target = index;
    }
    return target;
}

/// Makes the row current and selects only it. If the selection model does not let the row become
/// current, only selects it.
void CTreeView::goTo(const QModelIndex& index)
{
    if (!index.isValid() || !(index.flags() & Qt::ItemIsEnabled))
        return;
    // Receivers of the signals may remove the row or destroy the view.
    const QPersistentModelIndex target = index;
    const QPointer<CTreeView> alive(this);
    selectionModel()->setCurrentIndex(target, QItemSelectionModel::NoUpdate);
    if (alive && target.isValid())
        selectionModel()->select(target, QItemSelectionModel::ClearAndSelect);
    if (alive && target.isValid()) {
        m_anchor = target;
        scrollTo(target);
    }
}

void CTreeView::setHovered(const QModelIndex& index)
{
    if (index == m_hovered)
        return;
    updateRow(m_hovered);
    m_hovered = index;
    updateRow(index);
}

void CTreeView::setFocusShown(bool shown)
{
    if (shown == m_focusShown)
        return;
    m_focusShown = shown;
    updateRow(startRow());
}

/// Takes the scroll bar out of the layout of the view, which has its place beside the viewport.
void CTreeView::floatScrollBar()
{
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScrollBar* const bar = verticalScrollBar();
    bar->setParent(this);
    bar->hide();
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int least, int most) {
        placeScrollBar();
        bar->setVisible(least < most);
    });
}

void CTreeView::placeScrollBar()
{
    const QRect room = viewport()->geometry();
    const int width = verticalScrollBar()->sizeHint().width();
    verticalScrollBar()->setGeometry(room.right() + 1 - width, room.top(), width, room.height());
}

void CTreeView::updateRow(const QModelIndex& index)
{
    const QRect row = index.isValid() ? visualRect(index) : QRect();
    if (!row.isNull())
        viewport()->update(0, row.top(), viewport()->width(), row.height());
}
