#include "host/widgets/HostTheme.h"
#include "host/widgets/MenuToolButton.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WarningTrap.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

namespace {
struct Form
{
    Form()
    {
        window.resize(320, 120);
        before.setGeometry(10, 10, 200, 24);
        button.setText(QStringLiteral("Detect"));
        button.setGeometry(10, 50, 200, 24);
        all = button.AddAction(QStringLiteral("All"), 7);
        few = button.AddAction(QStringLiteral("Few"));
        window.show();
        window.activateWindow();
        before.setFocus();
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }

    QPoint onArrow() const { return {button.width() - 8, button.height() / 2}; }

    QImage picture() { return button.grab().toImage(); }

    void hover(const QPoint& position)
    {
        QTest::mouseMove(&window, button.mapTo(&window, position));
        QCoreApplication::processEvents();
    }

    QWidget window;
    QLineEdit before{&window};
    CMenuToolButton button{&window};
    QAction* all = nullptr;
    QAction* few = nullptr;
    DialogDriver driver;
};

void pressEntry(QWidget& menu)
{
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
}

/// Returns the first and last column with pixels that differ from the button's background.
QPair<int, int> inkOf(const QImage& image, const QRect& area)
{
    int first = image.width();
    int last = -1;
    for (int x = area.left(); x <= area.right(); ++x) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            if (qGray(image.pixel(x, y)) > 150) {
                first = qMin(first, x);
                last = x;
            }
        }
    }
    return {first, last};
}

} // namespace

class TestMenuToolButton final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldClickOnTheButtonItself();
    void shouldOpenTheMenuByItsArrow();
    void shouldKeepTheCallersData();
    void shouldTakeTheFocusByTab();
    void shouldClickByKeys();
    void shouldOpenTheMenuByKeys_data();
    void shouldOpenTheMenuByKeys();
    void shouldCloseItsMenuBeforeATriggeredEntryActs();
    void shouldShowItsStates();
    void shouldCentreItsText();
    void shouldElideTextsThatDoNotFit();
    void shouldHaveItsTextAsAccessibleName();
    void shouldDoNothingWhenDisabled();
    void shouldSurviveItsDestructionInAClick();
    void shouldSurviveItsDestructionInTheMenu_data();
    void shouldSurviveItsDestructionInTheMenu();
};

void TestMenuToolButton::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestMenuToolButton::shouldClickOnTheButtonItself()
{
    Form form;
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    QTest::mouseClick(&form.button, Qt::LeftButton, {}, {100, 12});
    QCOMPARE(clicks.count(), 1);
}

void TestMenuToolButton::shouldOpenTheMenuByItsArrow()
{
    Form form;
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    QSignalSpy few(form.few, &QAction::triggered);
    form.driver.then([&](QWidget& menu) {
        QTest::keyClick(&menu, Qt::Key_Up);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    QTest::mouseClick(&form.button, Qt::LeftButton, {}, form.onArrow());
    QCOMPARE(few.count(), 1);
    QCOMPARE(clicks.count(), 0);
}

void TestMenuToolButton::shouldKeepTheCallersData()
{
    const Form form;
    QCOMPARE(form.all->data(), QVariant(7));
    QVERIFY(!form.few->data().isValid());
    QCOMPARE(form.button.menu()->actions(), (QList<QAction*>{form.all, form.few}));
}

void TestMenuToolButton::shouldTakeTheFocusByTab()
{
    Form form;
    QVERIFY(form.isActive());
    QTest::keyClick(&form.before, Qt::Key_Tab);
    QVERIFY(form.button.hasFocus());
}

void TestMenuToolButton::shouldClickByKeys()
{
    Form form;
    QVERIFY(form.isActive());
    form.button.setFocus();
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(&form.button, key);
    QCOMPARE(clicks.count(), 3);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QApplication::sendEvent(&form.button, &held);
    QCOMPARE(clicks.count(), 3);
}

void TestMenuToolButton::shouldOpenTheMenuByKeys_data()
{
    QTest::addColumn<int>("modifier");
    QTest::newRow("Down") << static_cast<int>(Qt::NoModifier);
    QTest::newRow("Alt+Down") << static_cast<int>(Qt::AltModifier);
}

void TestMenuToolButton::shouldOpenTheMenuByKeys()
{
    QFETCH(int, modifier);
    Form form;
    QVERIFY(form.isActive());
    form.button.setFocus();
    QWidget* opened = nullptr;
    form.driver.then([&](QWidget& menu) {
        opened = &menu;
        QCOMPARE(form.button.menu()->activeAction(), form.all);
        menu.close();
    });
    QTest::keyClick(&form.button, Qt::Key_Down, static_cast<Qt::KeyboardModifier>(modifier));
    QCOMPARE(opened, form.button.menu());
}

void TestMenuToolButton::shouldCloseItsMenuBeforeATriggeredEntryActs()
{
    Form form;
    bool wasClosed = false;
    connect(form.few, &QAction::triggered, this,
            [&] { wasClosed = form.button.menu()->isHidden(); });
    form.driver.then([&](QWidget&) { form.few->trigger(); });
    QTest::mouseClick(&form.button, Qt::LeftButton, {}, form.onArrow());
    QVERIFY(wasClosed);
}

void TestMenuToolButton::shouldShowItsStates()
{
    Form form;
    QVERIFY(form.isActive());
    const QPoint fill(20, 5);
    const QPoint edge(100, 0);
    QCOMPARE(form.picture().pixelColor(fill), hostColors().field);
    QCOMPARE(form.picture().pixelColor(edge), hostColors().line);
    form.button.setFocus();
    QCOMPARE(form.picture().pixelColor(edge), hostColors().accent);
    QTest::mousePress(&form.button, Qt::LeftButton, {}, {100, 12});
    QCOMPARE(form.picture().pixelColor(fill), hostColors().window);
    QTest::mouseRelease(&form.button, Qt::LeftButton, {}, {100, 12});
    form.hover({100, 12});
    QTRY_COMPARE(form.picture().pixelColor(fill), hostColors().line);
    const auto lit = inkOf(form.picture(), {30, 4, 140, 16});
    form.button.setEnabled(false);
    QCOMPARE(form.picture().pixelColor(fill), hostColors().popup);
    QVERIFY(lit.second > lit.first);
    QCOMPARE(inkOf(form.picture(), {30, 4, 140, 16}).second, -1);
}

void TestMenuToolButton::shouldCentreItsText()
{
    Form form;
    const auto ink = inkOf(form.picture(), {30, 4, 140, 16});
    const int middle = (ink.first + ink.second) / 2;
    QVERIFY2(qAbs(middle - 100) <= 2, qPrintable(QString::number(middle)));
    QCOMPARE(form.button.sizeHint().height(), 24);
    QVERIFY(form.button.sizeHint().width() > ink.second - ink.first + 2 * 24);
}

void TestMenuToolButton::shouldElideTextsThatDoNotFit()
{
    Form form;
    form.button.setText(QString(100, QLatin1Char('M')));
    const auto ink = inkOf(form.picture(), {2, 4, 180, 16});
    QVERIFY2(ink.first >= 20 && ink.second < 178, qPrintable(QString::number(ink.second)));
}

void TestMenuToolButton::shouldHaveItsTextAsAccessibleName()
{
    Form form;
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&form.button);
    QVERIFY(accessible);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Detect"));
    QCOMPARE(accessible->role(), QAccessible::ButtonMenu);
    QCOMPARE(accessible->actionInterface()->actionNames(),
             QStringList({QStringLiteral("Press"), QStringLiteral("ShowMenu"),
                          QStringLiteral("SetFocus")}));
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    accessible->actionInterface()->doAction(QStringLiteral("Press"));
    QTRY_COMPARE(clicks.count(), 1);
    bool opened = false;
    form.driver.then([&](QWidget& menu) {
        opened = &menu == form.button.menu();
        menu.close();
    });
    accessible->actionInterface()->doAction(QStringLiteral("ShowMenu"));
    QTRY_VERIFY(opened);
    QVERIFY(!form.button.isDown());
    QCOMPARE(accessible->childCount(), 1);
    QCOMPARE(accessible->child(0)->object(), form.button.menu());
    QCOMPARE(accessible->indexOfChild(accessible->child(0)), 0);
    QCOMPARE(accessible->indexOfChild(accessible), -1);
    QVERIFY(!accessible->child(1));
}

void TestMenuToolButton::shouldDoNothingWhenDisabled()
{
    Form form;
    form.button.setEnabled(false);
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    QTest::mouseClick(&form.button, Qt::LeftButton, {}, {100, 12});
    QTest::mouseClick(&form.button, Qt::LeftButton, {}, form.onArrow());
    QCOMPARE(clicks.count(), 0);
    QVERIFY(form.button.menu()->isHidden());
}

void TestMenuToolButton::shouldSurviveItsDestructionInAClick()
{
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        QPointer<CMenuToolButton> button = new CMenuToolButton;
        connect(button, &QAbstractButton::clicked, button, [&] { delete button; });
        button->show();
        QTest::keyPress(button.data(), key);
        if (button)
            QTest::keyRelease(button.data(), key);
        QVERIFY(!button);
    }
}

void TestMenuToolButton::shouldSurviveItsDestructionInTheMenu_data()
{
    QTest::addColumn<QString>("by");
    QTest::newRow("mouse") << "mouse";
    QTest::newRow("key") << "key";
    QTest::newRow("while it is open") << "";
}

void TestMenuToolButton::shouldSurviveItsDestructionInTheMenu()
{
    QFETCH(QString, by);
    DialogDriver driver;
    QPointer<CMenuToolButton> button = new CMenuToolButton;
    const QAction* entry = button->AddAction(QStringLiteral("Entry"));
    connect(entry, &QAction::triggered, button, [&] { delete button; });
    button->show();
    const QPointer<QMenu> menu = button->menu();
    driver.then([&](QWidget& opened) {
        if (by == QLatin1String("mouse"))
            QTest::mouseClick(&opened, Qt::LeftButton, {},
                              menu->actionGeometry(menu->actions().first()).center());
        else if (by == QLatin1String("key"))
            pressEntry(opened);
        else
            delete button;
    });
    QTest::keyPress(button.data(), Qt::Key_Down);
    QVERIFY(!button);
    QVERIFY(!QApplication::activePopupWidget());
    QTRY_VERIFY(!menu);
}

TSA_TEST_MAIN(TestMenuToolButton)

#include "tst_menutoolbutton.moc"
