#include "processortree/view/ProcessorTreeDelegate.h"

#include "base/LogCategories.h"
#include "base/NodeType.h"
#include "base/PaintScope.h"
#include "base/PanelBridge.h"
#include "base/TargetSelectHandler.h"
#include "host/common/AppendLog.h"
#include "host/widgets/ProcessorRow.h"
#include "host/widgets/ToolTip.h"
#include "processortree/view/MultiSelection.h"
#include "processortree/view/NameEditor.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int kButtonSize = 20;
constexpr int kButtonOffset = 40; // of its left edge from the row's right end
constexpr int kToolTipTime = 2000;
constexpr int kRestingDistance = 3;

// Static data, which costs nothing to ask for in paint.

QString normalIcon()
{
    return QStringLiteral(":/Image/OperateButton/more_normal.svg");
}

QString hoverIcon()
{
    return QStringLiteral(":/Image/OperateButton/more_hover.svg");
}

QString pressedIcon()
{
    return QStringLiteral(":/Image/OperateButton/more_pressed.svg");
}

QString disabledIcon()
{
    return QStringLiteral(":/Image/OperateButton/more_disabled.svg");
}

QRectF buttonIn(const QRect& row)
{
    return {static_cast<qreal>(row.left() + row.width() - kButtonOffset),
            row.top() + (row.height() - kButtonSize) / 2.0, kButtonSize, kButtonSize};
}

/// Right and bottom edge belong to the neighbours.
bool isInside(const QRectF& button, const QPointF& position)
{
    return position.x() >= button.left() && position.x() < button.right()
           && position.y() >= button.top() && position.y() < button.bottom();
}

bool isButtonWanted(std::optional<EPrcTreeNodeType> type)
{
    return askHost(type == NodeProcessor ? &Host::ShowProcessorMoreButton
                                         : &Host::ShowNodeMoreButton);
}

bool hasButton(std::optional<EPrcTreeNodeType> type)
{
    return !isMultiSelection() && isButtonWanted(type);
}

/// For painting, where an exception of the host's ends: Qt's widgets are built without exceptions,
/// and would leave their painter active.
bool isButtonPainted(std::optional<EPrcTreeNodeType> type)
{
    try {
        return hasButton(type);
    } catch (...) {
        AppendLog(__func__, __FILE__, __LINE__, "The host threw while a row was painted.");
        return false;
    }
}

/// Groups and processors have one that can be edited.
bool hasName(EPrcTreeNodeType type)
{
    return type == NodeGroup || type == NodeProcessor;
}

/// A row without a type counts as the root here: neither can be renamed.
EPrcTreeNodeType typeOrRoot(const QModelIndex& index)
{
    return nodeType(index).value_or(NodeRoot);
}

bool rename(EPrcTreeNodeType type, const QUuid& id, const QString& name)
{
    if (type == NodeProcessor) {
        const bool isAccepted = askHost(&Host::RenameProcessor, id, name);
        if (!isAccepted)
            qCInfo(lcTree, "%s keeps its name: the host refuses another",
                   qPrintable(id.toString()));
        return isAccepted;
    }
    const auto handler = GetTargetSelectHandler();
    if (handler)
        handler->RenameGroup(id, name);
    return handler != nullptr;
}

} // namespace

CProcessorTreeDelegate::CProcessorTreeDelegate(IPanelBridge& bridge, QAbstractItemView* view)
    : CProcessorDelegate(view)
    , m_bridge(bridge)
    , m_view(view)
    , m_viewport(view->viewport())
    , m_buttonIcons(SvgIcons::shared())
{
    for (const QString& path : {normalIcon(), hoverIcon(), pressedIcon(), disabledIcon()})
        m_buttonIcons->load(path);
    m_toolTipTimer.setSingleShot(true);
    connect(&m_toolTipTimer, &QTimer::timeout, this, &CProcessorTreeDelegate::showToolTip);
    view->setMouseTracking(true);
    m_viewport->installEventFilter(this);
}

void CProcessorTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const CPaintScope painting;
    // Most rows show no button whatever the host answers, so it is not asked about them.
    if (!(option.state & (QStyle::State_Selected | QStyle::State_MouseOver))) {
        CProcessorDelegate::paint(painter, option, index);
        return;
    }
    const QPersistentModelIndex row(index); // which the host may remove when it is asked
    const bool hasButton = m_isButtonShown && isButtonPainted(nodeType(row));
    if (!row.isValid())
        return;
    paintRow(*painter, option, row, hasButton ? RowEnd::Button : RowEnd::Nothing);
    if (!hasButton)
        return;
    const QRectF button = buttonIn(option.rect);
    m_buttonIcons->paint(*painter, button.topLeft(), iconPath(row), kButtonSize);
}

QWidget* CProcessorTreeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                              const QModelIndex& index) const
{
    if (!hasName(typeOrRoot(index)))
        return nullptr;
    QLineEdit* editor = CNameEditor::create(parent);
    if (m_view)
        editor->setFont(m_view->font());
    return editor;
}

void CProcessorTreeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // A record that changes meanwhile does not take away what the user typed.
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (field && !field->isModified())
        field->setText(index.data(Qt::DisplayRole).toString());
}

void CProcessorTreeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                          const QModelIndex& index) const
{
    // From here on the host may take the row, the model and this delegate away.
    const QPersistentModelIndex row(index);
    const QPointer<QAbstractItemModel> aliveModel(model);
    IPanelBridge& bridge = m_bridge;
    const EPrcTreeNodeType type = typeOrRoot(index);
    const QUuid id = index.data(UuidRole).toUuid();
    const QString oldName = index.data(Qt::EditRole).toString();
    auto* field = qobject_cast<QLineEdit*>(editor);
    if (!field || !hasName(type))
        return;

    QString name = CNameEditor::finishName(*field).trimmed();
    if (name.isEmpty())
        name = oldName;
    if (!rename(type, id, name) || !aliveModel || !row.isValid())
        return;
    if (row.data(Qt::EditRole).toString() == oldName)
        aliveModel->setData(row, name, Qt::DisplayRole); // not the edit role: the record follows
    bridge.noteChange();
}

void CProcessorTreeDelegate::updateEditorGeometry(QWidget* editor,
                                                  const QStyleOptionViewItem& option,
                                                  const QModelIndex& index) const
{
    const QRect& row = option.rect;
    const EPrcTreeNodeType type = typeOrRoot(index);
    QRect place = row.adjusted(0, 0, -10, 0);
    if (type == NodeGroup)
        place = row.adjusted(25, 4, -35, -4);
    else if (type == NodeProcessor) // the upper half, where the name is
        place.setCoords(row.left() + 24, row.top() + 4, row.right() - 40,
                        row.top() + 4 + row.height() / 2 - 2);
    editor->setGeometry(place);
}

bool CProcessorTreeDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                         const QStyleOptionViewItem& option,
                                         const QModelIndex& index)
{
    const QEvent::Type kind = event->type();
    if (kind != QEvent::MouseMove && kind != QEvent::MouseButtonPress
        && kind != QEvent::MouseButtonRelease)
        return CProcessorDelegate::editorEvent(event, model, option, index);

    // The host may change the model when it is asked; beside the button it is not asked about that.
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const QPersistentModelIndex row(index);
    const bool isOver = isInside(buttonIn(option.rect), mouse.localPos());
    const bool reacts = isOver ? hasButton(nodeType(index)) : !isMultiSelection();
    if (!row.isValid())
        return false;
    if (!reacts) {
        resetButtonState();
        return CProcessorDelegate::editorEvent(event, model, option, row);
    }

    m_row = row;
    m_button = buttonIn(option.rect);
    if (kind == QEvent::MouseMove)
        moveMouse(mouse);
    else if (kind == QEvent::MouseButtonPress)
        press(mouse);
    else if (release(mouse))
        return true; // and nothing of this object is touched any more
    return CProcessorDelegate::editorEvent(event, model, option, row);
}

bool CProcessorTreeDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                       const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return CProcessorDelegate::helpEvent(event, view, option, index);
    const QPersistentModelIndex row(index);
    const bool isWithButton = hasButton(nodeType(index));
    if (!row.isValid())
        return false; // gone while the host was asked
    const QRectF button = buttonIn(option.rect);
    if (!isWithButton || !isInside(button, event->pos()))
        return showHelp(event, view, option, row, isWithButton ? RowEnd::Button : RowEnd::Nothing);
    CToolTip::ShowText(tr("More"), event->globalPos(), view->viewport(), button.toRect(),
                       kToolTipTime);
    return true;
}

bool CProcessorTreeDelegate::eventFilter(QObject* watched, QEvent* event)
{
    // The base takes what it watches for an editor.
    const bool isViewport = watched == m_viewport;
    // Moves, too: where there is no row, nobody else tells of them.
    const bool leaves = event->type() == QEvent::Leave
                        || (event->type() == QEvent::MouseMove
                            && !isInside(m_button, static_cast<QMouseEvent*>(event)->localPos()));
    if (isViewport && leaves)
        leaveButton();
    else if (isViewport && event->type() == QEvent::MouseButtonRelease)
        raiseButtonAfterRelease();
    return !isViewport && CProcessorDelegate::eventFilter(watched, event);
}

void CProcessorTreeDelegate::setButtonEnabled(bool enabled)
{
    if (enabled) {
        changeState(QStyle::State_Enabled, QStyle::State_None);
    } else {
        resetButtonState();
        changeState(QStyle::State_None, QStyle::State_Enabled);
    }
}

void CProcessorTreeDelegate::resetButtonState()
{
    leaveButton();
    raiseButton();
    m_lastPosition.reset();
}

QString CProcessorTreeDelegate::iconPath(const QModelIndex& index) const
{
    if (!(m_state & QStyle::State_Enabled))
        return disabledIcon();
    if ((m_state & QStyle::State_Sunken) && m_pressedRow == index)
        return pressedIcon();
    const bool isHovered = (m_state & QStyle::State_MouseOver) && m_row == index;
    return isHovered ? hoverIcon() : normalIcon();
}

void CProcessorTreeDelegate::moveMouse(const QMouseEvent& event)
{
    const bool isHeld = event.buttons() != Qt::NoButton;
    if (!isHeld)
        raiseButton();
    if (isInside(m_button, event.localPos()))
        changeState(QStyle::State_MouseOver, QStyle::State_None);
    else
        leaveButton();
    if (!isHeld && (m_state & QStyle::State_MouseOver)) {
        const bool isResting =
            m_lastPosition && (event.pos() - *m_lastPosition).manhattanLength() < kRestingDistance;
        if (!isResting)
            m_toolTipTimer.stop();
        else if (!m_toolTipTimer.isActive() && m_view)
            m_toolTipTimer.start(
                m_view->style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay, nullptr, m_view));
    }
    m_lastPosition = event.pos();
}

void CProcessorTreeDelegate::press(const QMouseEvent& event)
{
    raiseButton();
    if (event.button() != Qt::LeftButton || !(m_state & QStyle::State_Enabled)
        || !isInside(m_button, event.localPos()))
        return;
    ++m_presses;
    m_pressedRow = m_row;
    m_toolTipTimer.stop();
    changeState(QStyle::State_Sunken, QStyle::State_Raised);
}

/// Ends the press. Returns whether it was a click on the button, whose signal has been emitted.
bool CProcessorTreeDelegate::release(const QMouseEvent& event)
{
    const bool isClick = event.button() == Qt::LeftButton && (m_state & QStyle::State_Sunken)
                         && m_pressedRow == m_row && isInside(m_button, event.localPos());
    if (!isClick) {
        if (event.button() == Qt::LeftButton)
            raiseButton();
        return false;
    }
    const QStyle::State onOff = QStyle::State_On | QStyle::State_Off;
    if (m_checkable)
        m_state ^= onOff;
    resetButtonState();
    const QModelIndex row = m_row;
    const QPoint corner = m_button.bottomRight().toPoint();
    emit notifyMoreClicked(row, corner);
    return true;
}

void CProcessorTreeDelegate::raiseButton()
{
    m_pressedRow = QModelIndex();
    changeState(QStyle::State_Raised, QStyle::State_Sunken);
}

/// The view tells of a release only on the row that was pressed, which is still to come.
void CProcessorTreeDelegate::raiseButtonAfterRelease()
{
    QTimer::singleShot(0, this, [this, press = m_presses] {
        if (press == m_presses)
            raiseButton();
    });
}

void CProcessorTreeDelegate::leaveButton()
{
    m_toolTipTimer.stop();
    if (m_state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        CToolTip::HideText();
    changeState(QStyle::State_None, QStyle::State_MouseOver);
}

void CProcessorTreeDelegate::changeState(QStyle::State set, QStyle::State cleared)
{
    const QStyle::State before = m_state;
    m_state |= set;
    m_state &= ~cleared;
    if (m_state != before && m_viewport)
        m_viewport->update();
}

void CProcessorTreeDelegate::showToolTip()
{
    // The host may change the model, or destroy the view.
    const QPointer<CProcessorTreeDelegate> alive(this);
    if (!hasButton(nodeType(m_row)) || !alive)
        return;
    // Rows may have moved under a mouse that rests.
    if (!m_view || !m_view->isVisible() || !m_lastPosition || !m_row.isValid()
        || m_view->indexAt(*m_lastPosition) != m_row)
        return;
    CToolTip::ShowText(tr("More"), m_view->viewport()->mapToGlobal(*m_lastPosition),
                       m_view->viewport(), m_button.toRect(), kToolTipTime);
}
