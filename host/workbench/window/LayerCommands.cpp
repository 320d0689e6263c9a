#include "host/workbench/window/LayerCommands.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/dialogs/LockDialog.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/RecordsPanel.h"

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QVBoxLayout>

namespace {

constexpr char kContractChecks[] = "TARGETSELECT_CHECK";

/// The key under which the menu locks operations. The panel accepts any number.
constexpr int kLockKey = 1;
constexpr int kNoticeWidth = 220;
constexpr int kProcessorsToWarnOf = 3;

QString line(const ProcessorNode& node)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(qint64{node.number} + 1)
        .arg(node.name, dottedAddress(node.ipAddress),
             node.online ? QStringLiteral("online") : QStringLiteral("offline"));
}

/// Returns the content of a LAN-USB warning about `ids`, or about the first processors if `ids` is
/// empty.
std::vector<LanUsbProcessorInfo> lanUsbProcessors(const Project& project, QList<QUuid> ids)
{
    if (ids.isEmpty()) {
        for (const ProcessorNode& node : project.processors.mid(0, kProcessorsToWarnOf))
            ids.append(node.id);
    }
    std::vector<LanUsbProcessorInfo> processors;
    for (const QUuid& id : qAsConst(ids)) {
        if (const ProcessorNode* node = project.processor(id))
            processors.push_back({dottedAddress(node->ipAddress).toStdString(),
                                  node->name.toStdString(), "Device 1"});
    }
    return processors;
}

} // namespace

LayerCommands::LayerCommands(QMainWindow* window, Actions& actions, RecordsPanel& records,
                             Session& session)
    : QObject(window)
    , m_window(window)
    , m_actions(actions)
    , m_records(records)
    , m_session(session)
    , m_dock(new QDockWidget(window))
{
    m_dock->setObjectName(QStringLiteral("panelDock"));
    m_dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    window->addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    connectActions();
    connect(&session, &Session::panelEndWanted, this, &LayerCommands::closePanel);
    showNotice();
    updateEnabled();
    retranslate();
}

void LayerCommands::openPanel()
{
    if (!m_session.library().isLoaded())
        return;
    // The panel is a child of the dock's widget and is destroyed with it.
    auto* holder = new QWidget;
    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(8, 0, 0, 8);
    delete m_dock->widget();
    m_dock->setWidget(holder);
    QWidget* panel = m_session.openPanel(holder);
    if (panel)
        layout->addWidget(panel);
    else
        showNotice();
    if (panel)
        panel->show();
    // The locks ended with the previous panel.
    m_actions[ActionId::LockOperations]->setChecked(false);
    updateEnabled();
}

void LayerCommands::connectActions()
{
    // The panel reads its switch each time it is created.
    const QByteArray checks = qgetenv(kContractChecks);
    QAction* checking = m_actions[ActionId::ContractChecks];
    checking->setChecked(!checks.isEmpty() && checks != "0");
    connect(checking, &QAction::toggled, this,
            [](bool on) { qputenv(kContractChecks, on ? "1" : "0"); });
    const auto onLayer = [this](ActionId id, auto operation) {
        connect(m_actions[id], &QAction::triggered, this, [this, operation] {
            if (ITargetSelectAreaInterface* layer = m_session.layer())
                operation(*layer);
        });
    };
    onLayer(ActionId::SetReadOnly, [this](auto& layer) {
        layer.SetReadOnly(m_actions[ActionId::SetReadOnly]->isChecked());
    });
    onLayer(ActionId::SelectInPanel, [this](auto& layer) {
        layer.SetCurrentProcessor(m_records.selectedProcessors().value(0));
    });
    onLayer(ActionId::RemoveAllGroups, [](auto& layer) { layer.RemoveAllGroups(); });
    onLayer(ActionId::LogTree, [this](auto&) { logTree(false); });
    onLayer(ActionId::LogAcceptedTree, [this](auto&) { logTree(true); });
    onLayer(ActionId::LogProcessors, [this](auto&) { logProcessors(); });
    onLayer(ActionId::DetectDevices, [](auto& layer) { layer.DetectDevices(); });
    onLayer(ActionId::LockOperations, [this](auto& layer) {
        layer.SetOperationLock(kLockKey, m_actions[ActionId::LockOperations]->isChecked());
    });
    onLayer(ActionId::ApplyLock, [](auto& layer) { layer.ApplyOperationLock(kLockKey); });
    onLayer(ActionId::LockByKey, [this](auto&) { lockByKey(); });
    onLayer(ActionId::RepaintWarnings, [](auto& layer) { layer.UpdateMonitorWarningState(); });
    onLayer(ActionId::LanUsbWarning, [this](auto& layer) {
        layer.ShowLanUsbWarning(
            lanUsbProcessors(m_session.store().snapshot(), m_records.selectedProcessors()));
    });
    onLayer(ActionId::Reconnect, [](auto& layer) { layer.Reconnect(); });
    connect(m_actions[ActionId::ClosePanel], &QAction::triggered, this, &LayerCommands::closePanel);
    connect(m_actions[ActionId::OpenPanel], &QAction::triggered, this, &LayerCommands::openPanel);
}

void LayerCommands::closePanel()
{
    m_session.closePanel();
    showNotice();
    updateEnabled();
}

void LayerCommands::logTree(bool onlyAccepted)
{
    ProcessorTreeSnapshot tree;
    m_session.layer()->GetProcessorTree(tree, onlyAccepted);
    TraceModel& trace = m_session.trace();
    trace.add(TraceEntry::Kind::Log, QStringLiteral("GetProcessorTree: %1 groups, %2 processors "
                                                    "under the root")
                                         .arg(tree.groups.size())
                                         .arg(tree.processors.size()));
    for (const ProcessorGroupNode& group : qAsConst(tree.groups)) {
        trace.add(
            TraceEntry::Kind::Log,
            QStringLiteral("  %1: %2 processors").arg(group.name).arg(group.processors.size()));
        for (const ProcessorNode& node : group.processors)
            trace.add(TraceEntry::Kind::Log, QStringLiteral("    ") + line(node));
    }
    for (const ProcessorNode& node : qAsConst(tree.processors))
        trace.add(TraceEntry::Kind::Log, QStringLiteral("  ") + line(node));
}

void LayerCommands::logProcessors()
{
    const QList<ProcessorNode> processors = m_session.layer()->GetAllProcessorNodes();
    TraceModel& trace = m_session.trace();
    trace.add(TraceEntry::Kind::Log,
              QStringLiteral("GetAllProcessorNodes: %1 processors").arg(processors.size()));
    for (const ProcessorNode& node : processors)
        trace.add(TraceEntry::Kind::Log, QStringLiteral("  ") + line(node));
}

void LayerCommands::lockByKey()
{
    auto* dialog = new LockDialog(m_window);
    connect(dialog, &LockDialog::chosen, this, [this](int key, LockDialog::What what) {
        ITargetSelectAreaInterface* layer = m_session.layer();
        if (layer && what == LockDialog::Apply)
            layer->ApplyOperationLock(key);
        else if (layer)
            layer->SetOperationLock(key, what == LockDialog::Lock);
        if (layer && key == kLockKey && what != LockDialog::Apply)
            m_actions[ActionId::LockOperations]->setChecked(what == LockDialog::Lock);
    });
    dialog->open();
}

/// Shows a notice in the dock while there is no panel.
void LayerCommands::showNotice()
{
    auto* notice = new QLabel;
    notice->setProperty("hint", true);
    notice->setAlignment(Qt::AlignCenter);
    notice->setWordWrap(true);
    notice->setFixedWidth(kNoticeWidth);
    delete m_dock->widget();
    m_dock->setWidget(notice);
    retranslate();
}

void LayerCommands::updateEnabled()
{
    const bool hasPanel = m_session.layer() != nullptr;
    for (const ActionId id : {ActionId::SetReadOnly, ActionId::RemoveAllGroups, ActionId::LogTree,
                              ActionId::LogAcceptedTree, ActionId::LogProcessors,
                              ActionId::DetectDevices, ActionId::LockOperations,
                              ActionId::ApplyLock, ActionId::LockByKey, ActionId::RepaintWarnings,
                              ActionId::LanUsbWarning, ActionId::Reconnect, ActionId::ClosePanel})
        m_actions[id]->setEnabled(hasPanel);
}

void LayerCommands::retranslate()
{
    m_dock->setWindowTitle(tr("Target selection area"));
    if (auto* notice = qobject_cast<QLabel*>(m_dock->widget()))
        notice->setText(tr("There is no panel."));
}
