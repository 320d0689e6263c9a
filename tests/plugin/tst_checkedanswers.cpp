#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "tests/plugin/Telling.h"
#include "tests/support/ReferenceTree.h"

namespace {

enum class Answer { Default, Another };

ProcessorNode anotherProcessor()
{
    ProcessorNode processor = testProcessor(77);
    processor.name = QStringLiteral("another");
    return processor;
}

QString bare(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces);
}

/// Counts the rows of each identity below `parent`.
void countRows(const QAbstractItemModel& model, const QModelIndex& parent, QHash<QUuid, int>& rows)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        ++rows[index.data(UuidRole).toUuid()];
        countRows(model, index, rows);
    }
}

} // namespace

Q_DECLARE_METATYPE(Answer)

/// A record that is not the one that was asked for is no record.
class CheckedAnswersTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldTakeNoOtherRecord_data();
    void shouldTakeNoOtherRecord();
    void shouldRefreshAGroupThatTheHostAnswersFor_data();
    void shouldRefreshAGroupThatTheHostAnswersFor();
    void shouldShowNoIdentityTwice_data();
    void shouldShowNoIdentityTwice();
};

void CheckedAnswersTest::shouldTakeNoOtherRecord_data()
{
    QTest::addColumn<quint32>("event");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<Answer>("answer");
    const QPair<quint32, quint32> events[] = {{17, 101}, {18, 3}, {19, 3},  {25, 1},
                                              {26, 1},   {39, 1}, {26, 100}};
    for (const bool foreign : {true, false}) {
        for (const auto answer : {Answer::Default, Answer::Another}) {
            for (const auto& [event, id] : events) {
                QTest::addRow("%u of %u, %s record, %s", event, id,
                              answer == Answer::Default ? "default" : "another",
                              foreign ? "another thread" : "GUI thread")
                    << event << id << foreign << answer;
            }
        }
    }
}

void CheckedAnswersTest::shouldTakeNoOtherRecord()
{
    QFETCH(quint32, event);
    QFETCH(quint32, id);
    QFETCH(bool, foreign);
    QFETCH(Answer, answer);
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    telling.panel.notify(16);
    const QString before = describeTree(telling.panel.model());
    const bool isDefault = answer == Answer::Default;
    telling.panel.host().answerProcessor = isDefault ? ProcessorNode() : anotherProcessor();
    telling.panel.host().answerGroup = isDefault ? ProcessorGroupNode() : testGroup(77);
    telling.panel.host().clearCalls();
    MessageTrap::take();

    const auto tell = [&] {
        if (event == 26)
            telling.panel.notify<QUuid, SPrjProcessor>(event, testId(id), SPrjProcessor());
        else if (event == 19 || event == 39)
            telling.panel.notify<QList<QUuid>>(event, {testId(id)});
        else
            telling.panel.notify<QUuid>(event, testId(id));
    };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QVERIFY(telling.host.settle());

    QVERIFY(telling.panel.host().callCount(event == 17 ? QStringLiteral("GetGroupNode")
                                                       : QStringLiteral("GetProcessorNode"))
            > 0);
    QCOMPARE(describeTree(telling.panel.model()), before);
    // The log says which event, which identity, and what came back.
    QStringList found = MessageTrap::take();
    for (const QString& part :
         {QString::number(event), bare(testId(id)), bare(isDefault ? QUuid() : testId(77))})
        found = found.filter(part);
    QVERIFY(!found.isEmpty());
}

void CheckedAnswersTest::shouldRefreshAGroupThatTheHostAnswersFor_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::newRow("another thread") << true;
    QTest::newRow("GUI thread") << false;
}

void CheckedAnswersTest::shouldRefreshAGroupThatTheHostAnswersFor()
{
    QFETCH(bool, foreign);
    Telling telling;
    telling.panel.host().setProject({testGroup(100)}, {testProcessor(1, 100)});
    telling.panel.notify(16);
    ProcessorNode record = testProcessor(100);
    record.name = QStringLiteral("renamed");
    telling.panel.host().answerProcessor = record;
    const auto tell = [&] {
        telling.panel.notify<QUuid, SPrjProcessor>(26, testId(100), SPrjProcessor());
    };
    if (foreign)
        QVERIFY(telling.one.run(tell));
    else
        tell();
    QVERIFY(telling.host.settle());
    QCOMPARE(telling.panel.dump(), QStringLiteral("All processors(1)[renamed[1]]"));
    QCOMPARE(telling.panel.index(100).data(NodeDataRole).value<ProcessorNode>().id, testId(100));
}

void CheckedAnswersTest::shouldShowNoIdentityTwice_data()
{
    QTest::addColumn<QList<quint32>>("groups");
    QTest::addColumn<QList<quint32>>("processors");
    using Numbers = QList<quint32>;
    QTest::newRow("a processor twice") << Numbers{100} << Numbers{1, 2, 1};
    QTest::newRow("a processor twice in a row") << Numbers{} << Numbers{1, 1};
    QTest::newRow("a group twice") << Numbers{100, 101, 100} << Numbers{1, 2};
    QTest::newRow("a null processor twice") << Numbers{100} << Numbers{0, 1, 0};
    QTest::newRow("a null group twice") << Numbers{0, 100, 0} << Numbers{1, 2};
}

void CheckedAnswersTest::shouldShowNoIdentityTwice()
{
    QFETCH(QList<quint32>, groups);
    QFETCH(QList<quint32>, processors);
    Telling telling;
    QList<ProcessorGroupNode> groupRecords;
    for (const quint32 group : groups)
        groupRecords.append(testGroup(group));
    QList<ProcessorNode> records;
    for (const quint32 processor : processors)
        records.append(testProcessor(processor, processor == 2 ? 100 : 0));
    telling.panel.host().setProject(groupRecords, records);
    telling.panel.notify(16);
    QVERIFY(telling.host.settle());

    QHash<QUuid, int> rows;
    countRows(telling.panel.model(), QModelIndex(), rows);
    QCOMPARE(rows.value(testId(1)), 1);
    for (auto it = rows.begin(); it != rows.end(); ++it) {
        // The root has the null identity itself.
        const int most = it.key().isNull() ? 2 : 1;
        QVERIFY2(it.value() <= most, qPrintable(telling.panel.dump()));
    }
}

TSA_TEST_MAIN(CheckedAnswersTest)
#include "tst_checkedanswers.moc"
