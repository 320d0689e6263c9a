#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "tests/support/WarningTrap.h"
#include "tests/widgets/DisplayMouse.h"

#include <QApplication>
#include <QLineEdit>
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
        QTRY_COMPARE(dialog.pos(), DisplayMouse::placeOf(dialog));
        const QPoint before = dialog.pos();
        const QPoint grip = dialog.mapToGlobal(QPoint(60, 15));
        DisplayMouse::moveTo(grip);
        DisplayMouse::press();
        for (int step = 1; step <= 10; ++step)
            DisplayMouse::moveTo(grip + step * QPoint(12, -8));
        const QPoint after = before + QPoint(120, -80);
        QTRY_COMPARE(DisplayMouse::placeOf(dialog), after);
        DisplayMouse::release();
        QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
        // A window manager may confirm the places on the way after the last one.
        QTRY_COMPARE(dialog.pos(), after);
        DisplayMouse::moveTo(dialog.field->mapToGlobal(QPoint(5, 5)));
        QTRY_VERIFY(dialog.field->underMouse());
        QTRY_COMPARE(DisplayMouse::placeOf(dialog), after);
        QTRY_COMPARE(dialog.pos(), after);
    });
}

void DialogWindowTest::shouldKeepMouseEventsFromItsParent()
{
    const Window host;
    SmallDialog dialog(host.field);
    dialog.execWith([&] {
        QTRY_COMPARE(dialog.pos(), DisplayMouse::placeOf(dialog));
        const QPoint outside = host.field->mapToGlobal(QPoint(5, 5));
        const QPoint inside = dialog.field->mapToGlobal(QPoint(5, 5));
        DisplayMouse::moveTo(outside);
        DisplayMouse::click();
        dialog.field->setText(QStringLiteral("long enough"));
        DisplayMouse::moveTo(inside);
        QTRY_VERIFY(dialog.field->underMouse());
        DisplayMouse::click();
        QTRY_COMPARE(dialog.field->cursorPosition(), 0);
        QVERIFY(!host.field->hasFocus());
    });
}

TSA_TEST_MAIN(DialogWindowTest)
#include "tst_dialogwindow.moc"
