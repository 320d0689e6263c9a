#include "Handler.h"
#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "host/common/WorkThread.h"
#include "host/widgets/HostTheme.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QTimer>

#include <memory>

/// Two groups of four processors each, and two outside.
static void openProject(Handler& handler)
{
    for (const QString& name : {QStringLiteral("Left wing"), QStringLiteral("Right wing")}) {
        ProcessorGroupNode group;
        group.name = name;
        handler.AddProcessors(handler.CreateGroup(group), 4);
    }
    handler.AddProcessors(QUuid(), 2);
}

/// Changes whether the first processor is online, and tells the panel. Any thread.
static void goOnOrOffline(Handler& handler, CSubject& subject)
{
    const QList<ProcessorNode> all = handler.processors.all();
    if (all.isEmpty())
        return;
    const QUuid id = all.first().id;
    handler.processors.change(id, [](ProcessorNode& node) { node.online = !node.online; });
    HostEvents::ProcessorChanged::tell(subject, id);
}

/// Adds a processor to the first group, as the panel's menu does, and returns 0 if the tree has it.
static int smoke(IAbstractLayerInterface* layer, Handler& handler)
{
    handler.AddProcessors(handler.groups.all().at(0).id, 1);
    ProcessorTreeSnapshot tree;
    if (auto* area = dynamic_cast<ITargetSelectAreaInterface*>(layer))
        area->GetProcessorTree(tree, false);
    QList<int> sizes{tree.processors.size()};
    for (const ProcessorGroupNode& group : qAsConst(tree.groups))
        sizes.append(group.processors.size());
    return sizes == QList<int>{2, 5, 4} ? 0 : 1;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ApplyHostTheme(application);

    // The dock owns the panel. The handler is shared, for the panel holds it while it asks.
    const auto handler = std::make_shared<Handler>();
    QMainWindow window;
    auto* dock = new QDockWidget(QStringLiteral("Targets"), &window);
    IAbstractLayerInterface* layer = nullptr;
    if (!TargetSelectArea_Init(&layer, dock))
        return 1;
    dock->setWidget(layer->GetWidget());
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    layer->m_controlHandler = handler;
    layer->Initialize();
    openProject(*handler);

    // Stands for the thread on which a host hears of its devices; it tells through a subject of its
    // own. The end of main() joins it: no event waits for the GUI thread once the loop has ended.
    CSubject subject;
    subject.Attach(handler->observer);
    CWorkThread watcher;
    watcher.start();
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &watcher, [&] {
        watcher.AppendEvent({0, [&] { goOnOrOffline(*handler, subject); }}, true);
    });
    clock.start(1000);

    window.resize(800, 600);
    window.show();
    if (QApplication::arguments().contains(QStringLiteral("--smoke")))
        QTimer::singleShot(0, &window, [&] { QApplication::exit(smoke(layer, *handler)); });
    return QApplication::exec();
}
