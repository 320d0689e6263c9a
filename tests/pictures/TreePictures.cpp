// Pictures of the processor tree.

#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QTest>

#include <memory>

namespace {

constexpr quint32 kFirstAddress = 0xC0A8000B; // 192.168.0.11
constexpr quint32 kLongAddress = 0xC0A8FFC8;  // 192.168.255.200

QList<ProcessorNode> processors(int count, bool longNames)
{
    QList<ProcessorNode> list;
    for (int n = 0; n < count; ++n) {
        ProcessorNode node = testProcessor(static_cast<quint32>(n + 1));
        node.groupId = n % 3 == 2 ? QUuid() : testId(1000 + static_cast<quint32>(n % 3));
        node.name = longNames
                        ? QString::fromUtf8("大厅左侧立柱显示屏处理器（备用链路）%1").arg(n + 1)
                        : QStringLiteral("Stage %1").arg(n + 1);
        node.online = n % 4 != 1;
        node.reachedByIp = n % 2 == 0;
        node.ipAddress = (longNames ? kLongAddress : kFirstAddress) + static_cast<quint32>(n);
        node.redundancyMode = n % 7 == 3 ? 2 : (n % 7 == 2 || n == 6) ? 1 : 0;
        node.hostFlag17 = n % 6 == 4;
        list.append(node);
    }
    return list;
}

/// The panel with a project in it.
class Scene final
{
public:
    explicit Scene(int count, bool longNames = false)
    {
        const QList<ProcessorGroupNode> groups = {testGroup(1000, QStringLiteral("Main stage")),
                                                  testGroup(1001, QStringLiteral("Foyer"))};
        m_panel.host().showProcessorMoreButton = true;
        m_panel.host().showNodeMoreButton = true;
        if (count > 0)
            m_panel.host().setProject(groups, processors(count, longNames));
        m_panel.model().reset();
        m_panel.area().resize(220, 520);
        m_panel.area().show();
        QApplication::setActiveWindow(&m_panel.area());
        QApplication::processEvents();
    }

    CTargetSelectArea& area() { return m_panel.area(); }
    CProcessorTreeView& view() { return *area().findChild<CProcessorTreeView*>(); }

    QModelIndex row(quint32 id) { return m_panel.index(id); }

    void select(std::initializer_list<quint32> ids)
    {
        view().selectionModel()->clear();
        for (const quint32 id : ids)
            view().selectionModel()->select(row(id), QItemSelectionModel::Select);
        view().setFocus();
    }

    void hover(quint32 id)
    {
        const QPoint place = view().visualRect(row(id)).center();
        QMouseEvent move(QEvent::MouseMove, place, view().viewport()->mapToGlobal(place),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view().viewport(), &move);
        QHoverEvent hovered(QEvent::HoverMove, place, QPoint(-1, -1));
        QCoreApplication::sendEvent(view().viewport(), &hovered);
    }

    void dragOver(quint32 id)
    {
        const std::unique_ptr<QMimeData> data(
            m_panel.model().mimeData(view().selectionModel()->selectedIndexes()));
        const QPoint place = view().visualRect(row(id)).center();
        QDragEnterEvent enter(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view().viewport(), &enter);
        QDragMoveEvent move(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view().viewport(), &move);
    }

private:
    TestPanel m_panel;
};

void takeStates(Album& album)
{
    {
        Scene scene(12);
        album.save("normal", scene.area());
        scene.hover(4);
        album.save("hovered", scene.area());
    }
    {
        Scene scene(12);
        scene.select({4});
        album.save("selected", scene.area());
        scene.select({1, 4, 7});
        album.save("several-selected", scene.area());
        scene.dragOver(1001);
        album.save("dragged", scene.area());
    }
    {
        Scene scene(12);
        scene.select({2, 3});
        QTest::keyClick(&scene.view(), Qt::Key_X, Qt::ControlModifier);
        scene.select({4});
        album.save("cut", scene.area());
    }
    {
        Scene scene(12);
        scene.select({4});
        scene.view().RenameSelection();
        album.save("renaming", scene.area());
    }
    {
        Scene scene(12);
        scene.select({4});
        scene.view().SetLocked(true);
        album.save("locked", scene.area());
    }
    {
        Scene scene(12);
        scene.area().SetReadOnly(true);
        album.save("read-only", scene.area());
        scene.area().SetReadOnly(false); // the bridge outlives the scene
    }
}

void takeSizes(Album& album)
{
    {
        Scene scene(0);
        album.save("empty", scene.area());
    }
    {
        Scene scene(255);
        scene.select({253});
        scene.view().scrollTo(scene.row(253));
        album.save("full", scene.area());
    }
    Scene scene(12, true);
    scene.select({7});
    album.save("long-names", scene.area());
}

} // namespace

void takeTree(Album& album)
{
    takeStates(album);
    takeSizes(album);
}
