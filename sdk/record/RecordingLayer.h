#pragma once

#include "Interface/TargetSelectAreaInterface.h"
#include "sdk/record/TraceWriter.h"

#include <memory>

/// Records each call of the host to the panel and passes it on. The host assigns its handler to
/// m_controlHandler of this object; Initialize() and Reconnect() pass it on.
class CRecordingLayer final : public ITargetSelectAreaInterface
{
public:
    /// `layer` must outlive this object.
    CRecordingLayer(ITargetSelectAreaInterface& layer, std::shared_ptr<CTraceWriter> writer);

    QWidget* GetWidget() override;
    bool Initialize() override;
    bool Reconnect() override;
    quint32 DetectDevices() override;
    void GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted) override;
    void SetReadOnly(bool readOnly) override;
    void SetCurrentProcessor(const QUuid& id) override;
    void SetOperationLock(int key, bool locked) override;
    void RemoveAllGroups() override;
    void UpdateMonitorWarningState() override;
    void ApplyOperationLock(int key) override;
    void ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors) override;
    QList<ProcessorNode> GetAllProcessorNodes() override;

private:
    ITargetSelectAreaInterface& m_layer;
    const std::shared_ptr<CTraceWriter> m_writer;
};
