#pragma once

#include "Interface/TargetSelectAreaInterface.h"
#include "sdk/record/TraceWriter.h"

#include <memory>

/// Records each call of the host to the panel and passes it on. The host assigns its handler to
/// m_controlHandler of this object; the next call passes it on.
class CRecordingLayer final : public ITargetSelectAreaInterface
{
public:
    /// `layer` must outlive this object, and may be initialised.
    CRecordingLayer(ITargetSelectAreaInterface& layer, std::shared_ptr<CTraceWriter> writer,
                    bool isInitialized = false);

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

    /// Passes m_controlHandler on to the panel, and records that if the panel had another one.
    void passHandlerOn();

    bool isInitialized() const { return m_isInitialized; }

private:
    ITargetSelectAreaInterface& m_layer;
    const std::shared_ptr<CTraceWriter> m_writer;
    bool m_isInitialized;
};
