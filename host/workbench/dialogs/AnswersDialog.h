#pragma once

#include "host/workbench/dialogs/FormDialog.h"
#include "host/workbench/project/Project.h"

#include <QHash>

class ProjectStore;

/// Edits the host's answers to the panel's questions that are not about records. Fields carry the
/// names that they have in the project file.
class AnswersDialog final : public FormDialog
{
    Q_OBJECT

public:
    /// `store` outlives the dialog.
    AnswersDialog(ProjectStore& store, QWidget* parent);

protected:
    QString complete() override;

private:
    class Builder;
    class Collector;

    ProjectStore& m_store;
    QHash<QString, QWidget*> m_fields; // Qt children
};
