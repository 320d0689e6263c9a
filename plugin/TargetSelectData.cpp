#include "plugin/TargetSelectData.h"

#include "Interface/HostEvents.h"
#include "base/ContractCheck.h"
#include "base/GuiCalls.h"
#include "base/LogCategories.h"
#include "base/MetaTypes.h"
#include "base/PaintScope.h"
#include "base/RequestWatch.h"
#include "base/TargetSelectHandler.h"
#include "host/common/AppendLog.h"
#include "host/common/WorkThread.h"
#include "plugin/EventChecks.h"
#include "plugin/PanelEvents.h"
#include "plugin/TreeEvents.h"
#include "plugin/TreeSnapshot.h"
#include "processortree/model/ProcessorTreeModel.h"

#include <QCoreApplication>

#include <utility>

namespace {

/// How long the GUI thread waits for a job that is about to end.
constexpr unsigned long kJobEndMs = 50;

/// Deleted on the GUI thread, wherever the last one lets go of it.
std::shared_ptr<CGuiCalls> makeCalls()
{
    return {new CGuiCalls, [](CGuiCalls* calls) { calls->deleteLater(); }};
}

/// Not deleted before its job is over, which may be inside a question to the host.
std::shared_ptr<CWorkThread> makeWorkThread()
{
    return {new CWorkThread, [](CWorkThread* thread) {
                thread->ThreadExit();
                QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
                if (thread->isFinished())
                    thread->deleteLater();
            }};
}

/// Returns the first value of the argument of `Event`.
template <typename Event>
auto argument(const CSubject& subject)
{
    return std::get<0>(Event::argument(subject));
}

/// Nothing above a job would catch what a host throws inside a question.
void runJob(quint32 event, const std::function<void()>& job)
{
    const CGuiCalls::SharedPatience patience;
    try {
        job();
    } catch (...) {
        AppendLog(
            __func__, __FILE__, __LINE__,
            qPrintable(QStringLiteral("The handler threw an exception on event %1.").arg(event)));
    }
}

void post(CWorkThread& thread, quint32 event, std::function<void()> job)
{
    thread.AppendEvent(
        {static_cast<int>(event), [event, job = std::move(job)] { runJob(event, job); }}, false);
}

} // namespace

CTargetSelectData* CTargetSelectData::Instance()
{
    static auto* const instance = new CTargetSelectData;
    return instance;
}

CTargetSelectData::CTargetSelectData(QObject* parent)
    : QObject(parent)
    , m_model(std::make_unique<CProcessorTreeModel>())
    , m_workThread(makeWorkThread())
    , m_calls(makeCalls())
    , m_treeEvents(std::make_shared<CTreeEvents>(*m_model, m_calls))
    , m_panelEvents(std::make_shared<CPanelEvents>(m_calls))
{
    RegisterMetaTypes();
    // Asked while the model lives only: the bridge ends the calls before it.
    m_calls->waitWhile(
        [model = m_model.get()] { return model->isChanging() || CPaintScope::isPainting(); });
    const auto resume = [calls = m_calls.get()] { calls->resume(); };
    m_model->setOnChanged(resume);
    CPaintScope::setOnEnded(resume);
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
    m_treeEvents->end();
    m_model->setOnChanged({});
    CPaintScope::setOnEnded({});
    m_calls->waitWhile({});
}

void CTargetSelectData::Update(CSubject* subject)
{
    if (!subject)
        return;
    const HandlerPlace::CPanelWatch panel;
    if (ContractCheck::isOn()) {
        EventChecks::check(*subject);
        RequestWatch::noteEvent(subject->GetEvent());
    }
    const char* refusal = nullptr;
    if (m_stopped)
        refusal = "the bridge has stopped";
    else if (!HandlerPlace::isSet())
        refusal = "there is no panel";
    else if (subject->GetEvent() > HostEvents::kLastNumber)
        refusal = "its number is unknown";
    if (refusal)
        qCInfo(lcBridge, "event %u is dropped: %s", subject->GetEvent(), refusal);
    else
        dispatch(*subject);
    if (ContractCheck::isOn() && !panel.isOver())
        EventChecks::checkRemoval(*subject, panel);
}

void CTargetSelectData::dispatch(const CSubject& subject)
{
    using namespace HostEvents;
    // Another thread may be here while the bridge is destroyed.
    const auto jobs = m_workThread;
    const auto tree = m_treeEvents;
    const auto panel = m_panelEvents;
    const quint32 event = subject.GetEvent();
    const HandlerPlace::CPanelWatch told;
    const ContractCheck::EventScope scope(event);
    const CGuiCalls::SharedPatience patience;
    qCDebug(lcBridge, "event %u is taken", event);
    switch (event) {
    case DetectStrategyChanged::number:
        post(*jobs, event, [panel, told, strategy = argument<DetectStrategyChanged>(subject)] {
            panel->changeDetectStrategy(told, strategy);
        });
        break;
    case CurrentDeviceSetChanged::number:
        post(*jobs, event, [panel, told, sets = CurrentDeviceSetChanged::argument(subject)] {
            panel->changeDeviceSets(told, std::get<0>(sets), std::get<1>(sets));
        });
        break;
    case TreeReset::number:
        tree->reset();
        break;
    case GroupAdded::number:
        tree->addGroup(argument<GroupAdded>(subject));
        break;
    case ProcessorAdded::number:
        tree->addProcessor(argument<ProcessorAdded>(subject));
        break;
    case ProcessorsAdded::number:
        tree->addProcessors(argument<ProcessorsAdded>(subject));
        break;
    case NodeRemoved::number:
        tree->removeNode(argument<NodeRemoved>(subject));
        break;
    case NodesRemoved::number:
        tree->removeNodes(argument<NodesRemoved>(subject));
        break;
    case ProcessorChanged::number:
        tree->refreshProcessor(argument<ProcessorChanged>(subject));
        break;
    case ProjectProcessorChanged::number:
        tree->refreshNode(argument<ProjectProcessorChanged>(subject));
        break;
    case LanUsbProcessorIp::number:
        post(*jobs, event, [panel, told] { panel->changeLanUsbAddresses(told); });
        break;
    case CurrentProcessorChanged::number:
        if (IsSelectionEchoGuarded()) {
            qCInfo(lcBridge, "event %u is dropped: the user's own choice is being reported", event);
            break;
        }
        post(*jobs, event,
             [panel, current = panel->askForCurrent()] { panel->showCurrent(current); });
        break;
    case MonitorWarningChanged::number:
        post(*jobs, event, [panel, told] { panel->repaintMonitorWarnings(told); });
        break;
    case MonitorStateChanged::number: {
        const QList<QUuid> ids = argument<MonitorStateChanged>(subject);
        post(*jobs, event, [tree, panel, told, ids, place = tree->monitorStatesPlace(ids)] {
            tree->updateMonitorStates(place, ids);
            panel->repaintMonitorWarnings(told);
        });
        break;
    }
    default:
        qCInfo(lcBridge, "event %u is dropped: its number is unknown", event);
        break;
    }
}

CProcessorTreeModel* CTargetSelectData::GetModel()
{
    return m_model.get();
}

void CTargetSelectData::ResetModel()
{
    m_treeEvents->clear();
}

void CTargetSelectData::RemoveAllGroups()
{
    m_treeEvents->removeAllGroups();
}

void CTargetSelectData::changeTree(std::function<void()> change)
{
    m_treeEvents->changeTree(std::move(change));
}

void CTargetSelectData::noteChange()
{
    m_treeEvents->noteChange();
}

bool CTargetSelectData::IsReadOnly() const
{
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
        m_panelEvents->noteReport();
}

void CTargetSelectData::GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
{
    out = ProcessorTreeSnapshot();
    m_treeEvents->model().read(
        [&out](const CProcessorTreeModel& model) { takeSnapshot(model, out); });
    // Asked after the walk: the host may raise events in its answer and wait for them.
    if (onlyAccepted)
        dropRefused(out);
}

void CTargetSelectData::setPanel(QObject* panel)
{
    m_panelEvents->setPanel(panel);
}

void CTargetSelectData::Start()
{
    m_stopped = false;
    m_calls->open();
    m_workThread->ActivateThread();
}

void CTargetSelectData::Stop()
{
    m_stopped = true;
    m_calls->close();
    m_workThread->ThreadExit();
    m_workThread->wait(kJobEndMs);
}
