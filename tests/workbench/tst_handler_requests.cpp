#include "Interface/HostRequests.h"
#include "tests/support/LogTrap.h"
#include "tests/support/WarningTrap.h"
#include "tests/workbench/HandlerUnderTest.h"

#include <QHash>
#include <QTest>

#include <algorithm>
#include <functional>

namespace {

ProcessorGroupNode groupNamed(const QString& name)
{
    ProcessorGroupNode group;
    group.name = name;
    return group;
}

} // namespace

/// The workbench answers the requests of the panel as Interface/HostRequests.h says.
class HandlerRequestsTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldRaiseWhatFollowsEachRequest_data();
    void shouldRaiseWhatFollowsEachRequest();
    void shouldNameTheEventsThatItOwes();
};

void HandlerRequestsTest::shouldRaiseWhatFollowsEachRequest_data()
{
    QTest::addColumn<int>("row");
    int row = 0;
    for (const auto& request : HostRequests::kRequests)
        QTest::newRow(request.operation) << row++;
}

void HandlerRequestsTest::shouldRaiseWhatFollowsEachRequest()
{
    QFETCH(int, row);
    const HostRequests::Request& request = HostRequests::kRequests[row];
    using Call = std::function<void(WorkbenchHandler&)>;
    const QHash<QString, Call> calls{
        {QStringLiteral("AddProcessors"), [](auto& host) { host.AddProcessors(sampleId(1), 2); }},
        {QStringLiteral("AddProcessorsWithIps"),
         [](auto& host) { host.AddProcessorsWithIps(QUuid(), {0x0A000020}); }},
        {QStringLiteral("AddProcessorsFromIpList"),
         [](auto& host) {
             host.AddProcessorsFromIpList(QUuid(), {QStringLiteral("10.0.0.50(A)")});
         }},
        {QStringLiteral("DeleteProcessors"),
         [](auto& host) {
             host.PreDeleteProcessors({sampleId(12)});
             host.DeleteProcessors({sampleId(12)});
         }},
        {QStringLiteral("CreateGroup"),
         [](auto& host) { host.CreateGroup(groupNamed(QStringLiteral("New"))); }},
        {QStringLiteral("Ungroup"), [](auto& host) { host.Ungroup(sampleId(1)); }},
        {QStringLiteral("SetProcessorGroup"),
         [](auto& host) {
             host.SetProcessorGroup(host.GetGroupNode(sampleId(2)), sampleId(2), {sampleId(11)});
         }},
        {QStringLiteral("RenameProcessor"),
         [](auto& host) { host.RenameProcessor(sampleId(11), QStringLiteral("Left")); }},
        {QStringLiteral("RenameGroup"),
         [](auto& host) { host.RenameGroup(sampleId(1), QStringLiteral("Left")); }},
    };
    const Call call = calls.value(QString::fromLatin1(request.operation));
    QVERIFY2(call, "a request without a call here");

    LogTrap log;
    HandlerUnderTest test;
    test.events();
    call(test.handler);
    const QStringList numbers = test.events().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const bool isAnswered = std::any_of(numbers.begin(), numbers.end(), [&](const QString& number) {
        return HostRequests::isFollowedBy(request, number.toUInt());
    });
    QCOMPARE(isAnswered, !HostRequests::eventNumbers(request).isEmpty());
    QCOMPARE(log.take(), QStringList());
}

void HandlerRequestsTest::shouldNameTheEventsThatItOwes()
{
    LogTrap log;
    HandlerUnderTest test;
    const auto reply = [&](HostReply when) {
        test.store.changeAnswers([&](HandlerAnswers& answers) { answers.hostReply = when; });
    };
    reply(HostReply::AfterReturn);
    test.handler.CreateGroup(groupNamed(QStringLiteral("New")));
    test.handler.RenameGroup(sampleId(1), QStringLiteral("Left"));
    QCOMPARE(log.take(), QStringList{QStringLiteral("event 17 or 16 is still owed")});
    QTRY_COMPARE(test.observer.numbers(), QStringLiteral("17"));
    QCOMPARE(log.take(), QStringList());

    reply(HostReply::BeforeReturn);
    test.handler.AddProcessors(QUuid(), 0);
    QCOMPARE(log.take(), QStringList{QStringLiteral("no event 18 or 19 or 16 was raised")});
}

TSA_TEST_MAIN(HandlerRequestsTest)

#include "tst_handler_requests.moc"
