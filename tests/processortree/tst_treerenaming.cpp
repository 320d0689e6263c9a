#include "tests/processortree/ShownTree.h"
#include "tests/support/NestedLoop.h"

#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>

#include <algorithm>
#include <memory>

namespace {

/// An editor that is open on row `n`.
QLineEdit* edit(ShownTree& tree, quint32 n)
{
    tree.click(tree.row(n).center());
    tree.view.setCurrentIndex(tree.index(n));
    tree.view.edit(tree.index(n));
    return tree.viewport()->findChild<QLineEdit*>();
}

/// Presses a key that ends editing, and waits for the queued end.
void pressKey(QLineEdit* editor, Qt::Key key)
{
    const QPointer<QLineEdit> open(editor);
    QTest::keyClick(editor, key);
    QTRY_VERIFY(!open);
}

} // namespace

/// The editors of names in the tree.
class TestTreeRenaming final : public QObject
{
    Q_OBJECT

private slots:
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
};

void TestTreeRenaming::shouldPlaceEditors()
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

void TestTreeRenaming::shouldEditOnlyNames()
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

void TestTreeRenaming::shouldRenameProcessors()
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

void TestTreeRenaming::shouldRenameGroups()
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

void TestTreeRenaming::shouldKeepTheNameOnEscape()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("Other"));
    pressKey(editor, Qt::Key_Escape);
    QCOMPARE(tree.host().callCount(QStringLiteral("RenameProcessor")), 0);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
}

void TestTreeRenaming::shouldKeepTheNameForBlanks()
{
    ShownTree tree;
    QLineEdit* editor = edit(tree, 3);
    QTest::keyClicks(editor, QStringLiteral("   "));
    pressKey(editor, Qt::Key_Enter);
    QCOMPARE(tree.index(3).data().toString(), QStringLiteral("3"));
    QCOMPARE(tree.index(3).data(NodeDataRole).value<ProcessorNode>().name, QStringLiteral("3"));
}

void TestTreeRenaming::shouldKeepTheNameWhenRefused()
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

void TestTreeRenaming::shouldTrimNames()
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

void TestTreeRenaming::shouldLimitNames()
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

void TestTreeRenaming::shouldLeaveTheHostsNameAlone()
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

void TestTreeRenaming::shouldStandAHostThatChangesTheTreeWhenRenaming_data()
{
    QTest::addColumn<int>("change");
    QTest::addColumn<bool>("nestedLoop");
    QTest::addColumn<QString>("question");
    const char* const changes[] = {"removes the row", "fills the tree anew",
                                   "removes the row's group", "empties the tree"};
    for (const char* const question : {"RenameProcessor", "GetNameMaxBytes"}) {
        for (int change = 0; change < 4; ++change) {
            QTest::addRow("%s in %s", changes[change], question)
                << change << false << QString::fromLatin1(question);
            QTest::addRow("%s in an event loop in %s", changes[change], question)
                << change << true << QString::fromLatin1(question);
        }
    }
}

void TestTreeRenaming::shouldStandAHostThatChangesTheTreeWhenRenaming()
{
    QFETCH(const int, change);
    QFETCH(const bool, nestedLoop);
    QFETCH(const QString, question);
    ShownTree tree;
    const QPointer<QLineEdit> editor = edit(tree, 1);
    QVERIFY(editor);
    bool wasAsked = false;
    tree.host().inside = [&](const QString& name) {
        if (name != question || wasAsked)
            return;
        wasAsked = true;
        runWithin(nestedLoop, [&] {
            if (change == 0)
                tree.model().removeNode(testId(1));
            else if (change == 1)
                tree.model().reset();
            else if (change == 2)
                tree.model().removeNode(testId(10));
            else
                tree.model().clearToRoot();
        });
    };
    QTest::keyClick(editor, 'x');
    if (editor && question == QLatin1String("RenameProcessor"))
        QTest::keyClick(editor, Qt::Key_Enter);
    QTRY_VERIFY(!editor);
    QVERIFY(wasAsked);
    tree.host().inside = nullptr;
    QCOMPARE(tree.index(1).isValid(), change == 1 || change == 2);
}

void TestTreeRenaming::shouldStandAResetWhileEditing()
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

TSA_TEST_MAIN(TestTreeRenaming)

#include "tst_treerenaming.moc"
