#pragma once

#include "Interface/TargetSelectAreaInterface.h"
#include "host/widgets/Dialog.h"

#include <map>
#include <vector>

class CWrappedLabel;
class QLabel;

/// Warns that the current device does not support LAN-USB connections, and names the device and the
/// first five processors that use one. Run it with exec(). GUI thread.
class CNetUsbTipDlg final : public CDialog
{
    Q_OBJECT

public:
    /// Copies `processors`. Text that is no valid UTF-8 is shown with replacement characters.
    CNetUsbTipDlg(const std::vector<LanUsbProcessorInfo>& processors, QWidget* parent);

protected:
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    std::vector<LanUsbProcessorInfo> m_processors;
    CWrappedLabel* m_header = nullptr; // Qt child
    std::map<int, QLabel*> m_labels;   // Qt children; 0 the header, then the processors' lines
};
