#include "plugin/DeadLayer.h"

#include "Interface/TargetSelectAreaInterface.h"
#include "base/ContractCheck.h"

#include <cstddef>
#include <vector>

namespace {

void tell(const char* operation)
{
    ContractCheck::report(ContractCheck::Finding::PanelIsDead,
                          QStringLiteral("%1 is called on a layer whose panel was destroyed; "
                                         "TargetSelectArea_Init builds another one")
                              .arg(QLatin1String(operation)));
}

class CDeadLayer final : public ITargetSelectAreaInterface
{
public:
    ~CDeadLayer() override { tell("delete"); }

    // The memory is that of the panel, and stays.
    static void* operator new(std::size_t size); // is not there: none is built elsewhere
    static void* operator new(std::size_t /*size*/, void* memory) { return memory; }
    static void operator delete(void* /*memory*/) {}

    QWidget* GetWidget() override
    {
        tell("GetWidget");
        return nullptr;
    }
    bool Initialize() override
    {
        tell("Initialize");
        return true;
    }
    bool Reconnect() override
    {
        tell("Reconnect");
        return true;
    }
    quint32 DetectDevices() override
    {
        tell("DetectDevices");
        return 0;
    }
    void GetProcessorTree(ProcessorTreeSnapshot& out, bool /*onlyAccepted*/) override
    {
        out = ProcessorTreeSnapshot();
        tell("GetProcessorTree");
    }
    void SetReadOnly(bool /*readOnly*/) override { tell("SetReadOnly"); }
    void SetCurrentProcessor(const QUuid& /*id*/) override { tell("SetCurrentProcessor"); }
    void SetOperationLock(int /*key*/, bool /*locked*/) override { tell("SetOperationLock"); }
    void RemoveAllGroups() override { tell("RemoveAllGroups"); }
    void UpdateMonitorWarningState() override { tell("UpdateMonitorWarningState"); }
    void ApplyOperationLock(int /*key*/) override { tell("ApplyOperationLock"); }
    void ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& /*processors*/) override
    {
        tell("ShowLanUsbWarning");
    }
    QList<ProcessorNode> GetAllProcessorNodes() override
    {
        tell("GetAllProcessorNodes");
        return {};
    }
};

static_assert(sizeof(CDeadLayer) == sizeof(ITargetSelectAreaInterface),
              "it takes the place of the panel's own");

} // namespace

void DeadLayer::bury(void* memory)
{
    // Reachable for leak checkers, like the memory around it.
    static auto* const all = new std::vector<ITargetSelectAreaInterface*>;
    all->push_back(new (memory) CDeadLayer);
}
