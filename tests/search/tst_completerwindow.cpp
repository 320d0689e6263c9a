#include "tests/search/SearchField.h"

#include <QListWidget>
#include <QProcess>
#include <QScreen>
#include <QShortcut>

namespace {

/// Counts the mouse events that a list receives.
class ListProbe final : public QListWidget
{
public:
    using QListWidget::QListWidget;

    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        ++presses;
        QListWidget::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        ++releases;
        QListWidget::mouseReleaseEvent(event);
    }
};

/// Runs xdotool as the user. Returns false if it fails.
bool act(const QString& commands)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), commands.split(QLatin1Char(' ')));
    return QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 8000)
           && process.exitCode() == 0;
}

QString at(const QPoint& place)
{
    return QStringLiteral("mousemove %1 %2").arg(place.x()).arg(place.y());
}

QString click(const QPoint& place)
{
    return at(place) + QStringLiteral(" click 1");
}

/// The search field on a real display, with a list that the popup covers and that was clicked
/// before.
struct RealField : SearchField
{
    explicit RealField(const QPoint& position = QPoint(300, 200))
        : SearchField(position, Qt::FramelessWindowHint)
    {
        below = new ListProbe(window);
        below->setGeometry(0, 60, 300, 300);
        for (int n = 0; n < 30; ++n)
            below->addItem(QStringLiteral("row %1").arg(n));
        below->show();
    }

    QPoint global(const QPoint& place) const { return window->mapToGlobal(place); }
    QPoint globalRow(int n) const { return popup()->mapToGlobal(place(n)); }
    static bool isGone() { return !QApplication::activePopupWidget(); }

    /// Returns whether the window has its final position on the display and the keyboard focus.
    bool isReady() const
    {
        return QTest::qWaitForWindowActive(window, 8000)
               && QTest::qWaitFor(
                   [this] {
                       QProcess process;
                       process.start(QStringLiteral("xdotool"),
                                     {QStringLiteral("getwindowgeometry"),
                                      QStringLiteral("--shell"), QString::number(window->winId())});
                       if (!process.waitForFinished())
                           return false;
                       const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
                       const QPoint place = window->geometry().topLeft();
                       return lines.contains("X=" + QByteArray::number(place.x()))
                              && lines.contains("Y=" + QByteArray::number(place.y()));
                   },
                   8000);
    }

    bool open(const QString& text = QStringLiteral("1")) const
    {
        return isReady() && act(QStringLiteral("type ") + text)
               && QTest::qWaitFor([&] { return isOpen() && field->text() == text; }, 8000)
               && QTest::qWaitForWindowExposed(popup(), 8000);
    }

    ListProbe* below;
};

} // namespace

class CompleterWindowTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldForwardTypingWhileOpen();
    void shouldChooseWithArrowKeys();
    void shouldCloseByKey_data();
    void shouldCloseByKey();
    void shouldKeepItsKeysFromShortcuts();
    void shouldChooseWithAClick();
    void shouldChooseWhenTheMouseLeavesBeforeRelease();
    void shouldCloseOnAClickOutside_data();
    void shouldCloseOnAClickOutside();
    void shouldCloseForAnotherWindow_data();
    void shouldCloseForAnotherWindow();
    void shouldCloseWhenMinimised();
    void shouldFollowTheWindow();
    void shouldStayOnTheScreen();
};

void CompleterWindowTest::shouldForwardTypingWhileOpen()
{
    const RealField search;
    QVERIFY(search.open());
    QVERIFY(act(QStringLiteral("key Home key F key End key 2")));
    QTRY_COMPARE(search.field->text(), QStringLiteral("F12"));
    QVERIFY(search.isOpen());
    QVERIFY(search.field->hasFocus());
    QCOMPARE(search.field->focusLosses, 0);
    QVERIFY(act(QStringLiteral("key BackSpace key BackSpace key BackSpace")));
    QTRY_VERIFY(!search.isOpen());
    QVERIFY(act(QStringLiteral("key f")));
    QTRY_COMPARE(search.field->text(), QStringLiteral("f"));
    QTRY_VERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void CompleterWindowTest::shouldChooseWithArrowKeys()
{
    const RealField search;
    QVERIFY(search.open());
    QVERIFY(act(QStringLiteral("key Up")));
    QTRY_VERIFY(search.isGone());
    QCOMPARE(search.told(), QStringLiteral("Foyer"));
    QVERIFY(!search.field->hasFocus());
}

void CompleterWindowTest::shouldCloseByKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("Escape") << "Escape";
    QTest::newRow("Alt+F4") << "alt+F4";
}

void CompleterWindowTest::shouldCloseByKey()
{
    QFETCH(QString, key);
    const RealField search;
    QVERIFY(search.open());
    QVERIFY(act(QStringLiteral("key ") + key));
    QTRY_VERIFY(search.isGone());
    QTRY_COMPARE(search.spy->count(), 1);
    QVERIFY(search.window->isVisible());
    QVERIFY(search.field->hasFocus());
    // The field receives keys again.
    QVERIFY(act(QStringLiteral("key 2")));
    QTRY_COMPARE(search.field->text(), QStringLiteral("12"));
    QCOMPARE(search.told(), QStringLiteral("-"));
}

void CompleterWindowTest::shouldKeepItsKeysFromShortcuts()
{
    const RealField search;
    const QShortcut escape(QKeySequence(Qt::Key_Escape), search.window);
    QSignalSpy escapes(&escape, &QShortcut::activated);
    QVERIFY(search.open());
    QVERIFY(act(QStringLiteral("key Escape")));
    QTRY_VERIFY(search.isGone());
    QCOMPARE(escapes.count(), 0);
    QVERIFY(act(QStringLiteral("key Escape")));
    QTRY_COMPARE(escapes.count(), 1);
}

void CompleterWindowTest::shouldChooseWithAClick()
{
    const RealField search;
    QVERIFY(search.open());
    const QPoint under = search.globalRow(2);
    search.completer->setFilterText(QString());
    search.field->clear();
    // Clicks the list that the popup will cover.
    QVERIFY(act(click(under)));
    QTRY_COMPARE(search.below->releases, 1);
    const int row = search.below->currentRow();
    search.field->setFocus();
    QVERIFY(search.open());
    QVERIFY(act(click(search.globalRow(2))));
    QTRY_VERIFY(search.isGone());
    QTRY_COMPARE(search.spy->count(), 1);
    QVERIFY(act(at(search.global(QPoint(290, 30)))));
    QCOMPARE(search.told(), QStringLiteral("Stage 11"));
    QCOMPARE(search.below->presses, 1);
    QCOMPARE(search.below->releases, 1);
    QCOMPARE(search.below->currentRow(), row);
}

void CompleterWindowTest::shouldChooseWhenTheMouseLeavesBeforeRelease()
{
    const RealField search;
    QVERIFY(search.open());
    const QPoint away = search.global(QPoint(250, 200));
    QVERIFY(act(at(search.globalRow(1)) + QStringLiteral(" mousedown 1")));
    QTRY_COMPARE(search.spy->count(), 1);
    QVERIFY(act(at(away) + QStringLiteral(" mouseup 1 ") + at(away + QPoint(3, 0))));
    QTRY_COMPARE(QApplication::mouseButtons(), Qt::MouseButtons(Qt::NoButton));
    QVERIFY(search.isGone());
    QCOMPARE(search.told(), QStringLiteral("Stage 10"));
    QCOMPARE(search.below->presses, 0);
    QVERIFY(search.below->currentRow() <= 0);
}

void CompleterWindowTest::shouldCloseOnAClickOutside_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("in the window") << QPoint(280, 340);
    QTest::newRow("on the desktop") << QPoint(700, 600);
    QTest::newRow("on the field") << QPoint(60, 20);
}

void CompleterWindowTest::shouldCloseOnAClickOutside()
{
    QFETCH(QPoint, place);
    const RealField search;
    QVERIFY(search.open());
    QVERIFY(act(click(search.global(place))));
    QTRY_VERIFY(search.isGone());
    QTRY_COMPARE(search.spy->count(), 1);
    QVERIFY(act(at(search.global(place + QPoint(2, 2)))));
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->text(), QStringLiteral("1"));
}

void CompleterWindowTest::shouldCloseForAnotherWindow_data()
{
    QTest::addColumn<bool>("click");
    QTest::newRow("clicked") << true;
    QTest::newRow("raised") << false;
}

void CompleterWindowTest::shouldCloseForAnotherWindow()
{
    QFETCH(bool, click);
    const RealField search;
    QLineEdit second;
    second.setWindowFlags(Qt::FramelessWindowHint);
    second.setGeometry(800, 300, 200, 40);
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    search.window->activateWindow();
    QVERIFY(search.open());
    if (click)
        QVERIFY(act(::click(second.geometry().center())));
    else
        QVERIFY(act(QStringLiteral("windowactivate %1").arg(second.winId())));
    QTRY_VERIFY(search.isGone());
    QTRY_COMPARE(search.spy->count(), 1);
    QCOMPARE(search.told(), QStringLiteral("-"));
}

void CompleterWindowTest::shouldCloseWhenMinimised()
{
    const RealField search;
    QVERIFY(search.open());
    QVERIFY(act(QStringLiteral("windowminimize %1").arg(search.window->winId())));
    QTRY_VERIFY(search.isGone());
    QTRY_COMPARE(search.spy->count(), 1);
    QCOMPARE(search.told(), QStringLiteral("-"));
}

void CompleterWindowTest::shouldFollowTheWindow()
{
    const RealField search;
    QVERIFY(search.open());
    const QPoint before = search.popup()->pos();
    QVERIFY(act(QStringLiteral("windowmove %1 500 330").arg(search.window->winId())));
    QTRY_VERIFY(search.popup()->pos() != before);
    QTRY_COMPARE(search.popup()->pos(),
                 search.field->mapToGlobal(search.field->rect().bottomLeft()));
    QVERIFY(search.isOpen());
}

void CompleterWindowTest::shouldStayOnTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const RealField search(screen.bottomRight() - QPoint(320, 390));
    search.field->setGeometry(200, 320, 176, 24); // extends beyond the window
    QVERIFY(search.open());
    QTRY_VERIFY(screen.contains(search.popup()->geometry()));
    QCOMPARE(search.popup()->geometry().bottom(), search.field->mapToGlobal(QPoint(0, 0)).y());
}

TSA_TEST_MAIN(CompleterWindowTest)

#include "tst_completerwindow.moc"
