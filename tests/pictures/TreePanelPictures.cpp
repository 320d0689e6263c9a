// Pictures of the tree panel.

#include "host/widgets/ActionLineEdit.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/MenuToolButton.h"
#include "host/widgets/PureImageBtn.h"
#include "host/widgets/Separator.h"
#include "plugin/TargetSelectData.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTree.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/pictures/Album.h"
#include "tests/pictures/Subjects.h"
#include "tests/support/TestPanel.h"

#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

constexpr quint32 kFirstAddress = 0xC0A8000B; // 192.168.0.11

QList<ProcessorNode> processors()
{
    QList<ProcessorNode> list;
    for (quint32 n = 1; n <= 6; ++n) {
        ProcessorNode node = testIpProcessor(n, kFirstAddress + n, n % 3 == 0 ? 0 : 100 + n % 2);
        node.name = QStringLiteral("Stage %1").arg(n);
        node.online = n != 4;
        list.append(node);
    }
    return list;
}

/// The tree panel below a button and a line, as it is docked.
class Scene final
{
public:
    Scene()
    {
        auto* layout = new QVBoxLayout(&m_window);
        layout->setContentsMargins(0, 11, 0, 0);
        layout->setSpacing(8);
        m_detect->setText(QCoreApplication::translate("CTargetSelectArea", "Detect devices"));
        m_detect->setFixedWidth(200);
        m_detect->AddAction(QStringLiteral("All devices"));
        m_tree = new CProcessorTree(*CTargetSelectData::Instance(),
                                    *CTargetSelectData::Instance()->GetModel());
        layout->addWidget(m_detect, 0, Qt::AlignCenter);
        layout->addWidget(new CSeparator(&m_window, 0, 4));
        layout->addWidget(m_tree, 1);
        m_panel.host().canAdd = m_panel.host().addEnabled = true;
        m_panel.host().showNodeMoreButton = true;
        m_panel.host().setProject(
            {testGroup(100, QStringLiteral("Main stage")), testGroup(101, QStringLiteral("Foyer"))},
            processors());
        m_panel.model().reset();
        m_window.setGeometry(0, 0, 220, 280);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        view().setFocus();
        QApplication::processEvents();
    }

    ~Scene() { delete m_tree; }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    QWidget& window() { return m_window; }
    CProcessorTree& tree() { return *m_tree; }
    CMenuToolButton& detect() { return *m_detect; }
    CActionLineEdit& field() { return *m_tree->findChild<CActionLineEdit*>(); }
    CPureImageBtn& button() { return *m_tree->findChild<CPureImageBtn*>(); }
    CProcessorTreeView& view() { return *m_tree->findChild<CProcessorTreeView*>(); }
    TestPanel& panel() { return m_panel; }

private:
    TestPanel m_panel;
    QWidget m_window;
    CMenuToolButton* m_detect = new CMenuToolButton; // Qt child of the window
    CProcessorTree* m_tree = nullptr;
};

/// The window, with `popup` over it and beyond it.
QPixmap withPopup(QWidget& window, QWidget& popup)
{
    QApplication::processEvents();
    const QPixmap picture = window.grab();
    const QPoint place = popup.geometry().topLeft() - window.geometry().topLeft();
    const QRect both = window.rect().united(QRect(place, popup.size()));
    const qreal scale = picture.devicePixelRatio();
    QPixmap larger(both.size() * scale);
    larger.setDevicePixelRatio(scale);
    larger.fill(hostColors().window);
    QPainter painter(&larger);
    painter.drawPixmap(-both.topLeft(), picture);
    painter.drawPixmap(place - both.topLeft(), popup.grab());
    return larger;
}

void takeMenu(Album& album)
{
    Scene scene;
    QTimer::singleShot(0, &scene.tree(), [&] {
        QWidget* menu = QApplication::activePopupWidget();
        QApplication::sendEvent(
            menu,
            std::make_unique<QKeyEvent>(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier).get());
        album.save("add-menu", withPopup(scene.window(), *menu));
        menu->close();
    });
    scene.button().showMenu();
}

void takeFocus(Album& album)
{
    Scene scene;
    album.save("tree-focused", scene.window());
    scene.field().setFocus();
    album.save("search-focused", scene.window());
    scene.button().setFocus();
    album.save("add-focused", scene.window());
    scene.detect().setFocus();
    album.save("detect-focused", scene.window());
    scene.button().setAttribute(Qt::WA_UnderMouse);
    album.save("add-hovered", scene.window());
    scene.button().setAttribute(Qt::WA_UnderMouse, false);
    scene.detect().setAttribute(Qt::WA_UnderMouse);
    album.save("detect-hovered", scene.window());
}

void takeSearches(Album& album)
{
    Scene scene;
    // The list needs its room below the field, on the smallest screen too.
    scene.window().move(0, -50);
    for (const char* text : {"stage", "lobby"}) {
        scene.field().setFocus();
        scene.field().setText(QLatin1String(text));
        scene.field().actions().first()->trigger();
        const QString name = QStringLiteral("search-") + QLatin1String(text);
        album.save(qPrintable(name), withPopup(scene.window(), *QApplication::activePopupWidget()));
        scene.field().clear();
        QApplication::activePopupWidget()->close();
    }
    scene.field().setText(QStringLiteral("stage"));
    scene.view().setFocus();
    album.save("search-left", scene.window());
}

void takeLocked(Album& album)
{
    Scene scene;
    scene.tree().SetOperationLock(1, true);
    scene.detect().setEnabled(false);
    album.save("locked", scene.window());
}

} // namespace

void takeTreePanel(Album& album)
{
    takeMenu(album);
    takeFocus(album);
    takeSearches(album);
    takeLocked(album);
}
