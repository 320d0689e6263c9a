#include "plugin/TargetSelectData.h"
#include "tests/search/SearchField.h"

#include <QDialog>
#include <QInputMethodEvent>
#include <QShortcut>

#include <tuple>

/// The keyboard and input methods while the list is open.
class TestCompleterKeys final : public QObject
{
    Q_OBJECT

private slots:
    void shouldChooseTheCurrentRow_data();
    void shouldChooseTheCurrentRow();
    void shouldCloseWithoutACurrentRow_data();
    void shouldCloseWithoutACurrentRow();
    void shouldCloseWithoutAChoice_data();
    void shouldCloseWithoutAChoice();
    void shouldChooseWithArrowKeys();
    void shouldWrapAtTheEnds();
    void shouldLeaveKeysToTheList_data();
    void shouldLeaveKeysToTheList();
    void shouldEnterTheListAtItsEnds_data();
    void shouldEnterTheListAtItsEnds();
    void shouldForwardHomeAndEnd();
    void shouldForwardTypingWhileOpen();
    void shouldForwardTheReleaseOfBack();
    void shouldConsumeEveryKey();
    void shouldNotCloseADialogWithEscape();
    void shouldKeepItsKeysFromShortcuts();

    void shouldForwardInputMethodsToTheField();
};

void TestCompleterKeys::shouldChooseTheCurrentRow_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Tab") << int(Qt::Key_Tab);
    QTest::newRow("Select") << int(Qt::Key_Select);
}

void TestCompleterKeys::shouldChooseTheCurrentRow()
{
    QFETCH(int, key);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.completer->select(search.row(2), false);
    search.press(key);
    QCOMPARE(search.told(), QStringLiteral("Stage 11"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());
    QCOMPARE(search.field->focusLosses, 1);
}

void TestCompleterKeys::shouldCloseWithoutACurrentRow_data()
{
    shouldChooseTheCurrentRow_data();
}

void TestCompleterKeys::shouldCloseWithoutACurrentRow()
{
    QFETCH(int, key);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(key);
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->hasFocus(), key != Qt::Key_Tab);
    QCOMPARE(search.field->text(), QStringLiteral("1"));
}

void TestCompleterKeys::shouldCloseWithoutAChoice_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("focus");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << 0 << true;
    QTest::newRow("Shift+Tab") << int(Qt::Key_Backtab) << int(Qt::ShiftModifier) << false;
    QTest::newRow("Alt+F4") << int(Qt::Key_F4) << int(Qt::AltModifier) << true;
}

void TestCompleterKeys::shouldCloseWithoutAChoice()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, focus);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.completer->select(search.row(1), false);
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QCOMPARE(search.field->hasFocus(), focus);
    QCOMPARE(search.field->text(), QStringLiteral("1"));
    QVERIFY(search.field->keys.contains(QStringLiteral("press %1").arg(key)));
    QVERIFY(search.window->isVisible());

    // F4 without Alt is an ordinary key.
    search.field->setFocus();
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_F4);
    QVERIFY(search.isOpen());
}

void TestCompleterKeys::shouldChooseWithArrowKeys()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Down);
    QCOMPARE(search.told(), QStringLiteral("Stage 1"));
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->hasFocus());

    search.field->setFocus();
    search.type(QStringLiteral("2"));
    search.press(Qt::Key_Up);
    QCOMPARE(search.told(), QStringLiteral("Stage 12"));
    QVERIFY(!search.isOpen());

    search.field->setFocus();
    search.type(QStringLiteral("z"));
    search.press(Qt::Key_Down);
    search.press(Qt::Key_Up);
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestCompleterKeys::shouldWrapAtTheEnds()
{
    const SearchField search;
    for (const auto& [from, key, to] :
         {std::make_tuple(0, Qt::Key_Down, "Stage 10"), std::make_tuple(1, Qt::Key_Up, "Stage 1"),
          std::make_tuple(4, Qt::Key_Down, "Stage 1"), std::make_tuple(0, Qt::Key_Up, "Foyer")}) {
        search.field->setFocus();
        search.field->clear();
        search.type(QStringLiteral("1"));
        search.completer->select(search.row(from), false);
        search.press(key);
        QCOMPARE(search.told(), QString::fromLatin1(to));
    }
}

void TestCompleterKeys::shouldLeaveKeysToTheList_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("PageDown") << int(Qt::Key_PageDown) << 0 << "Foyer";
    QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0 << "Stage 1";
    QTest::newRow("Ctrl+Home") << int(Qt::Key_Home) << int(Qt::ControlModifier) << "Stage 1";
    QTest::newRow("Ctrl+End") << int(Qt::Key_End) << int(Qt::ControlModifier) << "Foyer";
}

void TestCompleterKeys::shouldLeaveKeysToTheList()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, chosen);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.field->keys.clear();
    search.completer->select(search.row(2), false);
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(search.told(), chosen);
    QVERIFY(!search.isOpen());
    QVERIFY(!search.field->keys.contains(QStringLiteral("press %1").arg(key)));
}

void TestCompleterKeys::shouldEnterTheListAtItsEnds_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("PageDown") << int(Qt::Key_PageDown) << 0 << "Stage 1";
    QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0 << "Foyer";
    QTest::newRow("Ctrl+Home") << int(Qt::Key_Home) << int(Qt::ControlModifier) << "Stage 1";
    QTest::newRow("Ctrl+End") << int(Qt::Key_End) << int(Qt::ControlModifier) << "Foyer";
}

void TestCompleterKeys::shouldEnterTheListAtItsEnds()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, chosen);
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(search.told(), chosen);

    search.field->setFocus();
    search.type(QStringLiteral("z"));
    search.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(search.told(), QString());
}

void TestCompleterKeys::shouldForwardHomeAndEnd()
{
    const SearchField search;
    search.type(QStringLiteral("Stage"));
    search.press(Qt::Key_Home);
    QCOMPARE(search.field->cursorPosition(), 0);
    search.press(Qt::Key_Right);
    QCOMPARE(search.field->cursorPosition(), 1);
    search.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(search.field->selectedText(), QStringLiteral("tage"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestCompleterKeys::shouldForwardTypingWhileOpen()
{
    const SearchField search;
    search.type(QStringLiteral("stage 1"));
    QCOMPARE(search.field->text(), QStringLiteral("stage 1"));
    QCOMPARE(search.rows(), QStringLiteral("Stage 1,Stage 10,Stage 11,Stage 12"));
    search.press(Qt::Key_Backspace);
    QCOMPARE(search.popup()->model()->rowCount(), 12);
    search.press(Qt::Key_A, Qt::ControlModifier);
    search.type(QStringLiteral("f"));
    QCOMPARE(search.rows(), QStringLiteral("Foyer"));
    QVERIFY(search.isOpen());
    QCOMPARE(search.told(), QString());
}

void TestCompleterKeys::shouldForwardTheReleaseOfBack()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.field->keys.clear();
    search.press(Qt::Key_Back);
    const QStringList both = {QStringLiteral("press %1").arg(Qt::Key_Back),
                              QStringLiteral("release %1").arg(Qt::Key_Back)};
    QCOMPARE(search.field->keys, both);
    search.press(Qt::Key_F7);
    QCOMPARE(search.field->keys.last(), QStringLiteral("press %1").arg(Qt::Key_F7));
    QVERIFY(search.isOpen());
}

void TestCompleterKeys::shouldConsumeEveryKey()
{
    const SearchField search;
    search.press(Qt::Key_F7);
    QCOMPARE(search.window->keys, 1); // not handled by a closed list
    for (const Qt::Key key : {Qt::Key_F7, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
                              Qt::Key_Home, Qt::Key_Menu}) {
        search.field->setFocus();
        search.field->clear();
        search.type(QStringLiteral("1"));
        QVERIFY(search.isOpen());
        search.press(key);
    }
    QCOMPARE(search.window->keys, 1);
}

void TestCompleterKeys::shouldNotCloseADialogWithEscape()
{
    const SearchField search;
    QDialog dialog;
    QLineEdit field(&dialog);
    CProcessorCompleter completer(&field, *CTargetSelectData::Instance()->GetModel());
    dialog.setGeometry(100, 100, 200, 300);
    dialog.show();
    dialog.activateWindow();
    field.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    completer.setFilterText(QStringLiteral("1"));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QVERIFY(!completer.isOpen());
    QVERIFY(dialog.isVisible());
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void TestCompleterKeys::shouldKeepItsKeysFromShortcuts()
{
    const SearchField search;
    const QShortcut escape(QKeySequence(Qt::Key_Escape), search.window);
    const QShortcut down(QKeySequence(Qt::Key_Down), search.field, nullptr, nullptr,
                         Qt::WidgetShortcut);
    QSignalSpy escapes(&escape, &QShortcut::activated);
    QSignalSpy downs(&down, &QShortcut::activated);
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Escape);
    QVERIFY(!search.isOpen());
    QCOMPARE(escapes.count(), 0);
    search.press(Qt::Key_Escape);
    QCOMPARE(escapes.count(), 1);
    search.type(QStringLiteral("1"));
    search.press(Qt::Key_Down);
    QCOMPARE(downs.count(), 0);
    QCOMPARE(search.told(), QStringLiteral("- Stage 11"));
}

void TestCompleterKeys::shouldForwardInputMethodsToTheField()
{
    const SearchField search;
    search.type(QStringLiteral("S"));
    QVERIFY(search.isOpen());
    for (QObject* target : {qApp->focusObject(), static_cast<QObject*>(search.popup())}) {
        QVERIFY(target);
        search.field->clear();
        QInputMethodEvent preedit(QStringLiteral("da ting"), {});
        QApplication::sendEvent(target, &preedit);
        QCOMPARE(search.field->preedit, QStringLiteral("da ting"));
        QCOMPARE(search.field->text(), QString());
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("大厅"));
        QApplication::sendEvent(target, &commit);
        QCOMPARE(search.field->text(), QStringLiteral("大厅"));
        QVERIFY(search.isOpen());
        QCOMPARE(search.rows(), QString());

        QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImSurroundingText);
        QApplication::sendEvent(target, &query);
        QVERIFY(query.value(Qt::ImEnabled).toBool());
        QCOMPARE(query.value(Qt::ImSurroundingText).toString(), QStringLiteral("大厅"));
    }
}

TSA_TEST_MAIN(TestCompleterKeys)

#include "tst_completerkeys.moc"
