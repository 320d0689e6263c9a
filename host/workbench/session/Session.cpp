#include "host/workbench/session/Session.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "host/common/AppendLog.h"
#include "host/workbench/faults/FaultyHandler.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "sdk/record/Recorder.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSet>

#include <algorithm>

namespace {

constexpr int kHandlerWaitMs = 10000;

QSet<QUuid> identities(const QList<ProcessorNode>& processors)
{
    QSet<QUuid> ids;
    for (const ProcessorNode& node : processors)
        ids.insert(node.id);
    return ids;
}

/// Returns whether the panel or a part of it is inside its paint event.
bool isPainting(const QWidget& panel)
{
    const QList<QWidget*> parts = panel.findChildren<QWidget*>();
    return std::any_of(parts.begin(), parts.end(), [](const QWidget* part) {
        return part->testAttribute(Qt::WA_WState_InPaintEvent);
    });
}

/// Returns the kind of the record: findings of the panel's checks begin with a code.
TraceEntry::Kind kindOf(const LogRecord& record)
{
    const bool isFinding =
        record.message.rfind("TSA-E", 0) == 0 || record.message.rfind("TSA-W", 0) == 0;
    return isFinding ? TraceEntry::Kind::Finding : TraceEntry::Kind::Log;
}

} // namespace

Session::Session(QObject* parent)
    : QObject(parent)
    , m_handler(std::make_shared<WorkbenchHandler>(m_store, m_notifier, m_trace))
    , m_recorder(std::make_unique<CRecorder>())
{
    m_handler->showTip = [this](const QString& text) { emit tip(text); };
    m_handler->showProgress = [this](int done, int total) { emit detectionProceeded(done, total); };
    m_handler->showCancelled = [this](int found) { emit detectionCancelled(found); };
    m_handler->showInLog = [this](const QString& words) { emit logWanted(words); };
    m_trace.setPaintingProbe([this] { return m_panel && isPainting(*m_panel); });
    connect(
        &m_store, &ProjectStore::changed, &m_faults,
        [this] {
            m_faults.setRules(m_store.read([](const Project& project) { return project.faults; }));
        },
        Qt::DirectConnection);
    SetLogSink([this](const LogRecord& record) {
        m_trace.add(kindOf(record), QStringLiteral("%1:%2 %3: %4")
                                        .arg(QString::fromStdString(record.file))
                                        .arg(record.line)
                                        .arg(QString::fromStdString(record.function),
                                             QString::fromStdString(record.message)));
    });
}

Session::~Session()
{
    closePanel();
    // A thread that a rule keeps goes on, whatever changes the project from here on.
    disconnect(&m_store, nullptr, &m_faults, nullptr);
    m_faults.setRules({});
    m_faultThread.stop();
    m_notifier.stop();
    m_faultyHandler.reset();
    const QDeadlineTimer deadline(kHandlerWaitMs);
    while (m_handler.use_count() > 1 && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    SetLogSink({});
}

ITargetSelectAreaInterface* Session::layer() const
{
    return m_panel ? m_layer : nullptr;
}

QWidget* Session::openPanel(QWidget* parent)
{
    m_layer = m_library.init(parent);
    m_panel = m_layer ? m_layer->GetWidget() : nullptr;
    if (!m_panel)
        return nullptr;
    connect(m_panel, &QObject::destroyed, this, &Session::cancelDetection);
    m_faultyHandler = makeHandler();
    m_layer = m_recorder->record(m_layer);
    m_layer->m_controlHandler = m_recorder->record(m_faultyHandler);
    m_layer->Initialize();
    m_store.announceAll();
    return m_panel;
}

std::shared_ptr<FaultyHandler> Session::makeHandler()
{
    FaultyHandler::Host host{m_faults, m_trace, m_faultThread, this, {}, {}, {}, {}};
    host.isPainting = [this] { return m_panel && isPainting(*m_panel); };
    host.announceTree = [this] { m_store.announceTree(); };
    host.replaceHandler = [this] {
        m_faultyHandler = makeHandler();
        if (!layer())
            return;
        m_layer->m_controlHandler = m_recorder->record(m_faultyHandler);
        m_recorder->passHandlerOn();
    };
    host.destroyPanel = [this] { emit panelEndWanted(); };
    return std::make_shared<FaultyHandler>(m_handler, host);
}

bool Session::isDetecting() const
{
    return m_handler->isDetecting();
}

void Session::cancelDetection()
{
    m_handler->cancelDetection();
}

void Session::closePanel()
{
    // The last line of a recording is what the tree came to, which a replay compares.
    if (layer() && m_recorder->isOpen()) {
        ProcessorTreeSnapshot tree;
        m_layer->GetProcessorTree(tree, false);
    }
    delete m_panel;
    m_layer = nullptr;
    m_recorder->forget();
}

bool Session::panelShowsProject() const
{
    if (!layer())
        return false;
    ProcessorTreeSnapshot tree;
    layer()->GetProcessorTree(tree, false);
    const Project project = m_store.snapshot();
    const QList<ProcessorGroupNode> groups = project.allGroups();
    if (groups.size() != tree.groups.size())
        return false;
    int shown = tree.processors.size();
    for (int at = 0; at < groups.size(); ++at) {
        if (groups.at(at).id != tree.groups.at(at).id
            || identities(groups.at(at).processors) != identities(tree.groups.at(at).processors))
            return false;
        shown += groups.at(at).processors.size();
    }
    return shown == project.processors.size();
}
