// The questions that the settings of the project answer.

#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/store/ProjectStore.h"

namespace {

template <typename Answer>
Answer setting(const ProjectStore& store, Answer HandlerAnswers::*answer)
{
    return store.read([&](const Project& project) { return project.answers.*answer; });
}

} // namespace

int WorkbenchHandler::GetDeviceSetTexts(QStringList& texts)
{
    texts = m_store.read([](const Project& project) {
        QStringList all;
        for (const DeviceSet& set : project.deviceSets)
            all.append(set.text);
        return all;
    });
    return m_trace.answered("GetDeviceSetTexts", texts.size());
}

bool WorkbenchHandler::ShowProcessorMoreButton()
{
    return m_trace.answered("ShowProcessorMoreButton",
                            setting(m_store, &HandlerAnswers::showProcessorMoreButton));
}

bool WorkbenchHandler::ShowNodeMoreButton()
{
    return m_trace.answered("ShowNodeMoreButton",
                            setting(m_store, &HandlerAnswers::showNodeMoreButton));
}

bool WorkbenchHandler::CanRenameProcessor(const QUuid& id)
{
    return m_trace.answered("CanRenameProcessor",
                            setting(m_store, &HandlerAnswers::canRenameProcessors), id);
}

bool WorkbenchHandler::CanAddProcessors(const ProcessorNode& first)
{
    return m_trace.answered("CanAddProcessors", setting(m_store, &HandlerAnswers::canAddProcessors),
                            first);
}

bool WorkbenchHandler::IsAddProcessorsEnabled(const ProcessorNode& first)
{
    return m_trace.answered("IsAddProcessorsEnabled",
                            setting(m_store, &HandlerAnswers::addProcessorsEnabled), first);
}

bool WorkbenchHandler::IsRestrictedMode()
{
    return m_trace.answered("IsRestrictedMode", setting(m_store, &HandlerAnswers::restrictedMode));
}

bool WorkbenchHandler::CheckProcessor(const ProcessorNode& processor)
{
    return m_trace.answered("CheckProcessor", processor.hostFlag17, processor);
}

bool WorkbenchHandler::UsesIpAddressing()
{
    return m_trace.answered("UsesIpAddressing",
                            setting(m_store, &HandlerAnswers::usesIpAddressing));
}

bool WorkbenchHandler::IsLanUsbMode()
{
    return m_trace.answered("IsLanUsbMode", setting(m_store, &HandlerAnswers::lanUsbMode));
}

QList<quint32> WorkbenchHandler::GetLanUsbProcessorIps()
{
    return m_trace.answered("GetLanUsbProcessorIps",
                            setting(m_store, &HandlerAnswers::lanUsbAddresses));
}

int WorkbenchHandler::GetNameMaxBytes()
{
    return m_trace.answered("GetNameMaxBytes", setting(m_store, &HandlerAnswers::nameMaxBytes));
}

bool WorkbenchHandler::IsNameUtf8()
{
    return m_trace.answered("IsNameUtf8", setting(m_store, &HandlerAnswers::nameUtf8));
}

int WorkbenchHandler::GetFixedOutputCount()
{
    return m_trace.answered("GetFixedOutputCount",
                            setting(m_store, &HandlerAnswers::fixedOutputCount));
}

int WorkbenchHandler::GetSelectionMode()
{
    return m_trace.answered("GetSelectionMode", setting(m_store, &HandlerAnswers::selectionMode));
}

bool WorkbenchHandler::IsIpManagementAvailable()
{
    return m_trace.answered("IsIpManagementAvailable",
                            setting(m_store, &HandlerAnswers::ipManagementAvailable));
}

bool WorkbenchHandler::AcceptProcessorForSnapshot(const ProcessorNode& processor)
{
    return m_trace.answered(
        "AcceptProcessorForSnapshot",
        processor.online || setting(m_store, &HandlerAnswers::snapshotAcceptsOffline), processor);
}

bool WorkbenchHandler::IsFrontPanelHighlightAvailable()
{
    return m_trace.answered("IsFrontPanelHighlightAvailable",
                            setting(m_store, &HandlerAnswers::frontPanelHighlightAvailable));
}
