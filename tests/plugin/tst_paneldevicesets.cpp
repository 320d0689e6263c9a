#include "host/widgets/HostTheme.h"
#include "tests/plugin/ShownPanel.h"
#include "tests/support/NestedLoop.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QSignalSpy>

#include <utility>

namespace {

const QString kConfirm = QStringLiteral("ConfirmDeviceSetChange");

/// Opens the list with the mouse and picks row `row`.
void pickByMouse(CComboBox& selector, int row)
{
    QTest::mouseClick(&selector, Qt::LeftButton);
    QAbstractItemView* list = selector.view();
    QTRY_VERIFY(list->isVisible());
    const QRect place = list->visualRect(list->model()->index(row, 0));
    // Without a move the list takes the click for the end of the one that opened it.
    QTest::mouseMove(list->viewport(), QPoint(1, 1));
    QTest::mouseMove(list->viewport(), place.center());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
}

} // namespace

/// The device set selector of the panel.
class PanelDeviceSetsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldHaveItsShape();
    void shouldBeThereOnlyWhenThereIsAChoice_data();
    void shouldBeThereOnlyWhenThereIsAChoice();
    void shouldNotBeThereWithoutACurrentSet();
    void shouldTakeTheFirstOfEqualSets();
    void shouldAskForTheTextOfEachSetInOrder();
    void shouldAskTheHostAboutAnotherSet_data();
    void shouldAskTheHostAboutAnotherSet();
    void shouldRestoreTheSetThatTheHostKeeps();
    void shouldGoBackToTheLastAcceptedSet();
    void shouldAskAboutOneSetAtATime_data();
    void shouldAskAboutOneSetAtATime();
    void shouldPartFromWhoeverListened();
    void shouldKeepQtsOwnConnections();
    void shouldStillOpenAndCloseItsListAfterManyRebuilds();
    void shouldCloseItsListWhenTheSetsChange();
    void shouldTakeNewSetsInsideTheQuestion_data();
    void shouldTakeNewSetsInsideTheQuestion();
    void shouldTakeNewSetsWhileItAsksForTexts();
    void shouldStandTheEndOfThePanel_data();
    void shouldStandTheEndOfThePanel();
    void shouldTakeTheHostsTextsWithALanguage_data();
    void shouldTakeTheHostsTextsWithALanguage();
    void shouldNotMixTheTextsOfTwoLists();
    void shouldStandTheEndOfThePanelDuringALanguageChange();
    void shouldFollowTheHostsEvent();
};

void PanelDeviceSetsTest::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void PanelDeviceSetsTest::shouldHaveItsShape()
{
    ShownPanel shown;
    QCOMPARE(shown.selector()->parentWidget(), &shown.area());
    QCOMPARE(shown.selector()->width(), 200);
    QCOMPARE(shown.selector()->textHorizontalAlignment(), Qt::AlignHCenter);
    QVERIFY(!shown.selector()->isVisible());
    QCOMPARE(shown.selector()->accessibleName(), QStringLiteral("Device set"));
    const auto labels =
        QAccessible::queryAccessibleInterface(shown.selector())->relations(QAccessible::Label);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first().first->text(QAccessible::Name), QStringLiteral("Device set"));
}

void PanelDeviceSetsTest::shouldBeThereOnlyWhenThereIsAChoice_data()
{
    QTest::addColumn<int>("sets");
    QTest::addColumn<quint32>("current");
    QTest::addColumn<bool>("shown");
    QTest::newRow("none") << 0 << 0U << false;
    QTest::newRow("none, one current") << 0 << 1U << false;
    QTest::newRow("one") << 1 << 1U << false;
    QTest::newRow("two, the second current") << 2 << 2U << true;
    QTest::newRow("two, none current") << 2 << 0U << false;
    QTest::newRow("two, an unknown one current") << 2 << 9U << false;
    QTest::newRow("a thousand, the last current") << 1000 << 1000U << true;
}

void PanelDeviceSetsTest::shouldBeThereOnlyWhenThereIsAChoice()
{
    QFETCH(int, sets);
    QFETCH(quint32, current);
    QFETCH(bool, shown);
    ShownPanel panel;
    // From a state in which one was shown.
    panel.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    QVERIFY(panel.selector()->isVisible());
    panel.host().clearCalls();

    panel.area().onCurrentDeviceSetChanged(deviceSet(current).id, deviceSets(sets));

    QCOMPARE(panel.selector()->isVisible(), shown);
    QCOMPARE(panel.selector()->count(), shown ? sets : 0);
    QCOMPARE(panel.host().callNames().count(QStringLiteral("GetDeviceSetText")), shown ? sets : 0);
    if (shown)
        return;
    // A hidden selector is connected to nothing.
    panel.selector()->addItems({QStringLiteral("one"), QStringLiteral("another")});
    panel.selector()->setCurrentIndex(1);
    QCOMPARE(panel.host().callCount(kConfirm), 0);
}

void PanelDeviceSetsTest::shouldNotBeThereWithoutACurrentSet()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.host().clearCalls();
    // Not even where a set has that identity.
    shown.area().onCurrentDeviceSetChanged(GUID(), {SDeviceSetInfo{}, deviceSet(1)});
    QVERIFY(!shown.selector()->isVisible());
    QCOMPARE(shown.selector()->count(), 0);
    QCOMPARE(shown.host().callCount(QStringLiteral("GetDeviceSetText")), 0);
}

void PanelDeviceSetsTest::shouldTakeTheFirstOfEqualSets()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id,
                                           {deviceSet(1), deviceSet(2), deviceSet(2)});
    QCOMPARE(shown.selector()->currentIndex(), 1);
}

void PanelDeviceSetsTest::shouldAskForTheTextOfEachSetInOrder()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(3).id,
                                           {deviceSet(3), deviceSet(1), deviceSet(2)});
    QStringList texts;
    for (int n = 0; n < shown.selector()->count(); ++n) {
        texts.append(shown.selector()->itemText(n));
        QVERIFY(!shown.selector()->itemData(n).isValid());
        QVERIFY(shown.selector()->itemIcon(n).isNull());
    }
    QCOMPARE(texts, QStringList({QStringLiteral("Set 3"), QStringLiteral("Set 1"),
                                 QStringLiteral("Set 2")}));
    // Selecting the current set is no choice of the user's.
    QCOMPARE(shown.host().callCount(kConfirm), 0);
}

void PanelDeviceSetsTest::shouldAskTheHostAboutAnotherSet_data()
{
    QTest::addColumn<bool>("mouse");
    QTest::newRow("by keys") << false;
    QTest::newRow("by mouse") << true;
}

void PanelDeviceSetsTest::shouldAskTheHostAboutAnotherSet()
{
    QFETCH(bool, mouse);
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    if (mouse) {
        pickByMouse(*shown.selector(), 1);
    } else {
        QTest::keyClick(shown.selector(), Qt::Key_Down);
    }
    QCOMPARE(shown.host().callCount(kConfirm), 1);
    QCOMPARE(shown.host().calls().last().argument, QStringLiteral("1"));
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
}

void PanelDeviceSetsTest::shouldRestoreTheSetThatTheHostKeeps()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(3));
    shown.host().confirmDeviceSet = false;
    QSignalSpy changes(shown.selector(), qOverload<int>(&QComboBox::currentIndexChanged));
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    // The user's own step alone is announced, not the step back.
    QCOMPARE(changes.count(), 1);
    QCOMPARE(shown.host().callCount(kConfirm), 1);
}

void PanelDeviceSetsTest::shouldGoBackToTheLastAcceptedSet()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    shown.host().confirmDeviceSet = false;
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    shown.host().confirmDeviceSet = true;
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 3"));
}

void PanelDeviceSetsTest::shouldAskAboutOneSetAtATime_data()
{
    QTest::addColumn<bool>("answer");
    QTest::addColumn<int>("expected");
    QTest::newRow("accepted") << true << 1;
    QTest::newRow("refused") << false << 0;
}

void PanelDeviceSetsTest::shouldAskAboutOneSetAtATime()
{
    QFETCH(bool, answer);
    QFETCH(int, expected);
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(4));
    shown.host().confirmDeviceSet = answer;
    int during = -1;
    shown.host().inside = [&](const QString& name) {
        if (name != kConfirm || during >= 0)
            return;
        during = 0;
        runInNestedLoop([&] { QTest::keyClick(shown.selector(), Qt::Key_Down); });
        during = shown.selector()->currentIndex();
    };
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    // Until the answer, what it is about.
    QCOMPARE(during, 1);
    QCOMPARE(shown.host().callCount(kConfirm), 1);
    QCOMPARE(shown.selector()->currentIndex(), expected);
    // The next choice is asked about, and goes back to the last accepted one.
    shown.host().confirmDeviceSet = false;
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(shown.host().callCount(kConfirm), 2);
    QCOMPARE(shown.selector()->currentIndex(), expected);
}

void PanelDeviceSetsTest::shouldPartFromWhoeverListened()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    QSignalSpy numbers(shown.selector(), qOverload<int>(&QComboBox::currentIndexChanged));
    QSignalSpy texts(shown.selector(), &QComboBox::currentTextChanged);
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(3));
    QCOMPARE(numbers.count() + texts.count(), 0);
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QCOMPARE(numbers.count() + texts.count(), 0);
    QCOMPARE(shown.host().callCount(kConfirm), 1);
}

void PanelDeviceSetsTest::shouldKeepQtsOwnConnections()
{
    QAccessible::Id id = 0;
    {
        ShownPanel shown;
        const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(shown.selector());
        QVERIFY(face);
        id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(face));
        QSignalSpy ends(shown.selector(), &QObject::destroyed);
        shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
        shown.area().onCurrentDeviceSetChanged(GUID(), {});
        delete &shown.area();
        QCOMPARE(ends.count(), 1);
    }
    // Qt has forgotten what it knew of the selector.
    QVERIFY(!QAccessible::accessibleInterface(id));
}

void PanelDeviceSetsTest::shouldStillOpenAndCloseItsListAfterManyRebuilds()
{
    ShownPanel shown;
    for (int n = 0; n < 20; ++n) {
        shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
        shown.area().onCurrentDeviceSetChanged(GUID(), deviceSets(n % 3));
    }
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    shown.selector()->setFocus();
    QTest::keyClick(shown.selector(), Qt::Key_F4);
    QAbstractItemView* list = shown.selector()->view();
    QTRY_VERIFY(list->isVisible());
    QTest::keyClick(list, Qt::Key_End);
    QTest::keyClick(list, Qt::Key_Return);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 3"));
    QCOMPARE(shown.host().callCount(kConfirm), 1);
    const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(shown.selector());
    QCOMPARE(face->text(QAccessible::Value), QStringLiteral("Set 3"));
}

void PanelDeviceSetsTest::shouldCloseItsListWhenTheSetsChange()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    shown.selector()->showPopup();
    QAbstractItemView* list = shown.selector()->view();
    QTRY_VERIFY(list->isVisible());
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(2));
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
}

void PanelDeviceSetsTest::shouldTakeNewSetsInsideTheQuestion_data()
{
    QTest::addColumn<bool>("answer");
    QTest::newRow("accepted") << true;
    QTest::newRow("refused") << false;
}

void PanelDeviceSetsTest::shouldTakeNewSetsInsideTheQuestion()
{
    QFETCH(bool, answer);
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.host().confirmDeviceSet = answer;
    bool asked = false;
    shown.host().inside = [&](const QString& name) {
        if (name != kConfirm || std::exchange(asked, true))
            return;
        shown.panel.notify<GUID, QList<SDeviceSetInfo>>(1, deviceSet(2).id,
                                                        {deviceSet(2), deviceSet(3), deviceSet(1)});
        QTRY_COMPARE(shown.selector()->count(), 3);
    };
    QTest::keyClick(shown.selector(), Qt::Key_Down);
    QTRY_COMPARE(shown.selector()->count(), 3);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    // The new list has its own way back.
    shown.host().confirmDeviceSet = false;
    QTest::keyClick(shown.selector(), Qt::Key_End);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 2"));
    QCOMPARE(shown.selector()->currentIndex(), 0);
}

void PanelDeviceSetsTest::shouldTakeNewSetsWhileItAsksForTexts()
{
    ShownPanel shown;
    bool asked = false;
    shown.host().inside = [&](const QString& name) {
        if (name != QLatin1String("GetDeviceSetText") || std::exchange(asked, true))
            return;
        shown.area().onCurrentDeviceSetChanged(deviceSet(4).id, {deviceSet(4), deviceSet(5)});
    };
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(3));
    QCOMPARE(shown.selector()->count(), 2);
    QCOMPARE(shown.selector()->currentText(), QStringLiteral("Set 4"));
}

void PanelDeviceSetsTest::shouldStandTheEndOfThePanel_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("mouse");
    QTest::addColumn<bool>("nested");
    for (const bool nested : {false, true}) {
        const char* where = nested ? ", nested loop" : "";
        QTest::addRow("texts%s", where) << QStringLiteral("GetDeviceSetText") << false << nested;
        QTest::addRow("choice by keys%s", where) << kConfirm << false << nested;
        QTest::addRow("choice by mouse%s", where) << kConfirm << true << nested;
    }
}

void PanelDeviceSetsTest::shouldStandTheEndOfThePanel()
{
    QFETCH(QString, question);
    QFETCH(bool, mouse);
    QFETCH(bool, nested);
    ShownPanel shown;
    const QPointer<CComboBox> selector(shown.selector());
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.host().confirmDeviceSet = false;
    shown.host().inside = [&](const QString& name) {
        if (name == question)
            runWithin(nested, [] { delete CTargetSelectArea::Existing(); });
    };
    if (question != kConfirm) {
        shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(3));
    } else if (mouse) {
        pickByMouse(*selector, 1);
    } else {
        QTest::keyClick(selector, Qt::Key_Down);
    }
    QVERIFY(!CTargetSelectArea::Existing());
    // Nothing of it is left behind.
    QTRY_VERIFY(!selector);
}

void PanelDeviceSetsTest::shouldTakeTheHostsTextsWithALanguage_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString c = QStringLiteral("c");
    const QStringList before{QStringLiteral("Set 1"), QStringLiteral("Set 2")};
    QTest::newRow("two of two") << QStringList({a, b}) << 2 << QStringList({a, b});
    QTest::newRow("more than there are") << QStringList({a, b, c}) << 3 << QStringList({a, b});
    QTest::newRow("a count of one") << QStringList({a, b}) << 1 << before;
    QTest::newRow("a count of none") << QStringList({a, b}) << 0 << before;
    QTest::newRow("a negative count") << QStringList({a, b}) << -5 << before;
    QTest::newRow("a count above the list")
        << QStringList({a}) << 2 << QStringList({a, QStringLiteral("Set 2")});
    QTest::newRow("a count without a list") << QStringList() << 1000000 << before;
}

void PanelDeviceSetsTest::shouldTakeTheHostsTextsWithALanguage()
{
    QFETCH(QStringList, texts);
    QFETCH(int, count);
    QFETCH(QStringList, expected);
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(2));
    shown.host().deviceSetTexts = texts;
    shown.host().deviceSetTextCount = count;
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&shown.area(), &change);
    QStringList now;
    for (int n = 0; n < shown.selector()->count(); ++n)
        now.append(shown.selector()->itemText(n));
    QCOMPARE(now, expected);
    QCOMPARE(shown.selector()->currentIndex(), 1);
    QCOMPARE(shown.host().callCount(kConfirm), 0);
    QCOMPARE(shown.host().callCount(QStringLiteral("GetDeviceSetTexts")), 1);
}

void PanelDeviceSetsTest::shouldNotMixTheTextsOfTwoLists()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(1).id, deviceSets(2));
    shown.host().deviceSetTexts = QStringList({QStringLiteral("a"), QStringLiteral("b")});
    shown.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetDeviceSetTexts"))
            shown.area().onCurrentDeviceSetChanged(deviceSet(4).id, {deviceSet(4), deviceSet(5)});
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&shown.area(), &change);
    QCOMPARE(shown.selector()->itemText(0), QStringLiteral("Set 4"));
    QCOMPARE(shown.selector()->itemText(1), QStringLiteral("Set 5"));
}

void PanelDeviceSetsTest::shouldStandTheEndOfThePanelDuringALanguageChange()
{
    ShownPanel shown;
    shown.area().onCurrentDeviceSetChanged(deviceSet(2).id, deviceSets(2));
    shown.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetDeviceSetTexts"))
            delete CTargetSelectArea::Existing();
    };
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&shown.window, &change);
    QVERIFY(!CTargetSelectArea::Existing());
}

void PanelDeviceSetsTest::shouldFollowTheHostsEvent()
{
    ShownPanel shown;
    shown.panel.notify<GUID, QList<SDeviceSetInfo>>(1, deviceSet(3).id, deviceSets(3));
    QTRY_COMPARE(shown.selector()->currentText(), QStringLiteral("Set 3"));
    QVERIFY(shown.selector()->isVisible());
    shown.panel.notify<GUID, QList<SDeviceSetInfo>>(1, GUID(), {});
    QTRY_VERIFY(!shown.selector()->isVisible());
}

TSA_TEST_MAIN(PanelDeviceSetsTest)
#include "tst_paneldevicesets.moc"
