#include "tests/widgets/DisplayMouse.h"

#include <QTest>
#include <QWidget>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <QProcess>
#endif

namespace {

#ifdef Q_OS_WIN
void button(DWORD action)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = action;
    QCOMPARE(SendInput(1, &input, sizeof input), 1U);
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

void button(const char* action)
{
    QCOMPARE(xdotool(QLatin1String(action) + QStringLiteral(" 1")), QByteArray());
}
#endif

} // namespace

#ifdef Q_OS_WIN

void DisplayMouse::moveTo(const QPoint& place)
{
    QVERIFY(SetCursorPos(place.x(), place.y()));
    // A thread reads its own input; the commands of another program give it time to.
    QCoreApplication::processEvents();
}

void DisplayMouse::press()
{
    button(MOUSEEVENTF_LEFTDOWN);
}

void DisplayMouse::release()
{
    button(MOUSEEVENTF_LEFTUP);
}

QPoint DisplayMouse::placeOf(const QWidget& window)
{
    RECT frame = {};
    GetWindowRect(reinterpret_cast<HWND>(window.effectiveWinId()), &frame);
    return {frame.left, frame.top};
}

#else

void DisplayMouse::moveTo(const QPoint& place)
{
    QCOMPARE(xdotool(QStringLiteral("mousemove %1 %2").arg(place.x()).arg(place.y())),
             QByteArray());
}

void DisplayMouse::press()
{
    button("mousedown");
}

void DisplayMouse::release()
{
    button("mouseup");
}

QPoint DisplayMouse::placeOf(const QWidget& window)
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

void DisplayMouse::click()
{
    press();
    release();
}
