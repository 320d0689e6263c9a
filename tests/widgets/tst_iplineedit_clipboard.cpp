#include "tests/widgets/AddressForm.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

/// Paste, drop, copy and cut by keys, mouse and menu.
class TestIPLineEditClipboard final : public QObject
{
    Q_OBJECT

private slots:
    void shouldAcceptOnlyTextsThatFit_data();
    void shouldAcceptOnlyTextsThatFit();
    void shouldAcceptDroppedAddresses();
    void shouldCopyAndCutTheWholeAddress();
    void shouldOfferAMenu();
};

void TestIPLineEditClipboard::shouldAcceptOnlyTextsThatFit_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");

    QTest::newRow("address") << " 192.168.1.10\n"
                             << "192.168.1.10";
    QTest::newRow("zeros") << "010.000.001.009"
                           << "10.0.1.9";
    QTest::newRow("digits") << "5"
                            << "1.2.35.4";
    QTest::newRow("digits with white space") << " 5\n"
                                             << "1.2.35.4";
    QTest::newRow("no room") << "555"
                             << "1.2.3.4";
    QTest::newRow("too large") << "256"
                               << "1.2.3.4";
    QTest::newRow("port") << "10.0.0.1:80"
                          << "1.2.3.4";
    QTest::newRow("part of an address") << "10.0.0"
                                        << "1.2.3.4";
    QTest::newRow("name") << "Processor 1"
                          << "1.2.3.4";
    QTest::newRow("nothing") << ""
                             << "1.2.3.4";
    QTest::newRow("full-width") << QStringLiteral("\uFF15") << "1.2.3.4";
}

void TestIPLineEditClipboard::shouldAcceptOnlyTextsThatFit()
{
    QFETCH(const QString, pasted);
    QFETCH(const QString, shown);
    AddressForm form;
    form.field.setText(QStringLiteral("1.2.3.4"));
    form.field.setSelection(5, 5);
    QApplication::clipboard()->setText(pasted);
    QTest::keyClick(&form.field, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(form.field.displayText(), shown);

    form.field.setText(QStringLiteral("1.2.3.4"));
    QCOMPARE(form.drop(pasted, form.pointOf(5)), shown != QLatin1String("1.2.3.4"));
    QCOMPARE(form.field.displayText(), shown);

    if (QApplication::clipboard()->supportsSelection()) {
        form.field.setText(QStringLiteral("1.2.3.4"));
        QApplication::clipboard()->setText(pasted, QClipboard::Selection);
        QTest::mouseClick(&form.field, Qt::MiddleButton, {}, form.pointOf(5));
        QCOMPARE(form.field.displayText(), shown);
    }
}

void TestIPLineEditClipboard::shouldAcceptDroppedAddresses()
{
    AddressForm form;
    QVERIFY(form.drop(QStringLiteral("10.0.0.1"), {3, 3}));
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.1"));
    QVERIFY(!form.drop(QStringLiteral("none"), {3, 3}));

    QMimeData data;
    data.setText(QStringLiteral("10.0.0.2"));
    QDragEnterEvent enter({3, 3}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&form.field, &enter);
    QDropEvent moved({3, 3}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::ShiftModifier);
    moved.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(&form.field, &moved);
    QCOMPARE(moved.dropAction(), Qt::CopyAction);
    QCOMPARE(form.field.text(), QStringLiteral("10.0.0.2"));
}

void TestIPLineEditClipboard::shouldCopyAndCutTheWholeAddress()
{
    AddressForm form;
    QClipboard* clipboard = QApplication::clipboard();
    const auto press = [&form](Qt::Key key) {
        QTest::keyClick(&form.field, key, Qt::ControlModifier);
    };
    form.field.setText(QStringLiteral("10.20.30.40"));
    clipboard->clear();
    press(Qt::Key_C);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));

    form.field.setSelection(1, 4);
    press(Qt::Key_C);
    QCOMPARE(clipboard->text(), QStringLiteral("0.2"));

    press(Qt::Key_A);
    QCOMPARE(form.selected(), QStringLiteral("10.20.30.40"));
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));
    QCOMPARE(form.field.displayText(), QStringLiteral("..."));

    press(Qt::Key_V);
    form.field.setSelection(4, 4);
    clipboard->clear();
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("10.20.30.40"));
    QVERIFY(form.field.text().isEmpty());

    clipboard->setText(QStringLiteral("kept"));
    press(Qt::Key_A);
    press(Qt::Key_C);
    press(Qt::Key_X);
    QCOMPARE(clipboard->text(), QStringLiteral("kept"));
}

void TestIPLineEditClipboard::shouldOfferAMenu()
{
    AddressForm form;
    QVERIFY(form.isActive());
    form.field.setFocus();
    form.field.setText(QStringLiteral("10.0.0.1"));
    QApplication::clipboard()->setText(QStringLiteral("no address"));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5});
    QApplication::sendEvent(&form.field, &event);
    QPointer<QMenu> menu = form.field.findChild<QMenu*>();
    QVERIFY(menu);
    QStringList enabled;
    const auto actions = menu->actions();
    for (const QAction* action : actions) {
        if (action->isEnabled() && !action->isSeparator())
            enabled.append(action->text());
    }
    QCOMPARE(enabled.join(QLatin1Char(',')), QStringLiteral("Cu&t,&Copy,Select &All"));
    QCOMPARE(menu->activeAction(), actions.first()); // opened by key
    QTest::keyClick(menu, Qt::Key_T);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("10.0.0.1"));
    QVERIFY(form.field.text().isEmpty());
    menu->close();
    QTRY_VERIFY(!menu);
}

TSA_TEST_MAIN(TestIPLineEditClipboard)

#include "tst_iplineedit_clipboard.moc"
