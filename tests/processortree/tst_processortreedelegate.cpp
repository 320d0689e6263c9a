#include "processortree/view/ProcessorTreeSearchDelegate.h"
#include "tests/processortree/Buttons.h"

#include <QLineEdit>
#include <QToolTip>

/// The button that rows of the tree have.
class TestProcessorTreeDelegate final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void shouldPaintTheButtonOfSelectedAndHoveredRows();
    void shouldAskTheHostWhetherAButtonIsWanted();
    void shouldAskNothingAboutRowsWithoutAButton();
    void shouldPaintNoButtonWhileSeveralAreSelected();
    void shouldPaintTheStateOfTheButton();
    void shouldParseNothingWhilePainting();

    void shouldTellOfAClick();
    void shouldSelectTheRowOfTheButton();
    void shouldTellOfNothingWhenReleasedOutside();
    void shouldTellOfNothingWhenReleasedOnAnotherRow();
    void shouldTellOfNothingWhenPressedOutside();
    void shouldTellOfNothingForOtherButtons();
    void shouldTellOfNothingWhileSeveralAreSelected();
    void shouldTellOfNothingWithoutAButton();
    void shouldNotAskForTheButtonBesideIt();
    void shouldTellOfNothingWhenDisabled();
    void shouldToggleOnEveryClick();
    void shouldForgetTheMouseAfterADrop();
    void shouldFollowTheMouse();
    void shouldStandReceiversThatChangeTheTree();
    void shouldStandAResetWhilePressed();
    void shouldStandAHostThatChangesTheTreeWhenAsked();

    void shouldOfferNothingInSearchResults();
};

void TestProcessorTreeDelegate::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestProcessorTreeDelegate::shouldPaintTheButtonOfSelectedAndHoveredRows()
{
    Buttons tree;
    for (const quint32 n : {1U, 10U, 0U}) {
        QVERIFY(tree.hasButton(n, QStyle::State_Selected));
        QVERIFY(tree.hasButton(n, QStyle::State_MouseOver));
        QVERIFY(!tree.hasButton(n, QStyle::State_None));
    }
}

void TestProcessorTreeDelegate::shouldAskTheHostWhetherAButtonIsWanted()
{
    Buttons tree;
    tree.host().showNodeMoreButton = false;
    QVERIFY(tree.hasButton(1) && !tree.hasButton(10) && !tree.hasButton(0));
    tree.host().showNodeMoreButton = true;
    tree.host().showProcessorMoreButton = false;
    QVERIFY(!tree.hasButton(1) && tree.hasButton(10) && tree.hasButton(0));
}

void TestProcessorTreeDelegate::shouldAskNothingAboutRowsWithoutAButton()
{
    Buttons tree;
    tree.host().clearCalls();
    for (const quint32 n : {1U, 10U, 0U})
        QVERIFY(!tree.hasButton(n, QStyle::State_None));
    QCOMPARE(tree.host().callNames(), QStringList());
    QVERIFY(tree.hasButton(1, QStyle::State_Selected));
    QVERIFY(tree.hasButton(10, QStyle::State_MouseOver));
    QCOMPARE(
        tree.host().callNames(),
        QStringList({QStringLiteral("GetSelectionMode"), QStringLiteral("ShowProcessorMoreButton"),
                     QStringLiteral("GetSelectionMode"), QStringLiteral("ShowNodeMoreButton")}));
}

void TestProcessorTreeDelegate::shouldPaintNoButtonWhileSeveralAreSelected()
{
    Buttons tree;
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = {testId(1)};
    QVERIFY(tree.hasButton(1));
    tree.host().selectedProcessors.append(testId(2));
    QVERIFY(!tree.hasButton(1) && !tree.hasButton(10));
    tree.host().selectionMode = 1;
    QVERIFY(tree.hasButton(1));
}

void TestProcessorTreeDelegate::shouldPaintTheStateOfTheButton()
{
    Buttons tree;
    const QStyle::State state = QStyle::State_Selected;
    const QImage normal = tree.painted(3, state);
    const QPoint middle = tree.button(3).center();
    tree.move(middle);
    const QImage hovered = tree.painted(3, state);
    QCOMPARE(tree.painted(4, state), normal);
    tree.press(middle);
    const QImage pressed = tree.painted(3, state);
    tree.move(tree.row(3).center(), Qt::LeftButton);
    QCOMPARE(tree.painted(3, state), pressed);
    tree.release(tree.row(3).center());
    QCOMPARE(tree.painted(3, state), normal);
    tree.delegate->setButtonEnabled(false);
    const QImage disabled = tree.painted(3, state);
    tree.move(middle);
    QCOMPARE(tree.painted(3, state), disabled);
    tree.delegate->setButtonEnabled(true);
    QVERIFY(!normal.isNull() && !hovered.isNull() && !pressed.isNull() && !disabled.isNull());
    QVERIFY(normal != hovered && normal != pressed && normal != disabled);
    QVERIFY(hovered != pressed && hovered != disabled && pressed != disabled);
}

void TestProcessorTreeDelegate::shouldParseNothingWhilePainting()
{
    Buttons tree;
    const int parsed = SvgIcons::parseCount();
    QVERIFY(parsed >= 4);
    QVERIFY(tree.hasButton(3));
    tree.move(tree.button(3).center());
    QVERIFY(tree.hasButton(3));
    tree.delegate->setButtonEnabled(false);
    QVERIFY(tree.hasButton(3));
    QCOMPARE(SvgIcons::parseCount(), parsed);
}

void TestProcessorTreeDelegate::shouldTellOfAClick()
{
    Buttons tree;
    for (const quint32 n : {1U, 10U}) {
        tree.click(tree.button(n).center());
        QCOMPARE(tree.clicks.count(), 1);
        const QList<QVariant> click = tree.clicks.takeFirst();
        QCOMPARE(click.at(0).toModelIndex(), tree.index(n));
        QCOMPARE(click.at(1).toPoint(), tree.button(n).topLeft() + QPoint(20, 20));
        QVERIFY(!tree.isOver() && !tree.isDown());
    }
    const QRect button = tree.button(3);
    for (const QPoint& corner : {button.topLeft(), button.bottomRight()})
        tree.click(corner);
    QCOMPARE(tree.clicks.count(), 2);
    for (const QPoint& outside :
         {button.topLeft() - QPoint(1, 0), button.topLeft() - QPoint(0, 1),
          button.bottomRight() + QPoint(1, 0), button.bottomRight() + QPoint(0, 1)})
        tree.click(outside);
    QCOMPARE(tree.clicks.count(), 2);
}

void TestProcessorTreeDelegate::shouldSelectTheRowOfTheButton()
{
    Buttons tree;
    tree.click(tree.row(3).center());
    tree.press(tree.button(4).center());
    QCOMPARE(tree.selection->selectedIndexes(), QModelIndexList({tree.index(4)}));
    tree.release(tree.button(4).center());
    QVERIFY(!tree.viewport()->findChild<QLineEdit*>());
}

void TestProcessorTreeDelegate::shouldTellOfNothingWhenReleasedOutside()
{
    Buttons tree;
    tree.press(tree.button(3).center());
    QVERIFY(tree.isDown());
    tree.release(tree.row(3).center());
    QVERIFY(!tree.isDown());
    tree.release(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 0);
}

void TestProcessorTreeDelegate::shouldTellOfNothingWhenReleasedOnAnotherRow()
{
    Buttons tree;
    for (const QPoint& elsewhere : {tree.button(4).center(), QPoint(10, 390), QPoint(-50, -50)}) {
        tree.press(tree.button(3).center());
        tree.release(elsewhere);
        QTRY_VERIFY(!tree.isDown());
    }
    QCOMPARE(tree.clicks.count(), 0);
    tree.click(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 1);
}

void TestProcessorTreeDelegate::shouldTellOfNothingWhenPressedOutside()
{
    Buttons tree;
    tree.press(tree.button(3).center() - QPoint(30, 0));
    tree.release(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 0);
}

void TestProcessorTreeDelegate::shouldTellOfNothingForOtherButtons()
{
    Buttons tree;
    QTest::mouseClick(tree.viewport(), Qt::MiddleButton, Qt::NoModifier, tree.button(3).center());
    QTest::mouseClick(tree.viewport(), Qt::RightButton, Qt::NoModifier, tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 0);
    QVERIFY(!tree.isDown());
}

void TestProcessorTreeDelegate::shouldTellOfNothingWhileSeveralAreSelected()
{
    Buttons tree;
    tree.host().selectionMode = 2;
    tree.host().selectedProcessors = {testId(1), testId(2)};
    tree.move(tree.button(3).center());
    tree.click(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 0);
    QVERIFY(!tree.isOver());
    QVERIFY(tree.selection->isSelected(tree.index(3)));
}

/// The host has none for this kind of row.
void TestProcessorTreeDelegate::shouldTellOfNothingWithoutAButton()
{
    Buttons tree;
    for (const bool forProcessors : {false, true}) {
        tree.host().showProcessorMoreButton = forProcessors;
        tree.host().showNodeMoreButton = !forProcessors;
        for (const quint32 row : {3U, 11U}) {
            const bool hasButton = forProcessors == (row == 3);
            const QPoint middle = tree.button(row).center();
            tree.move(middle);
            QCOMPARE(tree.isOver(), hasButton);
            tree.press(middle);
            QCOMPARE(tree.isDown(), hasButton);
            tree.release(middle);
            QCOMPARE(tree.clicks.count(), hasButton ? 1 : 0);
            tree.clicks.clear();
        }
    }
    // One that goes between press and release.
    tree.press(tree.button(3).center());
    QVERIFY(tree.isDown());
    tree.host().showProcessorMoreButton = false;
    tree.release(tree.button(3).center());
    QVERIFY(!tree.isDown());
    QCOMPARE(tree.clicks.count(), 0);
}

void TestProcessorTreeDelegate::shouldNotAskForTheButtonBesideIt()
{
    Buttons tree;
    const QString question = QStringLiteral("ShowProcessorMoreButton");
    tree.host().clearCalls();
    tree.move(tree.row(3).center());
    QCOMPARE(tree.host().callCount(question), 0);
    tree.move(tree.button(3).center());
    QCOMPARE(tree.host().callCount(question), 1);
}

void TestProcessorTreeDelegate::shouldTellOfNothingWhenDisabled()
{
    Buttons tree;
    tree.press(tree.button(3).center());
    tree.delegate->setButtonEnabled(false);
    QVERIFY(!tree.isDown());
    tree.release(tree.button(3).center());
    tree.click(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 0);
    tree.delegate->setButtonEnabled(true);
    tree.click(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 1);
}

void TestProcessorTreeDelegate::shouldToggleOnEveryClick()
{
    Buttons tree;
    QCOMPARE(static_cast<int>(tree.delegate->buttonState()), 11);
    tree.click(tree.button(3).center());
    QCOMPARE(static_cast<int>(tree.delegate->buttonState()), 1 + 2 + 32);
    tree.click(tree.button(4).center());
    QCOMPARE(static_cast<int>(tree.delegate->buttonState()), 11);
}

void TestProcessorTreeDelegate::shouldForgetTheMouseAfterADrop()
{
    Buttons tree;
    tree.move(tree.button(3).center());
    tree.press(tree.button(3).center());
    QVERIFY(tree.isOver() && tree.isDown());
    tree.delegate->resetButtonState();
    QCOMPARE(static_cast<int>(tree.delegate->buttonState()), 11);
}

void TestProcessorTreeDelegate::shouldFollowTheMouse()
{
    Buttons tree;
    tree.move(tree.button(3).center());
    QVERIFY(tree.isOver());
    tree.move(tree.row(3).center());
    QVERIFY(!tree.isOver());
    tree.move(tree.button(3).center());
    tree.move(tree.button(4).center());
    QVERIFY(tree.isOver());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(tree.viewport(), &leave);
    QVERIFY(!tree.isOver());
}

void TestProcessorTreeDelegate::shouldStandReceiversThatChangeTheTree()
{
    Buttons tree;
    connect(tree.delegate, &CProcessorTreeDelegate::notifyMoreClicked, tree.delegate,
            [&] { tree.model().removeNode(testId(3)); });
    tree.click(tree.button(3).center());
    QVERIFY(!tree.index(3).isValid());
    tree.click(tree.button(4).center());
    QCOMPARE(tree.clicks.count(), 2);
}

void TestProcessorTreeDelegate::shouldStandAResetWhilePressed()
{
    Buttons tree;
    const QPoint place = tree.button(3).center();
    tree.press(place);
    tree.model().reset();
    tree.view.expandAll();
    tree.release(place);
    QCOMPARE(tree.clicks.count(), 0);
    QTRY_VERIFY(!tree.isDown());
    tree.click(tree.button(3).center());
    QCOMPARE(tree.clicks.count(), 1);
}

void TestProcessorTreeDelegate::shouldStandAHostThatChangesTheTreeWhenAsked()
{
    Buttons tree;
    const QModelIndex index = tree.index(3);
    QStyleOptionViewItem option;
    option.rect = tree.row(3);
    const QPoint middle = tree.button(3).center();
    QMouseEvent move(QEvent::MouseMove, middle, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("GetSelectionMode"))
            tree.model().removeNode(testId(3));
    };
    QVERIFY(!tree.delegate->editorEvent(&move, &tree.model(), option, index));
    QVERIFY(!tree.index(3).isValid());
    tree.host().inside = nullptr;
}

void TestProcessorTreeDelegate::shouldOfferNothingInSearchResults()
{
    Buttons tree;
    CProcessorTreeSearchDelegate delegate;
    const QStyleOptionViewItem option;
    QVERIFY(!delegate.createEditor(&tree.view, option, tree.index(1)));
    tree.view.setItemDelegate(&delegate);
    tree.host().clearCalls();
    tree.click(tree.row(3).center());
    tree.click(tree.button(3).center());
    QVERIFY(!tree.view.grab().isNull());
    QCOMPARE(tree.clicks.count(), 0);
    QCOMPARE(tree.host().callCount(QStringLiteral("ShowProcessorMoreButton")), 0);
    tree.view.setItemDelegate(tree.delegate);
}

TSA_TEST_MAIN(TestProcessorTreeDelegate)

#include "tst_processortreedelegate.moc"
