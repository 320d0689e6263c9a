#include "tests/processortree/Buttons.h"
#include "tests/support/Chinese.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QProxyStyle>
#include <QTimer>
#include <QToolTip>

namespace {

/// Tool tips come at once.
class QuickStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        return hint == SH_ToolTip_WakeUpDelay ? 10
                                              : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

/// The tool tip of the rows' button.
class TestTreeTips final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shouldShowATipWhenTheMouseRests();
    void shouldShowNoTipAfterAPressOrLeave();
    void shouldShowNoTipForARowThatIsGone();
    void shouldAnswerAskedTips();
    void shouldShowNoTipWithoutAButton();
    void shouldHideTheTipInTime();

    void shouldTranslate();
};

void TestTreeTips::init()
{
    QApplication::setStyle(new QuickStyle);
}

void TestTreeTips::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestTreeTips::shouldShowATipWhenTheMouseRests()
{
    Buttons tree;
    const QPoint middle = tree.button(3).center();
    tree.move(middle);
    tree.move(middle + QPoint(1, 1));
    QTRY_COMPARE(QToolTip::text(), QStringLiteral("More"));
    QVERIFY(QToolTip::isVisible());
    tree.move(tree.row(3).center());
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestTreeTips::shouldShowNoTipAfterAPressOrLeave()
{
    Buttons tree;
    auto* timer = tree.delegate->findChild<QTimer*>();
    QVERIFY(timer && timer->isSingleShot());
    const QPoint middle = tree.button(3).center();
    const auto rest = [&] {
        tree.move(middle);
        tree.move(middle + QPoint(1, 0));
        return timer->isActive();
    };
    QVERIFY(rest());
    QCOMPARE(timer->interval(), 10);
    tree.move(middle + QPoint(5, 5));
    QVERIFY(!timer->isActive());
    QVERIFY(rest());
    tree.press(middle);
    QVERIFY(!timer->isActive());
    tree.release(middle);
    QVERIFY(!timer->isActive());
    QVERIFY(rest());
    tree.move(tree.row(3).center());
    QVERIFY(!timer->isActive());
    QVERIFY(rest());
    tree.delegate->setButtonEnabled(false);
    QVERIFY(!timer->isActive());
}

void TestTreeTips::shouldShowNoTipForARowThatIsGone()
{
    Buttons tree;
    auto* timer = tree.delegate->findChild<QTimer*>();
    QSignalSpy fired(timer, &QTimer::timeout);
    const QPoint middle = tree.button(4).center();
    tree.move(middle);
    tree.move(middle + QPoint(1, 0));
    QVERIFY(timer->isActive());
    tree.model().removeNode(testId(4));
    QTRY_COMPARE(fired.count(), 1);
    QVERIFY(!QToolTip::isVisible());
    tree.move(tree.button(3).center());
    tree.move(tree.button(3).center() + QPoint(1, 0));
    tree.model().reset();
    QTRY_COMPARE(fired.count(), 2);
    QVERIFY(!QToolTip::isVisible());
}

void TestTreeTips::shouldAnswerAskedTips()
{
    Buttons tree;
    const auto ask = [&](const QPoint& position) {
        QHelpEvent event(QEvent::ToolTip, position, tree.viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree.viewport(), &event);
        return QToolTip::isVisible() && QToolTip::text() == QStringLiteral("More");
    };
    QVERIFY(ask(tree.button(3).center()));
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    QVERIFY(!ask(tree.row(3).center()));
    QVERIFY(!ask(QPoint(tree.button(3).center().x(), 390)));
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = {testId(1), testId(2)};
    QVERIFY(!ask(tree.button(3).center()));
}

void TestTreeTips::shouldShowNoTipWithoutAButton()
{
    Buttons tree;
    auto* timer = tree.delegate->findChild<QTimer*>();
    tree.host().showProcessorMoreButton = false;
    const QPoint middle = tree.button(3).center();
    tree.move(middle);
    tree.move(middle + QPoint(1, 1));
    QVERIFY(!timer->isActive());
    QHelpEvent help(QEvent::ToolTip, middle, tree.viewport()->mapToGlobal(middle));
    QApplication::sendEvent(tree.viewport(), &help);
    QVERIFY(!QToolTip::isVisible());
    // The mouse rests when the host takes the button away.
    tree.host().showProcessorMoreButton = true;
    tree.move(middle);
    tree.move(middle + QPoint(1, 1));
    QVERIFY(timer->isActive());
    tree.host().showProcessorMoreButton = false;
    QTRY_VERIFY(!timer->isActive());
    QVERIFY(!QToolTip::isVisible());
}

void TestTreeTips::shouldHideTheTipInTime()
{
    Buttons tree;
    QVERIFY(QTest::qWaitForWindowActive(&tree.view)); // which takes every tip away
    const QPoint middle = tree.button(3).center();
    QHelpEvent event(QEvent::ToolTip, middle, tree.viewport()->mapToGlobal(middle));
    QElapsedTimer time;
    time.start();
    QApplication::sendEvent(tree.viewport(), &event);
    QVERIFY(QToolTip::isVisible());
    QTRY_VERIFY(!QToolTip::isVisible());
    QVERIFY(time.elapsed() > 1800 && time.elapsed() < 5000);
}

void TestTreeTips::shouldTranslate()
{
    Buttons tree;
    const Chinese chinese;
    const QPoint middle = tree.button(3).center();
    QHelpEvent event(QEvent::ToolTip, middle, tree.viewport()->mapToGlobal(middle));
    QApplication::sendEvent(tree.viewport(), &event);
    QCOMPARE(QToolTip::text(), QStringLiteral("更多"));
}

TSA_TEST_MAIN(TestTreeTips)

#include "tst_treetips.moc"
