#include "Interface/HostEvents.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "sdk/record/GestureEntry.h"
#include "sdk/record/InputRecorder.h"
#include "sdk/record/Recorder.h"
#include "sdk/record/TraceReader.h"
#include "sdk/record/TraceValues.h"
#include "sdk/record/WidgetPath.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/TestRecords.h"
#include "tests/support/WarningTrap.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Kind = CTraceEntry::Kind;

/// A layer whose widget is no panel.
class Layer final : public ITargetSelectAreaInterface
{
public:
    QWidget* GetWidget() override { return &widget; }
    quint32 DetectDevices() override { return 7; }

    QWidget widget;
};

class Observer final : public CObserver
{
public:
    void Update(CSubject*) override
    {
        if (onEvent)
            onEvent();
    }

    std::function<void()> onEvent;
};

} // namespace

class RecorderTest final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void shouldReadBackEveryValue_data();
    void shouldReadBackEveryValue();
    void shouldRefuseValuesOfOtherTypes();
    void shouldTellWhatHappenedInsideWhat();
    void shouldWriteOnSeveralThreads();
    void shouldKeepTheBeginningOfACall();
    void shouldRecordEventsOfWrongTypes();
    void shouldRecordGesturesOnce();
    void shouldRecordAWheelOnce();
    void shouldRecordTheLastMoveOnly();
    void shouldRecordMenusOfThePanel();
    void shouldRecordRowsOfViews();
    void shouldNotRecordTheHost();
    void shouldFindWidgetsByTheirPath();
    void shouldPassOnWithoutAFile();
    void shouldLeaveARecordingThatIsBeingWritten();
    void shouldStartOnce();
    void shouldBringTheEventsOfASharedSubjectOnce();

private:
    std::vector<CTraceEntry> entries(Kind kind) const;
    QStringList gestures() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRecorder> m_recorder;
};

void RecorderTest::init()
{
    m_recorder = std::make_unique<CRecorder>();
    m_folder = std::make_unique<QTemporaryDir>();
    QString problem;
    QVERIFY2(m_recorder->open(m_folder->filePath(QStringLiteral("trace")), problem),
             qPrintable(problem));
}

/// Returns the entries of the recording so far.
std::vector<CTraceEntry> RecorderTest::entries(Kind kind) const
{
    CTraceReader reader;
    if (!reader.read(m_folder->filePath(QStringLiteral("trace"))))
        qWarning("%s", qUtf8Printable(reader.problem()));
    std::vector<CTraceEntry> found;
    for (const CTraceEntry& entry : reader.entries()) {
        if (entry.kind == kind)
            found.push_back(entry);
    }
    return found;
}

QStringList RecorderTest::gestures() const
{
    QStringList names;
    for (const CTraceEntry& entry : entries(Kind::Input))
        names.append(entry.name);
    return names;
}

void RecorderTest::shouldReadBackEveryValue_data()
{
    QTest::addColumn<QVariant>("value");
    ProcessorNode node = testProcessor(3, 1);
    node.name = QString(QChar(0xDC00)) + QStringLiteral("\u5c55\n\t\"\\") + QChar(0);
    node.hostAttribute8 = std::numeric_limits<qint64>::min();
    node.hostAttribute10 = {1, 2, 3, 0xFFFFFFFF};
    node.hostAttribute12 = std::numeric_limits<float>::infinity();
    node.hostAttribute21 = 65535;
    ProcessorGroupNode group = testGroup(1);
    group.processors = {node};
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("int") << QVariant(-5);
    QTest::newRow("number without a sign") << QVariant(0xFFFFFFFFU);
    QTest::newRow("text") << QVariant(node.name);
    QTest::newRow("texts") << QVariant(QStringList{node.name, QString()});
    QTest::newRow("identity") << QVariant::fromValue(testId(1));
    QTest::newRow("identities") << QVariant::fromValue(QList<QUuid>{testId(1), QUuid()});
    QTest::newRow("addresses") << QVariant::fromValue(QList<quint32>{1, 0xFFFFFFFF});
    QTest::newRow("processors") << QVariant::fromValue(QList<ProcessorNode>{node});
    QTest::newRow("group") << QVariant::fromValue(group);
    QTest::newRow("device sets") << QVariant::fromValue(QList<SDeviceSetInfo>{deviceSet(2)});
    QTest::newRow("selection") << QVariant::fromValue(
        QList<SGroupSelection>{{testId(1), {testId(2)}}});
}

void RecorderTest::shouldReadBackEveryValue()
{
    QFETCH(QVariant, value);
    const QJsonValue json = TraceValues::toJson(value);
    QVERIFY(!json.isUndefined());
    const QByteArray text = TraceValues::compact(json);
    QVERIFY(!text.contains('\n'));
    const QJsonValue parsed = QJsonDocument::fromJson('[' + text + ']').array().at(0);
    const QVariant back = TraceValues::fromJson(parsed, value.userType());
    QCOMPARE(back.userType(), value.userType());
    QCOMPARE(TraceValues::compact(TraceValues::toJson(back)), text);
    if (value.userType() == qMetaTypeId<QList<ProcessorNode>>()) {
        const ProcessorNode node = back.value<QList<ProcessorNode>>().constFirst();
        QCOMPARE(node.name, value.value<QList<ProcessorNode>>().constFirst().name);
        QCOMPARE(node.hostAttribute8, std::numeric_limits<qint64>::min());
        QVERIFY(std::isinf(node.hostAttribute12));
    }
}

void RecorderTest::shouldRefuseValuesOfOtherTypes()
{
    QVERIFY(!TraceValues::fromJson(QStringLiteral("1"), QMetaType::Bool).isValid());
    QVERIFY(!TraceValues::fromJson(0.5, QMetaType::Int).isValid());
    QVERIFY(!TraceValues::fromJson(-1, QMetaType::UInt).isValid());
    QVERIFY(!TraceValues::fromJson(1e12, QMetaType::Int).isValid());
    QVERIFY(!TraceValues::fromJson(QStringLiteral("{5}"), qMetaTypeId<QUuid>()).isValid());
    QVERIFY(!TraceValues::fromJson(QJsonObject(), qMetaTypeId<ProcessorNode>()).isValid());
    QVERIFY(!TraceValues::fromJson(true, qMetaTypeId<QMenu*>()).isValid());
}

void RecorderTest::shouldTellWhatHappenedInsideWhat()
{
    Observer panel;
    Layer layer;
    const auto host = std::make_shared<FakeHandler>();
    host->setProject({}, {testProcessor(1)});
    const auto handler = m_recorder->record(host);
    handler->SetObserver(&panel);
    panel.onEvent = [&] { handler->GetProcessorNode(testId(1)); };
    host->doInside(QStringLiteral("DeleteProcessors"), [&] {
        CSubject subject;
        subject.Attach(host->observer);
        HostEvents::NodeRemoved::tell(subject, testId(1));
    });
    auto* area = m_recorder->record(&layer);
    QCOMPARE(area->DetectDevices(), 7U);
    handler->DeleteProcessors({testId(1)});
    const auto calls = entries(Kind::Call);
    const auto events = entries(Kind::Event);
    QCOMPARE(events.size(), std::size_t{1});
    const CTraceEntry& request = calls.at(1);
    const CTraceEntry& question = calls.at(2);
    QCOMPARE(request.name, QStringLiteral("DeleteProcessors"));
    QCOMPARE(events[0].name, QStringLiteral("NodeRemoved"));
    QCOMPARE(events[0].cause, request.sequence);
    QCOMPARE(question.name, QStringLiteral("GetProcessorNode"));
    QCOMPARE(question.cause, events[0].sequence);
    QCOMPARE(question.thread, QStringLiteral("gui"));
    QVERIFY(question.time >= events[0].time && question.end() <= request.end());
    QCOMPARE(question.answer.toObject().value(QLatin1String("name")).toString(),
             testProcessor(1).name);
    QCOMPARE(entries(Kind::Layer).back().answer.toInt(), 7);
}

void RecorderTest::shouldWriteOnSeveralThreads()
{
    constexpr int perThread = 50;
    const auto handler = m_recorder->record(std::make_shared<FakeHandler>());
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int at = 0; at < perThread; ++at)
                handler->GetProcessorNode(testId(static_cast<quint32>(at)));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const auto calls = entries(Kind::Call);
    QCOMPARE(calls.size(), std::size_t{4 * perThread});
    for (std::size_t at = 0; at < calls.size(); ++at) {
        QCOMPARE(calls[at].sequence, qint64(at + 1));
        QCOMPARE(calls[at].cause, 0);
        QVERIFY(calls[at].thread.startsWith(QLatin1String("other ")));
    }
}

void RecorderTest::shouldKeepTheBeginningOfACall()
{
    std::vector<CTraceEntry> inside;
    const auto host = std::make_shared<FakeHandler>();
    const auto handler = m_recorder->record(host);
    host->doInside(QStringLiteral("Ungroup"), [&] { inside = entries(Kind::Call); });
    handler->Ungroup(testId(5));
    QCOMPARE(inside.size(), std::size_t{1});
    QCOMPARE(inside[0].name, QStringLiteral("Ungroup"));
    QVERIFY(inside[0].duration < 0);
    const auto after = entries(Kind::Call);
    QCOMPARE(after.size(), std::size_t{1});
    QVERIFY(after[0].duration >= 0);
}

void RecorderTest::shouldRecordEventsOfWrongTypes()
{
    Observer panel;
    const auto host = std::make_shared<FakeHandler>();
    const auto handler = m_recorder->record(host);
    handler->SetObserver(&panel);
    CSubject subject;
    subject.Attach(host->observer);
    subject.Notify<QString>(18, QStringLiteral("a\nb"));
    subject.Notify<long double>(99, 1.0L);
    const auto events = entries(Kind::Event);
    QCOMPARE(events.size(), std::size_t{2});
    Events::Event event;
    QVERIFY(TraceValues::readEvent(events[0].arguments, event));
    QCOMPARE(event.types, QByteArray("QString"));
    QCOMPARE(event.arguments.value(0).toString(), QStringLiteral("a\nb"));
    QVERIFY(TraceValues::readEvent(events[1].arguments, event));
    QCOMPARE(event.number, 99U);
    QVERIFY(event.types.startsWith("unknown "));
}

void RecorderTest::shouldRecordGesturesOnce()
{
    Layer layer;
    auto* field = new QLineEdit(&layer.widget);
    // A label leaves clicks to its parent.
    auto* inner = new QWidget(&layer.widget);
    inner->setGeometry(0, 50, 50, 20);
    layer.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&layer.widget));
    m_recorder->record(&layer);
    QTest::mouseClick(inner, Qt::LeftButton, {}, QPoint(3, 4));
    QCOMPARE(gestures(), (QStringList{QStringLiteral("press"), QStringLiteral("release")}));
    const CTraceEntry press = entries(Kind::Input).front();
    QCOMPARE(press.arguments.value(QLatin1String("x")).toInt(), 3);
    QCOMPARE(
        WidgetPath::find(layer.widget, press.arguments.value(QLatin1String("widget")).toArray()),
        inner);
    QTest::keyClick(field, Qt::Key_A);
    QCOMPARE(gestures().mid(2), (QStringList{QStringLiteral("key"), QStringLiteral("keyRelease")}));
}

void RecorderTest::shouldRecordAWheelOnce()
{
    Layer layer;
    auto* view = new QScrollArea(&layer.widget);
    view->setWidget(new QWidget);
    view->widget()->setFixedSize(10, 5000);
    layer.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&layer.widget));
    m_recorder->record(&layer);
    for (int turn = 1; turn <= 2; ++turn) {
        const int before = view->verticalScrollBar()->value();
        QWheelEvent wheel(QPointF(5, 5), view->viewport()->mapToGlobal(QPoint(5, 5)), QPoint(),
                          QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &wheel);
        QVERIFY(view->verticalScrollBar()->value() > before);
        // The view hands it on to its scroll bar.
        QCOMPARE(gestures().size(), turn);
        QCOMPARE(gestures().constLast(), QStringLiteral("wheel"));
    }
}

void RecorderTest::shouldRecordTheLastMoveOnly()
{
    Layer layer;
    layer.widget.setMouseTracking(true);
    layer.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&layer.widget));
    m_recorder->record(&layer);
    for (int x = 1; x < 20; ++x) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 5), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&layer.widget, &move);
    }
    QTest::mousePress(&layer.widget, Qt::LeftButton, {}, QPoint(19, 5));
    QCOMPARE(gestures(), (QStringList{QStringLiteral("move"), QStringLiteral("press")}));
    QCOMPARE(entries(Kind::Input)[0].arguments.value(QLatin1String("x")).toInt(), 19);
}

void RecorderTest::shouldRecordMenusOfThePanel()
{
    Layer layer;
    QMenu menu(&layer.widget);
    QAction* action = menu.addAction(QStringLiteral("Rename"));
    layer.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&layer.widget));
    m_recorder->record(&layer);
    menu.popup(layer.widget.mapToGlobal(QPoint(5, 5)));
    QVERIFY(menu.isVisible());
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    QVERIFY(gestures().contains(QStringLiteral("release")));
    const QJsonArray path =
        entries(Kind::Input).back().arguments.value(QLatin1String("widget")).toArray();
    QCOMPARE(path, QJsonArray{QStringLiteral("#QMenu:0")});
}

void RecorderTest::shouldRecordRowsOfViews()
{
    Layer layer;
    auto* tree = new QTreeWidget(&layer.widget);
    tree->setColumnCount(2);
    tree->resize(300, 200);
    auto* group = new QTreeWidgetItem(tree, {QStringLiteral("Group")});
    auto* item = new QTreeWidgetItem(group, {QStringLiteral("Item"), QStringLiteral("Value")});
    tree->expandAll();
    layer.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&layer.widget));
    m_recorder->record(&layer);
    const QPoint place(tree->columnViewportPosition(1) + 3,
                       tree->visualItemRect(item).center().y());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    for (const CTraceEntry& gesture : entries(Kind::Input)) {
        QCOMPARE(gesture.arguments.value(QLatin1String("entry")).toArray(), (QJsonArray{0, 0, 1}));
        QCOMPARE(gesture.arguments.value(QLatin1String("text")).toString(),
                 QStringLiteral("Value"));
    }
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(5, 190));
    QVERIFY(!entries(Kind::Input).back().arguments.contains(QLatin1String("entry")));

    // A row is found where it is now, and is missing under another text.
    const QJsonObject press = entries(Kind::Input).front().arguments;
    QVERIFY(GestureEntry::isThere(*tree->viewport(), press));
    QCOMPARE(GestureEntry::place(*tree->viewport(), press, place), place);
    const QPoint found = GestureEntry::place(*tree->viewport(), press, QPoint(place.x(), 190));
    QCOMPARE(found, QPoint(place.x(), place.y()));
    item->setText(1, QStringLiteral("Other"));
    QVERIFY(!GestureEntry::isThere(*tree->viewport(), press));
    QCOMPARE(GestureEntry::place(*tree->viewport(), press, QPoint(1, 2)), QPoint(1, 2));
    delete item;
    QVERIFY(!GestureEntry::isThere(*tree->viewport(), press));
}

void RecorderTest::shouldNotRecordTheHost()
{
    QWidget window;
    Layer layer;
    QPushButton button(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    m_recorder->record(&layer);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(gestures(), QStringList());
}

void RecorderTest::shouldFindWidgetsByTheirPath()
{
    QWidget panel;
    auto* first = new QWidget(&panel);
    auto* named = new QWidget(&panel);
    named->setObjectName(QStringLiteral("a/b#c"));
    auto* second = new QLineEdit(named);
    auto* third = new QLineEdit(named);
    QWidget popup(nullptr, Qt::Popup);
    popup.setFocusProxy(third);
    panel.show();
    popup.show();
    for (QWidget* widget : {&panel, first, named, static_cast<QWidget*>(second),
                            static_cast<QWidget*>(third), &popup}) {
        QVERIFY(WidgetPath::isWithin(panel, widget));
        QCOMPARE(WidgetPath::find(panel, WidgetPath::of(panel, *widget)), widget);
    }
    QVERIFY(!WidgetPath::isWithin(*named, first));
    QVERIFY(!WidgetPath::find(panel, {QStringLiteral("nobody")}));
    QWidget stranger;
    QVERIFY(!WidgetPath::isWithin(panel, &stranger));
}

void RecorderTest::shouldPassOnWithoutAFile()
{
    CRecorder idle;
    Layer layer;
    const std::shared_ptr<ITargetSelectInterfaceHandler> handler = std::make_shared<FakeHandler>();
    QCOMPARE(idle.record(&layer), &layer);
    QCOMPARE(idle.record(handler), handler);
    QVERIFY(!idle.hasFailed());
}

void RecorderTest::shouldLeaveARecordingThatIsBeingWritten()
{
    const QString path = m_folder->filePath(QStringLiteral("trace"));
    CRecorder second;
    QString problem;
    QVERIFY(!second.open(path, problem));
    QCOMPARE(problem, QDir::toNativeSeparators(path)
                          + QStringLiteral(" cannot be written: it is being written already"));
    Layer layer;
    QCOMPARE(m_recorder->record(&layer)->DetectDevices(), 7U);
    QVERIFY(!entries(Kind::Layer).empty());
    m_recorder.reset();
    QVERIFY2(second.open(path, problem), qPrintable(problem));
    QVERIFY(entries(Kind::Layer).empty());
}

void RecorderTest::shouldStartOnce()
{
    const QString other = m_folder->filePath(QStringLiteral("other"));
    QString problem;
    QVERIFY(!m_recorder->open(other, problem));
    QVERIFY2(problem.contains(QStringLiteral("a recording is being written to ")),
             qPrintable(problem));
    QVERIFY(!QFile::exists(other));
    Layer layer;
    QCOMPARE(m_recorder->record(&layer)->DetectDevices(), 7U);
    QVERIFY(!entries(Kind::Layer).empty());
    QVERIFY(!m_recorder->hasFailed());
}

/// A host attaches what each of its handlers gets to the same subject.
void RecorderTest::shouldBringTheEventsOfASharedSubjectOnce()
{
    CSubject subject;
    int told = 0;
    Observer panel;
    panel.onEvent = [&] { ++told; };
    for (int handler = 0; handler < 2; ++handler) {
        const auto host = std::make_shared<FakeHandler>();
        m_recorder->record(host)->SetObserver(&panel);
        QVERIFY(host->observer);
        subject.Attach(host->observer);
    }
    HostEvents::TreeReset::tell(subject);
    QCOMPARE(told, 1);
    QCOMPARE(entries(Kind::Event).size(), std::size_t(1));
}

TSA_TEST_MAIN(RecorderTest)

#include "tst_recorder.moc"
