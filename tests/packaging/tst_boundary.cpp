#include "tests/packaging/Library.h"
#include "tests/packaging/LibraryHost.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"

#include <QPointer>
#include <QTest>
#include <QWidget>

#include <memory>

/// The shared library as a host sees it: through its one export and the contract's headers alone.
class BoundaryTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseToHandOutNothing();
    void shouldHandOutTheSameLayerEachTime();
    void shouldSayWhatVersionItIs();
    void shouldReachTheHostsOwnHandler();
    void shouldUnderstandTheHostsTypedEvents();
    void shouldLogAnArgumentOfAnotherType();
    void shouldLiveThroughTheEndOfItsWindowAndUnloading();
};

void BoundaryTest::shouldRefuseToHandOutNothing()
{
    const TargetSelectAreaInit init = Library::init();
    QVERIFY(init);
    QWidget window;
    QVERIFY(!init(nullptr, &window));
    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

void BoundaryTest::shouldHandOutTheSameLayerEachTime()
{
    LibraryHost host;
    QVERIFY(host.open());
    QCOMPARE(host.layer()->GetWidget()->parentWidget(), host.window());

    QWidget otherWindow;
    IAbstractLayerInterface* again = nullptr;
    QVERIFY(Library::init()(&again, &otherWindow));
    QCOMPARE(again, host.layer());
    QCOMPARE(again->GetWidget()->parentWidget(), &otherWindow);
}

void BoundaryTest::shouldSayWhatVersionItIs()
{
    LibraryHost host;
    QVERIFY(host.open());
    QCOMPARE(TargetSelectArea_Difference(*host.window()), QString());

    QWidget* const panel = host.layer()->GetWidget();
    QVERIFY(!panel->property("libraryVersion").toString().isEmpty());
    panel->setProperty("interfaceVersion", TARGETSELECTAREA_INTERFACE_VERSION + 1);
    const QString newer = TargetSelectArea_Difference(*host.window());
    QVERIFY2(newer.contains(QString::number(TARGETSELECTAREA_INTERFACE_VERSION + 1)),
             qPrintable(newer));
    panel->setProperty("interfaceVersion", QVariant());
    QVERIFY(TargetSelectArea_Difference(*host.window()).contains(QStringLiteral("none")));
    QVERIFY(!TargetSelectArea_Difference(QWidget()).isEmpty());
}

void BoundaryTest::shouldReachTheHostsOwnHandler()
{
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().detectResult = 4711;
    host.handler().setProject({}, {processor(2), processor(1)});

    QVERIFY(host.area());
    QCOMPARE(host.area()->DetectDevices(), 4711U);
    QCOMPARE(names(host.area()->GetAllProcessorNodes()), QStringLiteral("2,1"));
    QVERIFY(host.handler().observer);
}

void BoundaryTest::shouldUnderstandTheHostsTypedEvents()
{
    const LogTrap log;
    LibraryHost host;
    QVERIFY(host.open());

    host.handler().setProject({group(100)}, {processor(1, 100), processor(2), processor(3, 100)});
    QVERIFY(host.notify<QUuid>(17, identity(100)));
    QCOMPARE(host.tree(), QStringLiteral("G100[]"));
    QVERIFY(host.notify<QUuid>(18, identity(2)));
    QCOMPARE(host.tree(), QStringLiteral("G100[],2"));
    QVERIFY(host.notify<QList<QUuid>>(19, {identity(1), identity(3)}));
    QCOMPARE(host.tree(), QStringLiteral("G100[1,3],2"));
    QVERIFY((host.notify<QUuid, SPrjProcessor>(26, identity(2), SPrjProcessor())));
    QVERIFY(host.notify<QList<QUuid>>(21, {identity(1), identity(2)}));
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[3]"));
    QVERIFY(host.notify(16));
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1,3],2"));
    QVERIFY(log.messages().empty());
}

void BoundaryTest::shouldLogAnArgumentOfAnotherType()
{
    const LogTrap log;
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({}, {processor(1)});

    QVERIFY(host.notify<int>(21, 1));
    QCOMPARE(log.messages(), QStringList{QStringLiteral("CSubject::GetArgument:bad type cast!")});
    QCOMPARE(host.tree(), QString());
}

void BoundaryTest::shouldLiveThroughTheEndOfItsWindowAndUnloading()
{
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({}, {processor(1)});
    QVERIFY(host.notify<QUuid>(18, identity(1)));
    const QPointer<QWidget> panel = host.layer()->GetWidget();

    // The work thread has something to do while everything around it goes.
    for (int round = 0; round < 50; ++round)
        QVERIFY(host.notify<QList<QUuid>>(39, {identity(1)}));
    host.closeWindow();
    QVERIFY(panel.isNull());
    QVERIFY(Library::unload());
    QVERIFY(host.notify<QList<QUuid>>(39, {identity(1)}));
    QVERIFY(host.notify<QUuid>(18, identity(1)));
    QVERIFY(host.notify(16));

    LibraryHost next;
    QVERIFY(next.open());
    next.handler().setProject({group(100)}, {processor(7, 100)});
    QVERIFY(next.notify(16));
    QTRY_COMPARE(next.tree(), QStringLiteral("G100[7]"));
}

TSA_TEST_MAIN(BoundaryTest)
#include "tst_boundary.moc"
