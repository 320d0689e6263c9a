#include "host/workbench/window/MainWindow.h"

#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/ChangeCommands.h"
#include "host/workbench/window/ChangedFileBar.h"
#include "host/workbench/window/DetectionStatus.h"
#include "host/workbench/window/EditCommands.h"
#include "host/workbench/window/FaultsPanel.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/FindingsLabel.h"
#include "host/workbench/window/Language.h"
#include "host/workbench/window/LayerCommands.h"
#include "host/workbench/window/LogPanel.h"
#include "host/workbench/window/RecordsPanel.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLineEdit>
#include <QShortcut>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int kTipMs = 5000;
constexpr QSize kFirstSize(1280, 800);
constexpr int kLogHeight = 232;

} // namespace

MainWindow::MainWindow(Session& session, Language& language, QWidget* parent)
    : QMainWindow(parent)
    , m_session(session)
    , m_records(new RecordsPanel(this))
    , m_log(new LogPanel(session.trace(), this))
    , m_logDock(new QDockWidget(this))
    , m_faults(new FaultsPanel(session.store(), session.faults(), this))
    , m_faultsDock(new QDockWidget(this))
    , m_detection(new DetectionStatus(*statusBar(), session))
    , m_actions(new Actions(this))
    , m_edit(new EditCommands(*m_actions, session.history(), this))
    , m_files(new FileCommands(this, *m_actions, session.store()))
    , m_layer(new LayerCommands(this, *m_actions, *m_records, session))
{
    resize(kFirstSize);
    buildCentre();
    buildLogDock();
    statusBar()->setSizeGripEnabled(false);
    connect(&session, &Session::tip, this,
            [this](const QString& text) { statusBar()->showMessage(text, kTipMs); });
    statusBar()->addPermanentWidget(new FindingsLabel(session.trace(), this));
    connect(&session, &Session::logWanted, m_log, &LogPanel::showWords);
    m_log->setExportRefusal([this](const QString& path) { return m_files->exportRefusal(path); });
    connect(&session.store(), &ProjectStore::changed, this,
            [this] { m_records->show(m_session.store().snapshot()); });
    connect(&session.store(), &ProjectStore::ipListChanged, this,
            [this] { m_records->showIpList(m_session.store().snapshot().ipList); });
    m_records->show(session.store().snapshot());
    new ChangeCommands(this, *m_actions, *m_records, session);
    connectViewActions();
    buildFaultsDock();
    connectLanguage(language);
    retranslate();
}

MainWindow::~MainWindow()
{
    // The panel may still ask the host while it ends, so the rest of the window has to exist.
    m_session.closePanel();
}

void MainWindow::openPanel()
{
    m_layer->openPanel();
}

bool MainWindow::event(QEvent* event)
{
    // Qt adds a bar of tabs when docks share a place.
    if (event->type() == QEvent::ChildPolished)
        nameTabs();
    return QMainWindow::event(event);
}

void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // Nobody can answer a question while a detection keeps input away.
    if (m_session.isDetecting()) {
        m_session.cancelDetection();
        event->ignore();
        return;
    }
    event->setAccepted(m_files->confirmLoss());
}

void MainWindow::buildCentre()
{
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_files->bar());
    layout->addWidget(m_records, 1);
    setCentralWidget(centre);
}

void MainWindow::buildLogDock()
{
    m_logDock->setObjectName(QStringLiteral("logDock"));
    m_logDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_logDock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    resizeDocks({m_logDock}, {kLogHeight}, Qt::Vertical);
}

/// The dock of the faults is not shown before it is asked for, and then beside the log.
void MainWindow::buildFaultsDock()
{
    m_faultsDock->setObjectName(QStringLiteral("faultsDock"));
    m_faultsDock->setWidget(m_faults);
    addDockWidget(Qt::BottomDockWidgetArea, m_faultsDock);
    tabifyDockWidget(m_logDock, m_faultsDock);
    m_faultsDock->hide();
    QAction* action = (*m_actions)[ActionId::ShowFaults];
    connect(action, &QAction::triggered, this, [this](bool on) {
        m_faultsDock->setVisible(on);
        if (!on)
            return;
        m_faultsDock->raise();
        m_faults->view()->setFocus(Qt::ShortcutFocusReason);
    });
    connect(m_faultsDock->toggleViewAction(), &QAction::toggled, action, &QAction::setChecked);
}

void MainWindow::connectViewActions()
{
    Actions& actions = *m_actions;
    connect(actions[ActionId::Quit], &QAction::triggered, this, &MainWindow::close);
    connect(actions[ActionId::FocusPanel], &QAction::triggered, this, &MainWindow::focusPanel);
    connect(actions[ActionId::FocusRecords], &QAction::triggered, this,
            [this] { m_records->view()->setFocus(Qt::ShortcutFocusReason); });
    connect(actions[ActionId::FocusLog], &QAction::triggered, this,
            [this] { m_log->filterField()->setFocus(Qt::ShortcutFocusReason); });
    connect(actions[ActionId::ClearLog], &QAction::triggered, &m_session.trace(),
            &TraceModel::clear);
    // The usual keys also work in the view of the records.
    const std::pair<QKeySequence, ActionId> keys[] = {
        {QKeySequence(QKeySequence::Delete), ActionId::Remove},
        {QKeySequence(Qt::Key_F2), ActionId::Rename}};
    for (const auto& [key, id] : keys) {
        auto* shortcut = new QShortcut(key, m_records->view());
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, actions[id], &QAction::trigger);
    }
}

void MainWindow::connectLanguage(Language& language)
{
    connect((*m_actions)[ActionId::English], &QAction::triggered, this,
            [&language] { language.choose(Language::Choice::English); });
    connect((*m_actions)[ActionId::Chinese], &QAction::triggered, this,
            [&language] { language.choose(Language::Choice::Chinese); });
}

void MainWindow::focusPanel()
{
    // Skips the views of popup lists.
    const auto views = m_layer->dock()->widget()->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* view : views) {
        if (view->window() == m_layer->dock()->window() && view->isVisible()) {
            view->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

void MainWindow::nameTabs()
{
    const auto bars = findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    for (QTabBar* bar : bars)
        bar->setAccessibleName(tr("Docks"));
}

void MainWindow::retranslate()
{
    nameTabs();
    m_detection->retranslate();
    m_logDock->setWindowTitle(tr("Live log"));
    m_faultsDock->setWindowTitle(tr("Faults"));
    m_actions->retranslate();
    m_edit->retranslate();
    m_files->retranslate();
    m_layer->retranslate();
}
