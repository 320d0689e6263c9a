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

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ApplyHostTheme(application);

    // The dock owns the panel. The handler is shared, for the panel holds it while it asks.
    const auto handler = std::make_shared<Handler>();
    QMainWindow window;
    auto* dock = new QDockWidget(QStringLiteral("Targets"), &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    IAbstractLayerInterface* layer = nullptr;
    if (!TargetSelectArea_Init(&layer, dock))
        return 1;
    if (const QString difference = TargetSelectArea_Difference(*dock); !difference.isEmpty())
        qFatal("%s", qPrintable(difference));
    dock->setWidget(layer->GetWidget());
    layer->m_controlHandler = handler;
    layer->Initialize();

    // The project: two groups of four processors each, and two outside.
    for (const QString& name : {QStringLiteral("Left wing"), QStringLiteral("Right wing")}) {
        ProcessorGroupNode group;
        group.name = name;
        handler->AddProcessors(handler->CreateGroup(group), 4);
    }
    handler->AddProcessors(QUuid(), 2);

    // Stands for the thread on which a host hears of its devices; it tells through a subject of its
    // own. The end of main() joins it: no event waits for the GUI thread once the loop has ended.
    CSubject subject;
    subject.Attach(handler->observer);
    CWorkThread watcher;
    watcher.start();
    const auto goOnOrOffline = [&] {
        const QUuid id = handler->processors.all().value(0).id;
        if (handler->processors.change(id, [](ProcessorNode& node) { node.online = !node.online; }))
            HostEvents::ProcessorChanged::tell(subject, id);
    };
    QTimer clock;
    clock.callOnTimeout([&] { watcher.AppendEvent({0, goOnOrOffline}, true); });
    clock.start(1000);

    window.resize(800, 600);
    window.show();
    if (QApplication::arguments().contains(QStringLiteral("--smoke")))
        QTimer::singleShot(0, &window, [&] { // adds a processor and looks whether the tree has it
            handler->AddProcessors(handler->groups.all().at(0).id, 1);
            ProcessorTreeSnapshot tree;
            dynamic_cast<ITargetSelectAreaInterface&>(*layer).GetProcessorTree(tree, false);
            QApplication::exit(tree.groups.value(0).processors.size() == 5 ? 0 : 1);
        });
    return QApplication::exec();
}
