// One start of a program, in a process of its own: from the application object to the first painted
// frame, either with the panel loaded as a host loads it that has it show all it can, or with a
// bare tree of the same rows. Prints the nanoseconds this took and the peak of its memory in KiB.

#include "Interface/ObserverPattern"
#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "benchmarks/support/OpenHandler.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLibrary>
#include <QStandardItemModel>
#include <QTreeView>

#include <cstdlib>
#include <iostream>
#include <memory>

namespace {

constexpr int kProcessors = 255;
constexpr quint32 kTreeReset = 16;

[[noreturn]] void fail(const QString& why)
{
    std::cerr << qPrintable(why) << '\n';
    std::_Exit(EXIT_FAILURE);
}

/// Notices that the viewport of a tree with all the rows was painted.
class PaintWatch final : public QObject
{
public:
    bool isPainted() const { return m_painted; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        const auto* view = qobject_cast<QTreeView*>(watched->parent());
        if (view && view->viewport() == watched && view->isVisible() && view->model())
            m_painted = view->model()->index(0, 0).data().toString() == rootText();
        return false;
    }

    static QString rootText() { return QStringLiteral("All processors(%1)").arg(kProcessors); }

private:
    bool m_painted = false;
};

class Host
{
public:
    Host()
    {
        m_layout.setContentsMargins(0, 0, 0, 0);
        m_window.resize(220, 800);
    }

    void showPanel(const QString& libraryPath)
    {
        QLibrary library(libraryPath);
        const auto init =
            reinterpret_cast<TargetSelectAreaInit>(library.resolve(TARGETSELECTAREA_INIT_SYMBOL));
        if (!init)
            fail(library.errorString());
        IAbstractLayerInterface* layer = nullptr;
        if (!init(&layer, &m_window))
            fail(QStringLiteral("the panel does not start"));
        m_layout.addWidget(layer->GetWidget());
        m_handler = std::make_shared<OpenHandler>(makeProject(kProcessors));
        layer->m_controlHandler = m_handler;
        layer->Initialize();
        CSubject subject;
        subject.Attach(m_handler->observer());
        subject.Notify(kTreeReset);
        m_window.show();
    }

    void showBareTree()
    {
        auto* view = new QTreeView(&m_window);
        auto* model = new QStandardItemModel(view);
        auto* root = new QStandardItem(PaintWatch::rootText());
        const Project project = makeProject(kProcessors);
        for (const ProcessorGroupNode& group : project.groups) {
            auto* groupItem = new QStandardItem(group.name);
            for (const ProcessorNode& processor : group.processors)
                groupItem->appendRow(new QStandardItem(processor.name));
            root->appendRow(groupItem);
        }
        model->appendRow(root);
        view->setHeaderHidden(true);
        view->setModel(model);
        view->expandAll();
        m_layout.addWidget(view);
        m_window.show();
    }

private:
    QWidget m_window;
    QHBoxLayout m_layout{&m_window};
    std::shared_ptr<OpenHandler> m_handler;
};

/// VmHWM of this process.
QByteArray peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        fail(status.errorString());
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first();
    }
    fail(QStringLiteral("no peak of memory in /proc/self/status"));
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    PaintWatch watch;
    qApp->installEventFilter(&watch);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2)
        fail(QStringLiteral("usage: start_child bare | panel LIBRARY"));

    QElapsedTimer timer;
    timer.start();
    Host host;
    if (arguments.size() == 2)
        host.showBareTree();
    else
        host.showPanel(arguments.at(2));
    while (!watch.isPainted())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::cout << timer.nsecsElapsed() << ' ' << peakMemory().constData() << std::endl;
    std::_Exit(EXIT_SUCCESS);
}
