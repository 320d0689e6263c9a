#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QObject>

class QCoreApplication;

/// Places the tool tips of widgets that have the property "ToolLocation".
class ToolTipFilter final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Places the tool tips of all widgets that have the property "ToolLocation". May be called
/// repeatedly. GUI thread.
HOSTWIDGETS_EXPORT void installToolTipPlacement(QCoreApplication& application);
