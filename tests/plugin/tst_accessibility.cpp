#include "base/UserMessages.h"
#include "host/common/SoftwareName.h"
#include "host/widgets/HostTheme.h"
#include "ipmanage/AddBatchIPDialog.h"
#include "ipmanage/AddBothIpDialog.h"
#include "ipmanage/AddSingleIPDialog.h"
#include "ipmanage/IPManageDialog.h"
#include "ipmanage/ModifyIPDialog.h"
#include "plugin/NetUsbTipDlg.h"
#include "processortree/view/CustomAddProcessor.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/Chinese.h"
#include "tests/support/DialogDriver.h"

#include <QAccessible>
#include <QMenu>

#include <functional>
#include <memory>

/// What the panel's widgets and dialogs are for somebody who cannot see them: each that takes the
/// keyboard says what it is, and all are read in the order in which they stand.
class AccessibilityTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldNameAndOrderThePanel_data();
    void shouldNameAndOrderThePanel();
    void shouldNameAndOrderDialogs_data();
    void shouldNameAndOrderDialogs();
    void shouldNameAndOrderMessages();
    void shouldNameEntriesOfMenus();
};

namespace {

using Open = std::function<std::unique_ptr<CDialog>(FakeHandler&)>;

QString told(const QAccessibleInterface& heard)
{
    const QObject* object = heard.object();
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(object ? object->metaObject()->className() : "item"),
             heard.text(QAccessible::Name));
}

bool isShown(const QAccessibleInterface& heard)
{
    return !heard.state().invisible && !heard.rect().isEmpty();
}

/// Returns what is wrong with one thing that takes the keyboard.
QStringList flawsOf(QAccessibleInterface& heard)
{
    auto* widget = qobject_cast<QWidget*>(heard.object());
    const bool takesKeys = widget && widget->focusPolicy() & Qt::TabFocus && widget->isEnabled();
    const bool isPicture = heard.role() == QAccessible::Graphic;
    QStringList flaws;
    if ((takesKeys || isPicture) && heard.text(QAccessible::Name).isEmpty())
        flaws += told(heard) + QStringLiteral(" has no name");
    if (!takesKeys)
        return flaws;
    if (heard.role() == QAccessible::NoRole || heard.role() == QAccessible::Client)
        flaws += told(heard) + QStringLiteral(" has no role");
    if (heard.role() == QAccessible::Table)
        return flaws; // Qt gives the keyboard and the actions to its cells
    if (!heard.state().focusable)
        flaws += told(heard) + QStringLiteral(" cannot be reached");
    auto* actions = heard.actionInterface();
    if (!heard.textInterface() && !heard.valueInterface()
        && (!actions || actions->actionNames().isEmpty()))
        flaws += told(heard) + QStringLiteral(" does nothing");
    return flaws;
}

/// Returns what is wrong with all that is shown in and below `heard`.
QStringList flawsIn(QAccessibleInterface& heard)
{
    QStringList flaws = flawsOf(heard);
    QAccessibleInterface* before = nullptr;
    for (int n = 0; n < heard.childCount(); ++n) {
        QAccessibleInterface* child = heard.child(n);
        if (!child || !child->object() || !isShown(*child))
            continue;
        flaws += flawsIn(*child);
        const QRect place = child->rect();
        if (before
            && (place.bottom() < before->rect().top()
                || (place.top() <= before->rect().bottom()
                    && place.right() < before->rect().left())))
            flaws += told(*child) + QStringLiteral(" is read behind ") + told(*before);
        before = child;
    }
    return flaws;
}

QStringList flawsIn(QWidget& widget)
{
    QApplication::setActiveWindow(widget.window());
    QCoreApplication::processEvents();
    return flawsIn(*QAccessible::queryAccessibleInterface(&widget));
}

} // namespace

Q_DECLARE_METATYPE(Open)

void AccessibilityTest::initTestCase()
{
    ApplyHostTheme(*qApp);
    set_custom_software_name(QStringLiteral("Workbench"));
}

void AccessibilityTest::shouldNameAndOrderThePanel_data()
{
    QTest::addColumn<bool>("isChinese");
    QTest::addColumn<bool>("isLocked");
    QTest::newRow("English") << false << false;
    QTest::newRow("Chinese") << true << false;
    QTest::newRow("locked") << false << true;
}

void AccessibilityTest::shouldNameAndOrderThePanel()
{
    QFETCH(const bool, isChinese);
    QFETCH(const bool, isLocked);
    ShownPanel shown;
    const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.panel.notify(16);
    shown.host().lanUsbMode = true;
    shown.host().lanUsbIps = {0x0A000001};
    shown.area().onDetectStrategyChanged(2);
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    shown.area().onLANUSBGetProcessorIP();
    shown.area().SetOperationLock(1, isLocked);
    QVERIFY(shown.label()->isVisible());
    QCOMPARE(flawsIn(shown.area()).join(QLatin1Char('\n')), QString());
}

void AccessibilityTest::shouldNameAndOrderDialogs_data()
{
    QTest::addColumn<Open>("open");
    const auto add = [](const char* name, auto open) {
        QTest::newRow(name) << Open(
            [open](FakeHandler& host) -> std::unique_ptr<CDialog> { return open(host); });
    };
    for (const bool forList : {true, false}) {
        add(forList ? "one address" : "one processor", [forList](FakeHandler&) {
            return std::make_unique<CAddSingleIPDialog>(forList, nullptr);
        });
        add(forList ? "two addresses" : "two processors", [forList](FakeHandler&) {
            return std::make_unique<CAddBothIpDialog>(forList, nullptr);
        });
        add(forList ? "several addresses" : "several processors", [forList](FakeHandler&) {
            return std::make_unique<CAddBatchIPDialog>(forList, nullptr);
        });
    }
    add("another address", [](FakeHandler& host) {
        host.ipList = QStringList{QStringLiteral("10.0.0.1(Hall)")};
        return std::make_unique<CModifyIPDialog>(0, QStringLiteral("Hall"), nullptr);
    });
    add("no addresses", [](FakeHandler&) { return std::make_unique<CIPManageDialog>(nullptr); });
    add("addresses", [](FakeHandler& host) {
        host.ipList =
            QStringList{QStringLiteral("10.0.0.1(Hall)"), QStringLiteral("10.0.0.2(Foyer)")};
        return std::make_unique<CIPManageDialog>(nullptr);
    });
    add("processors and outputs",
        [](FakeHandler&) { return std::make_unique<CCustomAddProcessor>(4, nullptr); });
    add("LAN-USB", [](FakeHandler&) {
        return std::make_unique<CNetUsbTipDlg>(
            std::vector<LanUsbProcessorInfo>{{"10.0.0.1", "Hall", "Sender"}}, nullptr);
    });
}

void AccessibilityTest::shouldNameAndOrderDialogs()
{
    QFETCH(const Open, open);
    TestPanel panel;
    for (const bool isChinese : {false, true}) {
        const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
        const std::unique_ptr<CDialog> dialog = open(panel.host());
        dialog->show();
        QVERIFY(!dialog->windowTitle().isEmpty());
        QCOMPARE(flawsIn(*dialog).join(QLatin1Char('\n')), QString());
    }
}

void AccessibilityTest::shouldNameAndOrderMessages()
{
    const TestPanel panel;
    DialogDriver driver;
    const QStringList texts{QStringLiteral("Sure?"), QStringLiteral("Sure? ").repeated(2000)};
    for (const bool isChinese : {false, true}) {
        const std::unique_ptr<Chinese> chinese(isChinese ? new Chinese : nullptr);
        for (const QString& text : texts) {
            QStringList flaws;
            const auto look = [&](QWidget& box) {
                flaws += flawsIn(box);
                box.close();
            };
            driver.then(look).then(look);
            tellUser(nullptr, text);
            askUser(nullptr, text);
            QCOMPARE(flaws.join(QLatin1Char('\n')), QString());
        }
    }
    QVERIFY(driver.isDone());
}

void AccessibilityTest::shouldNameEntriesOfMenus()
{
    ShownPanel shown;
    shown.host().setProject({testGroup(100)}, {testProcessor(1, 100), testProcessor(2)});
    shown.host().canAdd = shown.host().addEnabled = true;
    shown.host().frontPanelAvailable = true;
    shown.panel.notify(16);
    CIPManageDialog addresses(nullptr);
    const QList<QMenu*> menus =
        shown.area().findChildren<QMenu*>() + addresses.findChildren<QMenu*>();
    QCOMPARE(menus.size(), 3);
    const auto entriesOf = [](QWidget& menu) {
        QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&menu);
        QStringList names;
        for (int n = 0; n < heard->childCount(); ++n) {
            if (heard->child(n)->role() != QAccessible::Separator)
                names += heard->child(n)->text(QAccessible::Name);
        }
        return names;
    };
    DialogDriver driver;
    QStringList names;
    const auto look = [&](QWidget& menu) {
        names = entriesOf(menu);
        menu.close();
    };
    for (QMenu* menu : menus) {
        driver.then(look);
        menu->exec();
        QVERIFY(names.size() > 1 && !names.contains(QString()));
    }
    for (const quint32 row : {0U, 100U, 1U}) {
        driver.then(look);
        shown.view()->OnRightMenuEvent(shown.panel.index(row), QPoint(5, 5));
        QVERIFY(names.size() > 1 && !names.contains(QString()));
    }
    QVERIFY(driver.isDone());
}

TSA_TEST_MAIN(AccessibilityTest)
#include "tst_accessibility.moc"
