// Pictures of the processor tree for the documentation: tree_pictures FOLDER LANGUAGE SUFFIX

#include "host/widgets/HostTheme.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/ProcessorTreeModel.h"
#include "processortree/ProcessorTreeView.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QDir>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QStandardItem>
#include <QTranslator>

#include <iostream>
#include <memory>

namespace {

constexpr quint32 kFirstAddress = 0xC0A8000B; // 192.168.0.11

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
        node.ipAddress = kFirstAddress + static_cast<quint32>(n);
        node.redundancyMode = n % 7 == 3 ? 2 : 0;
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

    QModelIndex row(quint32 id) { return m_panel.model().getItem(testId(id))->index(); }

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

class Album final
{
public:
    Album(QString folder, QString suffix)
        : m_folder(std::move(folder))
        , m_suffix(std::move(suffix))
    {
    }

    void save(const char* name, Scene& scene)
    {
        QApplication::processEvents();
        const QString file =
            QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        m_failed = !scene.area().grab().save(file) || m_failed;
    }

    bool failed() const { return m_failed; }

private:
    QString m_folder;
    QString m_suffix;
    bool m_failed = false;
};

void takeStates(Album& album)
{
    {
        Scene scene(12);
        album.save("normal", scene);
        scene.hover(4);
        album.save("hovered", scene);
    }
    {
        Scene scene(12);
        scene.select({4});
        album.save("selected", scene);
        scene.select({1, 4, 7});
        album.save("several-selected", scene);
        scene.dragOver(1001);
        album.save("dragged", scene);
    }
    {
        Scene scene(12);
        scene.select({4});
        scene.view().RenameSelection();
        album.save("renaming", scene);
    }
    {
        Scene scene(12);
        scene.select({4});
        scene.view().SetLocked(true);
        album.save("locked", scene);
    }
    {
        Scene scene(12);
        scene.area().SetReadOnly(true);
        album.save("read-only", scene);
    }
}

void takeSizes(Album& album)
{
    {
        Scene scene(0);
        album.save("empty", scene);
    }
    {
        Scene scene(255);
        scene.select({253});
        scene.view().scrollTo(scene.row(253));
        album.save("full", scene);
    }
    Scene scene(12, true);
    scene.select({4});
    album.save("long-names", scene);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments.at(1))) {
        std::cerr << "usage: tree_pictures FOLDER LANGUAGE SUFFIX\n";
        return 2;
    }
    ApplyHostTheme(application);
    QTranslator panel;
    QTranslator widgets;
    if (arguments.at(2) == QLatin1String("zh_CN")) {
        panel.load(QStringLiteral(":/TargetSelectArea/translations/TargetSelectArea_zh_CN.qm"));
        widgets.load(QStringLiteral(":/HostWidgets/translations/HostWidgets_zh_CN.qm"));
        QCoreApplication::installTranslator(&panel);
        QCoreApplication::installTranslator(&widgets);
    }
    Album album(arguments.at(1), arguments.at(3));
    takeStates(album);
    takeSizes(album);
    return album.failed() ? 1 : 0;
}
