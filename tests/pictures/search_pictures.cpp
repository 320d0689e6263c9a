// Pictures of the list of search results for the documentation: search_pictures FOLDER LANGUAGE
// SUFFIX

#include "host/widgets/HostTheme.h"
#include "processortree/ProcessorTreeModel.h"
#include "search/ProcessorCompleter.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QDir>
#include <QHoverEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QTranslator>

#include <iostream>

namespace {

constexpr quint32 kFirstAddress = 0xC0A8640B; // 192.168.100.11

QList<ProcessorNode> processors(bool longNames)
{
    const char* const names[] = {"Main stage, left wing, upper processor %1",
                                 "大厅左侧立柱显示屏处理器（备用链路）%1"};
    QList<ProcessorNode> list;
    for (int n = 0; n < 12; ++n) {
        ProcessorNode node = testProcessor(static_cast<quint32>(n + 1));
        node.name = longNames ? QString::fromUtf8(names[n % 2]).arg(n + 1)
                              : QStringLiteral("Stage %1").arg(n + 1);
        node.online = n % 4 != 1;
        node.reachedByIp = n % 2 == 0;
        node.ipAddress =
            n == 4 ? kNoProcessorAddress : kFirstAddress + static_cast<quint32>(n * 20);
        node.redundancyMode = n % 7 == 3 || n == 5 ? 2 : 0;
        list.append(node);
    }
    return list;
}

/// A search field in a panel's window, with the text typed into it.
class Scene final
{
public:
    Scene(const QString& text, bool longNames = false)
        : m_field(&m_window)
        , m_completer(&m_field)
    {
        m_panel.host().setProject({}, processors(longNames));
        m_panel.model().reset();
        m_window.setGeometry(4, 4, 196, 312);
        m_field.setGeometry(10, 1, 176, 24);
        m_field.setText(text);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        m_field.setFocus();
        m_completer.setFilterText(text);
        QApplication::processEvents();
    }

    QListView& popup() const
    {
        return *qobject_cast<QListView*>(QApplication::activePopupWidget());
    }

    void hover(int row)
    {
        const QPoint place = popup().visualRect(popup().model()->index(row, 0)).center();
        QHoverEvent hovered(QEvent::HoverMove, place, QPoint(-1, -1));
        QCoreApplication::sendEvent(popup().viewport(), &hovered);
    }

    /// As it is for the moment between the press of the mouse and the end of the list.
    void select(int row)
    {
        const QSignalBlocker blocker(popup().selectionModel());
        popup().selectionModel()->select(popup().model()->index(row, 0),
                                         QItemSelectionModel::Select);
    }

    /// The window with the popup over it.
    QPixmap grab()
    {
        QApplication::processEvents();
        QPixmap picture = m_window.grab();
        QPainter painter(&picture);
        painter.drawPixmap(m_window.mapFromGlobal(popup().pos()), popup().grab());
        return picture;
    }

private:
    TestPanel m_panel;
    QWidget m_window;
    QLineEdit m_field;
    CProcessorCompleter m_completer;
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
        const QString file =
            QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        m_failed = !scene.grab().save(file) || m_failed;
    }

    bool failed() const { return m_failed; }

private:
    QString m_folder;
    QString m_suffix;
    bool m_failed = false;
};

void takeAll(Album& album)
{
    {
        Scene scene(QStringLiteral("Stage"));
        album.save("results", scene);
        scene.hover(1);
        album.save("hovered", scene);
        scene.select(3);
        album.save("selected", scene);
    }
    {
        Scene scene(QStringLiteral("192.168.100"));
        album.save("few-results", scene);
    }
    {
        Scene scene(QStringLiteral("Roof"));
        album.save("nothing-found", scene);
    }
    Scene scene(QStringLiteral("1"), true);
    album.save("long-names", scene);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments.at(1))) {
        std::cerr << "usage: search_pictures FOLDER LANGUAGE SUFFIX\n";
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
    takeAll(album);
    return album.failed() ? 1 : 0;
}
