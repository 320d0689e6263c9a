#include "tests/workbench/WorkbenchUnderTest.h"

#include "host/widgets/HostTheme.h"
#include "tests/support/TreeDump.h"
#include "tests/support/WorkbenchRun.h"
#include "tests/workbench/SampleRecords.h"

#include <QSettings>
#include <QTreeView>

TestSettings::TestSettings()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
    ApplyHostTheme(*qApp);
}

WorkbenchUnderTest::WorkbenchUnderTest(Notifier::Delivery delivery)
{
    session.notifier().setDelivery(delivery);
    QString problem;
    if (!session.library().load(panelLibrary(), problem))
        QTest::qFail(qPrintable(problem), __FILE__, __LINE__);
    window.openPanel();
    window.files().setAskBeforeLoss(false);
    session.store().replace(smallProject());
    window.show();
    QApplication::setActiveWindow(&window);
    waitForPanel();
}

WorkbenchUnderTest::~WorkbenchUnderTest()
{
    language.choose(Language::Choice::English);
}

void WorkbenchUnderTest::waitForPanel()
{
    QVERIFY(QTest::qWaitFor(
        [this] { return session.notifier().isIdle() && session.panelShowsProject(); }));
}

QString WorkbenchUnderTest::panelTree()
{
    for (const auto* view : session.layer()->GetWidget()->findChildren<QTreeView*>()) {
        if (view->model())
            return dumpTree(*view->model());
    }
    return {};
}

std::shared_ptr<ITargetSelectInterfaceHandler> WorkbenchUnderTest::handler()
{
    return std::dynamic_pointer_cast<ITargetSelectInterfaceHandler>(
        session.layer()->m_controlHandler);
}

ProcessorNode WorkbenchUnderTest::processor(quint32 n)
{
    const Project project = store().snapshot();
    const ProcessorNode* node = project.processor(sampleId(n));
    return node ? *node : ProcessorNode();
}

void addDeliveries()
{
    QTest::addColumn<Notifier::Delivery>("delivery");
    QTest::newRow("notifying thread") << Notifier::Delivery::NotifyingThread;
    QTest::newRow("GUI thread") << Notifier::Delivery::GuiThread;
}
