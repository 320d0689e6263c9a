#pragma once

#include "Interface/TargetSelectAreaInterface.h"
#include "Interface/TargetSelectInterfaceHandler.h"
#include "host/workbench/session/Session.h"
#include "host/workbench/window/Actions.h"
#include "host/workbench/window/FileCommands.h"
#include "host/workbench/window/Language.h"
#include "host/workbench/window/MainWindow.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/SampleRecords.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(Notifier::Delivery)

/// The host's look, and settings of the test's own in a folder that goes with it.
class TestSettings final
{
public:
    TestSettings();

    QString filePath(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

/// A workbench with the real library, the panel docked and the small project open.
struct WorkbenchUnderTest
{
    explicit WorkbenchUnderTest(Notifier::Delivery delivery = Notifier::Delivery::NotifyingThread);
    ~WorkbenchUnderTest();
    WorkbenchUnderTest(const WorkbenchUnderTest&) = delete;
    WorkbenchUnderTest& operator=(const WorkbenchUnderTest&) = delete;

    void waitForPanel();

    /// The panel's tree as it is on the screen.
    QString panelTree();

    /// The handler as the panel has it.
    std::shared_ptr<ITargetSelectInterfaceHandler> handler();

    QAction* action(ActionId id) { return window.actions()[id]; }
    ProjectStore& store() { return session.store(); }
    ProcessorNode processor(quint32 n);

    Session session;
    Language language;
    MainWindow window{session, language};
};

/// Rows: has a test run once for each thread on which events are delivered.
void addDeliveries();

/// The dialog of that type that is open.
template <typename Dialog>
Dialog* openDialog()
{
    Dialog* dialog = nullptr;
    const bool inTime = QTest::qWaitFor([&] {
        dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        return dialog != nullptr;
    });
    if (!inTime)
        QTest::qFail("no such dialog is open", __FILE__, __LINE__);
    return dialog;
}
