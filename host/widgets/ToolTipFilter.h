#pragma once

#include <QObject>

/// Places the tool tips of widgets that have the property "ToolLocation".
class ToolTipFilter final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};
