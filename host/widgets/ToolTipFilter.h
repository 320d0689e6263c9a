#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QObject>

class QCoreApplication;

/// Shows the tool tips of widgets with the property "ToolLocation".
class ToolTipFilter final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// From here on, tool tips of widgets with the property "ToolLocation" appear where that says. Any
/// number of calls. GUI thread.
HOSTWIDGETS_EXPORT void installToolTipPlacement(QCoreApplication& application);
