#pragma once

#include "Interface/TargetSelectAreaInterface.h"

#include <QObject>

#include <deque>
#include <vector>

class QWidget;

/// Shows LAN-USB warnings one after the other, in the order in which they were asked for. Those
/// that are left go with the panel. GUI thread.
class CLanUsbWarnings final : public QObject
{
    Q_OBJECT

public:
    /// `panel` owns this, and the dialogs stand over it.
    explicit CLanUsbWarnings(QWidget* panel);

    /// Shows a warning about `processors` when the event loop runs again; returns at once.
    void show(const std::vector<LanUsbProcessorInfo>& processors);

private:
    void showWaiting();

    QWidget* m_panel; // owner
    std::deque<std::vector<LanUsbProcessorInfo>> m_waiting;
    bool m_showing = false;
};
