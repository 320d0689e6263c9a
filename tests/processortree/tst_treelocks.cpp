#include "host/widgets/HostTheme.h"
#include "plugin/TargetSelectData.h"
#include "tests/processortree/DrivenPanel.h"

namespace {

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

} // namespace

/// What the tree panel forbids while it is locked or read-only.
class TreeLocksTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void shouldAddNothingWhenReadOnly();
    void shouldFollowLocks_data();
    void shouldFollowLocks();
    void shouldFollowLocksUnderADialog_data();
    void shouldFollowLocksUnderADialog();
    void shouldLockTheView();
    void shouldNotActOnAMenuForbiddenMeanwhile_data();
    void shouldNotActOnAMenuForbiddenMeanwhile();
    void shouldDisableWhatIsForbiddenWhileItAsks();
};

void TreeLocksTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TreeLocksTest::cleanup()
{
    CTargetSelectData::Instance()->SetReadOnly(false);
}

void TreeLocksTest::shouldAddNothingWhenReadOnly()
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
    const CProcessorTree late(*CTargetSelectData::Instance(),
                              *CTargetSelectData::Instance()->GetModel());
    QVERIFY(!late.findChild<CPureImageBtn*>()->isEnabled());
}

void TreeLocksTest::shouldFollowLocks_data()
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
        // A panel that becomes writable can add in spite of a lock.
        {"1+ r+ r-", true, true},
    };
    for (const auto& row : rows)
        QTest::newRow(row.steps) << QString::fromLatin1(row.steps) << row.locked << row.enabled;
}

void TreeLocksTest::shouldFollowLocks()
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

void TreeLocksTest::shouldFollowLocksUnderADialog_data()
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

void TreeLocksTest::shouldFollowLocksUnderADialog()
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

void TreeLocksTest::shouldLockTheView()
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

void TreeLocksTest::shouldNotActOnAMenuForbiddenMeanwhile_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("lock") << "1+";
    QTest::newRow("read-only") << "r+";
}

void TreeLocksTest::shouldNotActOnAMenuForbiddenMeanwhile()
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

void TreeLocksTest::shouldDisableWhatIsForbiddenWhileItAsks()
{
    DrivenPanel panel;
    panel.doInside(QStringLiteral("GetAllProcessorNodes"),
                   [&] { follow(panel, QStringLiteral("1+")); });
    QCOMPARE(panel.offered(),
             QStringLiteral("(Add processor group)|--|(Add 1 processor)|(Add 2 processor)|"
                            "(Custom adds...)"));
    follow(panel, QStringLiteral("1-"));
    QCOMPARE(panel.offered(), kAddAll);
}

TSA_TEST_MAIN(TreeLocksTest)

#include "tst_treelocks.moc"
