#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QCursor>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QProcess>
#endif

namespace {
class SmallDialog final : public CDialog
{
public:
    explicit SmallDialog(QWidget* parent)
        : CDialog(parent, QStringLiteral("Small"), QString(), CloseTitleButton)
        , field(new QLineEdit(this))
    {
        Init();
        SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
        setFixedSize(260, 146);
    }

    /// Runs `step` inside exec() when the window has the keyboard focus, then closes the dialog.
    void execWith(const std::function<void()>& step)
    {
        QTimer::singleShot(0, this, [this, step] {
            if (QTest::qWaitForWindowActive(this, 30000))
                step();
            else
                QTest::qFail("the dialog does not become active", __FILE__, __LINE__);
            done(0);
        });
        exec();
    }

    QLineEdit* field;

protected:
    void InitLayout(QBoxLayout* body) override { body->addWidget(field); }
};

QString at(const QPoint& place)
{
    return QStringLiteral("%1 %2").arg(place.x()).arg(place.y());
}

#ifdef Q_OS_WIN
void sendButton(DWORD action)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = action;
    QCOMPARE(SendInput(1, &input, sizeof input), 1U);
    QCoreApplication::processEvents();
}

/// Moves and presses the mouse through Windows, by commands as xdotool takes them.
void useMouse(const QString& commands)
{
    const QStringList words = commands.split(QLatin1Char(' '));
    for (int n = 0; n < words.size(); ++n) {
        const QString& word = words.at(n);
        if (word == QLatin1String("mousemove")) {
            const QPoint place(words.value(n + 1).toInt(), words.value(n + 2).toInt());
            QVERIFY(SetCursorPos(place.x(), place.y()));
            // Wine's display may tell late of where the mouse was before.
            QTRY_COMPARE(QCursor::pos(), place);
            QCoreApplication::processEvents();
        }
        if (word == QLatin1String("mousedown") || word == QLatin1String("click"))
            sendButton(MOUSEEVENTF_LEFTDOWN);
        if (word == QLatin1String("mouseup") || word == QLatin1String("click"))
            sendButton(MOUSEEVENTF_LEFTUP);
    }
}

QPoint placeOnDisplay(const QWidget& window)
{
    RECT frame = {};
    GetWindowRect(reinterpret_cast<HWND>(window.effectiveWinId()), &frame);
    return {frame.left, frame.top};
}
#else
QByteArray xdotool(const QString& commands)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), commands.split(QLatin1Char(' ')));
    const bool ended =
        QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 20000);
    return ended && process.exitCode() == 0 ? process.readAllStandardOutput() : "failed";
}

/// Moves and presses the mouse through the display and its window manager.
void useMouse(const QString& commands)
{
    QCOMPARE(xdotool(commands), QByteArray());
}

/// Returns the position of the window on the display, which Qt may not know yet.
QPoint placeOnDisplay(const QWidget& window)
{
    const QByteArray answer =
        xdotool(QStringLiteral("getwindowgeometry --shell %1").arg(window.effectiveWinId()));
    QPoint place;
    const QList<QByteArray> lines = answer.split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("X="))
            place.setX(line.mid(2).toInt());
        else if (line.startsWith("Y="))
            place.setY(line.mid(2).toInt());
    }
    return place;
}
#endif

struct Window
{
    Window()
        : field(new QLineEdit(&window))
    {
        window.setGeometry(200, 150, 700, 500);
        field->setGeometry(10, 10, 100, 24);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window, 30000));
    }

    QWidget window;
    QLineEdit* field;
};

} // namespace

class DialogWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ApplyHostTheme(*qApp); }
    void shouldAppearOverItsParent();
    void shouldStayOnTheScreen();
    void shouldFollowTheMouse();
    void shouldKeepMouseEventsFromItsParent();
};

void DialogWindowTest::shouldAppearOverItsParent()
{
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        const QPoint middle = host.window.frameGeometry().center();
        QTRY_COMPARE(dialog.frameGeometry().center(), middle);
        QCOMPARE(dialog.frameGeometry(), dialog.geometry());
    });
}

void DialogWindowTest::shouldStayOnTheScreen()
{
    const Window host;
    SmallDialog dialog(host.field);
    dialog.move(-300, -200);
    dialog.execWith([&] {
        const QRect room = dialog.screen()->availableGeometry();
        QTRY_COMPARE(dialog.pos(), room.topLeft());
    });
}

void DialogWindowTest::shouldFollowTheMouse()
{
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        // The window manager first puts the window into a frame, and Qt reports 0,0 until it is
        // moved.
        QTRY_COMPARE(dialog.pos(), placeOnDisplay(dialog));
        const QPoint before = dialog.pos();
        const QPoint grip = dialog.mapToGlobal(QPoint(60, 15));
        useMouse(QStringLiteral("mousemove %1").arg(at(grip)));
        QTRY_COMPARE(QApplication::topLevelAt(grip), static_cast<QWidget*>(&dialog));
        useMouse(QStringLiteral("mousedown 1"));
        for (int step = 1; step <= 10; ++step)
            useMouse(QStringLiteral("mousemove %1").arg(at(grip + step * QPoint(12, -8))));
        QTRY_COMPARE(placeOnDisplay(dialog), before + QPoint(120, -80));
        useMouse(QStringLiteral("mouseup 1"));
        QTRY_COMPARE(dialog.pos(), before + QPoint(120, -80));
        const QPoint after = dialog.pos();
        useMouse(QStringLiteral("mousemove %1").arg(at(grip)));
        QTRY_COMPARE(dialog.pos(), after);
        QCOMPARE(placeOnDisplay(dialog), after);
    });
}

void DialogWindowTest::shouldKeepMouseEventsFromItsParent()
{
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        QTRY_COMPARE(dialog.pos(), placeOnDisplay(dialog));
        const QPoint outside = host.field->mapToGlobal(QPoint(5, 5));
        const QPoint inside = dialog.field->mapToGlobal(QPoint(5, 5));
        useMouse(QStringLiteral("mousemove %1 click 1").arg(at(outside)));
        dialog.field->setText(QStringLiteral("long enough"));
        useMouse(QStringLiteral("mousemove %1 click 1").arg(at(inside)));
        QTRY_COMPARE(dialog.field->cursorPosition(), 0);
        QVERIFY(!host.field->hasFocus());
    });
}

TSA_TEST_MAIN(DialogWindowTest)
#include "tst_dialogwindow.moc"
