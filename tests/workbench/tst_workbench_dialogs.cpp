#include "host/workbench/dialogs/RaiseEventDialog.h"
#include "host/workbench/project/FieldJson.h"
#include "host/workbench/project/RecordFields.h"
#include "host/workbench/window/RecordsPanel.h"
#include "tests/support/DialogDriver.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>

namespace {

/// Returns the field with this label.
template <typename Field>
Field* fieldOf(const QWidget& dialog, const QString& label)
{
    for (auto* field : dialog.findChildren<Field*>()) {
        if (field->accessibleName() == label)
            return field;
    }
    return nullptr;
}

} // namespace

/// The dialogs that set what the host answers, holds and raises.
class WorkbenchDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldForceChecksOfAddresses();
    void shouldSwitchEveryAnswer();
    void shouldRaiseAnyEvent();
    void shouldEditDeviceSets();
    void shouldRefuseNamesAndAddressesThatMakeNoSense();

private:
    const TestSettings m_settings;
};

void WorkbenchDialogsTest::shouldForceChecksOfAddresses()
{
    WorkbenchUnderTest test;
    test.action(ActionId::HandlerAnswers)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    // A smaller screen than anybody has leaves the buttons in reach.
    QVERIFY2(dialog->height() <= 720, qPrintable(QString::number(dialog->height())));
    for (auto* field : dialog->findChildren<QLineEdit*>()) {
        if (field->accessibleName() == QLatin1String("ipCheckCode"))
            field->setText(QStringLiteral("0xE0832003"));
    }
    for (auto* field : dialog->findChildren<QSpinBox*>()) {
        if (field->accessibleName() == QLatin1String("ipCheckCount"))
            field->setValue(2);
    }
    dialog->accept();
    QCOMPARE(test.store().snapshot().answers.ipCheckCount, 2);
    QCOMPARE(test.store().takeForcedIpCheck(), 0xE0832003U);
    QCOMPARE(test.store().takeForcedIpCheck(), 0xE0832003U);
    QCOMPARE(test.store().takeForcedIpCheck(), 0U);
}

void WorkbenchDialogsTest::shouldSwitchEveryAnswer()
{
    WorkbenchUnderTest test;
    test.action(ActionId::HandlerAnswers)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    QHash<QString, QWidget*> fields;
    for (auto* field : dialog->findChildren<QWidget*>())
        fields.insert(field->accessibleName(), field);
    const HandlerAnswers wanted = unusualProject().answers;
    FieldWriter before;
    visitAnswerFields(wanted, before);
    for (auto it = before.object.constBegin(); it != before.object.constEnd(); ++it) {
        QWidget* field = fields.value(it.key());
        QVERIFY2(field, qPrintable(it.key()));
        if (auto* box = qobject_cast<QCheckBox*>(field))
            box->setChecked(it.value().toBool());
        else if (auto* number = qobject_cast<QSpinBox*>(field))
            number->setValue(it.value().toInt());
        else if (auto* choice = qobject_cast<QComboBox*>(field))
            choice->setCurrentText(it.value().toString());
        else if (auto* line = qobject_cast<QLineEdit*>(field))
            line->setText(it.value().isArray()
                              ? it.value().toVariant().toStringList().join(QLatin1Char(','))
                              : QString::number(it.value().toVariant().toLongLong()));
    }
    dialog->accept();
    QTRY_VERIFY(!QApplication::activeModalWidget());
    FieldWriter after;
    const HandlerAnswers answers = test.store().snapshot().answers;
    visitAnswerFields(answers, after);
    QCOMPARE(after.object, before.object);
    QVERIFY(test.handler()->IsRestrictedMode());
    QVERIFY(test.window.isWindowModified());
}

void WorkbenchDialogsTest::shouldRaiseAnyEvent()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    test.window.records().select({sampleId(12)});
    test.session.trace().clear();
    const auto raise = [&](int number, int type, const QString& value) {
        test.action(ActionId::RaiseEvent)->trigger();
        auto* dialog = openDialog<RaiseEventDialog>();
        fieldOf<QSpinBox>(*dialog, QStringLiteral("Number"))->setValue(number);
        if (type >= 0)
            fieldOf<QComboBox>(*dialog, QStringLiteral("Argument type"))->setCurrentIndex(type);
        if (!value.isNull())
            fieldOf<QLineEdit>(*dialog, QStringLiteral("Argument"))->setText(value);
        dialog->accept();
        const bool accepted = !dialog->isVisible();
        dialog->reject();
        test.session.trace().flush();
        return accepted;
    };
    QVERIFY(raise(25, -1, QString()));
    // A panel that paints asks its questions, too.
    int logged = 0;
    for (int row = 0; row < test.session.trace().rowCount(); ++row) {
        if (test.session.trace().entry(row).text.startsWith(
                QStringLiteral("25 ProcessorChanged({")))
            ++logged;
    }
    QCOMPARE(logged, 1);
    QVERIFY(raise(39, -1, QString()));
    QVERIFY(raise(26, -1, QString()));
    QVERIFY(raise(1, -1, QString()));
    QVERIFY(raise(16, -1, QString()));
    QVERIFY(raise(0, -1, QStringLiteral("2")));
    QVERIFY(!raise(0, -1, QStringLiteral("two")));
    QVERIFY(!raise(18, -1, QStringLiteral("nonsense")));
    QVERIFY(!raise(18, -1, QString::fromLatin1("")));
    QVERIFY(raise(250, 0, QString()));
    test.session.trace().clear();
    // The event does not carry what the type says: the panel's complaint is in the log.
    QVERIFY(raise(20, 1, QStringLiteral("7")));
    bool complained = false;
    for (int row = 0; row < test.session.trace().rowCount(); ++row)
        complained =
            complained
            || test.session.trace().entry(row).text.contains(QStringLiteral("bad type cast"));
    QVERIFY(complained);
    test.waitForPanel();
}

void WorkbenchDialogsTest::shouldEditDeviceSets()
{
    WorkbenchUnderTest test(Notifier::Delivery::GuiThread);
    // An editor that is closed goes in the event loop.
    const auto settle = [] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const auto press = [&](const QWidget* dialog, const QString& text) {
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
        settle();
    };
    test.action(ActionId::DeviceSets)->trigger();
    auto* dialog = openDialog<QDialog>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    press(dialog, QStringLiteral("&Add"));
    press(dialog, QStringLiteral("&Add"));
    press(dialog, QStringLiteral("&Add"));
    auto* list = dialog->findChild<QTreeWidget*>();
    auto* current = dialog->findChild<QComboBox*>();
    current->setCurrentIndex(3);
    list->setCurrentItem(list->topLevelItem(1));
    press(dialog, QStringLiteral("&Remove"));
    QCOMPARE(current->currentText(), QStringLiteral("Set 3"));
    QCOMPARE(list->topLevelItemCount(), 2);

    // Each field takes what its type allows. What it does not take stays in the editor.
    const auto type = [&](int column, const QString& text) {
        list->setCurrentItem(list->topLevelItem(0), column);
        QTest::keyClick(list, Qt::Key_F2);
        auto* editor = list->viewport()->findChild<QLineEdit*>();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        settle();
    };
    list->setCurrentItem(list->topLevelItem(0), 0);
    QTest::keyClick(list, Qt::Key_F2);
    for (const char* text : {"Evening", "6", "7"}) {
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY2(editor && list->isAncestorOf(editor), text);
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromLatin1(text));
        QTest::keyClick(editor, Qt::Key_Tab);
    }
    QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("6"));
    QCOMPARE(list->currentIndex().siblingAtColumn(0), list->model()->index(1, 0));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    settle();
    for (const char* wrong : {"-1", "4294967296", "1.5", "x", ""}) {
        type(1, QString::fromLatin1(wrong));
        auto* editor = list->viewport()->findChild<QLineEdit*>();
        QVERIFY2(editor || !*wrong, wrong);
        if (editor)
            QTest::keyClick(editor, Qt::Key_Escape);
        settle();
    }
    type(1, QStringLiteral("x"));
    press(dialog, QStringLiteral("OK"));
    QVERIFY2(dialog->isVisible(), "a text that is refused was dropped without a word");
    type(1, QStringLiteral("4294967295"));
    QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("4294967295"));
    press(dialog, QStringLiteral("OK"));
    const Project project = test.store().snapshot();
    QCOMPARE(project.deviceSets.size(), 2);
    QCOMPARE(project.deviceSets.first().text, QStringLiteral("Evening"));
    QCOMPARE(project.deviceSets.first().info.hostAttribute2, 4294967295U);
    QCOMPARE(project.deviceSets.first().info.hostAttribute3, 7U);
    QVERIFY(project.currentDeviceSet == project.deviceSets.last().info.id);
    auto* selector = test.session.layer()->GetWidget()->findChild<QComboBox*>();
    QTRY_COMPARE(selector->count(), 2);
    QCOMPARE(selector->currentText(), QStringLiteral("Set 3"));

    // All of it is one step.
    test.action(ActionId::Undo)->trigger();
    QVERIFY(test.store().snapshot().deviceSets.isEmpty());
    test.action(ActionId::Redo)->trigger();
    QCOMPARE(test.store().snapshot().deviceSets.first().info.hostAttribute3, 7U);
}

void WorkbenchDialogsTest::shouldRefuseNamesAndAddressesThatMakeNoSense()
{
    WorkbenchUnderTest test;
    const Project before = test.store().snapshot();
    test.window.records().select({sampleId(12)});
    DialogDriver dialogs;
    for (const QString& wrong : {QStringLiteral("  "), QString(65, QLatin1Char('x'))}) {
        for (const ActionId id : {ActionId::Rename, ActionId::AddGroup}) {
            QString problem;
            dialogs
                .then([&](QWidget& dialog) {
                    auto* field = dialog.findChild<QLineEdit*>();
                    field->selectAll();
                    QTest::keyClicks(field, wrong);
                    QTest::keyClick(field, Qt::Key_Return);
                })
                .then([&](QWidget& box) {
                    problem = qobject_cast<QMessageBox*>(&box)->text();
                    QTest::keyClick(&box, Qt::Key_Return);
                });
            test.action(id)->trigger();
            QTRY_VERIFY(dialogs.isDone());
            QVERIFY2(problem.startsWith(QStringLiteral("The name")), qPrintable(problem));
        }
    }
    // The same name is no change.
    dialogs.thenEnter();
    test.action(ActionId::Rename)->trigger();
    QTRY_VERIFY(dialogs.isDone());

    test.action(ActionId::AddProcessors)->trigger();
    auto* dialog = openDialog<QDialog>();
    auto* first = dialog->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    for (const char* wrong : {"255.255.255.255", "127.0.0.0", "127.0.0.1", "1.2.3", "left"}) {
        first->selectAll();
        QTest::keyClicks(first, QString::fromLatin1(wrong));
        QTest::keyClick(first, Qt::Key_Return);
        QVERIFY2(dialog->isVisible(), wrong);
    }
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!test.store().isModified());
    QCOMPARE(test.store().snapshot().processors.size(), before.processors.size());
    QCOMPARE(test.store().snapshot().groups.size(), before.groups.size());
    QVERIFY(!test.action(ActionId::Undo)->isEnabled());
}

TSA_TEST_MAIN(WorkbenchDialogsTest)

#include "tst_workbench_dialogs.moc"
