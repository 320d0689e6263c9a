#include "host/widgets/HostTheme.h"
#include "tests/processortree/DrivenPanel.h"
#include "tests/support/Chinese.h"

#include <QAccessible>
#include <QSignalSpy>

#include <memory>

namespace {
QString nameOf(QWidget& widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

} // namespace

/// The tree panel: its parts and texts, what it shows, and what it selects for the host.
class ProcessorTreeTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldHaveItsShape();
    void shouldBeWalkedByTab();
    void shouldShowTheHostsTreeExpanded();
    void shouldKeepGroupsClosedByTheUser_data();
    void shouldKeepGroupsClosedByTheUser();
    void shouldOpenAClosedGroupForTheNewest_data();
    void shouldOpenAClosedGroupForTheNewest();
    void shouldShowTheNewest_data();
    void shouldShowTheNewest();
    void shouldForgetHowItWasExpanded();
    void shouldSelectTheHostsProcessor_data();
    void shouldSelectTheHostsProcessor();
    void shouldSelectNothingElse();
    void shouldStandItsEndInASelection();
    void shouldSetItsTextsOnEveryChange();
    void shouldSpeakTheUsersLanguage();
};

void ProcessorTreeTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void ProcessorTreeTest::shouldHaveItsShape()
{
    DrivenPanel panel;
    const auto place = [&](QWidget& widget) {
        return QRect(widget.mapTo(panel.tree, QPoint(0, 0)), widget.size());
    };
    const QRect field = place(panel.field());
    const QRect button = place(panel.button());
    const QRect view = place(panel.view());
    QCOMPARE(field.topLeft(), QPoint(10, 0));
    QCOMPARE(field.width(), 176);
    QCOMPARE(button.size(), QSize(16, 16));
    QCOMPARE(button.left() - field.right() - 1, 8);
    QCOMPARE(panel.tree->width() - button.right() - 1, 10);
    QVERIFY(qAbs(button.center().y() - field.center().y()) <= 1);
    QCOMPARE(view.left(), 10);
    QCOMPARE(view.right(), panel.tree->width() - 1);
    QCOMPARE(view.bottom(), panel.tree->height() - 1);
    QVERIFY(view.top() > field.bottom());

    QVERIFY(panel.field().isClearButtonEnabled());
    QCOMPARE(panel.field().placeholderText(), QStringLiteral("Search"));
    QCOMPARE(panel.field().actions().first()->toolTip(), QStringLiteral("Search"));
    QCOMPARE(panel.button().objectName(), QStringLiteral("BGTransparent"));
    QCOMPARE(panel.button().focusPolicy(), Qt::WheelFocus);
    QCOMPARE(panel.button().popupMode(), QToolButton::InstantPopup);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Disabled})
        QVERIFY(!panel.button().icon().pixmap(16, mode).isNull());
    const QImage normal = panel.button().icon().pixmap(16, QIcon::Normal).toImage();
    QVERIFY(panel.button().icon().pixmap(16, QIcon::Active).toImage() != normal);
    QVERIFY(panel.button().icon().pixmap(16, QIcon::Disabled).toImage() != normal);
    QVERIFY(!panel.field().actions().first()->icon().pixmap(16).isNull());
    for (const QAction* action : panel.menu().actions())
        QVERIFY(action->shortcut().isEmpty());
    QCOMPARE(panel.view().model(), &panel.model());
    QCOMPARE(nameOf(panel.field()), QStringLiteral("Search"));
    QStringList inField;
    for (QToolButton* small : panel.field().findChildren<QToolButton*>())
        inField.append(nameOf(*small));
    QCOMPARE(inField, QStringList({QStringLiteral("Search"), QStringLiteral("Clear")}));
    QCOMPARE(nameOf(panel.button()), QStringLiteral("Add"));
    QCOMPARE(nameOf(panel.view()), QStringLiteral("Processors"));
}

void ProcessorTreeTest::shouldBeWalkedByTab()
{
    DrivenPanel panel;
    panel.field().setFocus();
    QTest::keyClick(&panel.field(), Qt::Key_Tab);
    QVERIFY(panel.button().hasFocus());
    QTest::keyClick(&panel.button(), Qt::Key_Tab);
    QVERIFY(panel.view().hasFocus());
    QTest::keyClick(&panel.view(), Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(panel.button().hasFocus());
    QTest::keyClick(&panel.button(), Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(panel.field().hasFocus());
}

void ProcessorTreeTest::shouldShowTheHostsTreeExpanded()
{
    DrivenPanel panel;
    QVERIFY(panel.view().isExpanded(panel.index(0)));
    QVERIFY(panel.view().isExpanded(panel.index(10)));
    panel.host().setProcessor(testProcessor(5, 11));
    panel.panel.notify<QUuid>(18, testId(5));
    QTRY_VERIFY(panel.index(5).isValid());
    QVERIFY(panel.view().isExpanded(panel.index(11)));
    panel.view().collapseAll();
    panel.fill({testGroup(12)}, {testProcessor(6, 12)});
    QVERIFY(panel.view().isExpanded(panel.index(0)));
    QVERIFY(panel.view().isExpanded(panel.index(12)));
}

namespace {

/// Closes group 10, as users do: by a click on its arrow, a double click, or a key.
void closeGroup(DrivenPanel& panel, int way)
{
    CProcessorTreeView& view = panel.view();
    const QRect row = view.visualRect(panel.index(10));
    const QPoint arrow(row.left() + 10, row.center().y());
    const QPoint name(row.left() + 70, row.center().y());
    if (way == 0) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, arrow);
    } else {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, name);
        if (way == 1)
            QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, name);
        else
            QTest::keyClick(&view, Qt::Key_Left);
    }
    QVERIFY(!view.isExpanded(panel.index(10)));
}

/// The host adds 5 in group 10 and 6 in group 11; `event` 16 tells all anew.
void add(DrivenPanel& panel, quint32 event)
{
    panel.host().setProcessor(testProcessor(5, 10));
    panel.host().setProcessor(testProcessor(6, 11));
    if (event == 19) {
        panel.panel.notify<QList<QUuid>>(19, {testId(5), testId(6)});
    } else if (event == 18) {
        panel.panel.notify<QUuid>(18, testId(5));
        panel.panel.notify<QUuid>(18, testId(6));
    } else {
        panel.panel.notify(16);
    }
    QTRY_VERIFY(panel.index(6).isValid());
}

} // namespace

void ProcessorTreeTest::shouldKeepGroupsClosedByTheUser_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<quint32>("event");
    const char* const ways[] = {"arrow", "double click", "key"};
    for (int way = 0; way < 3; ++way) {
        for (const quint32 event : {16U, 18U, 19U})
            QTest::addRow("%s, %u", ways[way], event) << way << event;
    }
}

void ProcessorTreeTest::shouldKeepGroupsClosedByTheUser()
{
    QFETCH(int, way);
    QFETCH(quint32, event);
    DrivenPanel panel;
    closeGroup(panel, way);
    add(panel, event);
    QVERIFY(panel.view().isExpanded(panel.index(0)));
    QVERIFY(!panel.view().isExpanded(panel.index(10)));
    QVERIFY(panel.view().isExpanded(panel.index(11)));
    // Once opened, it stays open.
    panel.view().expand(panel.index(10));
    panel.panel.notify(16);
    QVERIFY(panel.view().isExpanded(panel.index(10)));
}

void ProcessorTreeTest::shouldOpenAClosedGroupForTheNewest_data()
{
    QTest::addColumn<quint32>("event");
    QTest::addColumn<bool>("early");
    for (const bool early : {false, true}) {
        QTest::addRow("one by one%s", early ? ", early" : "") << 18U << early;
        QTest::addRow("at once%s", early ? ", early" : "") << 19U << early;
    }
}

void ProcessorTreeTest::shouldOpenAClosedGroupForTheNewest()
{
    QFETCH(quint32, event);
    QFETCH(bool, early);
    DrivenPanel panel;
    closeGroup(panel, 2);
    const auto arrive = [&] {
        panel.host().setProcessor(testProcessor(5, 10));
        if (event == 18)
            panel.panel.notify<QUuid>(18, testId(5));
        else
            panel.panel.notify<QList<QUuid>>(19, {testId(5)});
    };
    // A place for the new one that is not the closed group.
    panel.view().selectionModel()->select(panel.index(0), QItemSelectionModel::ClearAndSelect);
    if (early)
        panel.doInside(QStringLiteral("AddProcessors"), arrive);
    panel.driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Add 1 processor")); });
    panel.press();
    if (!early)
        arrive();
    QTRY_COMPARE(panel.view().currentIndex(), panel.index(5));
    QVERIFY(panel.view().isExpanded(panel.index(10)));
    // It stays open.
    panel.panel.notify(16);
    QVERIFY(panel.view().isExpanded(panel.index(10)));
}

void ProcessorTreeTest::shouldShowTheNewest_data()
{
    shouldOpenAClosedGroupForTheNewest_data();
}

/// In a tree with more rows than the view has room for.
void ProcessorTreeTest::shouldShowTheNewest()
{
    QFETCH(quint32, event);
    DrivenPanel panel;
    QList<ProcessorNode> processors;
    for (quint32 n = 1; n <= 20; ++n)
        processors.append(testProcessor(n, 10));
    for (quint32 n = 21; n <= 40; ++n)
        processors.append(testProcessor(n, 11));
    panel.fill({testGroup(10), testGroup(11)}, processors);
    panel.view().selectionModel()->select(panel.index(11), QItemSelectionModel::ClearAndSelect);
    panel.driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Add 1 processor")); });
    panel.press();
    panel.host().setProcessor(testProcessor(41, 11));
    if (event == 18)
        panel.panel.notify<QUuid>(18, testId(41));
    else
        panel.panel.notify<QList<QUuid>>(19, {testId(41)});
    QTRY_COMPARE(panel.view().currentIndex(), panel.index(41));
    QCoreApplication::processEvents();
    const QRect row = panel.view().visualRect(panel.index(41));
    QVERIFY(row.top() >= 0);
    QVERIFY(row.bottom() <= panel.view().viewport()->height()); // Qt scrolls a pixel too little
}

void ProcessorTreeTest::shouldForgetHowItWasExpanded()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.view().collapse(panel.index(10));
    panel.tree->ResetView();
    QVERIFY(panel.view().isExpanded(panel.index(10)));
    QCOMPARE(panel.selected(), QString());
}

void ProcessorTreeTest::shouldSelectTheHostsProcessor_data()
{
    QTest::addColumn<bool>("report");
    QTest::newRow("silently") << false;
    QTest::newRow("reporting") << true;
}

void ProcessorTreeTest::shouldSelectTheHostsProcessor()
{
    QFETCH(bool, report);
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.view().collapse(panel.index(10));
    panel.host().selections.clear();
    QSignalSpy changes(panel.view().selectionModel(), &QItemSelectionModel::selectionChanged);
    panel.tree->SelectProcessor(testId(2), report);
    QCOMPARE(panel.selected(), QStringLiteral("2"));
    QCOMPARE(panel.view().currentIndex(), panel.index(2));
    QVERIFY(panel.view().isExpanded(panel.index(10)));
    QCOMPARE(changes.count(), report ? 1 : 0);
    QCOMPARE(panel.host().selections.size(), report ? 1 : 0);
    QVERIFY(!panel.view().selectionModel()->signalsBlocked());
    // A second time: collapsed rows stay collapsed.
    panel.view().collapse(panel.index(11));
    panel.tree->SelectProcessor(testId(2), report);
    QVERIFY(!panel.view().isExpanded(panel.index(11)));
    QCOMPARE(changes.count(), report ? 1 : 0);
}

void ProcessorTreeTest::shouldSelectNothingElse()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    for (const quint32 n : {0U, 10U, 77U})
        panel.tree->SelectProcessor(testId(n), true);
    QCOMPARE(panel.selected(), QStringLiteral("3"));
    QVERIFY(panel.host().selections.isEmpty());
}

void ProcessorTreeTest::shouldStandItsEndInASelection()
{
    for (const char* question : {"ReportSelection", "GetProcessorNode"}) {
        DrivenPanel panel;
        panel.tree->SelectProcessor(testId(3), false);
        panel.doInside(QLatin1String(question), [&] { delete panel.tree; });
        panel.tree->SelectProcessor(testId(2), true);
        QVERIFY(!panel.tree);
    }
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.doInside(QStringLiteral("GetProcessorNode"),
                   [&] { panel.model().removeNode(testId(2)); });
    panel.tree->SelectProcessor(testId(2), true);
    QVERIFY(!panel.view().selectionModel()->signalsBlocked());
}

void ProcessorTreeTest::shouldSetItsTextsOnEveryChange()
{
    DrivenPanel panel;
    panel.field().setPlaceholderText(QString());
    panel.field().actions().first()->setToolTip(QString());
    for (QAction* action : panel.menu().actions())
        action->setText(QString());
    panel.tree->setEnabled(false);
    panel.tree->setEnabled(true);
    QCOMPARE(panel.field().placeholderText(), QStringLiteral("Search"));
    QCOMPARE(panel.field().actions().first()->toolTip(), QStringLiteral("Search"));
    QCOMPARE(panel.offered(), kAddAll);
}

void ProcessorTreeTest::shouldSpeakTheUsersLanguage()
{
    DrivenPanel panel;
    auto chinese = std::make_unique<Chinese>();
    QVERIFY(chinese->isLoaded());
    QTRY_COMPARE(panel.field().placeholderText(), QStringLiteral("搜索"));
    QCOMPARE(panel.field().actions().first()->toolTip(), QStringLiteral("搜索"));
    QCOMPARE(panel.offered(), QStringLiteral("添加处理器组|--|添加 1 台处理器|添加 2 台处理器|"
                                             "自定义添加..."));
    QCOMPARE(nameOf(panel.button()), QStringLiteral("添加"));
    QCOMPARE(nameOf(panel.view()), QStringLiteral("处理器"));
    chinese.reset();
    QTRY_COMPARE(panel.field().placeholderText(), QStringLiteral("Search"));
    QCOMPARE(panel.offered(), kAddAll);
}

TSA_TEST_MAIN(ProcessorTreeTest)

#include "tst_processortree.moc"
