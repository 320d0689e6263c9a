#include "host/workbench/window/Actions.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QToolBar>
#include <QToolButton>

namespace {

constexpr unsigned kCheckable = 1U;
constexpr unsigned kInToolBar = 2U;
constexpr unsigned kNewSection = 4U; ///< A separator precedes the action.

struct Entry
{
    ActionId id;
    const char* text;
    const char* shortcut;
    unsigned traits;
};

struct MenuEntries
{
    const char* title;
    QVector<Entry> entries;
};

// Keys of a tree or an editor, such as F2 or Delete, are left to the panel.
const QVector<MenuEntries>& menus()
{
    static const QVector<MenuEntries> all{
        {QT_TRANSLATE_NOOP("Actions", "&File"),
         {{ActionId::NewProject, QT_TRANSLATE_NOOP("Actions", "&New"), "Ctrl+N", 0},
          {ActionId::OpenProject, QT_TRANSLATE_NOOP("Actions", "&Open..."), "Ctrl+O", kInToolBar},
          {ActionId::OpenSample, QT_TRANSLATE_NOOP("Actions", "Open sa&mple"), "Ctrl+Shift+S", 0},
          {ActionId::SaveProject, QT_TRANSLATE_NOOP("Actions", "&Save"), "Ctrl+S",
           kInToolBar | kNewSection},
          {ActionId::SaveProjectAs, QT_TRANSLATE_NOOP("Actions", "Save &as..."), "Ctrl+Alt+S", 0},
          {ActionId::Quit, QT_TRANSLATE_NOOP("Actions", "&Quit"), "Ctrl+Q", kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "E&dit"),
         {{ActionId::Undo, QT_TRANSLATE_NOOP("Actions", "&Undo"), "Ctrl+Z", 0},
          {ActionId::Redo, QT_TRANSLATE_NOOP("Actions", "&Redo"), "Ctrl+Shift+Z", 0}}},
        {QT_TRANSLATE_NOOP("Actions", "&Change"),
         {{ActionId::AddProcessor, QT_TRANSLATE_NOOP("Actions", "Add &processor"), "Ctrl+Shift+P",
           kInToolBar | kNewSection},
          {ActionId::AddProcessors, QT_TRANSLATE_NOOP("Actions", "Add &several processors..."),
           "Ctrl+Shift+M", 0},
          {ActionId::AddGroup, QT_TRANSLATE_NOOP("Actions", "Add &group..."), "Ctrl+Shift+G",
           kInToolBar},
          {ActionId::Remove, QT_TRANSLATE_NOOP("Actions", "Re&move"), "Ctrl+Shift+D",
           kInToolBar | kNewSection},
          {ActionId::Rename, QT_TRANSLATE_NOOP("Actions", "&Rename..."), "Ctrl+Shift+R", 0},
          {ActionId::MoveToGroup, QT_TRANSLATE_NOOP("Actions", "Mo&ve to group..."), "Ctrl+Shift+V",
           0},
          {ActionId::GoOnline, QT_TRANSLATE_NOOP("Actions", "Go &online"), "Ctrl+Shift+O",
           kInToolBar | kNewSection},
          {ActionId::GoOffline, QT_TRANSLATE_NOOP("Actions", "Go o&ffline"), "Ctrl+Shift+F",
           kInToolBar},
          {ActionId::ChangeAddress, QT_TRANSLATE_NOOP("Actions", "Change &address..."),
           "Ctrl+Shift+A", 0},
          {ActionId::ToggleBackup, QT_TRANSLATE_NOOP("Actions", "Mark as &backup, or not"),
           "Ctrl+Shift+B", 0},
          {ActionId::ToggleHasBackup, QT_TRANSLATE_NOOP("Actions", "Has a bac&kup, or not"),
           "Ctrl+Shift+J", 0},
          {ActionId::ToggleProtected, QT_TRANSLATE_NOOP("Actions", "Prot&ected, or not"),
           "Ctrl+Shift+K", 0},
          {ActionId::ToggleMonitorWarning,
           QT_TRANSLATE_NOOP("Actions", "Monitor &warning on or off"), "Ctrl+Shift+W", 0},
          {ActionId::MakeCurrent, QT_TRANSLATE_NOOP("Actions", "Make &current"), "Ctrl+Shift+C",
           kInToolBar},
          {ActionId::DeviceSets, QT_TRANSLATE_NOOP("Actions", "&Device sets..."), "Ctrl+Shift+E",
           kNewSection},
          {ActionId::DetectStrategy, QT_TRANSLATE_NOOP("Actions", "De&tection strategy..."),
           "Ctrl+Shift+T", 0},
          {ActionId::LanUsb, QT_TRANSLATE_NOOP("Actions", "LAN-&USB..."), "Ctrl+Shift+U", 0},
          {ActionId::Network, QT_TRANSLATE_NOOP("Actions", "&Network..."), "Ctrl+Shift+N", 0},
          {ActionId::HandlerAnswers, QT_TRANSLATE_NOOP("Actions", "&Handler answers..."),
           "Ctrl+Shift+H", kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "&Events"),
         {{ActionId::RaiseEvent, QT_TRANSLATE_NOOP("Actions", "&Raise event..."), "Ctrl+E",
           kInToolBar | kNewSection},
          {ActionId::AnnounceProject, QT_TRANSLATE_NOOP("Actions", "&Announce the whole project"),
           "Ctrl+R", 0},
          {ActionId::GuiThreadEvents, QT_TRANSLATE_NOOP("Actions", "Events on the &GUI thread"),
           "Ctrl+T", kCheckable | kInToolBar | kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "&Layer"),
         {{ActionId::SetReadOnly, QT_TRANSLATE_NOOP("Actions", "&Read-only"), "Ctrl+Alt+R",
           kCheckable},
          {ActionId::SelectInPanel, QT_TRANSLATE_NOOP("Actions", "&Select in the panel"),
           "Ctrl+Alt+P", 0},
          {ActionId::RemoveAllGroups, QT_TRANSLATE_NOOP("Actions", "Remove all &groups"),
           "Ctrl+Alt+G", 0},
          {ActionId::LogTree, QT_TRANSLATE_NOOP("Actions", "Log the panel's &tree"), "Ctrl+Alt+T",
           kNewSection},
          {ActionId::LogAcceptedTree, QT_TRANSLATE_NOOP("Actions", "Log the &accepted tree"),
           "Ctrl+Alt+A", 0},
          {ActionId::LogProcessors, QT_TRANSLATE_NOOP("Actions", "Log all &processors"),
           "Ctrl+Alt+N", 0},
          {ActionId::DetectDevices, QT_TRANSLATE_NOOP("Actions", "&Detect devices"), "Ctrl+Alt+D",
           kNewSection},
          {ActionId::LockOperations, QT_TRANSLATE_NOOP("Actions", "&Lock operations"), "Ctrl+Alt+L",
           kCheckable},
          {ActionId::ApplyLock, QT_TRANSLATE_NOOP("Actions", "Appl&y the lock"), "Ctrl+Alt+Y", 0},
          {ActionId::LockByKey, QT_TRANSLATE_NOOP("Actions", "Lock by &key..."), "Ctrl+Alt+K", 0},
          {ActionId::RepaintWarnings, QT_TRANSLATE_NOOP("Actions", "Repaint &monitor warnings"),
           "Ctrl+Alt+M", 0},
          {ActionId::LanUsbWarning, QT_TRANSLATE_NOOP("Actions", "Show the LAN-&USB warning"),
           "Ctrl+Alt+U", 0},
          {ActionId::Reconnect, QT_TRANSLATE_NOOP("Actions", "Re&connect"), "Ctrl+Alt+C",
           kNewSection},
          {ActionId::ContractChecks,
           QT_TRANSLATE_NOOP("Actions", "Check the contract in the ne&xt panel"), "Ctrl+Alt+X",
           kCheckable},
          {ActionId::ClosePanel, QT_TRANSLATE_NOOP("Actions", "Destro&y the panel"), "Ctrl+Alt+W",
           0},
          {ActionId::OpenPanel, QT_TRANSLATE_NOOP("Actions", "&Initialise the panel again"),
           "Ctrl+Alt+I", 0}}},
        {QT_TRANSLATE_NOOP("Actions", "&View"),
         {{ActionId::FocusPanel, QT_TRANSLATE_NOOP("Actions", "To the &panel"), "Ctrl+1", 0},
          {ActionId::FocusRecords, QT_TRANSLATE_NOOP("Actions", "To the &records"), "Ctrl+2", 0},
          {ActionId::FocusLog, QT_TRANSLATE_NOOP("Actions", "To the log &filter"), "Ctrl+3", 0},
          {ActionId::ShowFaults, QT_TRANSLATE_NOOP("Actions", "&Faults"), "Ctrl+4", kCheckable},
          {ActionId::ClearLog, QT_TRANSLATE_NOOP("Actions", "&Clear the log"), "Ctrl+L",
           kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "L&anguage"),
         {{ActionId::English, "English", "Ctrl+Alt+E", kCheckable},
          {ActionId::Chinese, "\xE4\xB8\xAD\xE6\x96\x87", "Ctrl+Alt+Z", kCheckable}}},
    };
    return all;
}

/// Returns the text without its mnemonic, which some languages put in parentheses, and without
/// trailing dots.
QString plainText(QString text)
{
    static const QRegularExpression key(QStringLiteral("\\(&.\\)"));
    return text.remove(key).remove(QLatin1Char('&')).remove(QStringLiteral("..."));
}

} // namespace

Actions::Actions(QMainWindow* window)
    : QObject(window)
{
    auto* toolBar = new QToolBar(window);
    toolBar->setObjectName(QStringLiteral("tools"));
    toolBar->setMovable(false);
    toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    window->addToolBar(toolBar);
    window->setContextMenuPolicy(Qt::NoContextMenu);
    for (const MenuEntries& group : menus()) {
        QMenu* menu = window->menuBar()->addMenu(QString());
        m_menus.insert(menu, group.title);
        for (const Entry& entry : group.entries) {
            if ((entry.traits & kNewSection) && !menu->isEmpty())
                menu->addSeparator();
            QAction* action = build(window, menu, entry.id);
            action->setShortcut(QKeySequence(QLatin1String(entry.shortcut)));
            action->setCheckable(entry.traits & kCheckable);
            // Scripts know an action by its English text, in any language.
            action->setObjectName(plainText(QString::fromUtf8(entry.text)));
            if ((entry.traits & kInToolBar) && (entry.traits & kNewSection))
                toolBar->addSeparator();
            if (entry.traits & kInToolBar)
                toolBar->addAction(action);
            if (entry.id == ActionId::OpenSample)
                m_recent = menu->addMenu(QString());
        }
    }
    for (QToolButton* button : toolBar->findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);

    m_actions.value(ActionId::Quit)->setMenuRole(QAction::QuitRole);
    auto* languages = new QActionGroup(window);
    languages->addAction(m_actions.value(ActionId::English));
    languages->addAction(m_actions.value(ActionId::Chinese));
    m_actions.value(ActionId::English)->setChecked(true);
    retranslate();
}

void Actions::retranslate()
{
    for (const MenuEntries& group : menus()) {
        for (const Entry& entry : group.entries) {
            QAction* action = m_actions.value(entry.id);
            const QString text = tr(entry.text);
            action->setText(text);
            const QString plain = plainText(text);
            action->setIconText(plain);
            action->setToolTip(QStringLiteral("%1 (%2)").arg(
                plain, action->shortcut().toString(QKeySequence::NativeText)));
        }
    }
    for (auto it = m_menus.constBegin(); it != m_menus.constEnd(); ++it)
        it.key()->setTitle(tr(it.value()));
    m_recent->setTitle(tr("&Recent"));
}

QAction* Actions::build(QMainWindow* window, QMenu* menu, ActionId id)
{
    auto* action = new QAction(window);
    menu->addAction(action);
    m_actions.insert(id, action);
    return action;
}
