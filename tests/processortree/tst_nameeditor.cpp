#include "processortree/view/NameEditor.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>

#include <memory>

namespace {
/// A field for names, with the focus.
struct Field
{
    explicit Field(int maxBytes, bool isUtf8 = true)
    {
        panel.host().nameMaxBytes = maxBytes;
        panel.host().nameUtf8 = isUtf8;
        edit.reset(CNameEditor::create(nullptr));
        edit->show();
        edit->setFocus();
    }

    void type(const QString& keys) const { QTest::keyClicks(edit.get(), keys); }

    void compose(const QString& preedit, const QString& commit = QString()) const
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(edit.get(), &event);
    }

    void paste(const QString& text) const
    {
        QApplication::clipboard()->setText(text);
        edit->paste();
    }

    TestPanel panel;
    std::unique_ptr<QLineEdit> edit;
};

} // namespace

class TestNameEditor final : public QObject
{
    Q_OBJECT

private slots:
    void shouldBlockTypingAtTheLimit();
    void shouldGiveRoomAgain();
    void shouldCutWhatIsPasted();
    void shouldTypeInTheMiddle();
    void shouldNotTypeHalfAPair();
    void shouldLeaveCompositionAlone();
    void shouldFitWhatIsComposedAtLast();
    void shouldFitTheNameInTheMiddleOfAComposition();
    void shouldKnowNoLimitOfZero();
    void shouldHaveNoContextMenu();
    void shouldStandAHostThatTakesTheFieldAway();
};

void TestNameEditor::shouldBlockTypingAtTheLimit()
{
    const Field field(5);
    field.type(QStringLiteral("abcde"));
    QCOMPARE(field.edit->maxLength(), 5);
    field.type(QStringLiteral("f"));
    QCOMPARE(field.edit->text(), QStringLiteral("abcde"));
    field.edit->clear();
    field.edit->insert(QStringLiteral("中b"));
    QCOMPARE(field.edit->maxLength(), 5);
    field.type(QStringLiteral("cde"));
    QCOMPARE(field.edit->text(), QStringLiteral("中bc"));
    QCOMPARE(field.edit->maxLength(), 3);
}

void TestNameEditor::shouldGiveRoomAgain()
{
    const Field field(3);
    field.type(QStringLiteral("abc"));
    QTest::keyClick(field.edit.get(), Qt::Key_Backspace);
    QCOMPARE(field.edit->text(), QStringLiteral("ab"));
    field.type(QStringLiteral("xy"));
    QCOMPARE(field.edit->text(), QStringLiteral("abx"));
}

void TestNameEditor::shouldCutWhatIsPasted()
{
    {
        const Field field(8, true);
        field.paste(QStringLiteral("中文名称"));
        QCOMPARE(field.edit->text(), QStringLiteral("中文"));
        QCOMPARE(field.edit->maxLength(), 4);
        QCOMPARE(field.edit->cursorPosition(), 2);
    }
    const Field field(8, false);
    field.paste(QStringLiteral("中文名称"));
    QCOMPARE(field.edit->text(), QStringLiteral("中文名称"));
    QCOMPARE(field.edit->maxLength(), 4);
}

void TestNameEditor::shouldTypeInTheMiddle()
{
    const Field field(6);
    field.type(QStringLiteral("abcde"));
    field.edit->setCursorPosition(2);
    field.type(QStringLiteral("X"));
    QCOMPARE(field.edit->text(), QStringLiteral("abXcde"));
    QCOMPARE(field.edit->cursorPosition(), 3);
    QTest::keyClick(field.edit.get(), Qt::Key_Backspace);
    QCOMPARE(field.edit->cursorPosition(), 2);
    field.edit->insert(QStringLiteral("中"));
    QCOMPARE(field.edit->text(), QStringLiteral("ab中c"));
    QCOMPARE(field.edit->cursorPosition(), 3);
}

void TestNameEditor::shouldNotTypeHalfAPair()
{
    const Field field(5);
    field.type(QStringLiteral("abcd"));
    field.edit->insert(QStringLiteral("\U0001F600"));
    QCOMPARE(field.edit->text(), QStringLiteral("abcd"));
    field.type(QStringLiteral("e"));
    QCOMPARE(field.edit->text(), QStringLiteral("abcde"));
}

void TestNameEditor::shouldLeaveCompositionAlone()
{
    Field field(6);
    field.type(QStringLiteral("abc"));
    field.panel.host().clearCalls();
    field.compose(QStringLiteral("zhong wen"));
    QCOMPARE(field.edit->text(), QStringLiteral("abc"));
    QCOMPARE(field.panel.host().callCount(QStringLiteral("GetNameMaxBytes")), 0);
    field.compose(QString(), QStringLiteral("中文"));
    QCOMPARE(field.edit->text(), QStringLiteral("abc中"));
    QCOMPARE(field.edit->maxLength(), 4);
}

void TestNameEditor::shouldFitWhatIsComposedAtLast()
{
    const Field field(4);
    // A single event commits text and continues the composition.
    field.compose(QStringLiteral("wen"), QStringLiteral("中中"));
    QCOMPARE(field.edit->text(), QStringLiteral("中中"));
    field.compose(QString());
    QTRY_COMPARE(field.edit->text(), QStringLiteral("中"));
    QCOMPARE(field.edit->maxLength(), 2);
}

void TestNameEditor::shouldFitTheNameInTheMiddleOfAComposition()
{
    const Field field(4);
    field.compose(QStringLiteral("wen"), QStringLiteral("中中"));
    QCOMPARE(CNameEditor::finishName(*field.edit), QStringLiteral("中"));
    QLineEdit other(QStringLiteral("any"));
    QCOMPARE(CNameEditor::finishName(other), QStringLiteral("any"));
}

void TestNameEditor::shouldKnowNoLimitOfZero()
{
    const Field field(0);
    field.paste(QStringLiteral("名称").repeated(100));
    QCOMPARE(field.edit->text().size(), 200);
}

void TestNameEditor::shouldHaveNoContextMenu()
{
    const Field field(8);
    QCOMPARE(field.edit->contextMenuPolicy(), Qt::PreventContextMenu);
    QTest::mouseClick(field.edit.get(), Qt::RightButton);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2));
    QApplication::sendEvent(field.edit.get(), &event);
    QVERIFY(!QApplication::activePopupWidget());
}

void TestNameEditor::shouldStandAHostThatTakesTheFieldAway()
{
    Field field(3);
    QLineEdit* edit = field.edit.release();
    const QPointer<QLineEdit> alive(edit);
    field.panel.host().inside = [&](const QString&) { edit->deleteLater(); };
    edit->setText(QStringLiteral("abcdef"));
    QCOMPARE(edit->text(), QStringLiteral("abc"));
    QTRY_VERIFY(!alive);
}

TSA_TEST_MAIN(TestNameEditor)

#include "tst_nameeditor.moc"
