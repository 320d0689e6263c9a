#include "host/workbench/window/RecordsPanel.h"
#include "tests/workbench/WorkbenchUnderTest.h"

#include <QAccessible>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTreeView>
#include <QTreeWidget>

namespace {

/// The fields of one record, edited by mouse and keys.
class FieldsUnderTest final
{
public:
    explicit FieldsUnderTest(WorkbenchUnderTest& test, quint32 record = 0)
        : m_test(test)
        , m_fields(test.window.records().fields())
    {
        test.window.records().select(record == 0 ? QList<QUuid>() : QList<QUuid>{sampleId(record)});
        test.session.trace().clear();
    }

    QTreeWidgetItem* row(const QString& name) const
    {
        return m_fields->findItems(name, Qt::MatchExactly, 0).value(0);
    }

    QString text(const QString& name) const
    {
        const QTreeWidgetItem* item = row(name);
        return item ? item->text(1) : QStringLiteral("no such field");
    }

    /// Opens the editor of a cell with F2; null if there is none.
    QLineEdit* open(const QString& name, int column = 1)
    {
        m_fields->setFocus();
        m_fields->setCurrentItem(row(name), column);
        QTest::keyClick(m_fields, Qt::Key_F2);
        return editor();
    }

    QLineEdit* editor() const
    {
        auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        return field && m_fields->isAncestorOf(field) ? field : nullptr;
    }

    /// Types a value and Enter. Returns why the value is refused.
    QString type(const QString& name, const QString& value, int column = 1)
    {
        m_test.store().endStep();
        QLineEdit* field = open(name, column);
        if (!field)
            return QStringLiteral("no editor");
        field->selectAll();
        QTest::keyClicks(field, value);
        if (value.isEmpty())
            QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClick(field, Qt::Key_Return);
        // The value is stored by a queued call.
        QCoreApplication::processEvents();
        if (!editor())
            return {};
        const QString reason = field->accessibleDescription();
        QTest::keyClick(field, Qt::Key_Escape);
        return reason;
    }

    /// The numbers of the events since the last call.
    QString events()
    {
        m_test.waitForPanel();
        m_test.session.trace().flush();
        static const QRegularExpression raised(QStringLiteral("^(\\d+) \\w+\\("));
        QStringList numbers;
        for (int at = 0; at < m_test.session.trace().rowCount(); ++at) {
            const TraceEntry& entry = m_test.session.trace().entry(at);
            const auto match = raised.match(entry.text);
            if (entry.kind == TraceEntry::Kind::Event && match.hasMatch())
                numbers.append(match.captured(1));
        }
        m_test.session.trace().clear();
        return numbers.join(QLatin1Char(' '));
    }

private:
    WorkbenchUnderTest& m_test;
    QTreeWidget* m_fields;
};

} // namespace

/// Fields of records, edited in place.
class FieldEditingTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldStoreEachField_data();
    void shouldStoreEachField();
    void shouldRefuseAtTheField_data();
    void shouldRefuseAtTheField();
    void shouldLeaveALongTextAsItIs();
    void shouldSaveWhatStandsInAnOpenField();
    void shouldToggleFlags();
    void shouldGoOnWithTab();
    void shouldSkipFlagsWithTab();
    void shouldKeepTheEditorWhileOthersChange();
    void shouldEditGroups();
    void shouldEditTheIpList();

private:
    const TestSettings m_settings;
};

void FieldEditingTest::shouldStoreEachField_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("events");
    QTest::newRow("name") << QStringLiteral("Stage & left") << QStringLiteral("26");
    QTest::newRow("number") << QStringLiteral("-2147483648") << QStringLiteral("25");
    QTest::newRow("groupId") << sampleId(2).toString(QUuid::WithoutBraces)
                             << QStringLiteral("20 18");
    QTest::newRow("hostAttribute8")
        << QStringLiteral("9223372036854775807") << QStringLiteral("25");
    QTest::newRow("hostAttribute10")
        << QStringLiteral("1, 2, 3, 4294967295") << QStringLiteral("25");
    QTest::newRow("hostAttribute12") << QStringLiteral("59.94") << QStringLiteral("25");
    QTest::newRow("hostText14") << QStringLiteral("true") << QStringLiteral("25");
    QTest::newRow("hostAttribute20") << QStringLiteral("4294967295") << QStringLiteral("25");
    QTest::newRow("hostAttribute21") << QStringLiteral("65535") << QStringLiteral("25");
    QTest::newRow("ipAddress") << QStringLiteral("10.0.0.77") << QStringLiteral("25");
    QTest::newRow("secondAddress") << QStringLiteral("10.0.0.78") << QStringLiteral("25");
}

void FieldEditingTest::shouldStoreEachField()
{
    QFETCH(QString, value);
    QFETCH(QString, events);
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    const QString field = QLatin1String(QTest::currentDataTag());
    const QString before = fields.text(field);
    QVERIFY(before != value);
    QCOMPARE(fields.type(field, value), QString());
    QCOMPARE(fields.text(field), value);
    QCOMPARE(fields.events(), events);
    test.action(ActionId::Undo)->trigger();
    QCOMPARE(fields.text(field), before);
    QCOMPARE(fields.events(), events);
    QVERIFY(!test.action(ActionId::Undo)->isEnabled());
}

void FieldEditingTest::shouldRefuseAtTheField_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("reason");
    const auto add = [](const char* field, const QString& value, const char* reason) {
        QTest::addRow("%s %s", field, qPrintable(value.left(20)))
            << QString::fromLatin1(field) << value << QString::fromLatin1(reason);
    };
    add("id", QStringLiteral("1"), "no editor");
    add("name", QStringLiteral(" "), "The name is empty.");
    add("name", QString(65, QLatin1Char('x')), "The name has 65 bytes of at most 64.");
    add("number", QStringLiteral("2147483648"),
        "A whole number from -2147483648 to 2147483647 is expected.");
    add("number", QStringLiteral("1.5"),
        "A whole number from -2147483648 to 2147483647 is expected.");
    add("number", QString(), "A whole number from -2147483648 to 2147483647 is expected.");
    add("groupId", sampleId(99).toString(), "There is no group of this identity.");
    add("groupId", QStringLiteral("G1"),
        "An identity is expected, such as 00000000-0000-0000-0000-000000000000; nothing means "
        "none.");
    add("hostAttribute8", QStringLiteral("9223372036854775808"),
        "A whole number from -9223372036854775808 to 9223372036854775807 is expected.");
    add("hostAttribute10", QStringLiteral("1, 2, 3"),
        "Four whole numbers from 0 to 4294967295 are expected, with commas between them.");
    add("hostAttribute10", QStringLiteral("1, 2, 3, -4"),
        "Four whole numbers from 0 to 4294967295 are expected, with commas between them.");
    add("hostAttribute12", QStringLiteral("1e99"), "A number is expected, such as 59.94.");
    add("hostAttribute12", QStringLiteral("nan"), "A number is expected, such as 59.94.");
    add("hostAttribute21", QStringLiteral("65536"), "A whole number from 0 to 65535 is expected.");
    add("ipAddress", QStringLiteral("10.0.0"),
        "An address is expected, such as 192.168.0.1; 127.0.0.1 means none.");
}

void FieldEditingTest::shouldRefuseAtTheField()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, reason);
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    const QString before = fields.text(field);
    QCOMPARE(fields.type(field, value), reason);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(fields.text(field), before);
    QVERIFY(!test.store().isModified());
}

void FieldEditingTest::shouldLeaveALongTextAsItIs()
{
    WorkbenchUnderTest test;
    const QString text(5000, QLatin1Char('x'));
    test.store().changeProcessor(sampleId(12), [&](ProcessorNode& node) {
        node.hostText14 = text;
        return true;
    });
    FieldsUnderTest fields(test, 12);
    QLineEdit* field = fields.open(QStringLiteral("hostText14"));
    QVERIFY(field);
    QTest::keyClick(field, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(test.processor(12).hostText14, text);
}

void FieldEditingTest::shouldSaveWhatStandsInAnOpenField()
{
    WorkbenchUnderTest test;
    const QString path = m_settings.filePath(QStringLiteral("open-field.json"));
    QString problem;
    QVERIFY2(test.window.files().save(path, problem), qPrintable(problem));
    FieldsUnderTest fields(test, 12);
    QLineEdit* field = fields.open(QStringLiteral("name"));
    QVERIFY(field);
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("Typed"));
    test.action(ActionId::SaveProject)->trigger();
    QCOMPARE(test.processor(12).name, QStringLiteral("Typed"));
    QVERIFY(!test.store().isModified());
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QVERIFY(saved.readAll().contains("\"Typed\""));
}

void FieldEditingTest::shouldToggleFlags()
{
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    QTreeWidget* view = test.window.records().fields();
    const auto pressSpace = [&](const QString& name) {
        view->setFocus();
        view->setCurrentItem(fields.row(name), 1);
        QTest::keyClick(view, Qt::Key_Space);
    };
    pressSpace(QStringLiteral("hostFlag17"));
    QCOMPARE(fields.events(), QStringLiteral("39"));
    QVERIFY(test.processor(12).hostFlag17);
    QCOMPARE(fields.row(QStringLiteral("hostFlag17"))->checkState(1), Qt::Checked);
    pressSpace(QStringLiteral("online"));
    QCOMPARE(fields.events(), QStringLiteral("25"));
    QVERIFY(test.processor(12).online);

    view->scrollTo(view->currentIndex());
    const QRect cell = view->visualRect(view->currentIndex());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(cell.left() + 10, cell.center().y()));
    QVERIFY(!test.processor(12).online);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(cell.right() - 2, cell.center().y()));
    QVERIFY(!test.processor(12).online);
}

void FieldEditingTest::shouldGoOnWithTab()
{
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    QLineEdit* name = fields.open(QStringLiteral("name"));
    QVERIFY(name);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(name);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("name"));
    name->selectAll();
    QTest::keyClicks(name, QStringLiteral("Next"));
    QTest::keyClick(name, Qt::Key_Tab);
    QCOMPARE(test.processor(12).name, QStringLiteral("Next"));
    QLineEdit* number = fields.editor();
    QVERIFY(number && number != name);
    QCOMPARE(number->accessibleName(), QStringLiteral("number"));
    QTest::keyClicks(number, QStringLiteral("x"));
    QTest::keyClick(number, Qt::Key_Tab);
    QCOMPARE(fields.editor(), number);
    // The field takes back its own text, not a step of the project.
    QTest::keyClick(number, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(test.processor(12).name, QStringLiteral("Next"));
    QTest::keyClick(number, Qt::Key_Escape);
    QTest::keyClick(test.window.records().fields(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(test.processor(12).name, QStringLiteral("P12"));
}

/// A flag, hostFlag17, stands between the two fields.
void FieldEditingTest::shouldSkipFlagsWithTab()
{
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    QLineEdit* field = fields.open(QStringLiteral("hostAttribute16"));
    QVERIFY(field);
    QTest::keyClick(field, Qt::Key_Tab);
    QVERIFY(fields.editor());
    QCOMPARE(fields.editor()->accessibleName(), QStringLiteral("hostAttribute18"));
    QTest::keyClick(fields.editor(), Qt::Key_Backtab);
    QVERIFY(fields.editor());
    QCOMPARE(fields.editor()->accessibleName(), QStringLiteral("hostAttribute16"));
}

void FieldEditingTest::shouldKeepTheEditorWhileOthersChange()
{
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 12);
    QLineEdit* editor = fields.open(QStringLiteral("name"));
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("typed"));
    test.store().setOnline({sampleId(12), sampleId(13)}, true);
    QCOMPARE(fields.editor(), editor);
    QCOMPARE(editor->text(), QStringLiteral("typed"));
    QCOMPARE(fields.text(QStringLiteral("online")), QStringLiteral("true"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(test.processor(12).name, QStringLiteral("typed"));
    // The record goes while its field is edited.
    editor = fields.open(QStringLiteral("name"));
    QVERIFY(editor);
    test.store().removeProcessors({sampleId(12)});
    QTRY_VERIFY(!fields.editor());
    QVERIFY(!test.store().snapshot().processor(sampleId(12)));
}

void FieldEditingTest::shouldEditGroups()
{
    WorkbenchUnderTest test;
    FieldsUnderTest fields(test, 1);
    QCOMPARE(fields.type(QStringLiteral("name"), QStringLiteral("Wall")), QString());
    QCOMPARE(fields.events(), QStringLiteral("16 30"));
    QTRY_COMPARE(test.panelTree(), QStringLiteral("All processors(4)[Wall[P11,P12],G2[P13],P14]"));
    QCOMPARE(fields.type(QStringLiteral("hostAttribute3"), QStringLiteral("7")), QString());
    QCOMPARE(test.store().snapshot().groups.first().hostAttribute3, 7);
    QCOMPARE(fields.type(QStringLiteral("processors"), QStringLiteral("7")),
             QStringLiteral("no editor"));
    QCOMPARE(fields.type(QStringLiteral("id"), QStringLiteral("7")), QStringLiteral("no editor"));
}

void FieldEditingTest::shouldEditTheIpList()
{
    WorkbenchUnderTest test;
    const auto handler = test.handler();
    handler->AddIPAddress(QStringLiteral("10.0.0.8"), QStringLiteral("eight"));
    handler->AddIPAddress(QStringLiteral("10.0.0.9"), QString());
    FieldsUnderTest fields(test);
    QCOMPARE(fields.type(QStringLiteral("10.0.0.9"), QStringLiteral("nine")), QString());
    QCOMPARE(fields.text(QStringLiteral("10.0.0.9")), QStringLiteral("nine"));
    QCOMPARE(fields.type(QStringLiteral("10.0.0.8"), QStringLiteral("10.0.0.9"), 0),
             QStringLiteral("The list has this address already."));
    QCOMPARE(fields.type(QStringLiteral("10.0.0.8"), QStringLiteral("10.0.0.7"), 0), QString());
    QCOMPARE(fields.text(QStringLiteral("10.0.0.7")), QStringLiteral("eight"));
    test.action(ActionId::Undo)->trigger();
    QCOMPARE(fields.text(QStringLiteral("10.0.0.8")), QStringLiteral("eight"));

    // Tab leads from cell to cell, then to the next row, and back with Shift.
    QTreeWidget* view = test.window.records().fields();
    const auto place = [&] {
        const QModelIndex at = view->currentIndex();
        return QStringLiteral("%1 %2 %3")
            .arg(at.row())
            .arg(at.column())
            .arg(fields.editor() ? fields.editor()->text() : QStringLiteral("no editor"));
    };
    fields.open(QStringLiteral("10.0.0.8"), 0);
    QTest::keyClick(fields.editor(), Qt::Key_Tab);
    QCOMPARE(place(), QStringLiteral("0 1 eight"));
    QTest::keyClicks(fields.editor(), QStringLiteral("acht"));
    QTest::keyClick(fields.editor(), Qt::Key_Tab);
    QCOMPARE(place(), QStringLiteral("1 0 10.0.0.9"));
    QCOMPARE(fields.text(QStringLiteral("10.0.0.8")), QStringLiteral("acht"));
    QTest::keyClick(fields.editor(), Qt::Key_Backtab);
    QCOMPARE(place(), QStringLiteral("0 1 acht"));
    fields.open(QStringLiteral("10.0.0.9"), 1);
    QTest::keyClick(fields.editor(), Qt::Key_Tab);
    QCOMPARE(place(), QStringLiteral("1 1 no editor"));
}

TSA_TEST_MAIN(FieldEditingTest)

#include "tst_field_editing.moc"
