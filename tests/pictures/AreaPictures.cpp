// Pictures of the whole panel.

#include "host/common/SoftwareName.h"
#include "host/widgets/ComboBox.h"
#include "host/widgets/MenuToolButton.h"
#include "plugin/NetUsbTipDlg.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMenu>
#include <QTimer>

namespace {

constexpr quint32 kFirstAddress = 0xC0A8000B; // 192.168.0.11

QList<ProcessorNode> processors()
{
    QList<ProcessorNode> list;
    for (quint32 n = 1; n <= 8; ++n) {
        ProcessorNode node = testIpProcessor(n, kFirstAddress + n, n % 3 == 0 ? 0 : 100 + n % 2);
        node.name = QStringLiteral("Stage %1").arg(n);
        node.online = n != 4;
        node.hostFlag17 = n == 5;
        list.append(node);
    }
    return list;
}

/// The panel with everything that it can show.
class Scene final
{
public:
    Scene()
    {
        m_panel.host().showProcessorMoreButton = true;
        m_panel.host().showNodeMoreButton = true;
        m_panel.host().lanUsbMode = true;
        m_panel.host().lanUsbIps = {kFirstAddress};
        m_panel.host().setProject(
            {testGroup(100, QStringLiteral("Main stage")), testGroup(101, QStringLiteral("Foyer"))},
            processors());
        m_panel.model().reset();
        QList<SDeviceSetInfo> sets;
        for (quint32 n = 1; n <= 3; ++n)
            sets.append(deviceSet(n));
        area().onDetectStrategyChanged(2);
        area().onCurrentDeviceSetChanged(sets.first().id, sets);
        area().onLANUSBGetProcessorIP();
        area().resize(220, 520);
        area().show();
        QApplication::setActiveWindow(&area());
        area().onCurrentProcessorChanged(testId(2));
        m_panel.host().ipManagementAvailable = true;
        area().onCurrentProcessorChanged(testId(2));
        view().setFocus();
        QApplication::processEvents();
    }

    CTargetSelectArea& area() { return m_panel.area(); }
    CMenuToolButton& detection() { return *area().findChild<CMenuToolButton*>(); }
    CComboBox& selector() { return *area().findChild<CComboBox*>(); }
    CProcessorTreeView& view() { return *area().findChild<CProcessorTreeView*>(); }

private:
    TestPanel m_panel;
};

void takePanel(Album& album)
{
    Scene scene;
    album.save("everything", scene.area());
    scene.area().SetOperationLock(1, true);
    album.save("locked", scene.area());
    scene.area().SetOperationLock(1, false);
    scene.area().SetReadOnly(true);
    album.save("read-only", scene.area());
    scene.area().SetReadOnly(false);
    scene.detection().setEnabled(false);
    album.save("detecting", scene.area());
    scene.detection().setEnabled(true);
    scene.area().onDetectStrategyChanged(0);
    scene.area().onCurrentDeviceSetChanged(GUID(), {});
    album.save("least", scene.area());
}

void takePopups(Album& album)
{
    Scene scene;
    QTimer::singleShot(0, &scene.area(), [&] {
        QWidget* menu = QApplication::activePopupWidget();
        album.save("detection-menu", scene.area(), menu);
        menu->close();
    });
    scene.detection().showMenu();
    scene.selector().setFocus();
    scene.selector().showPopup();
    album.save("device-sets", scene.area(), scene.selector().view()->window());
    scene.selector().hidePopup();
}

void takeWarnings(Album& album)
{
    const std::vector<LanUsbProcessorInfo> usual{{"192.168.0.11", "Stage 1", "Sender S4"},
                                                 {"192.168.0.12", "Stage 2", "Sender S4"},
                                                 {"192.168.0.13", "Foyer", "Sender S2"}};
    std::vector<LanUsbProcessorInfo> many(8, usual.front());
    many[1] = {"192.168.200.100", "Left wing, lower row, behind the second column",
               "Sending-card-without-a-blank-in-its-name"};
    many[2] = {"10.0.0.1", u8"大厅左侧立柱显示屏处理器（备用链路）", u8"发送卡"};
    for (int n = 0; n < 12; ++n)
        many[3].deviceName += " in the left wing, behind the second column";
    for (const auto& [name, processors] :
         {std::pair("warning", usual), std::pair("warning-long", many),
          std::pair("warning-empty", decltype(many)())}) {
        CNetUsbTipDlg dialog(processors, nullptr);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        album.save(name, dialog);
    }
}

} // namespace

void takeArea(Album& album)
{
    set_custom_software_name(QStringLiteral("Stage Control"));
    takePanel(album);
    takePopups(album);
    takeWarnings(album);
}
