// A small host with the recorder around its handler: keeps three processors in memory, tells events
// on its own threads, and does what a user would do.
//
//     recorded_host LIBRARY RECORDING

#include "Interface/HostEvents.h"
#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectHandlerBase.h"
#include "host/widgets/HostTheme.h"
#include "sdk/record/Recorder.h"

#include <QApplication>
#include <QLibrary>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <atomic>
#include <functional>
#include <iostream>
#include <memory>
#include <mutex>
#include <thread>

namespace {

constexpr int kPatienceMs = 10000;

QUuid idOf(int number)
{
    return QUuid(0x5b2d1f0c, 0, 0, 0, 0, 0, 0, 0, 0, 0, static_cast<uchar>(number));
}

/// The names that are hard to write: one would be a line of its own, one is no valid Unicode.
QString nameOf(int number)
{
    const QString names[] = {
        QStringLiteral(
            "Left\n{\"seq\":1,\"kind\":\"call\",\"name\":\"ClearIPList\"}\n\t\"\\ \u0001"),
        QStringLiteral("\u5c55\u89c8 \U0001F600"),
        QString(QChar(0xD83D)) + QStringLiteral(" half")};
    return names[number];
}

class Handler final : public CTargetSelectHandlerBase
{
public:
    Handler()
    {
        for (int number = 0; number < 3; ++number) {
            ProcessorNode node;
            node.id = idOf(number);
            node.name = nameOf(number);
            node.number = number;
            node.hostAttribute8 = (qint64{1} << 60) + number;
            node.hostAttribute12 = 60.1F;
            m_processors.append(node);
        }
    }

    void SetObserver(CObserver* observer) override { m_observer = observer; }

    QList<ProcessorNode> GetAllProcessorNodes() override
    {
        const std::lock_guard guard(m_mutex);
        return m_processors;
    }

    ProcessorNode GetProcessorNode(const QUuid& id) override
    {
        const std::lock_guard guard(m_mutex);
        for (const ProcessorNode& node : m_processors) {
            if (node.id == id)
                return node;
        }
        return {};
    }

    QUuid GetCurrentProcessorId() override { return idOf(1); }
    bool CanRenameProcessor(const QUuid&) override { return true; }
    bool RenameProcessor(const QUuid&, const QString&) override { return true; }
    void ReportSelection(const QUuid&, const QList<QUuid>&, const QList<SGroupSelection>&,
                         const QUuid&) override
    {
    }

    /// Tells its event inside the request.
    void DeleteProcessors(const QList<QUuid>& processors) override
    {
        remove(processors);
        tell([&](CSubject& subject) { HostEvents::NodesRemoved::tell(subject, processors); });
    }

    void add(const ProcessorNode& node)
    {
        const std::lock_guard guard(m_mutex);
        m_processors.append(node);
    }

    /// Delivers an event on the calling thread.
    void tell(const std::function<void(CSubject&)>& event)
    {
        CSubject subject;
        subject.Attach(m_observer);
        event(subject);
    }

private:
    void remove(const QList<QUuid>& ids)
    {
        const std::lock_guard guard(m_mutex);
        QList<ProcessorNode> kept;
        for (const ProcessorNode& node : qAsConst(m_processors)) {
            if (!ids.contains(node.id))
                kept.append(node);
        }
        m_processors = kept;
    }

    std::mutex m_mutex;
    QList<ProcessorNode> m_processors; // guarded by m_mutex
    CObserver* m_observer = nullptr;
};

bool waitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, kPatienceMs);
}

/// Tells an event on a thread of its own, and waits for its end as the window goes on.
void tellElsewhere(Handler& handler, const std::function<void(CSubject&)>& event)
{
    std::atomic<bool> isDone{false};
    std::thread thread([&] {
        handler.tell(event);
        isDone = true;
    });
    waitFor([&] { return isDone.load(); });
    thread.join();
}

QModelIndex row(const QTreeView& tree, int number)
{
    return tree.model()->index(number, 0, tree.model()->index(0, 0));
}

void click(QTreeView& tree, int number)
{
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      tree.visualRect(row(tree, number)).center());
}

/// Answers the question that a key opens.
void confirm()
{
    const auto press = [] {
        QWidget* box = QApplication::activeModalWidget();
        const auto buttons = box ? box->findChildren<QPushButton*>() : QList<QPushButton*>();
        for (QPushButton* button : buttons) {
            if (button->text().remove(QLatin1Char('&')) == QLatin1String("Yes"))
                QTest::mouseClick(button, Qt::LeftButton);
        }
    };
    QTimer::singleShot(0, qApp, press);
}

/// Returns what went wrong; empty for nothing.
QString use(QTreeView& tree, Handler& handler)
{
    const auto rows = [&] { return tree.model()->rowCount(tree.model()->index(0, 0)); };
    handler.tell([](CSubject& subject) { HostEvents::TreeReset::tell(subject); });
    if (!waitFor([&] { return rows() == 3; }))
        return QStringLiteral("the tree is not filled");
    tree.expandAll();
    ProcessorNode fourth;
    fourth.id = idOf(3);
    fourth.name = QStringLiteral("Fourth");
    fourth.number = 3;
    handler.add(fourth);
    tellElsewhere(handler,
                  [&](CSubject& subject) { HostEvents::ProcessorAdded::tell(subject, fourth.id); });
    if (!waitFor([&] { return rows() == 4; }))
        return QStringLiteral("the processor is not added");
    // Wrong types: the panel logs them and goes on.
    tellElsewhere(handler, [](CSubject& subject) { subject.Notify<QString>(18, nameOf(0)); });
    tellElsewhere(handler, [](CSubject& subject) { subject.Notify<long double>(18, 1.0L); });
    click(tree, 0);
    QTest::keyClick(&tree, Qt::Key_F2);
    if (!waitFor([] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }))
        return QStringLiteral("no name can be edited");
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("New name"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    click(tree, 2);
    confirm();
    QTest::keyClick(&tree, Qt::Key_Delete);
    if (!waitFor([&] { return rows() == 3; }))
        return QStringLiteral("nothing is deleted");
    click(tree, 1);
    return {};
}

int fail(const QString& problem)
{
    std::cerr << "recorded_host: " << qPrintable(problem) << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ApplyHostTheme(application);
    const QStringList arguments = QApplication::arguments();
    CRecorder recorder;
    QString problem;
    if (!recorder.open(arguments.value(2), problem))
        return fail(problem);
    QLibrary library(arguments.value(1));
    const auto init =
        reinterpret_cast<TargetSelectAreaInit>(library.resolve(TARGETSELECTAREA_INIT_SYMBOL));
    QWidget window;
    IAbstractLayerInterface* layer = nullptr;
    if (!init || !init(&layer, &window))
        return fail(library.errorString());
    const auto handler = std::make_shared<Handler>();
    auto* area = recorder.record(dynamic_cast<ITargetSelectAreaInterface*>(layer));
    area->m_controlHandler = recorder.record(handler);
    area->Initialize();
    window.resize(300, 500);
    area->GetWidget()->resize(300, 500);
    window.show();
    QApplication::setActiveWindow(&window);
    auto* tree = window.findChild<QTreeView*>();
    if (!tree || !QTest::qWaitForWindowActive(&window))
        return fail(QStringLiteral("there is no tree"));
    problem = use(*tree, *handler);
    if (!problem.isEmpty())
        return fail(problem);
    ProcessorTreeSnapshot snapshot;
    area->GetProcessorTree(snapshot, false);
    return recorder.hasFailed() ? 1 : 0;
}
