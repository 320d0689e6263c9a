#include "processortree/view/ProcessorTree.h"

#include "base/NodeType.h"
#include "base/PanelBridge.h"
#include "base/PanelStep.h"
#include "host/widgets/ActionLineEdit.h"
#include "host/widgets/PureImageBtn.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ExpandBranches.h"
#include "processortree/view/OfferedAdditions.h"
#include "processortree/view/ProcessorTreeView.h"
#include "search/ProcessorCompleter.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QShortcut>
#include <QStandardItem>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kSearchWidth = 176;
constexpr int kAddButton = 16;
constexpr int kMargin = 10;
constexpr int kSpacing = 8;

// From this many keys of the same value on, key 0 has it too.
constexpr int kKeysForAll = 5;
constexpr int kKeyOfAll = 0;

} // namespace

CProcessorTree::CProcessorTree(IPanelBridge& bridge, CProcessorTreeModel& model, QWidget* parent)
    : QWidget(parent)
    , m_bridge(bridge)
    , m_model(model)
    , m_search(new CActionLineEdit(this))
    , m_searchAction(m_search->AddLeadingAction(
          QIcon(QStringLiteral(":/Image/Target/search_normal.svg")), QString()))
    , m_addButton(new CPureImageBtn(this))
    , m_completer(new CProcessorCompleter(m_search, model, this))
    , m_treeView(new CProcessorTreeView(bridge, this))
{
    createSearch();
    createAddButton();
    createAddMenu();
    createTree();
    createLayout();
    retranslate();
}

CProcessorTree::~CProcessorTree()
{
    // Qt may be in the middle of the view's events, or of those of the button and its menu.
    if (CPanelStep::isUnderWay())
        m_treeView->outlivePanel();
    if (m_stepsFromMenu > 0)
        CPanelStep::keep(m_addButton);
}

void CProcessorTree::createSearch()
{
    m_search->setFixedWidth(kSearchWidth);
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textEdited, m_completer, &CProcessorCompleter::setFilterText);
    connect(m_searchAction, &QAction::triggered, m_completer,
            [this] { m_completer->setFilterText(m_search->text()); });
    connect(m_completer, &CProcessorCompleter::activated, this, &CProcessorTree::chooseResult);
    auto* shortcut = new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
}

void CProcessorTree::createAddButton()
{
    m_addButton->setObjectName(QStringLiteral("BGTransparent"));
    m_addButton->setFixedSize(kAddButton, kAddButton);
    m_addButton->setFocusPolicy(Qt::WheelFocus);
    m_addButton->SetImages(QStringLiteral(":/Image/Add/normal.svg"),
                           QStringLiteral(":/Image/Add/hover.svg"),
                           QStringLiteral(":/Image/Add/disabled.svg"));
    m_addButton->setPopupMode(QToolButton::InstantPopup);
    m_addButton->setEnabled(!m_bridge.IsReadOnly());
}

void CProcessorTree::createAddMenu()
{
    auto* menu = new QMenu(m_addButton);
    for (const Entry entry : {Entry::Group, Entry::One, Entry::Two, Entry::Custom}) {
        QAction* action = menu->addAction(QString());
        action->setShortcut(QKeySequence());
        m_entries.insert(entry, action);
        connect(action, &QAction::triggered, this,
                [this, entry] { runFromMenu([this, entry] { run(entry); }); });
        if (entry == Entry::Group)
            menu->addSeparator();
    }
    // Before the entry acts: assistive technology triggers it and leaves the menu open.
    connect(menu, &QMenu::triggered, menu, &QWidget::hide);
    connect(menu, &QMenu::aboutToShow, this, [this] { runFromMenu([this] { refreshMenu(); }); });
    m_addButton->setMenu(menu);
}

void CProcessorTree::createTree()
{
    m_treeView->setModel(&m_model);
    expandBranches(*m_treeView);
}

void CProcessorTree::createLayout()
{
    auto* top = new QHBoxLayout;
    top->setContentsMargins(kMargin, 0, kMargin, 0);
    top->setSpacing(kSpacing);
    top->addWidget(m_search);
    top->addWidget(m_addButton);
    auto* bottom = new QHBoxLayout;
    bottom->setContentsMargins(kMargin, 0, 0, 0);
    bottom->addWidget(m_treeView);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    layout->addLayout(top);
    // In a wider panel the two stay together, below the controls in its middle.
    layout->setAlignment(top, Qt::AlignHCenter);
    layout->addLayout(bottom);
    setTabOrder(m_search, m_addButton);
    setTabOrder(m_addButton, m_treeView);
}

void CProcessorTree::retranslate()
{
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search"));
    // Assistive technology reads the text as the name of the button in the field.
    m_searchAction->setText(tr("Search"));
    m_searchAction->setToolTip(tr("Search"));
    m_addButton->setAccessibleName(tr("Add"));
    m_treeView->setAccessibleName(tr("Processors"));
    m_entries.value(Entry::Group)->setText(tr("Add processor group"));
    m_entries.value(Entry::One)->setText(tr("Add 1 processor"));
    m_entries.value(Entry::Two)->setText(tr("Add 2 processor"));
    m_entries.value(Entry::Custom)->setText(tr("Custom adds..."));
}

void CProcessorTree::changeEvent(QEvent* event)
{
    retranslate();
    QWidget::changeEvent(event);
}

bool CProcessorTree::eventFilter(QObject* watched, QEvent* event)
{
    // The list of results has its own use for the key.
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched == m_search && isKey && !m_completer->isOpen()
        && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            leaveSearch();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// Of an invalid index, nothing was chosen.
void CProcessorTree::chooseResult(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QPersistentModelIndex chosen(index);
    // Before the host is told, which may end all this.
    m_search->clear();
    m_completer->setFilterText(QString());
    m_treeView->setFocus();
    m_treeView->scrollTo(chosen);
    m_treeView->selectionModel()->setCurrentIndex(chosen, QItemSelectionModel::ClearAndSelect);
}

void CProcessorTree::leaveSearch()
{
    m_search->clear();
    m_completer->setFilterText(QString());
    m_treeView->setFocus();
}

void CProcessorTree::SelectProcessor(const QUuid& id, bool report)
{
    const QStandardItem* item = m_model.getItem(id);
    QItemSelectionModel* const selection = m_treeView->selectionModel();
    // A host without a current processor names none; that is no reason to pick the root.
    if (!item || nodeType(*item) != NodeProcessor || selection->isSelected(item->index()))
        return;
    const QPersistentModelIndex index(item->index());
    const QPointer<CProcessorTree> alive(this);
    {
        // No QSignalBlocker: the host may destroy the panel here.
        const bool wereBlocked = selection->blockSignals(!report);
        const auto unblock = qScopeGuard([alive, selection, wereBlocked] {
            if (alive)
                selection->blockSignals(wereBlocked);
        });
        selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    }
    if (!alive)
        return;
    expandBranches(*m_treeView);
    m_treeView->scrollTo(index);
    m_treeView->viewport()->update();
}

void CProcessorTree::SetOperationLock(int key, bool locked)
{
    m_locks.insert(key, locked);
    if (std::count(m_locks.cbegin(), m_locks.cend(), locked) >= kKeysForAll)
        m_locks.insert(kKeyOfAll, locked);
    setLocked(locked);
}

void CProcessorTree::ApplyOperationLock(int key)
{
    setLocked(m_locks.value(key, false));
}

void CProcessorTree::setLocked(bool locked)
{
    m_treeView->SetLocked(locked);
    setAddEnabled(!locked && !m_bridge.IsReadOnly());
}

void CProcessorTree::UpdateAddButton()
{
    setAddEnabled(!m_bridge.IsReadOnly());
}

void CProcessorTree::setAddEnabled(bool enabled)
{
    m_addButton->setEnabled(enabled);
    if (!enabled)
        m_addButton->menu()->hide();
}

bool CProcessorTree::mayAdd() const
{
    return m_addButton->isEnabledTo(this) && !m_bridge.IsReadOnly();
}

void CProcessorTree::ResetView()
{
    m_treeView->reset();
    expandBranches(*m_treeView);
}

void CProcessorTree::UpdateMonitorWarnings()
{
    m_treeView->viewport()->update();
}

/// Runs a step that the menu is the cause of, and in which the host may destroy the panel.
void CProcessorTree::runFromMenu(const std::function<void()>& step)
{
    const CPanelStep panelStep;
    const QPointer<CProcessorTree> alive(this);
    const QPointer<QMenu> menu(m_addButton->menu());
    ++m_stepsFromMenu;
    const auto end = qScopeGuard([this, alive, menu] {
        if (alive)
            --m_stepsFromMenu;
        else if (menu) // Qt goes on with showing it
            QMetaObject::invokeMethod(menu, &QWidget::hide, Qt::QueuedConnection);
    });
    step();
}

void CProcessorTree::refreshMenu()
{
    const QPointer<CProcessorTree> alive(this);
    const OfferedAdditions entries = offeredAdditions();
    if (!alive)
        return;
    const std::pair<Entry, AddKind> kinds[] = {
        {Entry::One, AddKind::One}, {Entry::Two, AddKind::Two}, {Entry::Custom, AddKind::Custom}};
    for (const auto& [entry, kind] : kinds) {
        m_entries.value(entry)->setVisible(entries.isVisible(kind));
        m_entries.value(entry)->setEnabled(entries.enabled && mayAdd());
    }
    m_entries.value(Entry::Group)->setEnabled(mayAdd());
}

/// What the menu offered may have been forbidden since.
void CProcessorTree::run(Entry entry)
{
    if (!mayAdd())
        return;
    const auto addProcessors = [this](AddKind kind) {
        // A tree that became writable can be added to, though its view be locked.
        m_treeView->AddProcessors(kind, [this] { return mayAdd(); });
    };
    switch (entry) {
    case Entry::Group:
        m_treeView->AddGroup();
        break;
    case Entry::One:
        addProcessors(AddKind::One);
        break;
    case Entry::Two:
        addProcessors(AddKind::Two);
        break;
    case Entry::Custom:
        addProcessors(AddKind::Custom);
        break;
    }
}
