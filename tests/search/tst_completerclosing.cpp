#include "tests/search/SearchField.h"

#include <QEventLoop>
#include <QFocusEvent>
#include <QTimer>

#include <functional>

using Action = std::function<void(const SearchField&)>;
Q_DECLARE_METATYPE(Action)

/// Reasons to close the list other than keys and mouse, and the destruction of the completer and
/// related objects.
class TestCompleterClosing final : public QObject
{
    Q_OBJECT

private slots:
    void shouldEmitOnClosing();
    void shouldSwallowFocusOutWhileOpen();
    void shouldCloseWhenTheFocusChanges();
    void shouldCloseWhenTheFieldCannotBeUsed_data();
    void shouldCloseWhenTheFieldCannotBeUsed();
    void shouldSurviveTheField();
    void shouldBeDestroyedWithTheWindow();

    void shouldSurviveItsDestruction_data();
    void shouldSurviveItsDestruction();
    void shouldSurviveItsDestructionInANestedLoop_data();
    void shouldSurviveItsDestructionInANestedLoop();
};

void TestCompleterClosing::shouldEmitOnClosing()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.popup()->close();
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QVERIFY(!search.field->hasFocus());
    search.popup()->close();
    QCOMPARE(search.told(), QString());
}

void TestCompleterClosing::shouldSwallowFocusOutWhileOpen()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    QFocusEvent away(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(search.field, &away);
    QCOMPARE(search.field->focusLosses, 0);
    QVERIFY(search.isOpen());
    search.press(Qt::Key_Escape);
    QCOMPARE(search.field->focusLosses, 0);
    QApplication::sendEvent(search.field, &away);
    QCOMPARE(search.field->focusLosses, 1);
}

void TestCompleterClosing::shouldCloseWhenTheFocusChanges()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    search.other->setFocus();
    QVERIFY(!search.isOpen());
    QCOMPARE(search.told(), QStringLiteral("-"));
    QVERIFY(search.other->hasFocus());
    QCOMPARE(search.field->focusLosses, 1);
}

void TestCompleterClosing::shouldCloseWhenTheFieldCannotBeUsed_data()
{
    QTest::addColumn<Action>("action");
    QTest::newRow("field hidden") << Action([](const SearchField& s) { s.field->hide(); });
    QTest::newRow("window hidden") << Action([](const SearchField& s) { s.window->hide(); });
    QTest::newRow("window closed") << Action([](const SearchField& s) { s.window->close(); });
    QTest::newRow("minimised") << Action([](const SearchField& s) { s.window->showMinimized(); });
    QTest::newRow("disabled") << Action([](const SearchField& s) { s.field->setEnabled(false); });
    QTest::newRow("window disabled")
        << Action([](const SearchField& s) { s.window->setEnabled(false); });
    QTest::newRow("moved to another window")
        << Action([](const SearchField& s) { s.field->setParent(nullptr); });
}

void TestCompleterClosing::shouldCloseWhenTheFieldCannotBeUsed()
{
    QFETCH(Action, action);
    const SearchField search;
    search.type(QStringLiteral("1"));
    QVERIFY(search.isOpen());
    action(search);
    QVERIFY(!search.isOpen());
    QTRY_COMPARE(search.spy->count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(search.told(), QStringLiteral("-"));
    if (!search.field->parent())
        delete search.field;
}

void TestCompleterClosing::shouldSurviveTheField()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    delete search.field;
    QVERIFY(!search.isOpen());
    search.completer->setFilterText(QStringLiteral("1"));
    QVERIFY(!search.isOpen());
    QTest::keyClick(search.popup(), Qt::Key_A);
    QVERIFY(!search.isOpen());
}

void TestCompleterClosing::shouldBeDestroyedWithTheWindow()
{
    const SearchField search;
    search.type(QStringLiteral("1"));
    const QPointer<QListView> popup = search.popup();
    delete search.window;
    QVERIFY(!popup || !popup->isVisible());
    QTRY_VERIFY(!popup);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(search.told(), QString());
}

void TestCompleterClosing::shouldSurviveItsDestruction_data()
{
    QTest::addColumn<Action>("action");
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return Action([key, modifiers](const SearchField& s) { s.press(key, modifiers); });
    };
    QTest::newRow("Down") << press(Qt::Key_Down);
    QTest::newRow("PageDown") << press(Qt::Key_PageDown);
    QTest::newRow("Ctrl+End") << press(Qt::Key_End, Qt::ControlModifier);
    QTest::newRow("Escape") << press(Qt::Key_Escape);
    QTest::newRow("Tab") << press(Qt::Key_Tab);
    QTest::newRow("Return") << Action([](const SearchField& s) {
        s.completer->select(s.row(0), false);
        s.press(Qt::Key_Return);
    });
    QTest::newRow("click") << Action([](const SearchField& s) {
        QTest::mouseClick(s.popup()->windowHandle(), Qt::LeftButton, Qt::NoModifier, s.place(0));
    });
    QTest::newRow("press outside") << Action([](const SearchField& s) {
        QTest::mousePress(s.window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(280, 340));
    });
    QTest::newRow("close") << Action([](const SearchField& s) { s.popup()->close(); });
    QTest::newRow("focus") << Action([](const SearchField& s) { s.other->setFocus(); });
}

void TestCompleterClosing::shouldSurviveItsDestruction()
{
    QFETCH(Action, action);
    const SearchField search;
    const QPointer<QListView> popup = search.popup();
    CProcessorCompleter* completer = search.completer;
    QObject::connect(completer, &CProcessorCompleter::activated, completer,
                     [completer] { delete completer; });
    search.type(QStringLiteral("1"));
    action(search);
    QVERIFY(!search.completer);
    QTRY_VERIFY(!popup);
    QVERIFY(!QApplication::activePopupWidget());
}

void TestCompleterClosing::shouldSurviveItsDestructionInANestedLoop_data()
{
    shouldSurviveItsDestruction_data();
}

void TestCompleterClosing::shouldSurviveItsDestructionInANestedLoop()
{
    QFETCH(Action, action);
    const SearchField search;
    const QPointer<QListView> popup = search.popup();
    CProcessorCompleter* completer = search.completer;
    bool whole = false;
    // Like a host that shows a dialog and destroys the panel inside it.
    QObject::connect(completer, &CProcessorCompleter::activated, completer,
                     [completer, popup, end = &whole] {
                         QEventLoop loop;
                         QTimer::singleShot(0, &loop, [completer, pending = &loop] {
                             delete completer;
                             QTimer::singleShot(0, pending, &QEventLoop::quit);
                         });
                         loop.exec();
                         QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                         *end = popup != nullptr;
                     });
    search.type(QStringLiteral("1"));
    QTimer::singleShot(0, search.window, [&] { action(search); });
    QTRY_VERIFY(!search.completer);
    QTRY_VERIFY(!popup);
    // A change of focus is not an event of the popup.
    QCOMPARE(whole, qstrcmp(QTest::currentDataTag(), "focus") != 0);
}

TSA_TEST_MAIN(TestCompleterClosing)

#include "tst_completerclosing.moc"
