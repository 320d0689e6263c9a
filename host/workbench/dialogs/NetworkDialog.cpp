#include "host/workbench/dialogs/NetworkDialog.h"

#include "host/workbench/store/ProjectStore.h"

#include <QCheckBox>
#include <QSpinBox>

NetworkDialog::NetworkDialog(ProjectStore& store, QWidget* parent)
    : FormDialog(tr("Network"), parent)
    , m_store(store)
    , m_enabled(new QCheckBox(this))
{
    const NetworkSettings settings =
        store.read([](const Project& project) { return project.network; });
    const QString unit = tr(" ms");
    m_enabled->setChecked(settings.enabled);
    addField(tr("&Detect simulated processors"), m_enabled);
    m_port = number("port", settings.port, tr("&Port"), QString());
    m_probeTimeout =
        number("probeTimeoutMs", settings.probeTimeoutMs, tr("&Wait for answers"), unit);
    m_aliveInterval =
        number("aliveIntervalMs", settings.aliveIntervalMs, tr("&Ask whether alive every"), unit);
    m_deadTimeout =
        number("deadTimeoutMs", settings.deadTimeoutMs, tr("Offline after a &silence of"), unit);
}

QString NetworkDialog::complete()
{
    NetworkSettings settings;
    settings.enabled = m_enabled->isChecked();
    settings.port = m_port->value();
    settings.probeTimeoutMs = m_probeTimeout->value();
    settings.aliveIntervalMs = m_aliveInterval->value();
    settings.deadTimeoutMs = m_deadTimeout->value();
    if (!settings.allowsForLateAnswers())
        return tr(
            "The silence has to be at least twice as long as the time between two questions.");
    m_store.setNetwork(settings);
    return {};
}

QSpinBox* NetworkDialog::number(const char* name, int value, const QString& label,
                                const QString& unit)
{
    auto* box = new QSpinBox(this);
    const auto range = NetworkSettings::rangeOf(name);
    box->setRange(range.least, range.most);
    box->setSuffix(unit);
    box->setValue(value);
    addField(label, box);
    return box;
}
