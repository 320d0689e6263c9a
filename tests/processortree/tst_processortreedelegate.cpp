#include "processortree/ProcessorTreeSearchDelegate.h"
#include "tests/ipmanage/DialogTest.h"
#include "tests/processortree/ShownTree.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalSpy>
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

struct Buttons : ShownTree
{
    Buttons()
        : clicks(delegate, &CProcessorTreeDelegate::notifyMoreClicked)
    {
        host().showProcessorMoreButton = true;
        host().showNodeMoreButton = true;
    }

    void press(const QPoint& position) const
    {
        QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }
    void release(const QPoint& position) const
    {
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, position);
    }

    /// Moves the mouse, with `held` down. Not by the cursor, which may be there already.
    void move(const QPoint& position, Qt::MouseButtons held = Qt::NoButton) const
    {
        QMouseEvent event(QEvent::MouseMove, position, viewport()->mapToGlobal(position),
                          Qt::NoButton, held, Qt::NoModifier);
        QApplication::sendEvent(viewport(), &event);
    }

    bool isOver() const { return delegate->buttonState().testFlag(QStyle::State_MouseOver); }
    bool isDown() const { return delegate->buttonState().testFlag(QStyle::State_Sunken); }

    /// What is painted on the button's place in row `n`, apart from the row itself.
    QImage painted(quint32 n, QStyle::State state)
    {
        QImage image(300, 42, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.state = QStyle::State_Enabled | state;
        option.rect = QRect(0, 0, 300, 42);
        delegate->paint(&painter, option, index(n));
        QImage without(300, 42, QImage::Format_ARGB32_Premultiplied);
        without.fill(Qt::transparent);
        QPainter plain(&without);
        delegate->CProcessorDelegate::paint(&plain, option, index(n));
        const QRect place(260, 11, 20, 20);
        return image.copy(place) == without.copy(place) ? QImage() : image.copy(place);
    }

    bool hasButton(quint32 n, QStyle::State state = QStyle::State_Selected)
    {
        return !painted(n, state).isNull();
    }

    QSignalSpy clicks;
};

/// An editor that is open on row `n`.
QLineEdit* edit(ShownTree& tree, quint32 n)
{
    tree.click(tree.row(n).center());
    tree.view.setCurrentIndex(tree.index(n));
    tree.view.edit(tree.index(n));
    return tree.viewport()->findChild<QLineEdit*>();
}

/// Ends editing, which happens behind the key.
void pressKey(QLineEdit* editor, Qt::Key key)
{
    const QPointer<QLineEdit> open(editor);
    QTest::keyClick(editor, key);
    QTRY_VERIFY(!open);
}

} // namespace

class TestProcessorTreeDelegate final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shouldPaintTheButtonOfSelectedAndHoveredRows();
    void shouldAskTheHostWhetherAButtonIsWanted();
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
    void shouldTellOfNothingWhenDisabled();
    void shouldToggleOnEveryClick();
    void shouldForgetTheMouseAfterADrop();
    void shouldFollowTheMouse();
    void shouldStandReceiversThatChangeTheTree();
    void shouldStandAResetWhilePressed();
    void shouldStandAHostThatChangesTheTreeWhenAsked();

    void shouldShowATipWhenTheMouseRests();
    void shouldShowNoTipAfterAPressOrLeave();
    void shouldShowNoTipForARowThatIsGone();
    void shouldAnswerAskedTips();
    void shouldHideTheTipInTime();

    void shouldPlaceEditors();
    void shouldEditOnlyNames();
    void shouldRenameProcessors();
    void shouldRenameGroups();
    void shouldKeepTheNameOnEscape();
    void shouldKeepTheNameForBlanks();
    void shouldKeepTheNameWhenRefused();
    void shouldTrimNames();
    void shouldLimitNames();
    void shouldLeaveTheHostsNameAlone();
    void shouldStandAHostThatChangesTheTreeWhenRenaming_data();
    void shouldStandAHostThatChangesTheTreeWhenRenaming();
    void shouldStandAResetWhileEditing();
    void shouldTranslate();

    void shouldOfferNothingInSearchResults();
};

void TestProcessorTreeDelegate::init()
{
    QApplication::setStyle(new QuickStyle);
}

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

void TestProcessorTreeDelegate::shouldShowATipWhenTheMouseRests()
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

void TestProcessorTreeDelegate::shouldShowNoTipAfterAPressOrLeave()
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

void TestProcessorTreeDelegate::shouldShowNoTipForARowThatIsGone()
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

void TestProcessorTreeDelegate::shouldAnswerAskedTips()
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

void TestProcessorTreeDelegate::shouldHideTheTipInTime()
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

void TestProcessorTreeDelegate::shouldPlaceEditors()
{
    ShownTree tree;
    QWidget editor;
    QStyleOptionViewItem option;
    option.rect = QRect(100, 200, 300, 42);
    const auto place = [&](const QModelIndex& index) {
        tree.delegate->updateEditorGeometry(&editor, option, index);
        return editor.geometry();
    };
    const QRect row = option.rect;
    QCOMPARE(place(tree.index(10)),
             QRect(QPoint(125, 204), QPoint(row.right() - 35, row.bottom() - 4)));
    QCOMPARE(place(tree.index(1)), QRect(QPoint(124, 204), QPoint(row.right() - 40, 204 + 21 - 2)));
    const QRect narrowed(row.topLeft(), QPoint(row.right() - 10, row.bottom()));
    QCOMPARE(place(tree.index(0)), narrowed);
    QCOMPARE(place(QModelIndex()), narrowed);
}

void TestProcessorTreeDelegate::shouldEditOnlyNames()
{
    ShownTree tree;
    QFont font = tree.view.font();
    font.setPointSize(17);
    tree.view.setFont(font);
    const QStyleOptionViewItem option;
    for (const QModelIndex& index : {tree.index(0), QModelIndex()})
        QVERIFY(!tree.delegate->createEditor(&tree.view, option, index));
    for (const quint32 n : {1U, 10U}) {
        const std::unique_ptr<QWidget> editor(
            tree.delegate->createEditor(tree.viewport(), option, tree.index(n)));
        QVERIFY(qobject_cast<QLineEdit*>(editor.get()));
        QCOMPARE(editor->font().pointSize(), 17);
        QCOMPARE(editor->metaObject(), &QLineEdit::staticMetaObject);
    }
}

void TestProcessorTreeDelegate::shouldRenameProcessors()
{
    ShownTree tree;
    tree.click(tree.row(3).center());
    QTest::keyClick(&tree.view, Qt::Key_F2);
    auto* editor = tree.viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("3"));
    QCOMPARE(editor->selectedText(), QStringLiteral("3"));
    tree.host().clearCalls();
    QTest::keyClicks(editor, QStringLiteral("Left wing"));
    tree.host().inside = [&](const QString& name) {
        // The model changes only after the host agreed.
        if (name == QLatin1String("RenameProcessor"))
            QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
    };
    pressKey(editor, Qt::Key_Enter);
    tree.host().inside = nullptr;
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameGroup")), 0);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("Left wing"));
    QCOMPARE(tree.index(3).data(NodeDataRole).value<ProcessorNode>().name,
             QStringLiteral("Left wing"));
}

void TestProcessorTreeDelegate::shouldRenameGroups()
{
    ShownTree tree;
    tree.click(tree.row(10).center());
    QLineEdit* editor = edit(tree, 10);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("Stage"));
    pressKey(editor, Qt::Key_Enter);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameGroup")), 1);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QCOMPARE(tree.index(10).data(NodeDataRole).value<ProcessorGroupNode>().name,
             QStringLiteral("Stage"));
}

void TestProcessorTreeDelegate::shouldKeepTheNameOnEscape()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("Other"));
    pressKey(editor, Qt::Key_Escape);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
}

void TestProcessorTreeDelegate::shouldKeepTheNameForBlanks()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("   "));
    pressKey(editor, Qt::Key_Enter);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
    QCOMPARE(tree.index(3).data(NodeDataRole).value<ProcessorNode>().name, QStringLiteral("3"));
}

void TestProcessorTreeDelegate::shouldKeepTheNameWhenRefused()
{
    ShownTree tree;
    tree.host().acceptRename = false;
    QSignalSpy changes(&tree.model(), &QAbstractItemModel::dataChanged);
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("Other"));
    pressKey(editor, Qt::Key_Enter);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 1);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
    QCOMPARE(changes.count(), 0);
}

void TestProcessorTreeDelegate::shouldTrimNames()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("  a b "));
    pressKey(editor, Qt::Key_Enter);
    const auto calls = tree.host().calls();
    QVERIFY(std::any_of(calls.cbegin(), calls.cend(), [](const FakeHandler::Call& call) {
        return call.argument == testId(3).toString() + QStringLiteral("a b");
    }));
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("a b"));
}

void TestProcessorTreeDelegate::shouldLimitNames()
{
    ShownTree tree;
    tree.host().nameMaxBytes = 5;
    tree.host().nameUtf8 = false;
    QLineEdit* editor = edit(tree, 3);
    editor->insert(QStringLiteral("中文名称"));
    QCOMPARE(editor->text(), QStringLiteral("中文"));
    pressKey(editor, Qt::Key_Enter);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("中文"));
}

void TestProcessorTreeDelegate::shouldLeaveTheHostsNameAlone()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("taken"));
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("RenameProcessor"))
            tree.model().setData(tree.index(3), QStringLiteral("taken 2"), Qt::DisplayRole);
    };
    pressKey(editor, Qt::Key_Enter);
    tree.host().inside = nullptr;
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("taken 2"));
}

void TestProcessorTreeDelegate::shouldStandAHostThatChangesTheTreeWhenRenaming_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("removes the row") << 0;
    QTest::newRow("fills the tree anew") << 1;
    QTest::newRow("removes the row's group") << 2;
    QTest::newRow("empties the tree") << 3;
}

void TestProcessorTreeDelegate::shouldStandAHostThatChangesTheTreeWhenRenaming()
{
    QFETCH(const int, change);
    ShownTree tree;
    QLineEdit* editor = edit(tree, 1);
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("x"));
    tree.host().inside = [&](const QString& name) {
        if (name != QLatin1String("RenameProcessor"))
            return;
        if (change == 0)
            tree.model().removeNode(testId(1));
        else if (change == 1)
            tree.model().reset();
        else if (change == 2)
            tree.model().removeNode(testId(10));
        else
            tree.model().clearToRoot();
    };
    pressKey(editor, Qt::Key_Enter);
    tree.host().inside = nullptr;
    QCOMPARE(tree.index(1).isValid(), change == 1 || change == 2);
}

void TestProcessorTreeDelegate::shouldStandAResetWhileEditing()
{
    ShownTree tree;
    const QPointer<QLineEdit> editor(edit(tree, 3));
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("x"));
    tree.model().reset();
    QTRY_VERIFY(!editor);
    const QPointer<QLineEdit> other(edit(tree, 4));
    QTest::keyClicks(other, QStringLiteral("y"));
    tree.model().removeNode(testId(4));
    QTRY_VERIFY(!other);
    QVERIFY(tree.index(3).isValid());
}

void TestProcessorTreeDelegate::shouldTranslate()
{
    Buttons tree;
    const Chinese chinese;
    const QPoint middle = tree.button(3).center();
    QHelpEvent event(QEvent::ToolTip, middle, tree.viewport()->mapToGlobal(middle));
    QApplication::sendEvent(tree.viewport(), &event);
    QCOMPARE(QToolTip::text(), QStringLiteral("更多"));
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

QTEST_MAIN(TestProcessorTreeDelegate)

#include "tst_processortreedelegate.moc"
