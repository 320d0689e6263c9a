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
constexpr unsigned kNewSection = 4U; ///< A separator comes before it.

struct Entry
{
    Do what;
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
         {{Do::NewProject, QT_TRANSLATE_NOOP("Actions", "&New"), "Ctrl+N", 0},
          {Do::OpenProject, QT_TRANSLATE_NOOP("Actions", "&Open..."), "Ctrl+O", kInToolBar},
          {Do::OpenSample, QT_TRANSLATE_NOOP("Actions", "Open sa&mple"), "Ctrl+Shift+S", 0},
          {Do::SaveProject, QT_TRANSLATE_NOOP("Actions", "&Save"), "Ctrl+S",
           kInToolBar | kNewSection},
          {Do::SaveProjectAs, QT_TRANSLATE_NOOP("Actions", "Save &as..."), "Ctrl+Alt+S", 0},
          {Do::Quit, QT_TRANSLATE_NOOP("Actions", "&Quit"), "Ctrl+Q", kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "&Change"),
         {{Do::AddProcessor, QT_TRANSLATE_NOOP("Actions", "Add &processor"), "Ctrl+Shift+P",
           kInToolBar | kNewSection},
          {Do::AddProcessors, QT_TRANSLATE_NOOP("Actions", "Add &several processors..."),
           "Ctrl+Shift+M", 0},
          {Do::AddGroup, QT_TRANSLATE_NOOP("Actions", "Add &group..."), "Ctrl+Shift+G", kInToolBar},
          {Do::Remove, QT_TRANSLATE_NOOP("Actions", "Re&move"), "Ctrl+Shift+D",
           kInToolBar | kNewSection},
          {Do::Rename, QT_TRANSLATE_NOOP("Actions", "&Rename..."), "Ctrl+Shift+R", 0},
          {Do::MoveToGroup, QT_TRANSLATE_NOOP("Actions", "Mo&ve to group..."), "Ctrl+Shift+V", 0},
          {Do::GoOnline, QT_TRANSLATE_NOOP("Actions", "Go &online"), "Ctrl+Shift+O",
           kInToolBar | kNewSection},
          {Do::GoOffline, QT_TRANSLATE_NOOP("Actions", "Go o&ffline"), "Ctrl+Shift+F", kInToolBar},
          {Do::ChangeAddress, QT_TRANSLATE_NOOP("Actions", "Change &address..."), "Ctrl+Shift+A",
           0},
          {Do::ToggleBackup, QT_TRANSLATE_NOOP("Actions", "Mark as &backup, or not"),
           "Ctrl+Shift+B", 0},
          {Do::ToggleHasBackup, QT_TRANSLATE_NOOP("Actions", "Has a bac&kup, or not"),
           "Ctrl+Shift+J", 0},
          {Do::ToggleProtected, QT_TRANSLATE_NOOP("Actions", "Prot&ected, or not"), "Ctrl+Shift+K",
           0},
          {Do::ToggleMonitorWarning, QT_TRANSLATE_NOOP("Actions", "Monitor &warning on or off"),
           "Ctrl+Shift+W", 0},
          {Do::MakeCurrent, QT_TRANSLATE_NOOP("Actions", "Make &current"), "Ctrl+Shift+C",
           kInToolBar},
          {Do::DeviceSets, QT_TRANSLATE_NOOP("Actions", "&Device sets..."), "Ctrl+Shift+E",
           kNewSection},
          {Do::DetectStrategy, QT_TRANSLATE_NOOP("Actions", "De&tection strategy..."),
           "Ctrl+Shift+T", 0},
          {Do::LanUsb, QT_TRANSLATE_NOOP("Actions", "LAN-&USB..."), "Ctrl+Shift+U", 0},
          {Do::HandlerAnswers, QT_TRANSLATE_NOOP("Actions", "&Handler answers..."), "Ctrl+Shift+H",
           kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "&Events"),
         {{Do::RaiseEvent, QT_TRANSLATE_NOOP("Actions", "&Raise event..."), "Ctrl+E",
           kInToolBar | kNewSection},
          {Do::AnnounceProject, QT_TRANSLATE_NOOP("Actions", "&Announce the whole project"),
           "Ctrl+R", 0},
          {Do::GuiThreadEvents, QT_TRANSLATE_NOOP("Actions", "Events on the &GUI thread"), "Ctrl+T",
           kCheckable | kInToolBar | kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "&Layer"),
         {{Do::SetReadOnly, QT_TRANSLATE_NOOP("Actions", "&Read-only"), "Ctrl+Alt+R", kCheckable},
          {Do::SelectInPanel, QT_TRANSLATE_NOOP("Actions", "&Select in the panel"), "Ctrl+Alt+P",
           0},
          {Do::RemoveAllGroups, QT_TRANSLATE_NOOP("Actions", "Remove all &groups"), "Ctrl+Alt+G",
           0},
          {Do::LogTree, QT_TRANSLATE_NOOP("Actions", "Log the panel's &tree"), "Ctrl+Alt+T",
           kNewSection},
          {Do::LogAcceptedTree, QT_TRANSLATE_NOOP("Actions", "Log the &accepted tree"),
           "Ctrl+Alt+A", 0},
          {Do::LogProcessors, QT_TRANSLATE_NOOP("Actions", "Log all &processors"), "Ctrl+Alt+N", 0},
          {Do::DetectDevices, QT_TRANSLATE_NOOP("Actions", "&Detect devices"), "Ctrl+Alt+D",
           kNewSection},
          {Do::LockOperations, QT_TRANSLATE_NOOP("Actions", "&Lock operations"), "Ctrl+Alt+L",
           kCheckable},
          {Do::ApplyLock, QT_TRANSLATE_NOOP("Actions", "Appl&y the lock"), "Ctrl+Alt+Y", 0},
          {Do::LockByKey, QT_TRANSLATE_NOOP("Actions", "Lock by &key..."), "Ctrl+Alt+K", 0},
          {Do::RepaintWarnings, QT_TRANSLATE_NOOP("Actions", "Repaint &monitor warnings"),
           "Ctrl+Alt+M", 0},
          {Do::LanUsbWarning, QT_TRANSLATE_NOOP("Actions", "Show the LAN-&USB warning"),
           "Ctrl+Alt+U", 0},
          {Do::Reconnect, QT_TRANSLATE_NOOP("Actions", "Re&connect"), "Ctrl+Alt+C", kNewSection},
          {Do::ClosePanel, QT_TRANSLATE_NOOP("Actions", "Destro&y the panel"), "Ctrl+Alt+W", 0},
          {Do::OpenPanel, QT_TRANSLATE_NOOP("Actions", "&Initialise the panel again"), "Ctrl+Alt+I",
           0}}},
        {QT_TRANSLATE_NOOP("Actions", "&View"),
         {{Do::FocusPanel, QT_TRANSLATE_NOOP("Actions", "To the &panel"), "Ctrl+1", 0},
          {Do::FocusRecords, QT_TRANSLATE_NOOP("Actions", "To the &records"), "Ctrl+2", 0},
          {Do::FocusLog, QT_TRANSLATE_NOOP("Actions", "To the log &filter"), "Ctrl+3", 0},
          {Do::ClearLog, QT_TRANSLATE_NOOP("Actions", "&Clear the log"), "Ctrl+L", kNewSection}}},
        {QT_TRANSLATE_NOOP("Actions", "L&anguage"),
         {{Do::English, "English", "Ctrl+Alt+E", kCheckable},
          {Do::Chinese, "\xE4\xB8\xAD\xE6\x96\x87", "Ctrl+Alt+Z", kCheckable}}},
    };
    return all;
}

/// The text without its key, which some languages put in parentheses, and without dots.
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
            QAction* action = build(window, menu, entry.what);
            action->setShortcut(QKeySequence(QLatin1String(entry.shortcut)));
            action->setCheckable(entry.traits & kCheckable);
            if ((entry.traits & kInToolBar) && (entry.traits & kNewSection))
                toolBar->addSeparator();
            if (entry.traits & kInToolBar)
                toolBar->addAction(action);
            if (entry.what == Do::OpenSample)
                m_recent = menu->addMenu(QString());
        }
    }
    for (QToolButton* button : toolBar->findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);

    m_actions.value(Do::Quit)->setMenuRole(QAction::QuitRole);
    auto* languages = new QActionGroup(window);
    languages->addAction(m_actions.value(Do::English));
    languages->addAction(m_actions.value(Do::Chinese));
    m_actions.value(Do::English)->setChecked(true);
    retranslate();
}

void Actions::retranslate()
{
    for (const MenuEntries& group : menus()) {
        for (const Entry& entry : group.entries) {
            QAction* action = m_actions.value(entry.what);
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

QAction* Actions::build(QMainWindow* window, QMenu* menu, Do what)
{
    auto* action = new QAction(window);
    menu->addAction(action);
    m_actions.insert(what, action);
    return action;
}
