#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

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

    /// Runs `step` inside exec(), as soon as the window has the keyboard; then closes.
    void execWith(const std::function<void()>& step)
    {
        QTimer::singleShot(0, this, [this, step] {
            if (QTest::qWaitForWindowActive(this))
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

/// Moves and presses the mouse as a user does: through the display and its window manager.
void useMouse(const QString& commands)
{
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), commands.split(QLatin1Char(' ')));
    QVERIFY(QTest::qWaitFor([&] { return xdotool.state() == QProcess::NotRunning; }, 20000));
    QCOMPARE(xdotool.exitCode(), 0);
}

struct Window
{
    Window()
        : field(new QLineEdit(&window))
    {
        window.setGeometry(200, 150, 700, 500);
        field->setGeometry(10, 10, 100, 24);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
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
    void shouldKeepTheMouseFromItsParent();
};

void DialogWindowTest::shouldAppearOverItsParent()
{
    const WarningTrap trap;
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
    const WarningTrap trap;
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
    const WarningTrap trap;
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        const QPoint before = dialog.pos();
        const QPoint grip = dialog.mapToGlobal(QPoint(60, 15));
        useMouse(QStringLiteral("mousemove %1 mousedown 1").arg(at(grip)));
        // In steps, for the window manager takes over on the first one; it may tell where the
        // window is on the release only.
        for (int step = 1; step <= 10; ++step)
            useMouse(QStringLiteral("mousemove %1").arg(at(grip + step * QPoint(12, -8))));
        useMouse(QStringLiteral("mouseup 1"));
        const QPoint wanted = before + QPoint(120, -80);
        QTRY_VERIFY2((dialog.pos() - wanted).manhattanLength() <= 2 * (12 + 8),
                     qPrintable(at(dialog.pos())));
        const QPoint after = dialog.pos();
        useMouse(QStringLiteral("mousemove %1").arg(at(grip)));
        QCOMPARE(dialog.pos(), after);
    });
}

void DialogWindowTest::shouldKeepTheMouseFromItsParent()
{
    const WarningTrap trap;
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        const QPoint outside = host.field->mapToGlobal(QPoint(5, 5));
        const QPoint inside = dialog.field->mapToGlobal(QPoint(5, 5));
        useMouse(QStringLiteral("mousemove %1 click 1").arg(at(outside)));
        dialog.field->setText(QStringLiteral("long enough"));
        useMouse(QStringLiteral("mousemove %1 click 1").arg(at(inside)));
        QTRY_COMPARE(dialog.field->cursorPosition(), 0);
        QVERIFY(!host.field->hasFocus());
    });
}

QTEST_MAIN(DialogWindowTest)
#include "tst_dialogwindow.moc"
