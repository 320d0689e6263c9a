// Pictures of the panel with the longest names and the most processors that a project may have.

#include "host/widgets/ComboBox.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kMost = 255;
constexpr quint32 kGroups = 1000;
constexpr quint32 kLastAddress = 0xFFFFFFFF;

QString longName(int n)
{
    const QString latin = QStringLiteral(
        "Processor behind the left column of the upper foyer, spare unit of the wing ");
    const QString chinese = QString::fromUtf8("大厅左侧立柱显示屏处理器备用链路").repeated(4);
    return n % 2 ? latin + QString::number(n) : chinese;
}

QList<ProcessorNode> processors()
{
    QList<ProcessorNode> list;
    for (int n = 1; n <= kMost; ++n) {
        ProcessorNode node = testIpProcessor(static_cast<quint32>(n), kLastAddress);
        node.name = longName(n);
        node.groupId = n < 20 ? testId(kGroups + static_cast<quint32>(n / 4)) : QUuid();
        node.online = n % 4 != 1;
        node.redundancyMode = n % 3;
        node.hostFlag17 = n % 5 == 2;
        list.append(node);
    }
    return list;
}

class Scene final
{
public:
    explicit Scene(int width = 220)
    {
        QList<ProcessorGroupNode> groups;
        for (quint32 n = 0; n < 5; ++n)
            groups.append(testGroup(kGroups + n, longName(static_cast<int>(n))));
        m_panel.host().showProcessorMoreButton = true;
        m_panel.host().showNodeMoreButton = true;
        m_panel.host().lanUsbMode = true;
        m_panel.host().lanUsbIps = {kLastAddress};
        m_panel.host().canAdd = m_panel.host().addEnabled = true;
        m_panel.host().ipManagementAvailable = true;
        m_panel.host().setProject(groups, processors());
        m_panel.model().reset();
        area().onDetectStrategyChanged(2);
        QList<SDeviceSetInfo> sets;
        for (quint32 n = 1; n <= 12; ++n)
            sets.append(deviceSet(n));
        area().onCurrentDeviceSetChanged(sets.first().id, sets);
        for (int n = 0; n < selector().count(); ++n)
            selector().setItemText(n, longName(n));
        area().onLANUSBGetProcessorIP();
        area().setFixedWidth(width);
        area().resize(width, 520);
        area().show();
        QApplication::setActiveWindow(&area());
        select(1);
    }

    CTargetSelectArea& area() { return m_panel.area(); }
    CComboBox& selector() { return *area().findChild<CComboBox*>(); }
    CProcessorTreeView& view() { return *area().findChild<CProcessorTreeView*>(); }
    QModelIndex row(quint32 id) { return m_panel.index(id); }

    void select(quint32 id)
    {
        view().setFocus();
        view().selectionModel()->setCurrentIndex(row(id), QItemSelectionModel::NoUpdate);
        view().selectionModel()->select(row(id), QItemSelectionModel::ClearAndSelect);
        QApplication::processEvents();
    }

private:
    TestPanel m_panel;
};

void takeWidths(Album& album)
{
    for (const auto& [name, width] :
         {std::pair("narrow", 220), std::pair("wide", 300), std::pair("widest", 500)}) {
        Scene scene(width);
        album.save(name, scene.area());
        scene.select(kGroups + 1);
        scene.view().scrollTo(scene.row(1), QAbstractItemView::PositionAtTop);
        album.save(qPrintable(QLatin1String(name) + QStringLiteral("-group")), scene.area());
    }
}

void takePopups(Album& album)
{
    Scene scene;
    scene.selector().showPopup();
    album.save("device-sets", scene.selector().view()->window()->grab());
    scene.selector().hidePopup();
    for (const quint32 id : {quint32{2}, kGroups, quint32{0}}) {
        QTimer::singleShot(0, &scene.area(), [&] {
            QWidget* menu = QApplication::activePopupWidget();
            const QByteArray name = "menu-" + QByteArray::number(id);
            album.save(name.constData(), menu->grab());
            menu->close();
        });
        scene.view().OnRightMenuEvent(scene.row(id), QPoint(20, 20));
    }
}

void takeEditors(Album& album)
{
    for (const auto& [name, id] :
         {std::pair("renaming", 2U), std::pair("renaming-group", kGroups)}) {
        Scene scene;
        scene.select(id);
        scene.view().RenameSelection();
        album.save(name, scene.area());
    }
}

} // namespace

void takeLimits(Album& album)
{
    takeWidths(album);
    takePopups(album);
    takeEditors(album);
}
