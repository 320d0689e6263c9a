#include "sdk/relay/HandlerRelay.h"

#include <QPointer>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>
#include <tuple>
#include <type_traits>
#include <utility>

/// Stands before the panel's observer. Hosts keep observers, so it outlives its relay.
class CHandlerRelay::Observer final : public CObserver
{
public:
    /// Returns a new observer, which lives as long as the process.
    static Observer* create()
    {
        static std::mutex mutex;
        // Never destroyed: hosts notify until the process ends.
        static auto& all = *new std::deque<std::unique_ptr<Observer>>;
        const std::lock_guard guard(mutex);
        all.push_back(std::make_unique<Observer>());
        return all.back().get();
    }

    void set(std::weak_ptr<CHandlerRelay> relay, CObserver* panel)
    {
        const std::lock_guard guard(m_mutex);
        m_relay = std::move(relay);
        m_panel = panel;
    }

    CObserver* panel() const { return m_panel; }

    void Update(CSubject* subject) override
    {
        CObserver* panel = m_panel;
        if (!panel || !subject)
            return;
        const std::shared_ptr<CHandlerRelay> relay = this->relay();
        if (!relay) {
            panel->Update(subject);
            return;
        }
        const Events::Event event = Events::read(*subject);
        // The subject may be used on this thread until this function returns.
        const auto original = std::make_shared<CSubject*>(subject);
        const std::thread::id thread = std::this_thread::get_id();
        relay->event(event, [event, original = std::weak_ptr<CSubject*>(original), panel, thread] {
            const bool isHere = thread == std::this_thread::get_id();
            const std::shared_ptr<CSubject*> current = isHere ? original.lock() : nullptr;
            if (current)
                panel->Update(*current);
            else
                Events::tell(*panel, event);
        });
    }

private:
    std::shared_ptr<CHandlerRelay> relay() const
    {
        const std::lock_guard guard(m_mutex);
        return m_relay.lock();
    }

    mutable std::mutex m_mutex;
    std::weak_ptr<CHandlerRelay> m_relay; // guarded by m_mutex
    std::atomic<CObserver*> m_panel{nullptr};
};

namespace {

using Host = ITargetSelectInterfaceHandler;

/// Returns the answer's value for out parameter `at`, or `otherwise` if there is none of its type.
template <typename Type>
Type outOf(const CHandlerRelay::Answer& answer, int at, const Type& otherwise)
{
    const QVariant value = answer.outs.value(at);
    return value.userType() == qMetaTypeId<Type>() ? value.value<Type>() : otherwise;
}

template <typename Type>
Type resultOf(const CHandlerRelay::Answer& answer)
{
    return answer.result.userType() == qMetaTypeId<Type>() ? answer.result.value<Type>() : Type();
}

const Operations::Operation& named(const char* name)
{
    const Operations::Operation* operation = Operations::find(name);
    Q_ASSERT(operation);
    return *operation;
}

} // namespace

CHandlerRelay::CHandlerRelay(std::shared_ptr<ITargetSelectInterfaceHandler> host)
    : m_host(std::move(host))
    , m_observer(Observer::create())
{
}

CHandlerRelay::CHandlerRelay(std::shared_ptr<ITargetSelectInterfaceHandler> host,
                             const CHandlerRelay& former)
    : m_host(std::move(host))
    , m_observer(former.m_observer)
{
}

CHandlerRelay::~CHandlerRelay() = default;

CHandlerRelay::Answer CHandlerRelay::call(const Call&, const Ask& ask)
{
    return ask();
}

void CHandlerRelay::event(const Events::Event&, const Deliver& deliver)
{
    deliver();
}

bool CHandlerRelay::isObserved() const
{
    return m_observer->panel() != nullptr;
}

void CHandlerRelay::tellPanel(const Events::Event& event) const
{
    if (CObserver* panel = m_observer->panel())
        Events::tell(*panel, event);
}

/// Makes a value of a call to an operation without out parameters.
template <typename Result, typename... Parameters, typename... Arguments>
Result CHandlerRelay::pass(const char* name, Result (Host::*operation)(Parameters...),
                           const Arguments&... arguments)
{
    const Call value{named(name), {QVariant::fromValue(arguments)...}};
    const Ask ask = [host = m_host, operation,
                     copies = std::tuple<std::decay_t<Parameters>...>(arguments...)] {
        Answer answer;
        if (!host)
            return answer;
        std::apply(
            [&](const auto&... each) {
                if constexpr (std::is_void_v<Result>)
                    ((*host).*operation)(each...);
                else
                    answer.result = QVariant::fromValue<Result>(((*host).*operation)(each...));
            },
            copies);
        return answer;
    };
    const Answer answer = call(value, ask);
    if constexpr (!std::is_void_v<Result>)
        return resultOf<Result>(answer);
}

void CHandlerRelay::SetObserver(CObserver* observer)
{
    m_observer->set(weak_from_this(), observer);
    call({named("SetObserver"), {}}, [host = m_host, observer, wrapped = m_observer] {
        if (host)
            host->SetObserver(observer ? wrapped : nullptr);
        return Answer();
    });
}

void CHandlerRelay::AppendContextMenu(EPrcTreeNodeType type, const QUuid& id, bool readOnly,
                                      QMenu* menu)
{
    const Call value{
        named("AppendContextMenu"),
        {QVariant::fromValue(type), QVariant::fromValue(id), readOnly, QVariant::fromValue(menu)}};
    call(value, [host = m_host, type, id, readOnly, isNull = !menu, menu = QPointer<QMenu>(menu)] {
        if (host && (menu || isNull))
            host->AppendContextMenu(type, id, readOnly, menu);
        return Answer();
    });
}

bool CHandlerRelay::CheckIPAddress(quint32 address, int* code, bool processorMode)
{
    const Call value{named("CheckIPAddress"), {address, processorMode}};
    const auto ask = [host = m_host, address, processorMode, wantsCode = code != nullptr,
                      given = code ? *code : 0] {
        if (!host)
            return Answer();
        int reason = given;
        const bool isRejected =
            host->CheckIPAddress(address, wantsCode ? &reason : nullptr, processorMode);
        return Answer{isRejected, {wantsCode ? QVariant(reason) : QVariant()}};
    };
    const Answer answer = call(value, ask);
    if (code)
        *code = outOf(answer, 0, *code);
    return resultOf<bool>(answer);
}

int CHandlerRelay::GetDeviceSetTexts(QStringList& texts)
{
    const Answer answer = call({named("GetDeviceSetTexts"), {}}, [host = m_host, given = texts] {
        if (!host)
            return Answer();
        QStringList filled = given;
        const int count = host->GetDeviceSetTexts(filled);
        return Answer{count, {QVariant(filled)}};
    });
    texts = outOf(answer, 0, texts);
    return resultOf<int>(answer);
}

void CHandlerRelay::GetIPNameLists(QStringList& ips, QStringList& names)
{
    const Answer answer =
        call({named("GetIPNameLists"), {}}, [host = m_host, givenIps = ips, givenNames = names] {
            QStringList filledIps = givenIps;
            QStringList filledNames = givenNames;
            if (host)
                host->GetIPNameLists(filledIps, filledNames);
            return Answer{{}, {filledIps, filledNames}};
        });
    ips = outOf(answer, 0, ips);
    names = outOf(answer, 1, names);
}

void CHandlerRelay::GetIPList(QStringList& entries)
{
    const Answer answer = call({named("GetIPList"), {}}, [host = m_host, given = entries] {
        QStringList filled = given;
        if (host)
            host->GetIPList(filled);
        return Answer{{}, {QVariant(filled)}};
    });
    entries = outOf(answer, 0, entries);
}

quint32 CHandlerRelay::DetectAllDevices()
{
    return pass(__func__, &Host::DetectAllDevices);
}

void CHandlerRelay::DetectProcessorsOnly()
{
    pass(__func__, &Host::DetectProcessorsOnly);
}

QString CHandlerRelay::GetDeviceSetText(const SDeviceSetInfo& set)
{
    return pass(__func__, &Host::GetDeviceSetText, set);
}

bool CHandlerRelay::ConfirmDeviceSetChange(const SDeviceSetInfo& set, int index)
{
    return pass(__func__, &Host::ConfirmDeviceSetChange, set, index);
}

int CHandlerRelay::GetIPCount(int kind)
{
    return pass(__func__, &Host::GetIPCount, kind);
}

void CHandlerRelay::AddIPAddress(const QString& ip, const QString& name)
{
    pass(__func__, &Host::AddIPAddress, ip, name);
}

void CHandlerRelay::SaveIPList()
{
    pass(__func__, &Host::SaveIPList);
}

void CHandlerRelay::RefreshIPList()
{
    pass(__func__, &Host::RefreshIPList);
}

void CHandlerRelay::ModifyIPAddress(int row, const QString& ip, const QString& name)
{
    pass(__func__, &Host::ModifyIPAddress, row, ip, name);
}

bool CHandlerRelay::IpListChanged(const QStringList& before, const QStringList& after)
{
    return pass(__func__, &Host::IpListChanged, before, after);
}

bool CHandlerRelay::ShowProcessorMoreButton()
{
    return pass(__func__, &Host::ShowProcessorMoreButton);
}

bool CHandlerRelay::ShowNodeMoreButton()
{
    return pass(__func__, &Host::ShowNodeMoreButton);
}

QList<ProcessorNode> CHandlerRelay::GetAllProcessorNodes()
{
    return pass(__func__, &Host::GetAllProcessorNodes);
}

QList<ProcessorGroupNode> CHandlerRelay::GetAllGroupNodes()
{
    return pass(__func__, &Host::GetAllGroupNodes);
}

ProcessorGroupNode CHandlerRelay::GetGroupNode(const QUuid& id)
{
    return pass(__func__, &Host::GetGroupNode, id);
}

void CHandlerRelay::AddProcessors(const QUuid& group, int count)
{
    pass(__func__, &Host::AddProcessors, group, count);
}

void CHandlerRelay::AddProcessorsWithIps(const QUuid& group, const QList<quint32>& addresses)
{
    pass(__func__, &Host::AddProcessorsWithIps, group, addresses);
}

void CHandlerRelay::DeleteProcessors(const QList<QUuid>& processors)
{
    pass(__func__, &Host::DeleteProcessors, processors);
}

void CHandlerRelay::SetProcessorGroup(const ProcessorGroupNode& group, const QUuid& groupId,
                                      const QList<QUuid>& processors)
{
    pass(__func__, &Host::SetProcessorGroup, group, groupId, processors);
}

ProcessorNode CHandlerRelay::GetProcessorNode(const QUuid& id)
{
    return pass(__func__, &Host::GetProcessorNode, id);
}

bool CHandlerRelay::CanRenameProcessor(const QUuid& id)
{
    return pass(__func__, &Host::CanRenameProcessor, id);
}

bool CHandlerRelay::CanAddProcessors(const ProcessorNode& first)
{
    return pass(__func__, &Host::CanAddProcessors, first);
}

bool CHandlerRelay::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    return pass(__func__, &Host::IsAddProcessorsEnabled, first);
}

bool CHandlerRelay::RenameProcessor(const QUuid& id, const QString& name)
{
    return pass(__func__, &Host::RenameProcessor, id, name);
}

void CHandlerRelay::SetNewProcessorOutputs(int outputs)
{
    pass(__func__, &Host::SetNewProcessorOutputs, outputs);
}

QUuid CHandlerRelay::CreateGroup(const ProcessorGroupNode& group)
{
    return pass(__func__, &Host::CreateGroup, group);
}

void CHandlerRelay::Ungroup(const QUuid& id)
{
    pass(__func__, &Host::Ungroup, id);
}

void CHandlerRelay::RenameGroup(const QUuid& id, const QString& name)
{
    pass(__func__, &Host::RenameGroup, id, name);
}

void CHandlerRelay::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                    const QList<SGroupSelection>& groups, const QUuid& previous)
{
    pass(__func__, &Host::ReportSelection, focus, processors, groups, previous);
}

bool CHandlerRelay::IsRestrictedMode()
{
    return pass(__func__, &Host::IsRestrictedMode);
}

bool CHandlerRelay::IsDeleteBlocked(const QUuid& id)
{
    return pass(__func__, &Host::IsDeleteBlocked, id);
}

bool CHandlerRelay::CheckProcessor(const ProcessorNode& processor)
{
    return pass(__func__, &Host::CheckProcessor, processor);
}

bool CHandlerRelay::UsesIpAddressing()
{
    return pass(__func__, &Host::UsesIpAddressing);
}

bool CHandlerRelay::IsLanUsbMode()
{
    return pass(__func__, &Host::IsLanUsbMode);
}

QList<quint32> CHandlerRelay::GetLanUsbProcessorIps()
{
    return pass(__func__, &Host::GetLanUsbProcessorIps);
}

int CHandlerRelay::GetNameMaxBytes()
{
    return pass(__func__, &Host::GetNameMaxBytes);
}

bool CHandlerRelay::IsNameUtf8()
{
    return pass(__func__, &Host::IsNameUtf8);
}

QUuid CHandlerRelay::GetCurrentProcessorId()
{
    return pass(__func__, &Host::GetCurrentProcessorId);
}

quint32 CHandlerRelay::ReadOnlineIPAddresses()
{
    return pass(__func__, &Host::ReadOnlineIPAddresses);
}

void CHandlerRelay::ClearIPList()
{
    pass(__func__, &Host::ClearIPList);
}

void CHandlerRelay::DeleteIPAddress(quint32 networkAddress)
{
    pass(__func__, &Host::DeleteIPAddress, networkAddress);
}

quint32 CHandlerRelay::ImportIPFile(const QString& path)
{
    return pass(__func__, &Host::ImportIPFile, path);
}

QString CHandlerRelay::GetIPEntry(int row)
{
    return pass(__func__, &Host::GetIPEntry, row);
}

int CHandlerRelay::GetFixedOutputCount()
{
    return pass(__func__, &Host::GetFixedOutputCount);
}

int CHandlerRelay::GetSelectionMode()
{
    return pass(__func__, &Host::GetSelectionMode);
}

QList<QUuid> CHandlerRelay::GetSelectedProcessors()
{
    return pass(__func__, &Host::GetSelectedProcessors);
}

bool CHandlerRelay::IsIpManagementAvailable()
{
    return pass(__func__, &Host::IsIpManagementAvailable);
}

void CHandlerRelay::AddProcessorsFromIpList(const QUuid& group, const QStringList& entries)
{
    pass(__func__, &Host::AddProcessorsFromIpList, group, entries);
}

void CHandlerRelay::PreDeleteProcessors(const QList<QUuid>& processors)
{
    pass(__func__, &Host::PreDeleteProcessors, processors);
}

bool CHandlerRelay::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    return pass(__func__, &Host::AcceptProcessorForSnapshot, processor);
}

void CHandlerRelay::ShowTipMessage(const QString& text)
{
    pass(__func__, &Host::ShowTipMessage, text);
}

bool CHandlerRelay::IsFrontPanelHighlightAvailable()
{
    return pass(__func__, &Host::IsFrontPanelHighlightAvailable);
}

bool CHandlerRelay::IsFrontPanelHighlighted(const QUuid& id)
{
    return pass(__func__, &Host::IsFrontPanelHighlighted, id);
}

void CHandlerRelay::SetFrontPanelHighlight(bool on)
{
    pass(__func__, &Host::SetFrontPanelHighlight, on);
}
