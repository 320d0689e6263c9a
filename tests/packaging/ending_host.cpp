// A host that ends its process while threads are inside the panel's library: ending_host WAY

#include "Interface/HostEvents.h"
#include "tests/packaging/LibraryHost.h"
#include "tests/support/Latch.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QTimer>
#include <QTreeView>
#include <QWidget>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace {

constexpr int kExitCode = 42;

/// What threads use until the process has ended. Never destroyed.
struct Host
{
    std::shared_ptr<FakeHandler> handler = std::make_shared<FakeHandler>();
    IAbstractLayerInterface* layer = nullptr; // owned by its Qt parent, the window
    Latch asked;
    Latch never;
};

Host& host()
{
    static auto* const instance = new Host;
    return *instance;
}

bool open(QWidget& window)
{
    const TargetSelectAreaInit init = Library::init();
    if (!init || !init(&host().layer, &window))
        return false;
    host().layer->m_controlHandler = host().handler;
    return host().layer->Initialize();
}

template <typename Event, typename... Arguments>
void notify(Arguments... arguments)
{
    CSubject subject;
    subject.Attach(host().handler->observer);
    Event::tell(subject, arguments...);
}

/// Delivers an event on a thread that nobody joins.
template <typename Event, typename Argument>
std::future<void> notifyElsewhere(Argument argument)
{
    std::promise<void> told;
    std::future<void> future = told.get_future();
    std::thread([argument, told = std::move(told)]() mutable {
        notify<Event>(argument);
        told.set_value();
    }).detach();
    return future;
}

/// Leaves one thread waiting in the library for the GUI thread, and the library's own thread in a
/// question without end.
bool occupyThreads()
{
    using namespace std::chrono_literals;
    host().handler->setProject({}, {processor(1)});
    notify<HostEvents::TreeReset>();
    host().handler->setProject({}, {processor(1), processor(2)});
    host().handler->answered = [](const QString& question, const QUuid& id) {
        if (question != QLatin1String("GetProcessorNode"))
            return;
        host().asked.arrive();
        if (id == identity(1))
            host().never.wait(1, 24h);
    };
    notify<HostEvents::MonitorStateChanged>(QList<QUuid>{identity(1)});
    if (!host().asked.wait(1))
        return false;
    const auto change = notifyElsewhere<HostEvents::ProcessorAdded>(identity(2));
    return host().asked.wait(2) && change.wait_for(100ms) == std::future_status::timeout;
}

int quit()
{
    QTimer::singleShot(0, [] { QCoreApplication::exit(kExitCode); });
    return QCoreApplication::exec();
}

/// Ends the process where the waiting thread's change is half made.
int exitInChange()
{
    const auto views = host().layer->GetWidget()->findChildren<QTreeView*>();
    for (const QTreeView* view : views) {
        QObject::connect(view->model(), &QAbstractItemModel::rowsInserted,
                         [] { std::exit(kExitCode); });
    }
    return QCoreApplication::exec();
}

int unload()
{
    return Library::unload() ? kExitCode : EXIT_FAILURE;
}

const std::map<std::string, std::function<int()>>& ways()
{
    static const std::map<std::string, std::function<int()>> all{
        {"return", [] { return kExitCode; }},
        {"exit", []() -> int { std::exit(kExitCode); }},
        {"exit-at-once", []() -> int { std::_Exit(kExitCode); }},
        {"exit-in-change", exitInChange},
        {"quit", quit},
        {"unload", unload},
    };
    return all;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const auto way = ways().find(argc == 2 ? argv[1] : "");
    QWidget window;
    if (way == ways().end() || !open(window) || !occupyThreads()) {
        std::cerr << "no thread is inside the library, or nobody knows how to end\n";
        return EXIT_FAILURE;
    }
    return way->second();
}
