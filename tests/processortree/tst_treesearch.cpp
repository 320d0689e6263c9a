#include "host/widgets/HostTheme.h"
#include "tests/processortree/DrivenPanel.h"
#include "tests/support/NestedLoop.h"

#include <QAbstractItemView>
#include <QAction>
#include <QSignalSpy>
#include <QToolButton>

namespace {

constexpr quint32 kAddress = 0xC0A80701; // 192.168.7.1

ProcessorNode named(quint32 n, const QString& name, quint32 group = 0)
{
    ProcessorNode node = testIpProcessor(n, kAddress + n, group);
    node.name = name;
    return node;
}

/// The tree panel over processors with names: Alpha, Alto and Beta; Alto in a group.
struct SearchedPanel : DrivenPanel
{
    SearchedPanel()
    {
        fill({testGroup(10)},
             {named(1, QStringLiteral("Alpha")), named(2, QStringLiteral("Alto"), 10),
              named(3, QStringLiteral("Beta"))});
        host().selections.clear();
    }

    /// The open list; null when there is none.
    static QAbstractItemView* results()
    {
        return qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    }

    /// "Alpha,Alto", or that there is no list.
    static QString found()
    {
        const QAbstractItemView* list = results();
        if (!list)
            return QStringLiteral("closed");
        QStringList names;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            names.append(list->model()->index(row, 0).data().toString());
        return names.join(QLatin1Char(','));
    }

    /// Sends the event to the window, as the platform does.
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }

    void type(const QString& text)
    {
        for (const QChar letter : text)
            QTest::keyClick(window.windowHandle(), letter.toLatin1());
    }

    void search(const QString& text)
    {
        pressKey(Qt::Key_F, Qt::ControlModifier);
        type(text);
    }

    void clickRow(int row)
    {
        QAbstractItemView* list = results();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
    }
};

} // namespace

class TreeSearchTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldListWhatMatches();
    void shouldEndOnTheChosenRow_data();
    void shouldEndOnTheChosenRow();
    void shouldReportNothingNew();
    void shouldChooseNothingByReturnAlone();
    void shouldCloseTheListBeforeItLeaves();
    void shouldGoToTheFieldByCtrlF();
    void shouldCloseTheListWithTheText();
    void shouldSearchAgainByItsIcon();
    void shouldSearchWhenLocked();
    void shouldKeepTheDialogsEscape();
    void shouldStandAModelThatChangesUnderTheList();
    void shouldOutliveAPanelDestroyedUnderTheList();
    void shouldOutliveAPanelDestroyedByAChoice_data();
    void shouldOutliveAPanelDestroyedByAChoice();
};

void TreeSearchTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeSearchTest::shouldListWhatMatches()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("a"));
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Alpha,Alto,Beta"));
    panel.type(QStringLiteral("l"));
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Alpha,Alto"));
    panel.type(QStringLiteral("x"));
    QCOMPARE(SearchedPanel::found(), QString());
    panel.pressKey(Qt::Key_Backspace);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Alpha,Alto"));
    QCOMPARE(panel.field().text(), QStringLiteral("al"));
    QCOMPARE(panel.host().selections.size(), 0);
    panel.pressKey(Qt::Key_Escape);
}

void TreeSearchTest::shouldEndOnTheChosenRow_data()
{
    QTest::addColumn<QString>("by");
    QTest::newRow("Down") << "Down";
    QTest::newRow("Up") << "Up";
    QTest::newRow("click") << "click";
}

void TreeSearchTest::shouldEndOnTheChosenRow()
{
    QFETCH(QString, by);
    SearchedPanel panel;
    panel.tree->SelectProcessor(testId(1), false);
    panel.view().collapse(panel.index(10));
    panel.window.resize(220, 130);
    panel.host().selections.clear();
    panel.search(by == QLatin1String("Up") ? QStringLiteral("al") : QStringLiteral("alt"));
    const QPointer<QWidget> list(SearchedPanel::results());
    if (by == QLatin1String("click"))
        panel.clickRow(0);
    else
        panel.pressKey(by == QLatin1String("Up") ? Qt::Key_Up : Qt::Key_Down);
    QCOMPARE(panel.selected(), QStringLiteral("Alto"));
    QCOMPARE(panel.view().currentIndex(), panel.index(2));
    const QRect row = panel.view().visualRect(panel.index(2));
    QVERIFY(panel.view().viewport()->rect().contains(row.center()));
    QCOMPARE(panel.host().selections.size(), 1);
    QCOMPARE(panel.host().selections.first().focus, testId(2));
    QCOMPARE(panel.field().text(), QString());
    QVERIFY(list && list->isHidden());
    QVERIFY(!panel.field().hasFocus());
    QVERIFY(panel.view().hasFocus());
    // The filter is empty as well.
    panel.field().setFocus();
    QTest::mouseClick(panel.field().findChild<QToolButton*>(), Qt::LeftButton);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
}

void TreeSearchTest::shouldReportNothingNew()
{
    SearchedPanel panel;
    panel.tree->SelectProcessor(testId(2), true);
    panel.host().selections.clear();
    panel.search(QStringLiteral("alto"));
    panel.pressKey(Qt::Key_Down);
    QCOMPARE(panel.selected(), QStringLiteral("Alto"));
    QCOMPARE(panel.host().selections.size(), 0);
    QCOMPARE(panel.field().text(), QString());
}

void TreeSearchTest::shouldChooseNothingByReturnAlone()
{
    SearchedPanel panel;
    panel.tree->SelectProcessor(testId(1), false);
    panel.host().selections.clear();
    panel.search(QStringLiteral("alto"));
    panel.pressKey(Qt::Key_Return);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
    QCOMPARE(panel.selected(), QStringLiteral("Alpha"));
    QCOMPARE(panel.field().text(), QStringLiteral("alto"));
    // A row that is current is chosen.
    panel.field().setFocus();
    panel.pressKey(Qt::Key_Backspace);
    QAbstractItemView* list = SearchedPanel::results();
    QVERIFY(list);
    list->selectionModel()->setCurrentIndex(list->model()->index(0, 0),
                                            QItemSelectionModel::NoUpdate);
    panel.pressKey(Qt::Key_Return);
    QCOMPARE(panel.selected(), QStringLiteral("Alto"));
    QCOMPARE(panel.host().selections.size(), 1);
    QCOMPARE(panel.field().text(), QString());
}

void TreeSearchTest::shouldCloseTheListBeforeItLeaves()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    panel.pressKey(Qt::Key_Escape);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
    QCOMPARE(panel.field().text(), QStringLiteral("al"));
    panel.field().setFocus();
    panel.pressKey(Qt::Key_Escape);
    QCOMPARE(panel.field().text(), QString());
    QVERIFY(panel.view().hasFocus());
    // With an empty field, Escape moves the focus as well.
    panel.field().setFocus();
    panel.pressKey(Qt::Key_Escape);
    QVERIFY(panel.view().hasFocus());
    QVERIFY(panel.host().selections.isEmpty());
}

void TreeSearchTest::shouldGoToTheFieldByCtrlF()
{
    SearchedPanel panel;
    panel.field().setText(QStringLiteral("before"));
    for (QWidget* from :
         {static_cast<QWidget*>(&panel.view()), static_cast<QWidget*>(&panel.button()),
          static_cast<QWidget*>(&panel.field())}) {
        panel.field().deselect();
        from->setFocus();
        panel.pressKey(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(panel.field().hasFocus());
        QCOMPARE(panel.field().selectedText(), QStringLiteral("before"));
    }
}

void TreeSearchTest::shouldCloseTheListWithTheText()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    panel.pressKey(Qt::Key_Backspace);
    panel.pressKey(Qt::Key_Backspace);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
    panel.search(QStringLiteral("b"));
    panel.pressKey(Qt::Key_Escape);
    QTest::mouseClick(panel.field().childAt(162, 12), Qt::LeftButton);
    QCOMPARE(panel.field().text(), QString());
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
}

void TreeSearchTest::shouldSearchAgainByItsIcon()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    panel.pressKey(Qt::Key_Escape);
    auto* icon = qobject_cast<QToolButton*>(panel.field().childAt(14, 12));
    QVERIFY(icon);
    QCOMPARE(icon->toolTip(), QStringLiteral("Search"));
    panel.fill({}, {named(7, QStringLiteral("Altar"))});
    QTest::mouseClick(icon, Qt::LeftButton);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Altar"));
    panel.pressKey(Qt::Key_Escape);
}

void TreeSearchTest::shouldSearchWhenLocked()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    panel.tree->SetOperationLock(1, true);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Alpha,Alto"));
    panel.clickRow(1);
    QCOMPARE(panel.selected(), QStringLiteral("Alto"));
    QCOMPARE(panel.host().selections.size(), 1);
}

void TreeSearchTest::shouldKeepTheDialogsEscape()
{
    SearchedPanel panel;
    QAction outer;
    outer.setShortcut(QKeySequence(Qt::Key_Escape));
    panel.window.addAction(&outer);
    QSignalSpy closed(&outer, &QAction::triggered);
    panel.search(QStringLiteral("al"));
    panel.pressKey(Qt::Key_Escape);
    panel.field().setFocus();
    panel.pressKey(Qt::Key_Escape);
    QCOMPARE(panel.field().text(), QString());
    QCOMPARE(closed.count(), 0);
}

void TreeSearchTest::shouldStandAModelThatChangesUnderTheList()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    panel.panel.model().removeNode(testId(1));
    QCOMPARE(SearchedPanel::found(), QStringLiteral("Alto"));
    panel.doInside(QStringLiteral("ReportSelection"),
                   [&] { panel.fill({}, {named(9, QStringLiteral("Omega"))}); });
    panel.clickRow(0);
    QCOMPARE(panel.panel.dump(), QStringLiteral("All processors(1)[Omega]"));
    QCOMPARE(panel.selected(), QString());
    QCOMPARE(panel.field().text(), QString());
    // The processor is removed before the host gets the report.
    panel.tree->SelectProcessor(testId(9), false);
    panel.fill({}, {named(1, QStringLiteral("Alpha")), named(2, QStringLiteral("Alto"))});
    panel.tree->SelectProcessor(testId(1), false);
    panel.search(QStringLiteral("alto"));
    panel.doInside(QStringLiteral("GetProcessorNode"),
                   [&] { panel.panel.model().removeNode(testId(2)); });
    panel.pressKey(Qt::Key_Down);
    QCOMPARE(panel.selected(), QStringLiteral("Alpha"));
}

void TreeSearchTest::shouldOutliveAPanelDestroyedUnderTheList()
{
    SearchedPanel panel;
    panel.search(QStringLiteral("al"));
    QVERIFY(SearchedPanel::results());
    delete panel.tree;
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
}

void TreeSearchTest::shouldOutliveAPanelDestroyedByAChoice_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("nested");
    for (const char* question : {"ReportSelection", "GetProcessorNode"}) {
        for (const bool nested : {false, true}) {
            const char* where = nested ? ", nested loop" : "";
            QTest::addRow("%s, mouse%s", question, where) << question << false << nested;
            QTest::addRow("%s, key%s", question, where) << question << true << nested;
        }
    }
}

void TreeSearchTest::shouldOutliveAPanelDestroyedByAChoice()
{
    QFETCH(QString, question);
    QFETCH(bool, byKey);
    QFETCH(bool, nested);
    SearchedPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.search(QStringLiteral("alto"));
    const QPointer<QWidget> results = SearchedPanel::results();
    panel.doInside(question, [&] { runWithin(nested, [&] { delete panel.tree; }); });
    if (byKey)
        panel.pressKey(Qt::Key_Down);
    else
        QTest::mousePress(SearchedPanel::results()->viewport(), Qt::LeftButton, {}, QPoint(60, 20));
    QVERIFY(!panel.tree);
    QCOMPARE(SearchedPanel::found(), QStringLiteral("closed"));
    QTRY_VERIFY(!results);
}

TSA_TEST_MAIN(TreeSearchTest)

#include "tst_treesearch.moc"
