#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/Panel.h"
#include "sdk/validate/WatchedHandler.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTreeView>

#include <atomic>
#include <memory>
#include <thread>

namespace {

using namespace HostEvents;

/// The questions that are asked while the tree is painted, in which a host must not end the panel.
bool isAskedInPainting(const char* operation)
{
    for (const char* name : {"GetSelectionMode", "GetSelectedProcessors", "ShowProcessorMoreButton",
                             "ShowNodeMoreButton", "CheckProcessor"}) {
        if (qstrcmp(operation, name) == 0)
            return true;
    }
    return false;
}

void click(QWidget* target, const QPoint& at)
{
    const QPointer<QWidget> widget = target;
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        if (!widget)
            return;
        QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
}

/// What a host and its user do in a session, step by step; each asks the host something.
class Session final
{
public:
    Session(OracleHost& host, Panel& panel)
        : m_host(host)
        , m_panel(panel)
    {
    }

    static constexpr int kSteps = 14;

    void perform(int step)
    {
        switch (step) {
        case 0:
            m_host.tellHere<TreeReset>();
            break;
        case 1:
            m_host.project.add(group(101));
            m_host.tellHere<GroupAdded>(identity(101));
            break;
        case 2:
            m_host.project.add(processor(5, 101));
            m_host.tellHere<ProcessorAdded>(identity(5));
            break;
        case 3:
            m_host.project.add(processor(6));
            m_host.project.add(processor(7));
            m_host.tellHere<ProcessorsAdded>(QList<QUuid>{identity(6), identity(7)});
            break;
        case 4:
            m_host.tellHere<ProcessorChanged>(identity(1));
            break;
        case 5:
            called(QStringLiteral("SetCurrentProcessor"),
                   [&] { m_panel.area()->SetCurrentProcessor(identity(2)); });
            break;
        case 6:
            called(QStringLiteral("DetectDevices"), [&] { m_panel.area()->DetectDevices(); });
            break;
        case 7: {
            ProcessorTreeSnapshot snapshot;
            called(QStringLiteral("GetProcessorTree with onlyAccepted"),
                   [&] { m_panel.area()->GetProcessorTree(snapshot, true); });
            break;
        }
        case 8:
            m_host.current = identity(3);
            m_host.tellHere<CurrentProcessorChanged>();
            settle();
            break;
        case 9:
            m_host.tellHere<CurrentDeviceSetChanged>(GUID{1, 0, 0, {}}, twoSets());
            settle();
            break;
        case 10:
            m_host.tellHere<LanUsbProcessorIp>();
            settle();
            break;
        case 11:
            if (QTreeView* const view = m_panel.view()) {
                const QModelIndex root = view->model()->index(0, 0);
                const QModelIndex last =
                    view->model()->index(view->model()->rowCount(root) - 1, 0, root);
                const Call call(QStringLiteral("a click into the tree"));
                click(view->viewport(), view->visualRect(last).center());
            }
            break;
        case 12:
            m_host.project.remove(identity(100));
            m_host.tellHere<NodeRemoved>(identity(100));
            break;
        default:
            m_host.project.remove(identity(2));
            m_host.tellHere<NodesRemoved>(QList<QUuid>{identity(2)});
            break;
        }
    }

private:
    static QList<SDeviceSetInfo> twoSets()
    {
        SDeviceSetInfo first{};
        first.id.Data1 = 1;
        SDeviceSetInfo second{};
        second.id.Data1 = 2;
        return {first, second};
    }

    OracleHost& m_host;
    Panel& m_panel;
};

std::shared_ptr<OracleHost> hostWithTwoInAGroup()
{
    auto host = std::make_shared<OracleHost>();
    host->project.set({group(100)}, {processor(1, 100), processor(2), processor(3, 100)});
    return host;
}

void expectANewPanel(Test& test, const QString& after)
{
    const auto host = hostWithTwoInAGroup();
    const Panel panel(test, host);
    host->tellHere<TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("a new panel after ") + after);
}

/// Plays the session and destroys the panel in question number `last`, or in none if that is 0.
/// Returns the number of questions.
int play(Test& test, int last)
{
    const auto host = hostWithTwoInAGroup();
    const auto watched = std::make_shared<WatchedHandler>(host, false);
    const auto panel = std::make_shared<Panel>(test);
    const auto asked = std::make_shared<int>(0);
    QString question;
    watched->setBefore([&, asked](const char* operation) {
        if (!isGuiThread() || isAskedInPainting(operation) || ++*asked != last)
            return;
        question = QString::fromLatin1(operation);
        const Call call(
            QStringLiteral("the panel is destroyed in question %1, %2").arg(last).arg(question));
        panel->close();
    });
    const QPointer<QWidget> widget = panel->widget();
    panel->window()->resize(400, 600);
    panel->widget()->setGeometry(panel->window()->rect());
    panel->widget()->show();
    panel->window()->show();
    panel->layer()->m_controlHandler = watched;
    panel->initialize();
    Session session(*host, *panel);
    host->SetObserver(watched->panelObserver());
    for (int step = 0; step < Session::kSteps && panel->isAlive(); ++step)
        session.perform(step);
    settle();
    // Threads decide who asks some of the questions, so that a session may ask fewer than another.
    if (!question.isEmpty()) {
        test.check(widget.isNull(), Code::PanelDoesNotEnd,
                   QStringLiteral("the widget outlives its parent, which was destroyed in %1")
                       .arg(question));
        host->tellHere<TreeReset>();
    }
    panel->close();
    settle();
    return *asked;
}

void shouldEndInEveryQuestion(Test& test)
{
    test.allow(QStringLiteral("TSA-W28"));
    const int questions = play(test, 0);
    test.require(questions > Session::kSteps / 2, Code::OperationHasNoEffect,
                 QStringLiteral("the panel asked only %1 questions in a session").arg(questions));
    for (int last = 1; last <= questions; ++last)
        play(test, last);
    expectANewPanel(test, QStringLiteral("the end in a question"));
}

void shouldEndAfterEveryStep(Test& test)
{
    test.allow(QStringLiteral("TSA-W28"));
    for (int steps = 0; steps <= Session::kSteps; ++steps) {
        const auto host = hostWithTwoInAGroup();
        Panel panel(test, host);
        Session session(*host, panel);
        for (int step = 0; step < steps; ++step)
            session.perform(step);
        const QPointer<QWidget> widget = panel.widget();
        panel.close();
        test.check(widget.isNull(), Code::PanelDoesNotEnd,
                   QStringLiteral("the widget outlives its parent after step %1").arg(steps));
        // What is queued by now finds no panel.
        settle();
        host->tellHere<TreeReset>();
    }
    expectANewPanel(test, QStringLiteral("the end after every step"));
}

/// Threads go on telling while the panel goes.
void shouldEndWhileThreadsTell(Test& test)
{
    for (const char* code : {"TSA-W15", "TSA-W17", "TSA-W28", "TSA-E21", "TSA-E04", "TSA-W16"})
        test.allow(QString::fromLatin1(code));
    for (int round = 0; round < 20; ++round) {
        const auto host = hostWithTwoInAGroup();
        auto panel = std::make_unique<Panel>(test, host);
        const auto told = std::make_shared<std::atomic<int>>(0);
        const auto work = [&host = *host, told, &panel, round] {
            for (int step = 0; step < 30; ++step) {
                host.tellHere<TreeReset>();
                host.tellHere<ProcessorChanged>(identity(1));
                host.tellHere<MonitorStateChanged>(QList<QUuid>{identity(1), identity(2)});
                if (++*told == 10 + round) {
                    QMetaObject::invokeMethod(
                        QCoreApplication::instance(), [&panel] { panel->close(); },
                        Qt::QueuedConnection);
                }
            }
        };
        elsewhere(QList<std::function<void()>>{work, work});
        waitUntil([&] { return !panel->isAlive(); });
        test.check(!panel->isAlive(), Code::PanelDoesNotEnd,
                   QStringLiteral("the panel outlives its parent while threads tell events"));
    }
    expectANewPanel(test, QStringLiteral("the end while threads tell"));
}

/// The application quits while the panel lives and threads tell.
void shouldEndWithTheApplication(Test& test)
{
    for (const char* code : {"TSA-W15", "TSA-W17", "TSA-W28", "TSA-E21", "TSA-E04"})
        test.allow(QString::fromLatin1(code));
    const auto host = hostWithTwoInAGroup();
    const Panel panel(test, host);
    host->tell<TreeReset>();
    {
        const Call call(QStringLiteral("aboutToQuit"));
        QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit",
                                  Qt::DirectConnection);
    }
    // Nobody handles the GUI thread's events now, and no event may wait for that.
    std::thread teller([&] {
        host->tellHere<ProcessorChanged>(identity(1));
        host->tellHere<TreeReset>();
    });
    const Call call(QStringLiteral("the host joins its thread, which tells events"));
    teller.join();
}

} // namespace

Catalogue teardownTests()
{
    return {
        {"teardown.steps", 8, "the panel ends after every step of a session",
         shouldEndAfterEveryStep},
        {"teardown.questions", 8, "the panel ends inside every question of a session",
         shouldEndInEveryQuestion},
        {"teardown.threads", 8, "the panel ends while threads tell events",
         shouldEndWhileThreadsTell},
        {"teardown.quit", 8, "nobody waits for a panel whose application quits",
         shouldEndWithTheApplication},
    };
}
