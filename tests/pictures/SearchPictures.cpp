// Pictures of the list of search results.

#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "search/ProcessorCompleter.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QApplication>
#include <QHoverEvent>
#include <QLineEdit>
#include <QListView>

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
        , m_completer(&m_field, *CTargetSelectData::Instance()->GetModel())
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

    QWidget& window() { return m_window; }

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

private:
    TestPanel m_panel;
    QWidget m_window;
    QLineEdit m_field;
    CProcessorCompleter m_completer;
};

} // namespace

void takeSearch(Album& album)
{
    {
        Scene scene(QStringLiteral("Stage"));
        album.save("results", scene.window(), &scene.popup());
        scene.hover(1);
        album.save("hovered", scene.window(), &scene.popup());
        scene.select(3);
        album.save("selected", scene.window(), &scene.popup());
    }
    {
        Scene scene(QStringLiteral("192.168.100"));
        album.save("few-results", scene.window(), &scene.popup());
    }
    {
        Scene scene(QStringLiteral("Roof"));
        album.save("nothing-found", scene.window(), &scene.popup());
    }
    Scene scene(QStringLiteral("1"), true);
    album.save("long-names", scene.window(), &scene.popup());
}
