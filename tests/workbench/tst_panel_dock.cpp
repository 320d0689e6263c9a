#include "Interface/TargetSelectAreaInterface.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QDockWidget>
#include <QEvent>
#include <QMap>
#include <QSet>
#include <QStyle>
#include <QTreeView>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

/// Keeps what widths a widget and its children get, also for a moment.
class WidthWatch final : public QObject
{
public:
    explicit WidthWatch(QWidget& panel)
        : m_panel(panel)
    {
        panel.installEventFilter(this);
        const auto children = panel.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (QWidget* child : children)
            child->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
            const int left = widget == &m_panel ? 0 : widget->x();
            m_places[widget].insert({left, widget->width()});
        }
        return QObject::eventFilter(watched, event);
    }

    /// Returns the widgets that have had more than one place since the watch began.
    QStringList moved() const
    {
        QStringList names;
        for (auto it = m_places.begin(); it != m_places.end(); ++it) {
            if (it.value().size() > 1)
                names.append(QLatin1String(it.key()->metaObject()->className()));
        }
        return names;
    }

private:
    QWidget& m_panel;
    QMap<QWidget*, QSet<std::pair<int, int>>> m_places;
};

/// Returns the places of all visible widgets in the panel.
QString placesIn(QWidget& panel)
{
    QStringList places;
    const auto all = panel.findChildren<QWidget*>();
    for (QWidget* widget : all) {
        if (!widget->isVisibleTo(&panel))
            continue;
        const QPoint at = widget->mapTo(&panel, QPoint());
        places.append(QStringLiteral("%1 %2 %3")
                          .arg(QLatin1String(widget->metaObject()->className()))
                          .arg(at.x())
                          .arg(widget->width()));
    }
    return places.join(QLatin1Char('\n'));
}

struct Docked : WorkbenchUnderTest
{
    QDockWidget& dock() { return *window.findChild<QDockWidget*>(QStringLiteral("panelDock")); }
    QWidget& panel() { return *session.layer()->GetWidget(); }

    void dockAt(Qt::DockWidgetArea area)
    {
        window.addDockWidget(area, &dock());
        QCoreApplication::processEvents();
    }

    /// Drags the edge of the dock towards the middle of the window, step by step.
    void dragEdge(int distance)
    {
        const int half = window.style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent) / 2;
        const QRect place = dock().geometry();
        const bool isLeft = window.dockWidgetArea(&dock()) == Qt::LeftDockWidgetArea;
        const int x = isLeft ? place.right() + 1 + half : place.left() - 1 - half;
        const int sign = isLeft ? 1 : -1;
        const QPoint from(x, place.center().y());
        QWindow* display = window.windowHandle();
        QTest::mousePress(display, Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(display, from + QPoint(sign * distance * step / 10, 0));
        QTest::mouseRelease(display, Qt::LeftButton, Qt::NoModifier,
                            from + QPoint(sign * distance, 0));
        QCoreApplication::processEvents();
    }
};

} // namespace

/// The panel in its dock, which the user moves and resizes.
class PanelDockTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepItsWidth_data();
    void shouldKeepItsWidth();
    void shouldFloat();

private:
    const TestSettings m_settings;
};

void PanelDockTest::shouldKeepItsWidth_data()
{
    QTest::addColumn<Qt::DockWidgetArea>("area");
    QTest::newRow("left") << Qt::LeftDockWidgetArea;
    QTest::newRow("right") << Qt::RightDockWidgetArea;
}

void PanelDockTest::shouldKeepItsWidth()
{
    QFETCH(Qt::DockWidgetArea, area);
    Docked test;
    test.dockAt(area);
    const int width = test.dock().width();
    const QString places = placesIn(test.panel());
    const WidthWatch watch(test.panel());
    test.dragEdge(200);
    QCOMPARE(test.dock().width(), width + 200);
    QCOMPARE(placesIn(test.panel()), places);
    test.dragEdge(-400);
    QCOMPARE(placesIn(test.panel()), places);
    QCOMPARE(test.dock().width(), width);
    QCOMPARE(watch.moved(), QStringList());
}

void PanelDockTest::shouldFloat()
{
    Docked test;
    const QRect docked = test.dock().geometry();
    const QString places = placesIn(test.panel());
    const WidthWatch watch(test.panel());
    test.dock().setFloating(true);
    QVERIFY(test.dock().isWindow());
    for (const int width : {600, 100, 300}) {
        test.dock().resize(width, 500);
        QCoreApplication::processEvents();
        QCOMPARE(placesIn(test.panel()), places);
        QCOMPARE(test.dock().width(), std::max(width, docked.width()));
    }
    test.dock().setFloating(false);
    QTRY_COMPARE(test.dock().geometry(), docked);
    QCOMPARE(placesIn(test.panel()), places);
    QCOMPARE(watch.moved(), QStringList());
}

TSA_TEST_MAIN(PanelDockTest)

#include "tst_panel_dock.moc"
