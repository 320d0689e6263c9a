#include "plugin/TargetSelectArea.h"
#include "plugin/TargetSelectData.h"
#include "tests/processortree/WholeTree.h"
#include "tests/support/LogTrap.h"

#include <stdexcept>

namespace {
const auto kClearAndSelect = QItemSelectionModel::ClearAndSelect;

/// A whole tree in the panel itself.
struct PanelTree
{
    PanelTree()
    {
        panel.host().setProject({testGroup(10)}, {testProcessor(1, 10), testProcessor(2, 10),
                                                  testProcessor(3), testProcessor(4)});
        panel.model().reset();
        view = panel.area().findChild<CProcessorTreeView*>();
    }

    FakeHandler& host() { return panel.host(); }
    QItemSelectionModel* selection() const { return view->selectionModel(); }
    void choose(quint32 n) { selection()->setCurrentIndex(panel.index(n), kClearAndSelect); }

    /// Returns the selected rows and the current row: "2>4".
    QString state() const
    {
        QStringList texts;
        for (const QModelIndex& row : selection()->selectedIndexes())
            texts.append(row.data().toString());
        return texts.join(QLatin1Char(',')) + QLatin1Char('>')
               + selection()->currentIndex().data().toString();
    }

    void throwIn(const QString& question)
    {
        host().doInside(question, [] { throw std::runtime_error("host"); });
    }

    TestPanel panel;
    CProcessorTreeView* view = nullptr; // the panel's
};

} // namespace

/// The host changes the selection, or throws, inside ReportSelection.
class HostInReportsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldEndWithTheProcessorChosenInTheReport();
    void shouldEndWithTheProcessorChosenInAClick();
    void shouldSelectAGroupInTheReport();
    void shouldShowTheNewCurrentProcessorToTheReport();
    void shouldIgnoreTheEchoOfTheReport();
    void shouldReportAgainAfterAHostThatThrew();
    void shouldTellOthersAfterASilentChoiceThatThrew();
    void shouldEndTheRemovalWhenTheHostThrows();
    void shouldAddAgainAfterAHostThatThrew();
};

void HostInReportsTest::shouldEndWithTheProcessorChosenInTheReport()
{
    PanelTree tree;
    tree.host().doInside(QStringLiteral("ReportSelection"),
                         [&] { tree.panel.area().SetCurrentProcessor(testId(2)); });
    tree.choose(4);
    QCOMPARE(tree.state(), QStringLiteral("2>2"));
    tree.choose(4);
    QCOMPARE(tree.state(), QStringLiteral("4>4"));
}

void HostInReportsTest::shouldEndWithTheProcessorChosenInAClick()
{
    WholeTree tree;
    tree.host().doInside(QStringLiteral("ReportSelection"), [&] {
        tree.selection()->setCurrentIndex(tree.index(2), kClearAndSelect);
    });
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(4));
    QCOMPARE(tree.selected(), QStringLiteral("2"));
    QCOMPARE(tree.selection()->currentIndex(), tree.index(2));
}

void HostInReportsTest::shouldSelectAGroupInTheReport()
{
    PanelTree tree;
    tree.host().doInside(QStringLiteral("ReportSelection"),
                         [&] { tree.selection()->select(tree.panel.index(10), kClearAndSelect); });
    tree.choose(4);
    QCOMPARE(tree.state(), QStringLiteral("G10>4"));
}

void HostInReportsTest::shouldShowTheNewCurrentProcessorToTheReport()
{
    PanelTree tree;
    tree.choose(3);
    QString state;
    tree.host().doInside(QStringLiteral("ReportSelection"), [&] { state = tree.state(); });
    tree.choose(4);
    QCOMPARE(state, QStringLiteral("4>4"));
    QCOMPARE(tree.host().selections.last().previous, testId(3));
}

void HostInReportsTest::shouldIgnoreTheEchoOfTheReport()
{
    PanelTree tree;
    tree.host().doInside(QStringLiteral("ReportSelection"), [&] {
        tree.host().currentProcessor = testId(4);
        tree.panel.notify(30);
    });
    tree.choose(4);
    QCOMPARE(tree.state(), QStringLiteral("4>4"));
    QCOMPARE(tree.host().selections.size(), 1);
}

void HostInReportsTest::shouldReportAgainAfterAHostThatThrew()
{
    PanelTree tree;
    for (const auto& question :
         {QStringLiteral("ReportSelection"), QStringLiteral("GetProcessorNode")}) {
        tree.choose(3);
        tree.throwIn(question);
        QVERIFY_EXCEPTION_THROWN(tree.choose(4), std::runtime_error);
        QVERIFY(!tree.panel.data().IsSelectionEchoGuarded());
        tree.host().selections.clear();
        tree.choose(1);
        QCOMPARE(tree.state(), QStringLiteral("1>1"));
        QCOMPARE(tree.host().selections.size(), 1);
    }
}

void HostInReportsTest::shouldTellOthersAfterASilentChoiceThatThrew()
{
    PanelTree tree;
    tree.choose(3);
    tree.throwIn(QStringLiteral("GetProcessorNode"));
    QVERIFY_EXCEPTION_THROWN(tree.panel.area().SetCurrentProcessor(testId(4)), std::runtime_error);
    QVERIFY(!tree.selection()->signalsBlocked());
    tree.host().selections.clear();
    tree.choose(2);
    QCOMPARE(tree.host().selections.size(), 1);
}

void HostInReportsTest::shouldEndTheRemovalWhenTheHostThrows()
{
    PanelTree tree;
    const LogTrap log;
    // It is the only row of the group: another one becomes current while it is removed.
    tree.panel.model().removeNode(testId(1));
    tree.choose(2);
    tree.throwIn(QStringLiteral("ReportSelection"));
    tree.panel.model().removeNode(testId(2));
    QCOMPARE(log.messages().size(), 1);
    QCOMPARE(tree.panel.dump(), QStringLiteral("All processors(2)[G10[],3,4]"));
    QVERIFY(!tree.panel.model().isChanging());
    QCOMPARE(tree.state(), QStringLiteral("3>3"));
    tree.panel.model().AppendProcessor(testProcessor(5, 10));
    QCOMPARE(tree.panel.model().getAllProcessorCount(), 3);
}

void HostInReportsTest::shouldAddAgainAfterAHostThatThrew()
{
    PanelTree tree;
    tree.throwIn(QStringLiteral("AddProcessors"));
    QVERIFY_EXCEPTION_THROWN(tree.view->AddProcessors(AddKind::One), std::runtime_error);
    QVERIFY(!tree.view->signalsBlocked());
    tree.host().clearCalls();
    tree.view->AddProcessors(AddKind::One);
    QCOMPARE(tree.host().callCount(QStringLiteral("AddProcessors")), 1);
}

TSA_TEST_MAIN(HostInReportsTest)
#include "tst_hostinreports.moc"
