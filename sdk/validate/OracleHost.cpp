#include "sdk/validate/OracleHost.h"

void OracleHost::SetObserver(CObserver* panel)
{
    m_observer = panel;
    ++registrations;
}

bool OracleHost::AcceptProcessorForSnapshot(const ProcessorNode& node)
{
    return !refused.contains(node.id);
}

quint32 OracleHost::DetectAllDevices()
{
    ++detections;
    return detectCode;
}

QString OracleHost::GetDeviceSetText(const SDeviceSetInfo& set)
{
    return QStringLiteral("Device set %1").arg(set.id.Data1);
}

void OracleHost::ReportSelection(const QUuid& focus, const QList<QUuid>& processors,
                                 const QList<SGroupSelection>& groups, const QUuid& previous)
{
    Q_UNUSED(processors)
    Q_UNUSED(groups)
    Q_UNUSED(previous)
    reportedFocus = focus;
    ++reports;
}

bool OracleHost::RenameProcessor(const QUuid& id, const QString& name)
{
    return project.change(id, [&](ProcessorNode& node) { node.name = name; });
}

std::shared_ptr<OracleHost> hostOfThree()
{
    auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100), processor(2), processor(3)});
    return host;
}
