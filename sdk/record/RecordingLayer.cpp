#include "sdk/record/RecordingLayer.h"

#include "sdk/record/LayerCalls.h"
#include "sdk/record/TraceValues.h"

#include <QJsonObject>
#include <QVariant>

#include <utility>

namespace {

QJsonObject argument(const char* name, const QJsonValue& value)
{
    return {{QLatin1String(name), value}};
}

} // namespace

CRecordingLayer::CRecordingLayer(ITargetSelectAreaInterface& layer,
                                 std::shared_ptr<CTraceWriter> writer, bool isInitialized)
    : m_layer(layer)
    , m_writer(std::move(writer))
    , m_isInitialized(isInitialized)
{
    m_controlHandler = layer.m_controlHandler;
}

QWidget* CRecordingLayer::GetWidget()
{
    return m_layer.GetWidget();
}

bool CRecordingLayer::Initialize()
{
    passHandlerOn();
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("Initialize"), {});
    m_isInitialized = true;
    const bool isDone = m_layer.Initialize();
    scope.setAnswer(isDone);
    return isDone;
}

bool CRecordingLayer::Reconnect()
{
    passHandlerOn();
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("Reconnect"), {});
    const bool isDone = m_layer.Reconnect();
    scope.setAnswer(isDone);
    return isDone;
}

quint32 CRecordingLayer::DetectDevices()
{
    passHandlerOn();
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("DetectDevices"), {});
    const quint32 code = m_layer.DetectDevices();
    scope.setAnswer(static_cast<qint64>(code));
    return code;
}

void CRecordingLayer::GetProcessorTree(ProcessorTreeSnapshot& out, bool onlyAccepted)
{
    passHandlerOn();
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("GetProcessorTree"),
                      argument("onlyAccepted", onlyAccepted));
    m_layer.GetProcessorTree(out, onlyAccepted);
    scope.setAnswer(LayerCalls::tree(out));
}

void CRecordingLayer::SetReadOnly(bool readOnly)
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("SetReadOnly"),
                            argument("readOnly", readOnly));
    m_layer.SetReadOnly(readOnly);
}

void CRecordingLayer::SetCurrentProcessor(const QUuid& id)
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer,
                            QStringLiteral("SetCurrentProcessor"), argument("id", id.toString()));
    m_layer.SetCurrentProcessor(id);
}

void CRecordingLayer::SetOperationLock(int key, bool locked)
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("SetOperationLock"),
                            {{QStringLiteral("key"), key}, {QStringLiteral("locked"), locked}});
    m_layer.SetOperationLock(key, locked);
}

void CRecordingLayer::RemoveAllGroups()
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("RemoveAllGroups"),
                            {});
    m_layer.RemoveAllGroups();
}

void CRecordingLayer::UpdateMonitorWarningState()
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer,
                            QStringLiteral("UpdateMonitorWarningState"), {});
    m_layer.UpdateMonitorWarningState();
}

void CRecordingLayer::ApplyOperationLock(int key)
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer,
                            QStringLiteral("ApplyOperationLock"), argument("key", key));
    m_layer.ApplyOperationLock(key);
}

void CRecordingLayer::ShowLanUsbWarning(const std::vector<LanUsbProcessorInfo>& processors)
{
    passHandlerOn();
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer,
                            QStringLiteral("ShowLanUsbWarning"), LayerCalls::warning(processors));
    m_layer.ShowLanUsbWarning(processors);
}

QList<ProcessorNode> CRecordingLayer::GetAllProcessorNodes()
{
    passHandlerOn();
    CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("GetAllProcessorNodes"),
                      {});
    const QList<ProcessorNode> processors = m_layer.GetAllProcessorNodes();
    scope.setAnswer(TraceValues::toJson(QVariant::fromValue(processors)));
    return processors;
}

void CRecordingLayer::passHandlerOn()
{
    const bool isReplaced =
        m_isInitialized ? m_layer.m_controlHandler != m_controlHandler : !m_controlHandler;
    m_layer.m_controlHandler = m_controlHandler;
    if (!isReplaced)
        return;
    const CTraceScope scope(*m_writer, CTraceEntry::Kind::Layer, QStringLiteral("HandlerReplaced"),
                            argument("assigned", m_controlHandler != nullptr));
}
