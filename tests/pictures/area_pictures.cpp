// Pictures of the whole panel for the documentation: area_pictures FOLDER LANGUAGE SUFFIX

#include "host/common/SoftwareName.h"
#include "host/widgets/ComboBox.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/MenuToolButton.h"
#include "plugin/NetUsbTipDlg.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/ProcessorTreeModel.h"
#include "processortree/ProcessorTreeView.h"
#include "tests/support/TestPanel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <QTranslator>

#include <iostream>

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
        for (quint32 n = 1; n <= 3; ++n) {
            sets.append(SDeviceSetInfo());
            sets.last().id.Data1 = n;
        }
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

class Album final
{
public:
    Album(QString folder, QString suffix)
        : m_folder(std::move(folder))
        , m_suffix(std::move(suffix))
    {
    }

    /// The widget, and what is popped up over it.
    void save(const char* name, QWidget& widget, QWidget* popup = nullptr)
    {
        QApplication::processEvents();
        QPixmap picture = widget.grab();
        if (popup) {
            QPainter painter(&picture);
            painter.drawPixmap(widget.mapFromGlobal(popup->mapToGlobal(QPoint())), popup->grab());
        }
        const QString file =
            QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        m_failed = !picture.save(file) || m_failed;
    }

    bool failed() const { return m_failed; }

private:
    QString m_folder;
    QString m_suffix;
    bool m_failed = false;
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

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments.at(1))) {
        std::cerr << "usage: area_pictures FOLDER LANGUAGE SUFFIX\n";
        return 2;
    }
    set_custom_software_name(QStringLiteral("Stage Control"));
    ApplyHostTheme(application);
    QTranslator panel;
    QTranslator widgets;
    if (arguments.at(2) == QLatin1String("zh_CN")) {
        // The resources are there as soon as there is a panel.
        const TestPanel first;
        panel.load(QStringLiteral(":/TargetSelectArea/translations/TargetSelectArea_zh_CN.qm"));
        widgets.load(QStringLiteral(":/HostWidgets/translations/HostWidgets_zh_CN.qm"));
        QCoreApplication::installTranslator(&panel);
        QCoreApplication::installTranslator(&widgets);
    }
    Album album(arguments.at(1), arguments.at(3));
    takePanel(album);
    takePopups(album);
    takeWarnings(album);
    return album.failed() ? 1 : 0;
}
