#include "plugin/TargetSelectData.h"

#include "host/common/WorkThread.h"
#include "plugin/MetaTypes.h"
#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectHandler.h"
#include "processortree/NodeType.h"
#include "processortree/ProcessorTreeModel.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <utility>

namespace {

enum HostEvent : quint32 {
    DetectStrategyChanged = 0,
    CurrentDeviceSetChanged = 1,
    TreeReset = 16,
    GroupAdded = 17,
    ProcessorAdded = 18,
    ProcessorsAdded = 19,
    NodeRemoved = 20,
    NodesRemoved = 21,
    ProcessorChanged = 25,
    ProjectProcessorChanged = 26,
    LanUsbProcessorIp = 29,
    CurrentProcessorChanged = 30,
    MonitorWarningChanged = 37,
    MonitorStateChanged = 39,
};

constexpr quint32 kLastHostEvent = 39;

/// How often the host is asked for a record that keeps changing meanwhile.
constexpr int kMostAttempts = 3;

template <typename T>
T argument(CSubject& subject)
{
    return std::get<0>(subject.GetArgument<T>());
}

/// The processors below `parent`, as their rows hold them.
QList<ProcessorNode> processorsBelow(const QStandardItem& parent)
{
    QList<ProcessorNode> processors;
    for (int row = 0; row < parent.rowCount(); ++row) {
        const QStandardItem* child = parent.child(row);
        if (child && nodeType(*child) == NodeProcessor)
            processors.append(child->data(NodeDataRole).value<ProcessorNode>());
    }
    return processors;
}

void appendTree(const QStandardItem& root, ProcessorTreeSnapshot& out)
{
    for (int row = 0; row < root.rowCount(); ++row) {
        const QStandardItem* child = root.child(row);
        if (!child || nodeType(*child) != NodeGroup)
            continue;
        auto group = child->data(NodeDataRole).value<ProcessorGroupNode>();
        group.processors = processorsBelow(*child);
        out.groups.append(group);
    }
    out.processors += processorsBelow(root);
}

} // namespace

/// Counts an event that another thread delivers, so that Stop() can wait for it.
class CTargetSelectData::CUpdateInProgress final
{
public:
    explicit CUpdateInProgress(CTargetSelectData& data)
        : m_data(data)
    {
        const std::lock_guard guard(m_data.m_updatesMutex);
        m_accepted = !m_data.m_stopped;
        m_counted = m_accepted && m_data.thread() != QThread::currentThread();
        if (m_counted)
            ++m_data.m_updatesInProgress;
    }

    ~CUpdateInProgress()
    {
        if (!m_counted)
            return;
        const std::lock_guard guard(m_data.m_updatesMutex);
        --m_data.m_updatesInProgress;
        m_data.m_updatesChanged.notify_all();
    }

    CUpdateInProgress(const CUpdateInProgress&) = delete;
    CUpdateInProgress& operator=(const CUpdateInProgress&) = delete;

    bool isAccepted() const { return m_accepted; }

private:
    CTargetSelectData& m_data;
    bool m_accepted = false;
    bool m_counted = false;
};

CTargetSelectData* CTargetSelectData::Instance()
{
    static auto* const instance = new CTargetSelectData;
    return instance;
}

CTargetSelectData::CTargetSelectData(QObject* parent)
    : QObject(parent)
    , m_workThread(std::make_unique<CWorkThread>())
    , m_model(std::make_unique<CProcessorTreeModel>())
{
    RegisterMetaTypes();
    m_calls.waitWhile([this] { return m_model && m_model->isChanging(); });
    m_model->setOnChanged([this] { m_calls.resume(); });
    if (const auto* application = QCoreApplication::instance()) {
        for (QObject* object : {static_cast<QObject*>(this), static_cast<QObject*>(m_model.get()),
                                static_cast<QObject*>(m_workThread.get())}) {
            if (!object->parent())
                object->moveToThread(application->thread());
        }
        connect(application, &QCoreApplication::aboutToQuit, this, &CTargetSelectData::Stop,
                Qt::DirectConnection);
    }
    m_workThread->start();
}

CTargetSelectData::~CTargetSelectData()
{
    Stop();
    // The job in hand may still use the model.
    m_workThread.reset();
    m_model.reset();
}

void CTargetSelectData::Update(CSubject* subject)
{
    const CUpdateInProgress update(*this);
    if (!subject || !update.isAccepted() || !GetTargetSelectHandler())
        return;
    if (subject->GetEvent() <= kLastHostEvent)
        dispatch(subject);
}

void CTargetSelectData::dispatch(CSubject* subject)
{
    const quint32 event = subject->GetEvent();
    switch (event) {
    case DetectStrategyChanged:
        postJob(event, [this, strategy = argument<int>(*subject)] {
            postToPanel([strategy](QObject* panel) {
                QMetaObject::invokeMethod(panel, "onDetectStrategyChanged", Qt::DirectConnection,
                                          Q_ARG(int, strategy));
            });
        });
        break;
    case CurrentDeviceSetChanged:
        postJob(event, [this, sets = subject->GetArgument<GUID, QList<SDeviceSetInfo>>()] {
            postToPanel([sets](QObject* panel) {
                QMetaObject::invokeMethod(panel, "onCurrentDeviceSetChanged", Qt::DirectConnection,
                                          Q_ARG(GUID, std::get<0>(sets)),
                                          Q_ARG(QList<SDeviceSetInfo>, std::get<1>(sets)));
            });
        });
        break;
    case TreeReset:
        m_calls.post(
            [this] { QMetaObject::invokeMethod(m_model.get(), "reset", Qt::DirectConnection); });
        break;
    case GroupAdded:
        addGroup(argument<QUuid>(*subject));
        break;
    case ProcessorAdded:
        addProcessor(argument<QUuid>(*subject));
        break;
    case ProcessorsAdded:
        addProcessors(argument<QList<QUuid>>(*subject));
        break;
    case NodeRemoved:
        removeNode(argument<QUuid>(*subject));
        break;
    case NodesRemoved:
        removeNodes(argument<QList<QUuid>>(*subject));
        break;
    case ProcessorChanged:
        refreshProcessor(argument<QUuid>(*subject), true);
        break;
    case ProjectProcessorChanged:
        refreshProcessor(std::get<0>(subject->GetArgument<QUuid, SPrjProcessor>()), false);
        break;
    case LanUsbProcessorIp:
        postJob(event, [this] {
            postToPanel([](QObject* panel) {
                QMetaObject::invokeMethod(panel, "onLANUSBGetProcessorIP", Qt::DirectConnection);
            });
        });
        break;
    case CurrentProcessorChanged: {
        // Counted before the look at the guard: a report that begins in between makes this event
        // old, and the host's next one may be ignored.
        const quint32 reports = m_reports;
        QUuid current;
        if (IsSelectionEchoGuarded()
            || !askHost([&](Handler& handler) { current = handler.GetCurrentProcessorId(); }))
            break;
        postJob(event, [this, current, reports] {
            m_calls.run([this, current, reports] { showCurrentProcessor(current, reports); });
        });
        break;
    }
    case MonitorWarningChanged:
        postJob(event, [this] {
            postToPanel([](QObject* panel) {
                QMetaObject::invokeMethod(panel, "UpdateMonitorWarningState", Qt::DirectConnection);
            });
        });
        break;
    case MonitorStateChanged:
        postJob(event, [this, ids = argument<QList<QUuid>>(*subject)] { updateMonitorState(ids); });
        break;
    default:
        break;
    }
}

/// Selects the host's current processor. The answer may be older than what the user has picked
/// since, of which the host's next event 30 told in vain: it came while that was being reported.
void CTargetSelectData::showCurrentProcessor(QUuid current, quint32 reports)
{
    if (const auto handler = reports == m_reports ? nullptr : GetTargetSelectHandler())
        current = handler->GetCurrentProcessorId();
    QMetaObject::invokeMethod(CTargetSelectArea::Existing(), "onCurrentProcessorChanged",
                              Qt::DirectConnection, Q_ARG(QUuid, current));
}

CProcessorTreeModel* CTargetSelectData::GetModel()
{
    const CLendableLock::CReader reader(m_lock);
    return m_model.get();
}

void CTargetSelectData::ResetModel()
{
    // Behind what is queued, which belongs to the tree that goes.
    m_calls.post([this] { m_model->clearToRoot(); });
}

void CTargetSelectData::RemoveAllGroups()
{
    const CLendableLock::CWriter writer(m_lock);
    changeModel([this] { m_model->removeAllGroups(); });
}

bool CTargetSelectData::IsReadOnly()
{
    const CLendableLock::CReader reader(m_lock);
    return m_readOnly;
}

void CTargetSelectData::SetReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
}

bool CTargetSelectData::IsSelectionEchoGuarded() const
{
    return m_selectionEchoGuard;
}

void CTargetSelectData::SetSelectionEchoGuard(bool guarded)
{
    m_selectionEchoGuard = guarded;
    if (guarded)
        ++m_reports;
}

void CTargetSelectData::GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
{
    out = ProcessorTreeSnapshot();
    {
        const CLendableLock::CReader reader(m_lock);
        for (int row = 0; row < m_model->rowCount(); ++row)
            appendTree(*m_model->item(row), out);
    }
    if (!onlyAccepted)
        return;
    // Asked after the walk: the host may raise events in its answer and wait for them.
    const auto dropRefused = [this](QList<ProcessorNode>& processors) {
        QList<ProcessorNode> accepted;
        for (const ProcessorNode& processor : qAsConst(processors)) {
            bool accept = false;
            askHost(
                [&](Handler& handler) { accept = handler.AcceptProcessorForSnapshot(processor); });
            if (accept)
                accepted.append(processor);
        }
        processors = accepted;
    };
    for (ProcessorGroupNode& group : out.groups)
        dropRefused(group.processors);
    dropRefused(out.processors);
}

void CTargetSelectData::Start()
{
    {
        const std::lock_guard guard(m_updatesMutex);
        m_stopped = false;
    }
    m_calls.open();
    m_workThread->ActivateThread();
}

void CTargetSelectData::Stop()
{
    m_calls.close();
    {
        std::unique_lock guard(m_updatesMutex);
        m_stopped = true;
        m_updatesChanged.wait_for(guard, m_calls.patience(),
                                  [this] { return m_updatesInProgress == 0; });
    }
    m_workThread->ThreadExit();
    m_workThread->wait(static_cast<unsigned long>(m_calls.patience().count()));
}

void CTargetSelectData::addGroup(const QUuid& id)
{
    const CLendableLock::CWriter writer(m_lock);
    if (isKnown(id))
        return;
    ProcessorGroupNode group;
    if (!askHost([&](Handler& handler) { group = handler.GetGroupNode(id); }))
        return;
    changeModel([this, id, group] {
        if (!m_model->getItem(id))
            QMetaObject::invokeMethod(m_model.get(), "AppendGroup", Qt::DirectConnection,
                                      Q_ARG(ProcessorGroupNode, group));
    });
}

void CTargetSelectData::addProcessor(const QUuid& id)
{
    const CLendableLock::CWriter writer(m_lock);
    if (isKnown(id))
        return;
    ProcessorNode processor;
    if (!askHost([&](Handler& handler) { processor = handler.GetProcessorNode(id); }))
        return;
    changeModel([this, id, processor] {
        if (!m_model->getItem(id))
            QMetaObject::invokeMethod(m_model.get(), "AppendProcessor", Qt::DirectConnection,
                                      Q_ARG(ProcessorNode, processor));
    });
}

void CTargetSelectData::addProcessors(const QList<QUuid>& ids)
{
    const CLendableLock::CWriter writer(m_lock);
    // Nothing but the model's thread is asked here, so what is missing is found out there.
    changeModel([this, ids] {
        QList<QUuid> missing;
        for (const QUuid& id : ids) {
            if (!m_model->getItem(id))
                missing.append(id);
        }
        QMetaObject::invokeMethod(m_model.get(), "AppendProcessors", Qt::DirectConnection,
                                  Q_ARG(QList<QUuid>, missing));
    });
}

void CTargetSelectData::removeNode(const QUuid& id)
{
    const CLendableLock::CWriter writer(m_lock);
    postChange([this, id] {
        QMetaObject::invokeMethod(m_model.get(), "removeNode", Qt::DirectConnection,
                                  Q_ARG(QUuid, id));
    });
}

void CTargetSelectData::removeNodes(const QList<QUuid>& ids)
{
    const CLendableLock::CWriter writer(m_lock);
    postChange([this, ids] {
        QMetaObject::invokeMethod(m_model.get(), "removeNodes", Qt::DirectConnection,
                                  Q_ARG(QList<QUuid>, ids));
    });
}

void CTargetSelectData::refreshProcessor(const QUuid& id, bool onlyProcessors)
{
    const CLendableLock::CWriter writer(m_lock);
    const bool settled = settle();
    const auto row = m_model->findRow(id);
    if (settled && (!row || (onlyProcessors && row->type != NodeProcessor)))
        return;
    ProcessorNode processor;
    if (!askHost([&](Handler& handler) { processor = handler.GetProcessorNode(id); }))
        return;
    changeModel([this, id, processor, onlyProcessors] {
        QStandardItem* item = m_model->getItem(id);
        if (item && (!onlyProcessors || nodeType(*item) == NodeProcessor))
            m_model->updateProcessor(item, processor);
    });
}

void CTargetSelectData::updateMonitorState(const QList<QUuid>& ids)
{
    {
        const CLendableLock::CWriter writer(m_lock);
        for (const QUuid& id : ids)
            rewriteRecord(id);
    }
    // The rows' content changed without a signal; filters on it learn of it here.
    m_calls.post([this, ids] { m_model->announceRecords(ids); });
    postToPanel([](QObject* panel) {
        QMetaObject::invokeMethod(panel, "UpdateMonitorWarningState", Qt::DirectConnection);
    });
}

/// Replaces the record of a processor's row by the host's. A row or record that changed while the
/// host answered may hold a later answer already, so the host is asked again; not for ever, as it
/// may be the very question that makes it change the record.
void CTargetSelectData::rewriteRecord(const QUuid& id)
{
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const auto row = m_model->findRow(id);
        CRecordCell* cell = row ? row->record.cell() : nullptr;
        if (!cell || row->type != NodeProcessor)
            return;
        const quint32 version = cell->version();
        ProcessorNode processor;
        if (!askHost([&](Handler& handler) { processor = handler.GetProcessorNode(id); }))
            return;
        const auto now = m_model->findRow(id);
        if (now && now->record.cell() == cell && cell->replace(processor, version))
            return;
    }
}

void CTargetSelectData::postJob(quint32 event, std::function<void()> job)
{
    m_workThread->AppendEvent({static_cast<int>(event), std::move(job)}, false);
}

/// Queues `call` for the panel that exists when its turn comes, if one does.
void CTargetSelectData::postToPanel(std::function<void(QObject*)> call)
{
    m_calls.post([call = std::move(call)] {
        if (CTargetSelectArea* panel = CTargetSelectArea::Existing())
            call(panel);
    });
}

/// Asks the host with the lock lent, for the host may wait for any thread. False when there is no
/// host to ask any more.
bool CTargetSelectData::askHost(const std::function<void(Handler&)>& question)
{
    const CLendableLock::CLoan loan(m_lock, CLendableLock::Borrower::Everybody);
    const auto handler = GetTargetSelectHandler();
    if (handler)
        question(*handler);
    return handler != nullptr;
}

/// Runs `change` on the GUI thread with the lock lent, and waits for its end. It has to look at the
/// model anew: a call that is left to the queue runs after others.
void CTargetSelectData::changeModel(const std::function<void()>& change)
{
    const CLendableLock::CLoan loan(m_lock, CLendableLock::Borrower::GuiThread);
    m_calls.run(change);
}

/// The same without waiting for the end.
void CTargetSelectData::postChange(const std::function<void()>& change)
{
    const CLendableLock::CLoan loan(m_lock, CLendableLock::Borrower::GuiThread);
    m_calls.post(change);
}

/// Lets removals and resets that are still queued take effect before the model is looked at. False
/// when some had to be left queued: what the model says now is no answer then.
bool CTargetSelectData::settle()
{
    const CLendableLock::CLoan loan(m_lock, CLendableLock::Borrower::GuiThread);
    return m_calls.settle();
}

bool CTargetSelectData::isKnown(const QUuid& id)
{
    return settle() && m_model->findRow(id);
}
