#include "tests/storm/StormPanel.h"

#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "tests/storm/StormHandler.h"
#include "tests/storm/StormHost.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTreeView>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr int kTicksOpen = 12;
constexpr int kTicksStubborn = 60;
constexpr int kTicksGone = 15;

void press(QWidget* widget, int key, const QString& text = QString(),
           Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPointer<QWidget> alive(widget);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (!alive)
            return;
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(alive, &event);
    }
}

void click(QWidget* widget, const QPoint& pos, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> alive(widget);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        if (!alive)
            return;
        const bool isPress = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, pos, widget->mapToGlobal(pos), Qt::LeftButton,
                          isPress ? Qt::LeftButton : Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(alive, &event);
    }
}

/// Returns the rows below the root, including those of groups.
QModelIndexList rowsOf(const QAbstractItemModel& model)
{
    QModelIndexList rows;
    const QModelIndex root = model.index(0, 0);
    for (int row = 0; row < model.rowCount(root); ++row) {
        const QModelIndex index = model.index(row, 0, root);
        rows.append(index);
        for (int child = 0; child < model.rowCount(index); ++child)
            rows.append(model.index(child, 0, index));
    }
    return rows;
}

QModelIndex anyRow(const QAbstractItemModel& model, quint32 dice)
{
    const QModelIndexList rows = rowsOf(model);
    return rows.isEmpty() ? QModelIndex() : rows.at(int(dice % quint32(rows.size())));
}

bool isProcessor(const QModelIndex& row)
{
    return row.data(NodeTypeRole).toInt() == NodeProcessor;
}

int familyOf(const QModelIndex& row)
{
    return stormFamily(row.data(UuidRole).toUuid());
}

} // namespace

StormPanel::StormPanel(StormHost& host)
    : m_host(host)
{
    m_window.resize(240, 560);
    m_window.show();
}

StormPanel::~StormPanel()
{
    delete m_widget;
}

void StormPanel::build()
{
    if (m_widget || m_building)
        return;
    m_building = true;
    m_host.watch.note(QStringLiteral("builds the panel"));
    IAbstractLayerInterface* layer = nullptr;
    if (TargetSelectArea_Init(&layer, &m_window)) {
        m_layer = dynamic_cast<ITargetSelectAreaInterface*>(layer);
        m_widget = layer->GetWidget();
        const auto handler = std::make_shared<StormHandler>(m_host);
        m_handler = handler;
        layer->m_controlHandler = handler;
        layer->Initialize();
        m_widget->setGeometry(m_window.rect());
        m_widget->show();
        m_host.tell(16);
    }
    m_building = false;
}

void StormPanel::destroy()
{
    if (!m_widget || m_building)
        return;
    m_host.watch.note(QStringLiteral("destroys the panel"));
    m_ticksGone = 0;
    delete m_widget;
}

QTreeView* StormPanel::tree() const
{
    return m_widget ? m_widget->findChild<QTreeView*>() : nullptr;
}

QAbstractItemModel* StormPanel::model() const
{
    const QTreeView* view = tree();
    return view ? view->model() : nullptr;
}

/// Returns whether the user can use the tree.
bool StormPanel::isFree() const
{
    return model() && !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
}

void StormPanel::perform(const StormStep& step)
{
    if (!m_widget || m_building)
        return;
    m_host.watch.note(step.describe());
    switch (step.kind) {
    case StormStep::ReadOnly:
        m_layer->SetReadOnly(step.dice % 4 == 0);
        break;
    case StormStep::SetCurrent:
        m_layer->SetCurrentProcessor(m_host.project.anyProcessor(step.family, step.dice));
        break;
    case StormStep::Snapshot: {
        ProcessorTreeSnapshot snapshot;
        m_layer->GetProcessorTree(snapshot, step.dice % 2 == 0);
        break;
    }
    case StormStep::RemoveAllGroups:
        removeAllGroups();
        break;
    case StormStep::SwapHandler:
        swapHandler(step.dice);
        break;
    case StormStep::OpenDialog:
        openDialog();
        break;
    case StormStep::PanelDeath:
        destroy();
        break;
    case StormStep::Select:
        select(step.dice);
        break;
    case StormStep::RenameByModel:
        renameByModel(step.dice);
        break;
    case StormStep::RenameByEditor:
        renameByEditor(step.dice);
        break;
    case StormStep::DeleteByKey:
        select(step.dice);
        if (isFree())
            pressInTree(Qt::Key_Delete);
        break;
    case StormStep::MoveByKeys:
        moveByKeys(step.dice);
        break;
    case StormStep::Busy:
        m_host.pause(std::chrono::milliseconds(step.dice));
        break;
    default:
        break;
    }
}

/// Performs a change of the host that concerns every family and has no event.
void StormPanel::removeAllGroups()
{
    std::array<std::unique_ptr<HostLock::Holder>, StormProject::kFamilies> turns;
    for (int number = 0; number < StormProject::kFamilies; ++number) {
        auto turn =
            std::make_unique<HostLock::Holder>(m_host.family(number), std::chrono::milliseconds(0));
        if (!*turn)
            return;
        turns[static_cast<std::size_t>(number)] = std::move(turn);
    }
    m_host.watch.note(QStringLiteral("removes all groups"));
    m_host.project.removeAllGroups();
    m_layer->RemoveAllGroups();
}

void StormPanel::swapHandler(quint32 dice)
{
    const auto old = m_handler.lock();
    const auto handler = std::make_shared<StormHandler>(m_host);
    m_handler = handler;
    m_layer->m_controlHandler = handler;
    if (old)
        old->retire();
    if (dice % 2 == 0)
        m_kept.push_back(old);
    if (dice % 3 == 0)
        m_layer->Reconnect();
}

void StormPanel::openDialog()
{
    if (!isFree())
        return;
    for (QPushButton* button : m_widget->findChildren<QPushButton*>()) {
        if (button->text() == QLatin1String("IP address management...") && button->isVisible()) {
            button->click();
            return;
        }
    }
}

void StormPanel::select(quint32 dice)
{
    if (!isFree())
        return;
    clickRow(anyRow(*model(), dice), dice % 3 == 0 ? Qt::ControlModifier : Qt::NoModifier);
}

/// The model stores a new name without asking the host, so the host stores it first and raises the
/// event afterwards.
void StormPanel::renameByModel(quint32 dice)
{
    QAbstractItemModel* rows = model();
    const QPersistentModelIndex row = rows ? anyRow(*rows, dice) : QModelIndex();
    if (!row.isValid())
        return;
    const QUuid id = row.data(UuidRole).toUuid();
    const int number = stormFamily(id);
    if (number < 0 || number >= StormProject::kFamilies)
        return;
    const HostLock::Holder turn(m_host.family(number), std::chrono::milliseconds(0));
    const QString name = QStringLiteral("%1 m%2").arg(stormLabel(id)).arg(dice % 1000);
    if (turn && m_host.project.renameProcessor(id, name)) {
        rows->setData(row, name, Qt::DisplayRole);
        m_host.tell(25, {id});
    } else if (turn && m_host.refills() && m_host.project.renameGroup(id, name)) {
        rows->setData(row, name, Qt::DisplayRole);
        m_host.tell(16);
    }
}

void StormPanel::renameByEditor(quint32 dice)
{
    if (!isFree())
        return;
    QTreeView* view = tree();
    const QPersistentModelIndex row = anyRow(*view->model(), dice);
    // Only event 16 announces the name of a group.
    if (!row.isValid() || (row.data(NodeTypeRole).toInt() == NodeGroup && !m_host.refills()))
        return;
    view->scrollTo(row);
    view->edit(row);
    const QPointer<QLineEdit> editor = view->viewport()->findChild<QLineEdit*>();
    if (!editor)
        return;
    editor->selectAll();
    for (const QChar letter : QString::number(dice % 10000)) {
        if (editor)
            press(editor, letter.unicode(), letter);
    }
    if (editor)
        press(editor, Qt::Key_Return, QStringLiteral("\r"));
}

/// Puts a processor into a group of its family, or out of its group.
void StormPanel::moveByKeys(quint32 dice)
{
    if (!isFree())
        return;
    const QModelIndexList rows = rowsOf(*model());
    QModelIndexList processors;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(processors), isProcessor);
    if (processors.isEmpty())
        return;
    const QModelIndex processor = processors.at(int(dice % quint32(processors.size())));
    const int family = familyOf(processor);
    QList<QPersistentModelIndex> targets{rows.first().parent()};
    for (const QModelIndex& row : rows) {
        if (!isProcessor(row) && familyOf(row) == family)
            targets.append(row);
    }
    clickRow(processor);
    pressInTree(Qt::Key_X, Qt::ControlModifier);
    if (!isFree())
        return;
    clickRow(targets.at(int(dice / 64 % quint32(targets.size()))));
    pressInTree(Qt::Key_V, Qt::ControlModifier);
}

void StormPanel::clickRow(const QPersistentModelIndex& row, Qt::KeyboardModifiers modifiers)
{
    QTreeView* view = tree();
    if (!view || !row.isValid())
        return;
    view->scrollTo(row);
    const QRect place = view->visualRect(row);
    if (place.isValid())
        click(view->viewport(), place.center(), modifiers);
}

/// Shortcuts of the tree need its focus.
void StormPanel::pressInTree(int key, Qt::KeyboardModifiers modifiers)
{
    QTreeView* view = tree();
    if (!view)
        return;
    view->setFocus(Qt::MouseFocusReason);
    press(view, key, {}, modifiers);
}

void StormPanel::tick()
{
    if (!m_widget && !m_building && ++m_ticksGone > kTicksGone)
        build();
    QWidget* window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    m_ticksOpen = window && window == m_openWindow ? m_ticksOpen + 1 : 0;
    m_openWindow = window;
    if (!window || m_ticksOpen < kTicksOpen)
        return;
    if (m_ticksOpen > kTicksStubborn)
        window->close();
    else if (m_ticksOpen % kTicksOpen == 0)
        press(window, window->inherits("CMessageBox") ? Qt::Key_Return : Qt::Key_Escape);
}

bool StormPanel::closeWindows()
{
    QWidget* window = QApplication::activePopupWidget();
    if (!window)
        window = QApplication::activeModalWidget();
    if (window)
        window->close();
    return !window;
}
