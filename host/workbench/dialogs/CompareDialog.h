#pragma once

#include "host/workbench/project/RecordDifference.h"

#include <QDialog>

/// Shows in what the project of the window and that of its file differ, record by record.
/// Deletes itself when it is closed.
class CompareDialog final : public QDialog
{
    Q_OBJECT

public:
    CompareDialog(const QList<ProjectDifference>& differences, QWidget* parent);
};
