#include "tests/contract/FoundBreaches.h"
#include "tests/contract/ShownHost.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <stdexcept>
#include <thread>

namespace {

/// What a host does that answers slowly: longer than 50 ms.
void takeLonger()
{
    QElapsedTimer time;
    time.start();
    while (!time.hasExpired(60))
        std::this_thread::yield();
}

} // namespace

/// What the contract checks say of a handler that answers wrongly, and of requests that nothing
/// follows.
class TestContractAnswers final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTellNullAndRepeatedIdentitiesInLists();
    void shouldTellListsOfUnequalLength();
    void shouldNameTheOperationThatIsSlow();
    void shouldNameTheOperationThatThrows();
    void shouldTellAGroupThatNoEventFollows();
    void shouldSayNothingOfAGroupThatIsRefused();
    void shouldTellANameThatIsNotKept();
    void shouldTellAGroupThatIsNotDissolved_data();
    void shouldTellAGroupThatIsNotDissolved();
    void shouldSayNothingOfRequestsThatAreCarriedOut();
};

void TestContractAnswers::shouldTellNullAndRepeatedIdentitiesInLists()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    ProcessorNode nameless;
    nameless.name = QStringLiteral("Nobody");
    host.handler().setProject({group(100), group(100)}, {processor(1), nameless});
    host.notify(16);
    QTRY_VERIFY(found.has(QStringLiteral("TSA-E20")));
    QVERIFY(found.line(QStringLiteral("TSA-E20")).contains(QStringLiteral("GetAllGroupNodes")));
    QVERIFY(found.line(QStringLiteral("TSA-E19")).contains(QStringLiteral("\"Nobody\"")));
}

void TestContractAnswers::shouldTellListsOfUnequalLength()
{
    FoundBreaches found;
    ShownHost shown;
    LibraryHost& host = shown.host;
    host.handler().ipManagementAvailable = true;
    host.handler().ipAddresses =
        QStringList{QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")};
    host.handler().ipNames = QStringList{QStringLiteral("A")};
    host.layer()->Initialize();
    host.notify<int>(0, 2);
    QPushButton* manage = nullptr;
    QTRY_VERIFY([&] {
        for (auto* button : host.layer()->GetWidget()->findChildren<QPushButton*>()) {
            if (button->text().startsWith(QStringLiteral("IP address")) && button->isVisible())
                manage = button;
        }
        return manage;
    }());
    QTimer::singleShot(0, this, [] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    QTest::mouseClick(manage, Qt::LeftButton);
    QVERIFY(found.line(QStringLiteral("TSA-E29")).contains(QStringLiteral("2 addresses and 1")));
}

void TestContractAnswers::shouldNameTheOperationThatIsSlow()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().setProject({}, {processor(1)});
    host.handler().doInside(QStringLiteral("GetProcessorNode"), takeLonger);
    host.notify<QUuid>(18, identity(1));
    const QString line = found.line(QStringLiteral("TSA-W23"));
    QVERIFY2(line.contains(QStringLiteral("GetProcessorNode")), qPrintable(line));

    // A detection takes its time.
    host.handler().doInside(QStringLiteral("DetectAllDevices"), takeLonger);
    host.area()->DetectDevices();
    QCOMPARE(found.lines(QStringLiteral("TSA-W23")).size(), 1);
}

void TestContractAnswers::shouldNameTheOperationThatThrows()
{
    FoundBreaches found;
    LibraryHost host;
    QVERIFY(host.open());
    host.handler().doInside(QStringLiteral("DetectAllDevices"),
                            [] { throw std::runtime_error("no cable"); });
    QVERIFY_EXCEPTION_THROWN(host.area()->DetectDevices(), std::runtime_error);
    const QString line = found.line(QStringLiteral("TSA-E27"));
    QVERIFY2(line.contains(QStringLiteral("DetectAllDevices")), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("\"no cable\"")), qPrintable(line));
}

void TestContractAnswers::shouldTellAGroupThatNoEventFollows()
{
    FoundBreaches found;
    ShownHost shown;
    QVERIFY(shown.select({QStringLiteral("1"), QStringLiteral("2")}));
    QTest::keyClick(&shown.tree(), Qt::Key_G, Qt::ControlModifier);
    QVERIFY(shown.host.handler().callNames().contains(QStringLiteral("CreateGroup")));
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W25")));
    const QString line = found.line(QStringLiteral("TSA-W25"));
    QVERIFY2(line.contains(QStringLiteral("CreateGroup")), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("17 or 16")), qPrintable(line));
}

void TestContractAnswers::shouldSayNothingOfAGroupThatIsRefused()
{
    FoundBreaches found;
    ShownHost shown;
    shown.host.handler().refusesGroups = true;
    QVERIFY(shown.select({QStringLiteral("1"), QStringLiteral("2")}));
    QTest::keyClick(&shown.tree(), Qt::Key_G, Qt::ControlModifier);
    QVERIFY(shown.host.handler().callNames().contains(QStringLiteral("CreateGroup")));
    QVERIFY(FoundBreaches::waitForJudgement());
    QCOMPARE(found.lines(QStringLiteral("TSA-E19")), QStringList());
    QCOMPARE(found.lines(QStringLiteral("TSA-W25")), QStringList());
}

void TestContractAnswers::shouldTellANameThatIsNotKept()
{
    FoundBreaches found;
    ShownHost shown;
    QVERIFY(shown.select({QStringLiteral("2")}));
    QVERIFY(shown.rename(QStringLiteral("Left wing")));
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W26")));
    const QString line = found.line(QStringLiteral("TSA-W26"));
    QVERIFY2(line.contains(QStringLiteral("RenameProcessor")), qPrintable(line));
    QVERIFY2(line.contains(QStringLiteral("named \"2\"")), qPrintable(line));
}

void TestContractAnswers::shouldTellAGroupThatIsNotDissolved_data()
{
    QTest::addColumn<ushort>("group");
    QTest::newRow("without members") << ushort{0};
    // The panel then requests their moves, too.
    QTest::newRow("with members") << ushort{100};
}

void TestContractAnswers::shouldTellAGroupThatIsNotDissolved()
{
    QFETCH(ushort, group);
    FoundBreaches found;
    ShownHost shown;
    shown.host.handler().setProcessor(processor(1, group));
    shown.host.notify(16);
    QVERIFY(shown.select({QStringLiteral("G100")}));
    // The panel asks before it dissolves a group with members.
    QTimer::singleShot(0, this, [] {
        if (auto* question = QApplication::activeModalWidget())
            QTest::keyClick(question, Qt::Key_Return);
    });
    QTest::keyClick(&shown.tree(), Qt::Key_Delete);
    QVERIFY(shown.host.handler().callNames().contains(QStringLiteral("Ungroup")));
    const auto told = [&] {
        return !found.lines(QStringLiteral("TSA-W26"))
                    .filter(QStringLiteral("GetGroupNode"))
                    .isEmpty();
    };
    QTRY_VERIFY(told());
}

void TestContractAnswers::shouldSayNothingOfRequestsThatAreCarriedOut()
{
    FoundBreaches found;
    ShownHost shown;
    FakeHandler& handler = shown.host.handler();
    QVERIFY(shown.select({QStringLiteral("2")}));
    QVERIFY(shown.rename(QStringLiteral("Left wing")));
    QTRY_VERIFY(handler.callNames().contains(QStringLiteral("RenameProcessor")));
    ProcessorNode renamed = processor(2);
    renamed.name = QStringLiteral("Left wing");
    handler.setProcessor(renamed);

    handler.createdGroup = identity(200);
    QVERIFY(shown.select({QStringLiteral("1"), QStringLiteral("Left wing")}));
    QTest::keyClick(&shown.tree(), Qt::Key_G, Qt::ControlModifier);
    handler.setGroup(group(200));
    shown.host.notify<QUuid>(17, identity(200));
    QTRY_VERIFY(!handler.memberships.isEmpty());
    renamed.groupId = identity(200);
    handler.setProcessor(renamed);
    handler.setProcessor(processor(1, 200));
    QVERIFY(FoundBreaches::waitForJudgement());
    QCOMPARE(found.lines(QStringLiteral("TSA-W25")), QStringList());
    QCOMPARE(found.lines(QStringLiteral("TSA-W26")), QStringList());
}

TSA_TEST_MAIN(TestContractAnswers)

#include "tst_contractanswers.moc"
