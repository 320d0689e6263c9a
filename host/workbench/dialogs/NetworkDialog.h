#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/project/NetworkSettings.h"

class ProjectStore;
class QCheckBox;
class QSpinBox;

/// Edits the network in which the host detects.
class NetworkDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `store` must outlive the dialog.
    NetworkDialog(ProjectStore& store, QWidget* parent);

protected:
    QString complete() override;

private:
    QSpinBox* number(const char* name, int value, const QString& label, const QString& unit);

    ProjectStore& m_store;
    QCheckBox* m_enabled; // Qt children
    QSpinBox* m_port;
    QSpinBox* m_probeTimeout;
    QSpinBox* m_aliveInterval;
    QSpinBox* m_deadTimeout;
};
