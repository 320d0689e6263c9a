#include "tests/contract/FoundBreaches.h"
#include "tests/packaging/LibraryHost.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QProcess>
#include <QTest>

#include <thread>

namespace {

/// A handler of some other layer's.
class OtherHandler final : public IAbstractControlInterface
{
};

} // namespace

/// What the contract checks say of a host that builds, docks, starts and ends the panel wrongly.
class TestContractLife final : public QObject
{
    Q_OBJECT

private slots:
    void shouldSayNothingOfARightHost();
    void shouldSayNothingUnlessAsked();
    void shouldTellThatThereIsNoHandler();
    void shouldTellAHandlerOfAnotherClass();
    void shouldTellThatNoEventCame();
    void shouldTellThatThePanelIsNotShown();
    void shouldTellADockThatDoesNotHoldThePanel();
    void shouldTellAnotherHandler();
    void shouldTellTheWrongThread();
    void shouldTellThatThereIsNoParent();
    void shouldTellASecondParent();
    void shouldTellUsesOfADeadPanel();
    void shouldTellEventsAfterTheEnd();
    void shouldTellThatThereIsNoApplication();
    void shouldEndTheProcessAtTheFirstFindingIfAsked();
};

void TestContractLife::shouldSayNothingOfARightHost()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({group(100)}, {processor(1, 100), processor(2)});
    host.window()->show();
    QVERIFY(host.notify(16));
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1],2"));
    host.handler().setProject({group(100), group(101)}, {processor(1, 100), processor(2)});
    QVERIFY(host.notify<QUuid>(17, identity(101)));
    host.handler().setProject({group(100)}, {processor(1, 100)});
    QVERIFY(host.notify<QUuid>(20, identity(101)));
    QVERIFY(host.notify<QList<QUuid>>(21, {identity(2)}));
    QVERIFY(host.notify<QUuid>(25, identity(1)));
    QTRY_COMPARE(host.tree(), QStringLiteral("G100[1]"));
    QVERIFY(FoundBreaches::waitForJudgement());
    QCOMPARE(found.codes(), QStringList());
}

void TestContractLife::shouldSayNothingUnlessAsked()
{
    const LogTrap log;
    LibraryHost host;
    QVERIFY(host.open());
    QVERIFY(host.notify<QUuid>(3, identity(1)));
    QVERIFY(host.notify<QUuid>(25, identity(1)));
    QCOMPARE(log.messages(), QStringList());
}

void TestContractLife::shouldTellThatThereIsNoHandler()
{
    FoundBreaches found;
    QWidget window;
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, &window));
    QVERIFY(!found.has(QStringLiteral("TSA-E01")));
    layer->Initialize();
    QVERIFY(found.line(QStringLiteral("TSA-E01")).contains(QStringLiteral("m_controlHandler")));
    QVERIFY(!found.has(QStringLiteral("TSA-E02")));
}

void TestContractLife::shouldTellAHandlerOfAnotherClass()
{
    FoundBreaches found;
    QWidget window;
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, &window));
    layer->m_controlHandler = std::make_shared<OtherHandler>();
    layer->Initialize();
    QVERIFY(found.has(QStringLiteral("TSA-E02")));
    QVERIFY(!found.has(QStringLiteral("TSA-E01")));
}

void TestContractLife::shouldTellThatNoEventCame()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.window()->show();
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W03")));
    QVERIFY(!found.has(QStringLiteral("TSA-W10")));
}

void TestContractLife::shouldTellThatThePanelIsNotShown()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    QVERIFY(host.notify(16));
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W10")));
    QVERIFY(!found.has(QStringLiteral("TSA-W03")));
}

void TestContractLife::shouldTellADockThatDoesNotHoldThePanel()
{
    for (const bool isHeld : {false, true}) {
        FoundBreaches found;
        const auto handler = std::make_shared<FakeHandler>();
        QMainWindow window;
        auto* const dock = new QDockWidget(&window);
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        IAbstractLayerInterface* layer = nullptr;
        QVERIFY(Library::init()(&layer, dock));
        if (isHeld)
            dock->setWidget(layer->GetWidget());
        window.show();
        layer->m_controlHandler = handler;
        layer->Initialize();
        QTRY_VERIFY(found.has(QStringLiteral("TSA-W03")));
        QCOMPARE(found.line(QStringLiteral("TSA-W10")).contains(QStringLiteral("setWidget")),
                 !isHeld);
    }
}

void TestContractLife::shouldTellAnotherHandler()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    const auto before = host.layer()->m_controlHandler;
    host.layer()->m_controlHandler = std::make_shared<FakeHandler>();
    host.area()->DetectDevices();
    host.area()->GetAllProcessorNodes();
    QVERIFY(!found.line(QStringLiteral("TSA-E05")).isEmpty());
    host.layer()->Reconnect();
    host.layer()->m_controlHandler = before;
    host.layer()->Reconnect();
    host.area()->DetectDevices();
    QCOMPARE(found.lines(QStringLiteral("TSA-E05")).size(), 1);
}

void TestContractLife::shouldTellTheWrongThread()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    std::thread([&] { host.layer()->GetWidget(); }).join();
    const QString line = found.line(QStringLiteral("TSA-E09"));
    QVERIFY2(line.contains(QStringLiteral("GetWidget")), qPrintable(line));
    QVERIFY(line.contains(QStringLiteral("[thread 0x")));

    IAbstractLayerInterface* layer = nullptr;
    host.closeWindow();
    std::thread([&] { Library::init()(&layer, nullptr); }).join();
    QVERIFY(found.has(QStringLiteral("TSA-E07")));
    QVERIFY(!layer);
}

void TestContractLife::shouldTellThatThereIsNoParent()
{
    FoundBreaches found;
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, nullptr));
    QVERIFY(found.has(QStringLiteral("TSA-W08")));
    delete layer;
}

void TestContractLife::shouldTellASecondParent()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    QWidget other;
    IAbstractLayerInterface* layer = nullptr;
    QVERIFY(Library::init()(&layer, &other));
    QVERIFY(found.has(QStringLiteral("TSA-W11")));

    FoundBreaches moved;
    layer->GetWidget()->setParent(host.window());
    layer->GetWidget()->show();
    host.window()->show();
    QVERIFY(!moved.has(QStringLiteral("TSA-W11")));
    layer->GetWidget()->setParent(&other);
    QVERIFY(moved.has(QStringLiteral("TSA-W11")));
}

void TestContractLife::shouldTellUsesOfADeadPanel()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    IAbstractLayerInterface* const layer = host.layer();
    auto* const area = host.area();
    host.closeWindow();
    QVERIFY(!layer->GetWidget());
    area->SetReadOnly(true);
    ProcessorTreeSnapshot snapshot;
    area->GetProcessorTree(snapshot, false);
    QCOMPARE(area->DetectDevices(), 0U);
    const QStringList lines = found.lines(QStringLiteral("TSA-E12"));
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(1).contains(QStringLiteral("SetReadOnly")));
    delete layer;
    QCOMPARE(found.lines(QStringLiteral("TSA-E12")).size(), 5);
}

void TestContractLife::shouldTellEventsAfterTheEnd()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.closeWindow();
    QVERIFY(host.notify(16));
    QVERIFY(found.line(QStringLiteral("TSA-W28")).contains(QStringLiteral("event 16")));
}

/// Runs this program once more, without an application and with `wish` as switch.
static QString outputOfAnother(const QStringList& arguments, const QString& wish, bool& ended)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TARGETSELECT_CHECK"), wish);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    ended = process.waitForFinished(60000);
    ended = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return QString::fromLocal8Bit(process.readAllStandardError());
}

void TestContractLife::shouldTellThatThereIsNoApplication()
{
    bool ended = false;
    const QString output =
        outputOfAnother({QStringLiteral("--no-application")}, QStringLiteral("1"), ended);
    QVERIFY2(ended, qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("TSA-E06")), qPrintable(output));
}

void TestContractLife::shouldEndTheProcessAtTheFirstFindingIfAsked()
{
    bool ended = true;
    const QString output =
        outputOfAnother({QStringLiteral("--no-application")}, QStringLiteral("fatal"), ended);
    QVERIFY2(!ended, qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("TSA-E06")), qPrintable(output));
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--no-application") == 0) {
        IAbstractLayerInterface* layer = nullptr;
        return Library::init()(&layer, nullptr) ? 1 : 0;
    }
    QApplication application(argc, argv);
    TestContractLife test;
    return runTests(test, argc, argv);
}

#include "tst_contractlife.moc"
