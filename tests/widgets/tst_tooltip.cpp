#include "host/widgets/ToolTip.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace {
QWidget* shownTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->inherits("QTipLabel"))
            return window;
    }
    return nullptr;
}

/// Returns the plain text of the tool tip.
QString readText()
{
    QTextDocument document;
    if (!Qt::mightBeRichText(QToolTip::text()))
        return QToolTip::text();
    document.setHtml(QToolTip::text());
    return document.toPlainText().remove(QChar(0x200B));
}

struct Form
{
    Form()
    {
        installToolTipPlacement(*QCoreApplication::instance());
        installToolTipPlacement(*QCoreApplication::instance());
        window.setGeometry(200, 200, 300, 200);
        button.setGeometry(100, 80, 60, 24);
        button.setToolTip(QStringLiteral("Add"));
        window.show();
    }

    ~Form() { CToolTip::HideText(); }

    QRect ask(int location)
    {
        QToolTip::hideText();
        if (!QTest::qWaitFor([] { return !shownTip(); }))
            return {};
        button.setProperty("ToolLocation", location);
        const QPoint position = button.rect().center();
        QHelpEvent event(QEvent::ToolTip, position, button.mapToGlobal(position));
        QApplication::sendEvent(&button, &event);
        const QWidget* tip = shownTip();
        return tip ? QRect(tip->pos(), tip->size()) : QRect();
    }

    QRect area() const { return {button.mapToGlobal(QPoint()), button.size()}; }

    QWidget window;
    QPushButton button{&window};
};

} // namespace

class TestToolTip final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shouldShowPlainText_data();
    void shouldShowPlainText();
    void shouldWrapLongTexts();
    void shouldHide();
    void shouldAppearBesideItsWidget();
    void shouldAppearOnTheOppositeSide();
    void shouldShowTipsOfDisabledWidgets();
    void shouldLeaveOthersAlone();
};

void TestToolTip::cleanup()
{
    CToolTip::HideText();
    QTRY_VERIFY(!shownTip());
}

void TestToolTip::shouldShowPlainText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << "Processor";
    QTest::newRow("tags") << "a <b>bold</b> & <i>name</i>";
    QTest::newRow("entities") << "&lt;b&gt; <br>";
    QTest::newRow("lines") << "one\ntwo";
    QTest::newRow("long") << QString(100, QLatin1Char('x')) + QStringLiteral(" ")
                                 + QString(100, QChar(0x4E2D));
}

void TestToolTip::shouldShowPlainText()
{
    QFETCH(const QString, text);
    const Form form;
    CToolTip::ShowText(text, QPoint(100, 100), nullptr);
    QCOMPARE(readText(), text);
}

void TestToolTip::shouldWrapLongTexts()
{
    const Form form;
    for (const QString& text : {QString(500, QLatin1Char('x')), QString(500, QChar(0x4E2D)),
                                QStringLiteral("word ").repeated(100)}) {
        CToolTip::ShowText(text, QPoint(10, 10), nullptr);
        const QWidget* tip = shownTip();
        QVERIFY(tip);
        QVERIFY2(tip->width() < 700, qPrintable(QString::number(tip->width())));
        QVERIFY(tip->height() > 3 * tip->fontMetrics().height());
    }
}

void TestToolTip::shouldHide()
{
    const Form form;
    CToolTip::ShowText(QStringLiteral("text"), QPoint(10, 10), nullptr);
    QVERIFY(shownTip());
    CToolTip::HideText();
    QTRY_VERIFY(!shownTip());
    CToolTip::ShowText(QStringLiteral("text"), QPoint(10, 10), nullptr);
    CToolTip::ShowText(QString(), QPoint(10, 10), nullptr);
    QTRY_VERIFY(!shownTip());
}

void TestToolTip::shouldAppearBesideItsWidget()
{
    Form form;
    const QRect below = form.ask(CToolTip::Below);
    const QRect area = form.area();
    QCOMPARE(below.left(), area.left());
    QVERIFY(below.top() > area.bottom() && below.top() < area.bottom() + 10);
    const QRect above = form.ask(CToolTip::Above);
    QVERIFY(above.bottom() < area.top() && above.bottom() > area.top() - 10);
    const QRect right = form.ask(CToolTip::Right);
    QVERIFY(right.left() > area.right() && right.left() < area.right() + 10);
    QCOMPARE(right.top(), area.top());
    const QRect left = form.ask(CToolTip::Left);
    QVERIFY(left.right() < area.left() && left.right() > area.left() - 10);
}

void TestToolTip::shouldAppearOnTheOppositeSide()
{
    Form form;
    const QRect screen = form.window.screen()->availableGeometry();
    form.window.move(screen.left() + 200, screen.bottom() - 110);
    QVERIFY(form.ask(CToolTip::Below).bottom() < form.area().top());
    form.window.move(screen.left() + 200, screen.top() - 75);
    QVERIFY(form.ask(CToolTip::Above).top() > form.area().bottom());
    form.window.move(screen.left() - 98, screen.top() + 200);
    QVERIFY(form.ask(CToolTip::Left).left() > form.area().right());
    form.window.move(screen.right() - 165, screen.top() + 200);
    QVERIFY(form.ask(CToolTip::Right).right() < form.area().left());
    QVERIFY(screen.contains(form.ask(CToolTip::Below)));
}

void TestToolTip::shouldShowTipsOfDisabledWidgets()
{
    Form form;
    form.button.setEnabled(false);
    QVERIFY(form.ask(CToolTip::Below).top() > form.area().bottom());
    QCOMPARE(QToolTip::text(), QStringLiteral("Add"));
}

void TestToolTip::shouldLeaveOthersAlone()
{
    Form form;
    const QRect atCursor = form.ask(CToolTip::AtCursor);
    QVERIFY(atCursor.left() > form.area().left());
    QCOMPARE(form.ask(99), atCursor);
    form.button.setToolTip(QString());
    QVERIFY(!form.ask(CToolTip::Below).isValid());
}

TSA_TEST_MAIN(TestToolTip)

#include "tst_tooltip.moc"
