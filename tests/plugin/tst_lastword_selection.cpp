#include "processortree/view/ProcessorTreeView.h"
#include "tests/plugin/ShownPanel.h"

/// What the host selects while it is told of the user's selection is what stands.
class LastWordSelectionTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepWhatTheHostSelectsInsideTheReport_data();
    void shouldKeepWhatTheHostSelectsInsideTheReport();
};

void LastWordSelectionTest::shouldKeepWhatTheHostSelectsInsideTheReport_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("of the user's choice") << true;
    QTest::newRow("of the host's own choice") << false;
}

void LastWordSelectionTest::shouldKeepWhatTheHostSelectsInsideTheReport()
{
    QFETCH(bool, byMouse);
    ShownPanel shown;
    shown.host().setProject(
        {}, {testProcessor(1), testProcessor(2), testProcessor(3), testProcessor(4)});
    shown.panel.notify(16);
    CProcessorTreeView& view = *shown.view();
    view.expandAll();
    bool reported = false;
    shown.host().doInside(QStringLiteral("ReportSelection"), [&] {
        reported = true;
        shown.area().SetCurrentProcessor(testId(2));
    });

    if (byMouse)
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                          view.visualRect(shown.panel.index(4)).center());
    else
        shown.area().SetCurrentProcessor(testId(4));

    QVERIFY(reported);
    QCOMPARE(view.selectionModel()->selectedIndexes(), QModelIndexList{shown.panel.index(2)});
    QCOMPARE(view.currentIndex(), shown.panel.index(2));
}

TSA_TEST_MAIN(LastWordSelectionTest)
#include "tst_lastword_selection.moc"
