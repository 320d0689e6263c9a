#include "host/widgets/HostTheme.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/plugin/ShownPanel.h"

#include <QAbstractEventDispatcher>
#include <QPaintEvent>

namespace {

constexpr int kProcessors = 200;

/// What was painted of a widget.
class PaintedRegion final : public QObject
{
public:
    explicit PaintedRegion(QWidget* widget)
        : m_widget(widget)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_widget && event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }

    QRegion region;

private:
    QWidget* m_widget;
};

/// Everything that is painted, and every timer that fires, in the whole application.
class Activity final : public QObject
{
public:
    Activity() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        if (event->type() == QEvent::Timer)
            ++timers;
        return QObject::eventFilter(watched, event);
    }

    int paints = 0;
    int timers = 0;
};

/// Handles events until there are none left. Returns whether that came to an end.
bool comesToRest()
{
    for (int round = 0; round < 1000; ++round) {
        if (!QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents))
            return true;
    }
    return false;
}

/// The timers that objects of the panel's side have running: "class interval".
QStringList runningTimers()
{
    QStringList found;
    const auto* dispatcher = QCoreApplication::eventDispatcher();
    QList<QObject*> objects;
    for (QWidget* window : QApplication::topLevelWidgets())
        objects << window << window->findChildren<QObject*>();
    objects << CTargetSelectData::Instance()->GetModel();
    objects << CTargetSelectData::Instance()->GetModel()->findChildren<QObject*>();
    for (QObject* object : qAsConst(objects)) {
        for (const auto& timer : dispatcher->registeredTimers(object)) {
            found.append(
                QStringLiteral("%1 %2").arg(QString::fromLatin1(object->metaObject()->className()),
                                            QString::number(timer.interval)));
        }
    }
    return found;
}

/// A shown panel with a project, at rest.
class RestingPanel final
{
public:
    RestingPanel()
    {
        QList<ProcessorNode> processors;
        for (quint32 n = 1; n <= kProcessors; ++n)
            processors.append(testProcessor(n));
        shown.host().setProject({}, processors);
        shown.panel.notify(16);
        shown.window.resize(220, 800);
        atRest = QTest::qWaitForWindowExposed(&shown.window) && comesToRest();
    }

    QRect row(quint32 id) { return shown.view()->visualRect(index(id)); }
    QModelIndex index(quint32 id) { return shown.panel.model().getItem(testId(id))->index(); }

    ShownPanel shown;
    bool atRest = false;
};

} // namespace

/// What the panel costs while nothing happens, and while little does.
class PanelIdleTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldRunNoTimer();
    void shouldComeToRestAfterItWasUsed();
    void shouldPaintOneRowForOneRecord_data();
    void shouldPaintOneRowForOneRecord();
    void shouldPaintNothingForARecordOutOfSight();
    void shouldPaintBothRowsOfAnotherSelection();
    void shouldPaintNothingForTheSameAgain();
};

void PanelIdleTest::initTestCase()
{
    ApplyHostTheme(*qApp);
    // A cursor that blinks is a timer of Qt's; the field is not what is watched here.
    QApplication::setCursorFlashTime(0);
}

void PanelIdleTest::shouldRunNoTimer()
{
    RestingPanel panel;
    QVERIFY(panel.atRest);
    QTRY_COMPARE(runningTimers(), QStringList());
    // Without a timer or an event there is nothing that could wake the thread.
    Activity activity;
    QVERIFY(comesToRest());
    QCOMPARE(activity.paints, 0);
    QCOMPARE(activity.timers, 0);
}

void PanelIdleTest::shouldComeToRestAfterItWasUsed()
{
    RestingPanel panel;
    panel.shown.area().onDetectStrategyChanged(2);
    panel.shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    panel.shown.host().lanUsbMode = true;
    panel.shown.host().lanUsbIps = {1};
    panel.shown.panel.notify(29);
    panel.shown.panel.notify(37);
    QTRY_VERIFY(panel.shown.label()->isVisible());
    QTest::keyClick(panel.shown.selector(), Qt::Key_Down);
    QTest::mouseClick(panel.shown.detection(), Qt::LeftButton);
    panel.shown.area().SetOperationLock(1, true);
    panel.shown.area().SetOperationLock(1, false);
    QTest::mouseClick(panel.shown.view()->viewport(), Qt::LeftButton, {}, panel.row(3).center());
    QTRY_COMPARE(runningTimers(), QStringList());
    QVERIFY(comesToRest());
    Activity activity;
    QVERIFY(comesToRest());
    QCOMPARE(activity.paints + activity.timers, 0);
}

void PanelIdleTest::shouldPaintOneRowForOneRecord_data()
{
    QTest::addColumn<quint32>("event");
    QTest::newRow("25") << 25U;
    QTest::newRow("26") << 26U;
}

void PanelIdleTest::shouldPaintOneRowForOneRecord()
{
    QFETCH(quint32, event);
    RestingPanel panel;
    QVERIFY(panel.atRest);
    PaintedRegion painted(panel.shown.view()->viewport());
    Activity activity;
    ProcessorNode processor = testProcessor(4);
    processor.name = QStringLiteral("Another name");
    processor.online = true;
    panel.shown.host().setProcessor(processor);
    if (event == 25)
        panel.shown.panel.notify<QUuid>(event, testId(4));
    else
        panel.shown.panel.notify<QUuid, SPrjProcessor>(event, testId(4), SPrjProcessor());
    QTRY_VERIFY(!painted.region.isEmpty());
    QVERIFY(comesToRest());
    const QRect row = panel.row(4);
    const QRect band(0, row.top(), panel.shown.view()->viewport()->width(), row.height());
    QVERIFY2(band.contains(painted.region.boundingRect()),
             qPrintable(QStringLiteral("%1 to %2 instead of %3 to %4")
                            .arg(painted.region.boundingRect().top())
                            .arg(painted.region.boundingRect().bottom())
                            .arg(band.top())
                            .arg(band.bottom())));
    // The widgets below the viewport are painted for the place, and the scroll bar above it, nobody
    // beside it.
    QVERIFY2(activity.paints <= 6, qPrintable(QString::number(activity.paints)));
}

void PanelIdleTest::shouldPaintNothingForARecordOutOfSight()
{
    RestingPanel panel;
    QVERIFY(panel.atRest);
    QVERIFY(!panel.shown.view()->viewport()->rect().intersects(panel.row(kProcessors)));
    Activity activity;
    ProcessorNode processor = testProcessor(kProcessors);
    processor.online = true;
    panel.shown.host().setProcessor(processor);
    panel.shown.panel.notify<QUuid>(25, testId(kProcessors));
    QVERIFY(panel.index(kProcessors).data(NodeDataRole).value<ProcessorNode>().online);
    QVERIFY(comesToRest());
    QCOMPARE(activity.paints, 0);
}

void PanelIdleTest::shouldPaintBothRowsOfAnotherSelection()
{
    RestingPanel panel;
    panel.shown.area().onCurrentProcessorChanged(testId(2));
    QVERIFY(comesToRest());
    PaintedRegion painted(panel.shown.view()->viewport());
    panel.shown.area().SetCurrentProcessor(testId(5));
    QTRY_VERIFY(!painted.region.isEmpty());
    QVERIFY(comesToRest());
    QVERIFY(painted.region.intersects(panel.row(2)));
    QVERIFY(painted.region.intersects(panel.row(5)));
}

void PanelIdleTest::shouldPaintNothingForTheSameAgain()
{
    RestingPanel panel;
    panel.shown.area().onCurrentProcessorChanged(testId(2));
    QVERIFY(comesToRest());
    Activity activity;
    panel.shown.area().onCurrentProcessorChanged(testId(2));
    panel.shown.area().SetCurrentProcessor(testId(2));
    panel.shown.area().onLANUSBGetProcessorIP();
    panel.shown.area().onDetectStrategyChanged(0);
    QVERIFY(comesToRest());
    QCOMPARE(activity.paints, 0);
}

TSA_TEST_MAIN(PanelIdleTest)
#include "tst_panelidle.moc"
