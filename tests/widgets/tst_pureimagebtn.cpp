#include "host/widgets/HostTheme.h"
#include "host/widgets/PureImageBtn.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WarningTrap.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Form
{
    Form()
    {
        window.resize(320, 120);
        other.setGeometry(10, 10, 200, 24);
        button.setGeometry(10, 50, 16, 16);
        button.SetImages(image("normal", Qt::red), image("hover", Qt::green),
                         image("disabled", Qt::blue));
        window.show();
        window.activateWindow();
        other.setFocus();
    }

    QString image(const char* name, const QColor& color)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        QString file = folder.filePath(QLatin1String(name) + QStringLiteral(".png"));
        pixmap.save(file);
        return file;
    }

    bool isActive() { return QTest::qWaitForWindowActive(&window); }

    QColor color() { return button.grab().toImage().pixelColor(8, 8); }

    QTemporaryDir folder;
    QWidget window;
    QLineEdit other{&window};
    CPureImageBtn button{&window};
    DialogDriver driver;
};

} // namespace

class TestPureImageBtn final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shouldPaintOnlyItsImage();
    void shouldShowTheImageOfItsState();
    void shouldOutlineTheFocus();
    void shouldClickByMouseAndKeys();
    void shouldOpenItsMenuOnPress_data();
    void shouldOpenItsMenuOnPress();
    void shouldPressForAssistiveTechnology();
    void shouldOpenItsMenuForAssistiveTechnology_data();
    void shouldOpenItsMenuForAssistiveTechnology();
    void shouldDrawSharpOnDenseScreens();
};

void TestPureImageBtn::initTestCase()
{
    ApplyHostTheme(*qApp);
}

void TestPureImageBtn::shouldPaintOnlyItsImage()
{
    Form form;
    QMenu menu;
    form.button.setMenu(&menu);
    form.button.setPopupMode(QToolButton::InstantPopup);
    QCOMPARE(form.button.sizeHint(), QSize(16, 16));
    const QImage image = form.button.grab().toImage();
    for (const QPoint at : {QPoint(0, 0), QPoint(15, 0), QPoint(0, 15), QPoint(15, 15)})
        QCOMPARE(image.pixelColor(at), QColor(Qt::red));
}

void TestPureImageBtn::shouldShowTheImageOfItsState()
{
    Form form;
    QVERIFY(form.isActive());
    QCOMPARE(form.color(), QColor(Qt::red));
    QTest::mouseMove(&form.window, form.button.geometry().center());
    QTRY_COMPARE(form.color(), QColor(Qt::green));
    QTest::mouseMove(&form.window, form.other.geometry().center());
    QTRY_COMPARE(form.color(), QColor(Qt::red));
    form.button.setEnabled(false);
    QCOMPARE(form.color(), QColor(Qt::blue));
}

void TestPureImageBtn::shouldOutlineTheFocus()
{
    Form form;
    QVERIFY(form.isActive());
    const QRect ring = form.button.geometry().adjusted(-3, -3, 3, 3);
    const auto isOutlined = [&] {
        const QImage image = form.window.grab().toImage();
        const QPoint center = ring.center();
        int sides = 0;
        for (const QPoint& side :
             {QPoint(center.x(), ring.top()), QPoint(center.x(), ring.bottom()),
              QPoint(ring.left(), center.y()), QPoint(ring.right(), center.y())})
            sides += image.pixelColor(side) == hostColors().accent ? 1 : 0;
        return sides == 4;
    };
    const QImage plain = form.button.grab().toImage();
    QVERIFY(!isOutlined());
    QTest::keyClick(&form.other, Qt::Key_Tab);
    QVERIFY(form.button.hasFocus());
    QVERIFY(isOutlined());
    // The button itself, and what stands between it and the outline, are as before.
    QCOMPARE(form.button.grab().toImage(), plain);
    QCOMPARE(form.window.grab().toImage().pixelColor(ring.center().x(), ring.top() + 1),
             hostColors().window);
    QCOMPARE(form.window.grab().toImage().pixelColor(ring.center().x(), ring.top() + 2),
             hostColors().window);
    form.button.hide();
    QVERIFY(!isOutlined());
    form.button.show();
    form.button.setFocus();
    QVERIFY(isOutlined());
    form.other.setFocus();
    QVERIFY(!isOutlined());
}

void TestPureImageBtn::shouldClickByMouseAndKeys()
{
    Form form;
    QVERIFY(form.isActive());
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    QTest::mouseClick(&form.button, Qt::LeftButton);
    form.button.setFocus();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down})
        QTest::keyClick(&form.button, key);
    QCOMPARE(clicks.count(), 4);
}

void TestPureImageBtn::shouldOpenItsMenuOnPress_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("mouse") << 0;
    QTest::newRow("Space") << static_cast<int>(Qt::Key_Space);
    QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
    QTest::newRow("Down") << static_cast<int>(Qt::Key_Down);
}

void TestPureImageBtn::shouldOpenItsMenuOnPress()
{
    QFETCH(int, key);
    Form form;
    QVERIFY(form.isActive());
    QMenu menu;
    menu.addAction(QStringLiteral("Disabled"))->setEnabled(false);
    menu.addSeparator();
    menu.addAction(QStringLiteral("Hidden"))->setVisible(false);
    const QAction* entry = menu.addAction(QStringLiteral("Entry"));
    menu.addAction(QStringLiteral("Next"));
    QSignalSpy chosen(entry, &QAction::triggered);
    form.button.setMenu(&menu);
    form.button.setPopupMode(QToolButton::InstantPopup);
    form.button.setFocus();
    form.driver.then([&](QWidget& opened) {
        if (key == 0)
            QTest::keyClick(&opened, Qt::Key_Down);
        QCOMPARE(menu.activeAction(), entry);
        QTest::keyClick(&opened, Qt::Key_Return);
    });
    if (key == 0)
        QTest::mouseClick(&form.button, Qt::LeftButton);
    else
        QTest::keyClick(&form.button, static_cast<Qt::Key>(key));
    QCOMPARE(chosen.count(), 1);
    QVERIFY(menu.isHidden());
    QVERIFY(!form.button.isDown());
}

void TestPureImageBtn::shouldPressForAssistiveTechnology()
{
    Form form;
    QAccessibleInterface& button = *QAccessible::queryAccessibleInterface(&form.button);
    QCOMPARE(button.role(), QAccessible::Button);
    QVERIFY(!button.state().hasPopup);
    const auto actions = [&] { return button.actionInterface()->actionNames(); };
    QCOMPARE(actions().join(QLatin1Char(',')), QStringLiteral("Press,SetFocus"));
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    button.actionInterface()->doAction(QStringLiteral("Press"));
    QTRY_COMPARE(clicks.count(), 1);
    form.other.setFocus();
    button.actionInterface()->doAction(QStringLiteral("SetFocus"));
    QVERIFY(form.button.hasFocus());
    form.button.setEnabled(false);
    QCOMPARE(actions(), QStringList());
    button.actionInterface()->doAction(QStringLiteral("Press"));
    QCoreApplication::processEvents();
    QCOMPARE(clicks.count(), 1);
}

void TestPureImageBtn::shouldOpenItsMenuForAssistiveTechnology_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("isOnly");
    QTest::addColumn<bool>("opens");
    QTest::newRow("menu") << "ShowMenu" << true << true;
    QTest::newRow("press") << "Press" << true << true;
    QTest::newRow("menu beside a press") << "ShowMenu" << false << true;
    QTest::newRow("press beside a menu") << "Press" << false << false;
}

void TestPureImageBtn::shouldOpenItsMenuForAssistiveTechnology()
{
    QFETCH(QString, action);
    QFETCH(bool, isOnly);
    QFETCH(bool, opens);
    Form form;
    QMenu menu;
    QAction* entry = menu.addAction(QStringLiteral("Entry"));
    form.button.setMenu(&menu);
    form.button.setPopupMode(isOnly ? QToolButton::InstantPopup : QToolButton::MenuButtonPopup);
    QAccessibleInterface& button = *QAccessible::queryAccessibleInterface(&form.button);
    QCOMPARE(button.role(), QAccessible::ButtonMenu);
    QVERIFY(button.state().hasPopup);
    QVERIFY(button.actionInterface()->actionNames().contains(action));
    QSignalSpy clicks(&form.button, &QAbstractButton::clicked);
    QAction* active = nullptr;
    if (opens) {
        form.driver.then([&](QWidget& opened) {
            active = menu.activeAction();
            opened.close();
        });
    }
    button.actionInterface()->doAction(action);
    QVERIFY(menu.isHidden()); // whoever asked does not wait for its end
    QTRY_COMPARE(active, opens ? entry : nullptr);
    QTRY_COMPARE(clicks.count(), opens ? 0 : 1);
    QVERIFY(!form.button.isDown());
}

void TestPureImageBtn::shouldDrawSharpOnDenseScreens()
{
    Form form;
    // A line of half a pixel covers a whole pixel at scale 2.
    const QString file = form.folder.filePath(QStringLiteral("line.svg"));
    QFile svg(file);
    QVERIFY(svg.open(QIODevice::WriteOnly));
    svg.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\" "
              "viewBox=\"0 0 16 16\"><rect x=\"8\" y=\"0\" width=\".5\" height=\"16\" "
              "fill=\"#ffffff\"/></svg>");
    svg.close();
    form.button.SetImages(file, file, file);
    QPixmap dense(32, 32);
    dense.setDevicePixelRatio(2);
    dense.fill(Qt::black);
    form.button.render(&dense, {}, {}, QWidget::DrawChildren);
    const QImage image = dense.toImage();
    QCOMPARE(image.pixelColor(16, 16), QColor(Qt::white));
    QCOMPARE(image.pixelColor(15, 16), QColor(Qt::black));
    QCOMPARE(image.pixelColor(17, 16), QColor(Qt::black));
}

TSA_TEST_MAIN(TestPureImageBtn)

#include "tst_pureimagebtn.moc"
