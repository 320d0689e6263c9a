#include "sdk/validate/Catalogue.h"
#include "sdk/validate/OracleHost.h"
#include "sdk/validate/PaintCount.h"
#include "sdk/validate/Panel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QTreeView>

namespace {

const QString kManagement = QStringLiteral("IP address management");

QString refused(const QString& operation)
{
    return operation + QStringLiteral(" has not the effect that its header promises");
}

void shouldDetectDevices(Test& test)
{
    const auto host = hostOfThree();
    host->detectCode = 4711;
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    const quint32 code =
        called(QStringLiteral("DetectDevices"), [&] { return panel.area()->DetectDevices(); });
    test.check(
        host->detections == 1, Code::OperationHasNoEffect,
        QStringLiteral("DetectDevices asks DetectAllDevices %1 times").arg(host->detections));
    test.check(code == 4711, Code::OperationHasNoEffect,
               QStringLiteral("DetectDevices answers %1 for the handler's 4711").arg(code));
}

void shouldHandOutTheTree(Test& test)
{
    const auto host = hostOfThree();
    host->refused = {identity(1), identity(3)};
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    expectTree(test, panel, QStringLiteral("G100[P1],P2,P3"), Code::OperationHasNoEffect,
               QStringLiteral("GetProcessorTree"));
    ProcessorTreeSnapshot snapshot;
    snapshot.processors.append(processor(99));
    called(QStringLiteral("GetProcessorTree with onlyAccepted"),
           [&] { panel.area()->GetProcessorTree(snapshot, true); });
    test.compare(describe(snapshot.groups, snapshot.processors), QStringLiteral("G100[],P2"),
                 Code::OperationHasNoEffect, QStringLiteral("GetProcessorTree with onlyAccepted"));
}

void shouldHandOnTheHostsProcessors(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    const QList<ProcessorNode> nodes = called(QStringLiteral("GetAllProcessorNodes"),
                                              [&] { return panel.area()->GetAllProcessorNodes(); });
    test.compare(describe({}, nodes), QStringLiteral("P1,P2,P3"), Code::OperationHasNoEffect,
                 QStringLiteral("GetAllProcessorNodes"));
}

void shouldBeReadOnly(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    const auto* const add =
        panel.widget()->findChild<QAbstractButton*>(QStringLiteral("BGTransparent"));
    test.require(add, Code::WrongWidget, QStringLiteral("there is no button to add processors"));
    called(QStringLiteral("SetReadOnly true"), [&] { panel.area()->SetReadOnly(true); });
    test.check(!add->isEnabled(), Code::OperationHasNoEffect,
               refused(QStringLiteral("SetReadOnly(true)")));
    called(QStringLiteral("SetReadOnly false"), [&] { panel.area()->SetReadOnly(false); });
    test.check(add->isEnabled(), Code::OperationHasNoEffect,
               refused(QStringLiteral("SetReadOnly(false)")));
}

void shouldSelect(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("before the choice"));
    const auto select = [&](const QUuid& id) {
        called(QStringLiteral("SetCurrentProcessor %1").arg(id.toString()),
               [&] { panel.area()->SetCurrentProcessor(id); });
        settle();
    };
    select(identity(2));
    test.check(panel.currentRow() == identity(2), Code::OperationHasNoEffect,
               QStringLiteral("SetCurrentProcessor does not make the row the current one"));
    test.check(
        host->reports == 1 && host->reportedFocus == identity(2), Code::OperationHasNoEffect,
        QStringLiteral("SetCurrentProcessor reports a selection %1 times").arg(host->reports));
    for (const QUuid& id : {identity(2), identity(77), identity(100), QUuid()})
        select(id);
    test.check(panel.currentRow() == identity(2) && host->reports == 1, Code::OperationHasNoEffect,
               QStringLiteral("SetCurrentProcessor of the selected, an unknown or the null "
                              "identity, or of a group, has an effect"));
}

void shouldLock(Test& test)
{
    const auto host = hostOfThree();
    host->hasIpManagement = true;
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    const auto* const add =
        panel.widget()->findChild<QAbstractButton*>(QStringLiteral("BGTransparent"));
    const auto* const management = panel.button(kManagement);
    test.require(add && management, Code::WrongWidget,
                 QStringLiteral("the buttons to add processors and to manage addresses are not "
                                "there"));
    test.check(management->isVisible(), Code::NotStarted,
               QStringLiteral("Initialize does not show the management of addresses"));
    const auto set = [&](int key, bool locked) {
        called(QStringLiteral("SetOperationLock %1 %2").arg(key).arg(locked),
               [&] { panel.area()->SetOperationLock(key, locked); });
        return add->isEnabled() != locked && management->isEnabled() != locked;
    };
    test.check(set(3, true), Code::OperationHasNoEffect,
               refused(QStringLiteral("SetOperationLock(true)")));
    test.check(set(4, false), Code::OperationHasNoEffect,
               refused(QStringLiteral("SetOperationLock(false)")));
    const auto apply = [&](int key) {
        called(QStringLiteral("ApplyOperationLock %1").arg(key),
               [&] { panel.area()->ApplyOperationLock(key); });
        return add->isEnabled();
    };
    test.check(!apply(3), Code::OperationHasNoEffect,
               QStringLiteral("ApplyOperationLock does not bring back a lock"));
    test.check(apply(4), Code::OperationHasNoEffect,
               QStringLiteral("ApplyOperationLock does not bring back an unlocked key"));
    test.check(apply(99), Code::OperationHasNoEffect,
               QStringLiteral("ApplyOperationLock locks for a key that nobody has set"));
}

void shouldRemoveGroups(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    expectTree(test, panel, host->project.describe(), Code::TreeDiffers,
               QStringLiteral("before the removal"));
    called(QStringLiteral("RemoveAllGroups"), [&] { panel.area()->RemoveAllGroups(); });
    expectTree(test, panel, QStringLiteral("P2,P3"), Code::OperationHasNoEffect,
               QStringLiteral("RemoveAllGroups"));
}

void shouldRepaint(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    host->tell<HostEvents::TreeReset>();
    test.require(panel.view(), Code::WrongWidget, QStringLiteral("there is no tree"));
    panel.waitUntilPainted();
    const PaintCount painted(panel.view()->viewport());
    const int before = painted.count();
    called(QStringLiteral("UpdateMonitorWarningState"),
           [&] { panel.area()->UpdateMonitorWarningState(); });
    test.check(waitUntil([&] { return painted.count() > before; }), Code::OperationHasNoEffect,
               refused(QStringLiteral("UpdateMonitorWarningState")));
}

void shouldWarnOfLanUsb(Test& test)
{
    const auto host = hostOfThree();
    const Panel panel(test, host);
    called(QStringLiteral("ShowLanUsbWarning"), [&] {
        panel.area()->ShowLanUsbWarning({{"10.1.2.3", "Left wing", "Player"}});
    });
    // The warning runs an event loop of its own, in which this timer looks at it and closes it.
    bool isShown = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        QWidget* const window = QApplication::activeModalWidget();
        if (!window)
            return;
        const auto labels = window->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            isShown = isShown || label->text().contains(QLatin1String("10.1.2.3"));
        window->close();
    });
    look.start(5);
    test.check(waitUntil([&] { return isShown; }), Code::OperationHasNoEffect,
               QStringLiteral("ShowLanUsbWarning shows no window with the processor's address"));
    host->tell<HostEvents::TreeReset>();
}

} // namespace

Catalogue operationTests()
{
    return {
        {"operation.detect", 3, "DetectDevices hands on the handler's code", shouldDetectDevices},
        {"operation.tree", 3, "GetProcessorTree copies the tree", shouldHandOutTheTree},
        {"operation.nodes", 3, "GetAllProcessorNodes hands on the handler's list",
         shouldHandOnTheHostsProcessors},
        {"operation.readonly", 3, "SetReadOnly switches adding off and on", shouldBeReadOnly},
        {"operation.current", 3, "SetCurrentProcessor selects the row and reports that",
         shouldSelect},
        {"operation.lock", 3, "SetOperationLock and ApplyOperationLock lock and unlock",
         shouldLock},
        {"operation.groups", 3, "RemoveAllGroups removes groups with their processors",
         shouldRemoveGroups},
        {"operation.repaint", 3, "UpdateMonitorWarningState repaints the tree", shouldRepaint},
        {"operation.lanusb", 3, "ShowLanUsbWarning shows its list", shouldWarnOfLanUsb},
    };
}
