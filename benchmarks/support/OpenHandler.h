#pragma once

#include "benchmarks/support/StoredHandler.h"

/// A host that has the panel show whatever it can show, so that a figure holds all of it.
class OpenHandler final : public StoredHandler
{
public:
    using StoredHandler::StoredHandler;

    QString GetDeviceSetText(const SDeviceSetInfo&) override { return QStringLiteral("Set 1"); }
    int GetDeviceSetTexts(QStringList& texts) override
    {
        texts = QStringList{QStringLiteral("Set 1"), QStringLiteral("Set 2")};
        return texts.size();
    }
    bool ShowProcessorMoreButton() override { return true; }
    bool ShowNodeMoreButton() override { return true; }
    bool CanAddProcessors(const ProcessorNode&) override { return true; }
    bool IsAddProcessorsEnabled(const ProcessorNode&) override { return true; }
    bool CheckProcessor(const ProcessorNode&) override { return true; }
    bool UsesIpAddressing() override { return true; }
    bool IsLanUsbMode() override { return true; }
    QList<quint32> GetLanUsbProcessorIps() override { return {0x0A000001}; }
    QUuid GetCurrentProcessorId() override { return project().processors.value(0).id; }
    bool IsIpManagementAvailable() override { return true; }
    bool IsFrontPanelHighlightAvailable() override { return true; }
};
