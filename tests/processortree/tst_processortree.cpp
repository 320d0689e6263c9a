#include "host/widgets/HostTheme.h"
#include "tests/processortree/DrivenPanel.h"
#include "tests/support/Chinese.h"
#include "tests/support/NestedLoop.h"

#include <QAccessible>
#include <QSignalSpy>

#include <memory>

namespace {

const QString kGroup = QStringLiteral("Add processor group");
const QString kAll = kGroup + QStringLiteral("|--|Add 1 processor|Add 2 processor|Custom adds...");

/// "1+ 2- a1 r-": locks key 1, unlocks key 2, applies key 1, makes the tree writable.
void follow(DrivenPanel& panel, const QString& steps)
{
    const QStringList list = steps.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& step : list) {
        const bool on = step.endsWith(QLatin1Char('+'));
        if (step.startsWith(QLatin1Char('a'))) {
            panel.tree->ApplyOperationLock(step.midRef(1).toInt());
        } else if (step.startsWith(QLatin1Char('r'))) {
            panel.panel.data().SetReadOnly(on);
            panel.tree->UpdateAddButton();
        } else {
            panel.tree->SetOperationLock(step.leftRef(step.size() - 1).toInt(), on);
        }
    }
}

QString nameOf(QWidget& widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

} // namespace

class ProcessorTreeTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void shouldHaveItsShape();
    void shouldBeWalkedByTab();
    void shouldShowTheHostsTreeExpanded();
    void shouldForgetHowItWasExpanded();
    void shouldOfferWhatTheHostAllows_data();
    void shouldOfferWhatTheHostAllows();
    void shouldAskAnewForEveryOpening();
    void shouldRunItsEntries_data();
    void shouldRunItsEntries();
    void shouldOpenItsMenuByKeys();
    void shouldCloseItsMenuByAnotherClick();
    void shouldAddNothingWhenReadOnly();
    void shouldFollowLocks_data();
    void shouldFollowLocks();
    void shouldFollowLocksUnderADialog_data();
    void shouldFollowLocksUnderADialog();
    void shouldLockTheView();
    void shouldNotActOnAMenuForbiddenMeanwhile_data();
    void shouldNotActOnAMenuForbiddenMeanwhile();
    void shouldDisableWhatIsForbiddenWhileItAsks();
    void shouldSelectTheHostsProcessor_data();
    void shouldSelectTheHostsProcessor();
    void shouldSelectNothingElse();
    void shouldStandItsEndInASelection();
    void shouldSetItsTextsOnEveryChange();
    void shouldSpeakTheUsersLanguage();
    void shouldOutliveAPanelDestroyedByTheMenu_data();
    void shouldOutliveAPanelDestroyedByTheMenu();
    void shouldOutliveAPanelDestroyedUnderTheMenu();
    void shouldOutliveAPanelDestroyedByAnEntry_data();
    void shouldOutliveAPanelDestroyedByAnEntry();
    void shouldStandAModelThatChangesUnderTheMenu();
};

void ProcessorTreeTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void ProcessorTreeTest::cleanup()
{
    CTargetSelectData::Instance()->SetReadOnly(false);
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

void ProcessorTreeTest::shouldForgetHowItWasExpanded()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.view().collapse(panel.index(10));
    panel.tree->ResetView();
    QVERIFY(panel.view().isExpanded(panel.index(10)));
    QCOMPARE(panel.selected(), QString());
}

void ProcessorTreeTest::shouldOfferWhatTheHostAllows_data()
{
    QTest::addColumn<int>("listed");
    QTest::addColumn<bool>("permitted");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("entries");
    const QString oneAndCustom = kGroup + QStringLiteral("|--|Add 1 processor|Custom adds...");
    const QString disabled =
        kGroup + QStringLiteral("|--|(Add 1 processor)|(Add 2 processor)|(Custom adds...)");
    const std::pair<int, QString> limits[] = {{0, kAll},
                                              {1, kAll},
                                              {252, kAll},
                                              {253, kAll},
                                              {254, oneAndCustom},
                                              {255, kGroup + QStringLiteral("|--")},
                                              {256, kGroup + QStringLiteral("|--")},
                                              {300, kGroup + QStringLiteral("|--")}};
    for (const auto& [listed, entries] : limits)
        QTest::addRow("%d listed", listed) << listed << true << true << entries;
    QTest::newRow("none listed, so nothing asked") << 0 << false << false << kAll;
    QTest::newRow("not permitted") << 4 << false << true << kGroup + QStringLiteral("|--");
    QTest::newRow("disabled") << 4 << true << false << disabled;
}

void ProcessorTreeTest::shouldOfferWhatTheHostAllows()
{
    QFETCH(int, listed);
    QFETCH(bool, permitted);
    QFETCH(bool, enabled);
    QFETCH(QString, entries);
    DrivenPanel panel;
    panel.list(listed);
    panel.host().canAdd = permitted;
    panel.host().addEnabled = enabled;
    QCOMPARE(panel.offered(), entries);
}

void ProcessorTreeTest::shouldAskAnewForEveryOpening()
{
    DrivenPanel panel;
    QCOMPARE(panel.host().callCount(QStringLiteral("GetAllProcessorNodes")), 0);
    QCOMPARE(panel.offered(), kAll);
    panel.host().addEnabled = false;
    QVERIFY(panel.offered().contains(QLatin1String("(Add 1 processor)")));
    panel.list(255);
    QCOMPARE(panel.offered(), kGroup + QStringLiteral("|--"));
    panel.list(4);
    panel.host().addEnabled = true;
    QCOMPARE(panel.offered(), kAll);
    QCOMPARE(panel.host().callCount(QStringLiteral("GetAllProcessorNodes")), 4);
}

void ProcessorTreeTest::shouldRunItsEntries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("argument");
    QTest::newRow("group") << kGroup << "CreateGroup"
                           << "Group 3";
    QTest::newRow("one") << "Add 1 processor"
                         << "AddProcessors"
                         << "%1,1";
    QTest::newRow("two") << "Add 2 processor"
                         << "AddProcessors"
                         << "%1,2";
    QTest::newRow("custom") << "Custom adds..."
                            << "AddProcessors"
                            << "%1,1";
}

void ProcessorTreeTest::shouldRunItsEntries()
{
    QFETCH(QString, entry);
    QFETCH(QString, call);
    QFETCH(QString, argument);
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(2), false);
    panel.host().clearCalls();
    panel.driver.then([&](QWidget& menu) { choose(menu, entry); });
    if (entry.startsWith(QLatin1String("Custom")))
        panel.driver.then([](QWidget& dialog) { clickButton(dialog, QStringLiteral("OK")); });
    panel.press();
    QCOMPARE(panel.asked(), call);
    for (const FakeHandler::Call& made : panel.host().calls()) {
        if (made.name == call)
            QCOMPARE(made.argument, argument.contains(QLatin1Char('%'))
                                        ? argument.arg(testId(10).toString())
                                        : argument);
    }
    QVERIFY(panel.menu().isHidden());
}

void ProcessorTreeTest::shouldOpenItsMenuByKeys()
{
    DrivenPanel panel;
    panel.button().setFocus();
    panel.driver.then([](QWidget& menu) {
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    QTest::keyClick(&panel.button(), Qt::Key_Space);
    QCOMPARE(panel.asked(), QStringLiteral("AddProcessors"));
}

void ProcessorTreeTest::shouldCloseItsMenuByAnotherClick()
{
    DrivenPanel panel;
    const QPoint onButton = panel.button().mapTo(&panel.window, QPoint(8, 8));
    bool closed = false;
    panel.driver.then([&](QWidget& menu) {
        // As from the platform, which knows of windows only.
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, onButton);
        closed = menu.isHidden();
    });
    QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, onButton);
    QVERIFY(closed);
    QCoreApplication::processEvents();
    QVERIFY(panel.menu().isHidden());
    QVERIFY(!panel.button().isDown());
    QCOMPARE(panel.asked(), QString());
}

void ProcessorTreeTest::shouldAddNothingWhenReadOnly()
{
    DrivenPanel panel;
    panel.panel.data().SetReadOnly(true);
    panel.tree->UpdateAddButton();
    QVERIFY(!panel.button().isEnabled());
    panel.press();
    QVERIFY(panel.menu().isHidden());
    panel.panel.data().SetReadOnly(false);
    panel.tree->UpdateAddButton();
    QVERIFY(panel.button().isEnabled());
    panel.panel.data().SetReadOnly(true);
    const CProcessorTree late;
    QVERIFY(!late.findChild<CPureImageBtn*>()->isEnabled());
}

void ProcessorTreeTest::shouldFollowLocks_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<bool>("enabled");
    const struct
    {
        const char* steps;
        bool locked;
        bool enabled;
    } rows[] = {
        {"", false, true},
        {"7+", true, false},
        {"7-", false, true},
        {"0+ 0-", false, true},
        {"1+ 2-", false, true},
        {"1+ 2- a1", true, false},
        {"1+ a2", false, true},
        {"1+ a9", false, true},
        {"-3+ a-3", true, false},
        // Four are not enough for key 0.
        {"1+ 2+ 3+ 4+ a0", false, true},
        {"1+ 2+ 3+ 4+ 5+ a0", true, false},
        // Key 0 counts as the others do.
        {"0- 1- 2- 3- 4+ 5+ 6+ a0", false, true},
        {"0- 1+ 2+ 3+ 4+ 5+ a0", true, false},
        {"0+ 1+ 2+ 3+ 4+ 4- 3- 2- 1- a0", true, false},
        {"0+ 1- 2- 3- 4- 5- a0", false, true},
        {"1+ 2+ 3+ 4+ 5+ 5- a0", true, false},
        // The same key again is still one key.
        {"1+ 1+ 1+ 1+ 1+ a0", false, true},
        // A new value needs five of its own.
        {"1+ 2+ 3+ 4+ 5+ 1- 2- 3- a0", true, false},
        {"1+ 2+ 3+ 4+ 5+ 1- 2- 3- 4- 5- a0", false, true},
        {"r+", false, false},
        {"r+ 1+ 1-", false, false},
        {"r+ a1", false, false},
        {"1+ r+ 1-", false, false},
        {"r+ 1+ r- 1-", false, true},
        // Writable again, the panel adds, whatever is locked.
        {"1+ r+ r-", true, true},
    };
    for (const auto& row : rows)
        QTest::newRow(row.steps) << QString::fromLatin1(row.steps) << row.locked << row.enabled;
}

void ProcessorTreeTest::shouldFollowLocks()
{
    QFETCH(QString, steps);
    QFETCH(bool, locked);
    QFETCH(bool, enabled);
    DrivenPanel panel;
    follow(panel, steps);
    QCOMPARE(panel.view().isLocked(), locked);
    QCOMPARE(panel.button().isEnabled(), enabled);
    if (enabled)
        panel.driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Add 1 processor")); });
    panel.press();
    QCOMPARE(panel.asked(), enabled ? QStringLiteral("AddProcessors") : QString());
}

void ProcessorTreeTest::shouldFollowLocksUnderADialog_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("meanwhile");
    QTest::addColumn<bool>("adds");
    const QString lockedAndWritable = QStringLiteral("1+ r+ r-");
    QTest::newRow("nothing") << QString() << QString() << true;
    QTest::newRow("a lock") << QString() << QStringLiteral("1+") << false;
    QTest::newRow("a lock that is lifted") << QString() << QStringLiteral("1+ 1-") << true;
    QTest::newRow("read-only") << QString() << QStringLiteral("r+") << false;
    QTest::newRow("nothing but an old lock") << lockedAndWritable << QString() << true;
    QTest::newRow("another lock") << lockedAndWritable << QStringLiteral("2+") << false;
    QTest::newRow("another lock that is lifted")
        << lockedAndWritable << QStringLiteral("2+ 2-") << true;
    QTest::newRow("read-only again") << lockedAndWritable << QStringLiteral("r+") << false;
}

void ProcessorTreeTest::shouldFollowLocksUnderADialog()
{
    QFETCH(QString, before);
    QFETCH(QString, meanwhile);
    QFETCH(bool, adds);
    DrivenPanel panel;
    follow(panel, before);
    panel.driver.then([](QWidget& menu) { choose(menu, QStringLiteral("Custom adds...")); });
    panel.driver.then([&](QWidget& dialog) {
        follow(panel, meanwhile);
        clickButton(dialog, QStringLiteral("OK"));
    });
    panel.press();
    QCOMPARE(panel.asked(), adds ? QStringLiteral("AddProcessors") : QString());
}

void ProcessorTreeTest::shouldLockTheView()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.view().setFocus();
    follow(panel, QStringLiteral("1+"));
    QCOMPARE(panel.view().contextMenuPolicy(), Qt::PreventContextMenu);
    QTest::keyClick(&panel.view(), Qt::Key_F2);
    QVERIFY(!panel.view().viewport()->findChild<QLineEdit*>());
    // Searching changes nothing.
    QTest::keyClick(&panel.view(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(panel.field().hasFocus());
    follow(panel, QStringLiteral("1-"));
    QCOMPARE(panel.view().contextMenuPolicy(), Qt::DefaultContextMenu);
    panel.view().setFocus();
    panel.host().canRename = true;
    QTest::keyClick(&panel.view(), Qt::Key_F2);
    QVERIFY(panel.view().viewport()->findChild<QLineEdit*>());
}

void ProcessorTreeTest::shouldNotActOnAMenuForbiddenMeanwhile_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("lock") << "1+";
    QTest::newRow("read-only") << "r+";
}

void ProcessorTreeTest::shouldNotActOnAMenuForbiddenMeanwhile()
{
    QFETCH(QString, steps);
    DrivenPanel panel;
    bool open = true;
    panel.driver.then([&](QWidget& menu) {
        follow(panel, steps);
        open = menu.isVisible();
        for (QAction* action : menu.actions())
            action->trigger();
    });
    panel.press();
    QVERIFY(!open);
    QCOMPARE(panel.asked(), QString());
}

void ProcessorTreeTest::shouldDisableWhatIsForbiddenWhileItAsks()
{
    DrivenPanel panel;
    panel.inside(QStringLiteral("GetAllProcessorNodes"),
                 [&] { follow(panel, QStringLiteral("1+")); });
    QCOMPARE(panel.offered(),
             QStringLiteral("(Add processor group)|--|(Add 1 processor)|(Add 2 processor)|"
                            "(Custom adds...)"));
    follow(panel, QStringLiteral("1-"));
    QCOMPARE(panel.offered(), kAll);
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
    // Again: not even what is collapsed comes back.
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
        panel.inside(QLatin1String(question), [&] { delete panel.tree; });
        panel.tree->SelectProcessor(testId(2), true);
        QVERIFY(!panel.tree);
    }
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(3), false);
    panel.inside(QStringLiteral("GetProcessorNode"), [&] { panel.model().removeNode(testId(2)); });
    panel.tree->SelectProcessor(testId(2), true);
    QVERIFY(!panel.view().selectionModel()->signalsBlocked());
    QCOMPARE(WarningTrap::take(), QStringList());
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
    QCOMPARE(panel.offered(), kAll);
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
    QCOMPARE(panel.offered(), kAll);
}

void ProcessorTreeTest::shouldOutliveAPanelDestroyedByTheMenu_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<bool>("nested");
    for (const char* question :
         {"GetAllProcessorNodes", "CanAddProcessors", "IsAddProcessorsEnabled"}) {
        for (const bool nested : {false, true}) {
            const char* where = nested ? ", nested loop" : "";
            QTest::addRow("%s, mouse%s", question, where) << question << false << nested;
            QTest::addRow("%s, key%s", question, where) << question << true << nested;
        }
    }
}

void ProcessorTreeTest::shouldOutliveAPanelDestroyedByTheMenu()
{
    QFETCH(QString, question);
    QFETCH(bool, byKey);
    QFETCH(bool, nested);
    DrivenPanel panel;
    panel.button().setFocus();
    const QPointer<QMenu> menu(&panel.menu());
    panel.inside(question, [&] { runWithin(nested, [&] { delete panel.tree; }); });
    if (byKey)
        QTest::keyClick(&panel.button(), Qt::Key_Down);
    else
        QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
    QTRY_VERIFY(!menu);
}

void ProcessorTreeTest::shouldOutliveAPanelDestroyedUnderTheMenu()
{
    DrivenPanel panel;
    panel.driver.then([&](QWidget&) { delete panel.tree; });
    QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
}

void ProcessorTreeTest::shouldOutliveAPanelDestroyedByAnEntry_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("nested");
    const struct
    {
        const char* name;
        QString entry;
        const char* question;
    } rows[] = {
        {"group", kGroup, "CreateGroup"},
        {"one, path", QStringLiteral("Add 1 processor"), "UsesIpAddressing"},
        {"one", QStringLiteral("Add 1 processor"), "AddProcessors"},
        {"custom, path", QStringLiteral("Custom adds..."), "IsIpManagementAvailable"},
        {"custom, dialog", QStringLiteral("Custom adds..."), ""},
    };
    for (const auto& row : rows) {
        QTest::addRow("%s", row.name) << row.entry << row.question << false;
        QTest::addRow("%s, nested loop", row.name) << row.entry << row.question << true;
    }
}

void ProcessorTreeTest::shouldOutliveAPanelDestroyedByAnEntry()
{
    QFETCH(QString, entry);
    QFETCH(QString, question);
    QFETCH(bool, nested);
    DrivenPanel panel;
    const QPointer<QMenu> menu(&panel.menu());
    const auto end = [&] { runWithin(nested, [&] { delete panel.tree; }); };
    panel.inside(question, end);
    panel.driver.then([&](QWidget& opened) { choose(opened, entry); });
    if (question.isEmpty())
        panel.driver.then([&](QWidget&) { end(); });
    QTest::mousePress(&panel.button(), Qt::LeftButton);
    QVERIFY(!panel.tree);
    QVERIFY(!QApplication::activePopupWidget());
    QTRY_VERIFY(!menu);
}

void ProcessorTreeTest::shouldStandAModelThatChangesUnderTheMenu()
{
    DrivenPanel panel;
    panel.tree->SelectProcessor(testId(2), false);
    panel.inside(QStringLiteral("GetAllProcessorNodes"), [&] { panel.fill({}, {}); });
    panel.driver.then([&](QWidget& menu) {
        panel.fill({testGroup(12)}, {testProcessor(7, 12)});
        choose(menu, QStringLiteral("Add 1 processor"));
    });
    panel.press();
    QCOMPARE(panel.asked(), QStringLiteral("AddProcessors"));
    QCOMPARE(panel.panel.dump(), QStringLiteral("All processors(1)[G12[7]]"));
}

QTEST_MAIN(ProcessorTreeTest)

#include "tst_processortree.moc"
