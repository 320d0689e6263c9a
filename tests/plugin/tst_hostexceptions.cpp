#include "plugin/DeviceDetection.h"
#include "plugin/TargetSelectData.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/plugin/Telling.h"
#include "tests/support/LogTrap.h"

#include <QComboBox>
#include <QToolButton>

#include <stdexcept>

using Event = TrueHost::Event;

namespace {

/// What a host must not let through, and may.
struct HostFailure final : std::runtime_error
{
    HostFailure()
        : std::runtime_error("the host failed")
    {
    }
};

void fail()
{
    throw HostFailure();
}

/// Runs `action`, which may throw.
void attempt(const std::function<void()>& action)
{
    try {
        action();
    } catch (const HostFailure&) {
        return;
    }
}

} // namespace

/// An exception that a host lets through out of an answer leaves nothing stuck.
class HostExceptionsTest final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shouldGoOnAfterAnException_data();
    void shouldGoOnAfterAnException();
    void shouldGoOnAfterAnExceptionInAFillOfAnotherThread();
    void shouldKeepAnEventFromAnExceptionOfAnother();
    void shouldLogAnExceptionThatNobodyCanCatch();
    void shouldDetectAfterAnException();
    void shouldAskAboutDeviceSetsAfterAnException();
    void shouldReportSelectionsAfterAnException();
    void shouldGoOnAfterAnExceptionInAQuestionOfThePanel();

private:
    bool m_isStuck = false;
};

/// What is stuck, is so for the life of the process, and every event would wait for it in vain.
void HostExceptionsTest::init()
{
    QVERIFY2(!m_isStuck, "stuck since an earlier test");
}

void HostExceptionsTest::cleanup()
{
    m_isStuck = m_isStuck || QTest::currentTestFailed();
}

void HostExceptionsTest::shouldGoOnAfterAnException_data()
{
    QTest::addColumn<TrueHost::Event>("event");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("foreign");
    const auto add = [](Event event, const char* question, bool foreign) {
        QTest::addRow("%s, %s, %s", qPrintable(TrueHost::name(event)), question,
                      foreign ? "another thread" : "GUI thread")
            << event << QString::fromLatin1(question) << foreign;
    };
    add(TrueHost::Reset, "GetAllProcessorNodes", false);
    add(TrueHost::Reset, "GetAllGroupNodes", false);
    add(TrueHost::ListAdded, "GetProcessorNode", false);
    add(TrueHost::GroupRemoved, "SetProcessorGroup", false);
    // Asked on the thread that tells.
    for (const bool foreign : {false, true}) {
        add(TrueHost::GroupAdded, "GetGroupNode", foreign);
        add(TrueHost::Added, "GetProcessorNode", foreign);
        add(TrueHost::Changed, "GetProcessorNode", foreign);
        add(TrueHost::ProjectChanged, "GetProcessorNode", foreign);
    }
}

void HostExceptionsTest::shouldGoOnAfterAnException()
{
    QFETCH(TrueHost::Event, event);
    QFETCH(QString, question);
    QFETCH(bool, foreign);
    Telling telling;
    const bool adds = TrueHost::canHappen(TrueHost::Nothing, {event}) && event != TrueHost::Reset;
    telling.host.start({adds ? TrueHost::Nothing : TrueHost::Grouped});
    telling.host.change(event);
    telling.doDuring(question, false, fail);
    const auto tell = [&] { attempt([&] { telling.host.notify(event); }); };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QVERIFY(telling.wasAsked());

    // Events of both threads go on, and the next fill brings what got lost.
    telling.host.tell({TrueHost::GroupAdded, TrueHost::Added, TrueHost::Warned}, 2);
    QVERIFY(telling.one.run([&] {
        telling.host.tell({TrueHost::GroupAdded, TrueHost::Added, TrueHost::Changed}, 3);
    }));
    QVERIFY(telling.host.settle());
    const auto differences = telling.host.differences();
    QVERIFY2(!differences.contains(2), qPrintable(differences.value(2)));
    QVERIFY2(!differences.contains(3), qPrintable(differences.value(3)));
    telling.host.notify(TrueHost::Reset);
    VERIFY_TREE_OF(telling.host);
}

void HostExceptionsTest::shouldGoOnAfterAnExceptionInAFillOfAnotherThread()
{
    Telling telling;
    telling.host.start({TrueHost::Grouped});
    telling.doDuring(QStringLiteral("GetAllGroupNodes"), false, fail);
    // Queued without a wait; handled here, outside the event loops, which let no exception through.
    QVERIFY(comesBack(telling.one.post([&] { telling.host.tell({TrueHost::Reset}); })));
    attempt([] { QCoreApplication::sendPostedEvents(); });
    QVERIFY(telling.wasAsked());

    QVERIFY(telling.one.run([&] {
        telling.host.tell({TrueHost::GroupAdded, TrueHost::Added}, 2);
    }));
    QVERIFY(telling.host.settle());
    telling.host.notify(TrueHost::Reset);
    VERIFY_TREE_OF(telling.host);
}

/// What waits for its turn before an event is not the event's.
void HostExceptionsTest::shouldKeepAnEventFromAnExceptionOfAnother()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped, TrueHost::Ungrouped});
    QVERIFY(comesBack(telling.one.post([&] { telling.host.tell({TrueHost::Reset}); })));
    telling.doDuring(QStringLiteral("GetAllProcessorNodes"), false, fail);
    telling.host.change(TrueHost::Removed);
    telling.host.notify(TrueHost::Removed);
    QVERIFY(telling.wasAsked());
    QVERIFY(telling.host.settle());
    VERIFY_TREE_OF(telling.host);
}

void HostExceptionsTest::shouldLogAnExceptionThatNobodyCanCatch()
{
    Telling telling;
    telling.host.start({TrueHost::Grouped});
    telling.doDuring(QStringLiteral("GetAllGroupNodes"), false, fail);
    const LogTrap log;
    QVERIFY(comesBack(telling.one.post([&] { telling.host.tell({TrueHost::Reset}); })));
    QTRY_VERIFY(telling.wasAsked());
    QCOMPARE(log.messages().filter(QStringLiteral("threw an exception")).size(), 1);
}

void HostExceptionsTest::shouldDetectAfterAnException()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped});
    auto* button = telling.panel.area().findChild<QToolButton*>();
    QVERIFY(button);
    telling.doDuring(QStringLiteral("DetectAllDevices"), false, fail);
    // Not by a click: Qt's widgets lose memory when an exception passes through them.
    attempt([&] { detectDevices(button, DetectionScope::AllDevices); });
    QVERIFY(telling.wasAsked());
    QVERIFY(button->isEnabled());
}

void HostExceptionsTest::shouldAskAboutDeviceSetsAfterAnException()
{
    Telling telling;
    FakeHandler& host = telling.panel.host();
    SDeviceSetInfo one{};
    SDeviceSetInfo other{};
    one.id.Data1 = 1;
    other.id.Data1 = 2;
    telling.panel.area().onCurrentDeviceSetChanged(one.id, {one, other});
    auto* selector = telling.panel.area().findChild<QComboBox*>();
    QCOMPARE(selector->count(), 2);
    telling.doDuring(QStringLiteral("ConfirmDeviceSetChange"), false, fail);
    attempt([&] { emit selector->currentIndexChanged(1); });
    QVERIFY(telling.wasAsked());
    host.clearCalls();
    selector->setCurrentIndex(1);
    QCOMPARE(host.callCount(QStringLiteral("ConfirmDeviceSetChange")), 1);
    QCOMPARE(selector->currentIndex(), 1);
}

void HostExceptionsTest::shouldReportSelectionsAfterAnException()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped, TrueHost::Ungrouped, TrueHost::Ungrouped});
    telling.doDuring(QStringLiteral("ReportSelection"), false, fail);
    attempt([&] { telling.panel.area().SetCurrentProcessor(testId(1)); });
    QVERIFY(telling.wasAsked());
    QVERIFY(!telling.panel.data().IsSelectionEchoGuarded());

    telling.panel.host().selections.clear();
    telling.panel.area().SetCurrentProcessor(testId(2));
    QCOMPARE(telling.panel.host().selections.size(), 1);
    QCOMPARE(telling.panel.host().selections.first().focus, testId(2));
    // The host's own choice is no echo.
    telling.panel.host().currentProcessor = testId(3);
    telling.panel.notify(30);
    QVERIFY(telling.host.settle());
    const auto* view = telling.panel.area().findChild<CProcessorTreeView*>();
    QVERIFY(view);
    QCOMPARE(view->selectionModel()->selectedIndexes(), QModelIndexList{telling.panel.index(3)});
}

/// A question that ended with an exception is over: other threads may wait for the GUI thread.
void HostExceptionsTest::shouldGoOnAfterAnExceptionInAQuestionOfThePanel()
{
    Telling telling;
    telling.host.start({TrueHost::Ungrouped});
    telling.doDuring(QStringLiteral("DetectAllDevices"), false, fail);
    attempt([&] { telling.panel.area().DetectDevices(); });
    std::atomic<bool> inserted{false};
    connect(&telling.panel.model(), &QAbstractItemModel::rowsInserted, this,
            [&] { inserted = true; });
    bool shown = false;
    QVERIFY(telling.one.run([&] {
        telling.host.tell({TrueHost::Added}, 2);
        // An event that adds has added when it returns.
        shown = inserted;
    }));
    disconnect(&telling.panel.model(), nullptr, this, nullptr);
    QVERIFY(shown);
    VERIFY_TREE_OF(telling.host);
}

TSA_TEST_MAIN(HostExceptionsTest)
#include "tst_hostexceptions.moc"
