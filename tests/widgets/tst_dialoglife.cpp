#include "host/widgets/Dialog.h"
#include "host/widgets/HostTheme.h"
#include "host/widgets/MessageBox.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

namespace {
/// Runs a step inside exec(), after it was shown.
class StackDialog final : public CDialog
{
public:
    StackDialog(QWidget* parent, const QString& title)
        : CDialog(parent, title, QString(), CloseTitleButton)
    {
        Init();
        SetDialogBtnRole(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, QDialogButtonBox::Ok);
        resize(300, 200);
    }

    int execWith(const std::function<void()>& step)
    {
        QTimer::singleShot(0, this, step);
        return exec();
    }
};

/// A window with a panel, which is the parent of the dialogs.
struct Host
{
    Host()
    {
        window = new QMainWindow;
        middle = new QWidget(window);
        panel = new QWidget(middle);
        window->setCentralWidget(middle);
        window->resize(500, 400);
        window->show();
        QApplication::setActiveWindow(window);
    }
    ~Host() { delete window; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    QPointer<QMainWindow> window;
    QPointer<QWidget> middle;
    QPointer<QWidget> panel;
};

/// Destroys `widget` from the event loop, like the host.
void destroyLater(QWidget* widget)
{
    QTimer::singleShot(0, qApp, [guard = QPointer<QWidget>(widget)] { delete guard.data(); });
}

} // namespace

class DialogLifeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ApplyHostTheme(*qApp); }
    void shouldCloseWithItsParent_data();
    void shouldCloseWithItsParent();
    void shouldCloseNestedDialogsAndMenus_data() { shouldCloseWithItsParent_data(); }
    void shouldCloseNestedDialogsAndMenus();
    void shouldRejectAMessageBox();
    void shouldSurviveItsParentAfterExec();
    void shouldNotAppearAfterItsParentWasDestroyed();
    void shouldFollowAChangeOfParent();
    void shouldCloseWithoutASignal();
    void shouldBeDestroyedWithItsParentWhenOnlyShown();

private:
    static QWidget* victim(const Host& host, const QString& name)
    {
        if (name == QLatin1String("window"))
            return host.window.data();
        return name == QLatin1String("middle") ? host.middle.data() : host.panel.data();
    }
};

void DialogLifeTest::shouldCloseWithItsParent_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"panel", "middle", "window"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void DialogLifeTest::shouldCloseWithItsParent()
{
    QFETCH(const QString, name);
    Host host;
    StackDialog dialog(host.panel, QStringLiteral("one"));
    QCOMPARE(dialog.execWith([&] { destroyLater(victim(host, name)); }), 0);
    QVERIFY(!host.panel);
    QVERIFY(!dialog.parentWidget());
    QVERIFY(!dialog.isVisible());
}

void DialogLifeTest::shouldCloseNestedDialogsAndMenus()
{
    QFETCH(const QString, name);
    Host host;
    QStringList ends;
    const auto ended = [&ends](const char* who, int result) {
        ends.append(QStringLiteral("%1:%2").arg(QString::fromLatin1(who)).arg(result));
    };

    StackDialog one(host.panel, QStringLiteral("one"));
    const int result = one.execWith([&] {
        StackDialog two(&one, QStringLiteral("two"));
        const int resultTwo = two.execWith([&] {
            StackDialog three(&two, QStringLiteral("three"));
            const int resultThree = three.execWith([&] {
                QFileDialog files(&three);
                files.setOption(QFileDialog::DontUseNativeDialog);
                QTimer::singleShot(0, &files, [&] {
                    QMenu menu(&files);
                    menu.addAction(QStringLiteral("Entry"));
                    QTimer::singleShot(0, &menu, [&] {
                        QCOMPARE(QApplication::activePopupWidget(), &menu);
                        destroyLater(victim(host, name));
                    });
                    ended("menu", menu.exec(QPoint(50, 50)) ? 1 : 0);
                });
                ended("files", files.exec());
            });
            ended("three", resultThree);
        });
        ended("two", resultTwo);
    });
    ended("one", result);
    QVERIFY(!host.panel);
    QCOMPARE(ends.join(QLatin1Char(' ')), QStringLiteral("menu:0 files:0 three:0 two:0 one:0"));
    QVERIFY(!QApplication::activeModalWidget());
}

void DialogLifeTest::shouldRejectAMessageBox()
{
    Host host;
    StackDialog dialog(host.panel, QStringLiteral("one"));
    int answer = -1;
    const int result = dialog.execWith([&] {
        QTimer::singleShot(0, qApp, [&] { destroyLater(host.panel); });
        answer = CMessageBox::question(&dialog, QStringLiteral("Really?"), QStringLiteral("Host"));
    });
    QCOMPARE(answer, static_cast<int>(CMessageBox::No));
    QCOMPARE(result, 0);

    QTimer::singleShot(0, qApp, [&] { destroyLater(host.window); });
    answer = CMessageBox::question(host.window, QStringLiteral("Really?"), QStringLiteral("Host"));
    QCOMPARE(answer, static_cast<int>(CMessageBox::No));
    QVERIFY(!host.window);
}

void DialogLifeTest::shouldSurviveItsParentAfterExec()
{
    Host host;
    StackDialog dialog(host.panel, QStringLiteral("one"));
    QCOMPARE(dialog.execWith([&] { dialog.accept(); }), 1);
    delete host.panel;
    QVERIFY(!dialog.parentWidget());
}

void DialogLifeTest::shouldNotAppearAfterItsParentWasDestroyed()
{
    Host host;
    StackDialog dialog(host.panel, QStringLiteral("one"));
    delete host.panel;
    QVERIFY(!dialog.parentWidget());
    QCOMPARE(dialog.exec(), 0);

    dialog.setParent(host.window, dialog.windowFlags());
    const int result = dialog.execWith([&] {
        StackDialog inner(&dialog, QStringLiteral("inner"));
        delete host.window;
        QCOMPARE(inner.exec(), 0);
        QCOMPARE(CMessageBox::question(&dialog, QStringLiteral("Really?"), QStringLiteral("Host")),
                 static_cast<int>(CMessageBox::No));
    });
    QCOMPARE(result, 0);
}

void DialogLifeTest::shouldFollowAChangeOfParent()
{
    Host host;
    StackDialog dialog(host.window, QStringLiteral("one"));
    dialog.setParent(nullptr, dialog.windowFlags());
    dialog.setParent(host.panel, dialog.windowFlags());
    QCOMPARE(dialog.execWith([&] { destroyLater(host.panel); }), 0);
    QVERIFY(!dialog.parentWidget());
    QVERIFY(host.window);
}

void DialogLifeTest::shouldCloseWithoutASignal()
{
    Host host;
    StackDialog dialog(host.panel, QStringLiteral("one"));
    int told = 0;
    connect(&dialog, &QDialog::finished, this, [&told] { ++told; });
    QCOMPARE(dialog.execWith([&] { destroyLater(host.panel); }), 0);
    QCOMPARE(told, 0);
}

void DialogLifeTest::shouldBeDestroyedWithItsParentWhenOnlyShown()
{
    Host host;
    const QPointer<QDialog> shown = new StackDialog(host.panel, QStringLiteral("shown"));
    shown->show();
    StackDialog inner(shown, QStringLiteral("inner"));
    QCOMPARE(inner.execWith([&] { destroyLater(host.panel); }), 0);
    QVERIFY(!shown);
}

TSA_TEST_MAIN(DialogLifeTest)
#include "tst_dialoglife.moc"
