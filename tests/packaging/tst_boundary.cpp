#include "Interface/ObserverPattern"
#include "Interface/TargetSelectAreaInterface.h"
#include "tests/packaging/Library.h"
#include "tests/support/FakeHandler.h"
#include "tests/support/HostThread.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"

#include <QPointer>
#include <QTest>
#include <QWidget>

#include <memory>

namespace {
QUuid identity(ushort number)
{
    return {number, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

ProcessorNode processor(ushort number, ushort group = 0)
{
    ProcessorNode node;
    node.id = identity(number);
    node.name = QString::number(number);
    node.number = number - 1;
    if (group != 0)
        node.groupId = identity(group);
    return node;
}

ProcessorGroupNode group(ushort number)
{
    ProcessorGroupNode node;
    node.id = identity(number);
    node.name = QStringLiteral("G%1").arg(number);
    return node;
}

QString names(const QList<ProcessorNode>& processors)
{
    QStringList texts;
    for (const ProcessorNode& node : processors)
        texts.append(node.name);
    return texts.join(QLatin1Char(','));
}

/// What a host's application does with the library: a window, a handler, a thread for its events.
class Host final
{
public:
    bool open()
    {
        const TargetSelectAreaInit init = Library::init();
        if (!init || !init(&m_layer, m_window.get()))
            return false;
        m_layer->m_controlHandler = m_handler;
        return m_layer->Initialize();
    }

    QWidget* window() { return m_window.get(); }
    void closeWindow() { m_window.reset(); }
    FakeHandler& handler() { return *m_handler; }
    IAbstractLayerInterface* layer() { return m_layer; }
    ITargetSelectAreaInterface* area()
    {
        return dynamic_cast<ITargetSelectAreaInterface*>(m_layer);
    }

    template <typename... Args>
    bool notify(quint32 event, Args... arguments)
    {
        return m_thread.run([&] {
            CSubject subject;
            subject.Attach(m_handler->observer);
            subject.Notify<Args...>(event, arguments...);
        });
    }

    /// The tree as the panel hands it out: "G100[1],2".
    QString tree()
    {
        ProcessorTreeSnapshot snapshot;
        area()->GetProcessorTree(snapshot, false);
        QStringList rows;
        for (const ProcessorGroupNode& node : qAsConst(snapshot.groups))
            rows.append(QStringLiteral("%1[%2]").arg(node.name, names(node.processors)));
        if (!snapshot.processors.isEmpty())
            rows.append(names(snapshot.processors));
        return rows.join(QLatin1Char(','));
    }

private:
    std::unique_ptr<QWidget> m_window = std::make_unique<QWidget>();
    std::shared_ptr<FakeHandler> m_handler = std::make_shared<FakeHandler>();
    IAbstractLayerInterface* m_layer = nullptr; // owned by its Qt parent, the window
    HostThread m_thread;
};

} // namespace

/// The shared library as a host sees it: through its one export and the contract's headers alone.
class BoundaryTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldRefuseToHandOutNothing();
    void shouldHandOutTheSameLayerEachTime();
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
    Host host;
    QVERIFY(host.open());
    QCOMPARE(host.layer()->GetWidget()->parentWidget(), host.window());

    QWidget otherWindow;
    IAbstractLayerInterface* again = nullptr;
    QVERIFY(Library::init()(&again, &otherWindow));
    QCOMPARE(again, host.layer());
    QCOMPARE(again->GetWidget()->parentWidget(), &otherWindow);
}

void BoundaryTest::shouldReachTheHostsOwnHandler()
{
    Host host;
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
    Host host;
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
    Host host;
    QVERIFY(host.open());
    host.handler().setProject({}, {processor(1)});

    QVERIFY(host.notify<int>(21, 1));
    QCOMPARE(log.messages(), QStringList{QStringLiteral("CSubject::GetArgument:bad type cast!")});
    QCOMPARE(host.tree(), QString());
}

void BoundaryTest::shouldLiveThroughTheEndOfItsWindowAndUnloading()
{
    Host host;
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

    Host next;
    QVERIFY(next.open());
    next.handler().setProject({group(100)}, {processor(7, 100)});
    QVERIFY(next.notify(16));
    QTRY_COMPARE(next.tree(), QStringLiteral("G100[7]"));
}

TSA_TEST_MAIN(BoundaryTest)
#include "tst_boundary.moc"
