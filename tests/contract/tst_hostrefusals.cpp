#include "tests/contract/FoundBreaches.h"
#include "tests/contract/ShownHost.h"
#include "tests/support/DialogDriver.h"

#include <QTest>

/// What a host does that cannot carry out a request, as Interface/HostRequests.h says: the tree
/// shows the project again.
class TestHostRefusals final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepTheNameThatTheHostRefuses();
    void shouldShowTheNameOfAGroupAgain();
    void shouldShowADissolvedGroupAgain();
    void shouldShowMovedProcessorsAgain();
    void shouldKeepProcessorsThatTheHostKeeps();
};

void TestHostRefusals::shouldKeepTheNameThatTheHostRefuses()
{
    ShownHost shown;
    shown.host.handler().acceptRename = false;
    QVERIFY(shown.select({QStringLiteral("2")}));
    QVERIFY(shown.rename(QStringLiteral("Left")));
    QTRY_VERIFY(shown.host.handler().callNames().contains(QStringLiteral("RenameProcessor")));
    QCOMPARE(shown.rows(), QStringLiteral("G100,1,2"));
}

void TestHostRefusals::shouldShowTheNameOfAGroupAgain()
{
    ShownHost shown;
    QVERIFY(shown.select({QStringLiteral("G100")}));
    QVERIFY(shown.rename(QStringLiteral("Wall")));
    QTRY_COMPARE(shown.rows(), QStringLiteral("Wall,1,2"));
    shown.host.notify(16);
    QTRY_COMPARE(shown.rows(), QStringLiteral("G100,1,2"));
}

void TestHostRefusals::shouldShowADissolvedGroupAgain()
{
    ShownHost shown;
    QVERIFY(shown.select({QStringLiteral("G100")}));
    QTest::keyClick(&shown.tree(), Qt::Key_Delete);
    QTRY_COMPARE(shown.rows(), QStringLiteral("1,2"));
    shown.host.notify(16);
    QTRY_COMPARE(shown.rows(), QStringLiteral("G100,1,2"));
}

void TestHostRefusals::shouldShowMovedProcessorsAgain()
{
    ShownHost shown;
    shown.host.handler().createdGroup = identity(200);
    QVERIFY(shown.select({QStringLiteral("1"), QStringLiteral("2")}));
    QTest::keyClick(&shown.tree(), Qt::Key_G, Qt::ControlModifier);
    shown.host.handler().setGroup(group(200));
    shown.host.notify<QUuid>(17, identity(200));
    QTRY_COMPARE(shown.rows(), QStringLiteral("G100,G200"));
    shown.host.notify(16);
    QTRY_COMPARE(shown.rows(), QStringLiteral("G100,G200,1,2"));
}

void TestHostRefusals::shouldKeepProcessorsThatTheHostKeeps()
{
    FoundBreaches found;
    ShownHost shown;
    shown.host.handler().selectedProcessors = {identity(2)};
    QVERIFY(shown.select({QStringLiteral("2")}));
    DialogDriver driver;
    driver.thenEnter();
    QTest::keyClick(&shown.tree(), Qt::Key_Delete);
    QVERIFY(shown.host.handler().callNames().contains(QStringLiteral("DeleteProcessors")));
    QTRY_VERIFY(found.has(QStringLiteral("TSA-W25")));
    QCOMPARE(shown.rows(), QStringLiteral("G100,1,2"));
}

TSA_TEST_MAIN(TestHostRefusals)

#include "tst_hostrefusals.moc"
