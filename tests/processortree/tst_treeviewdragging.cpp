#include "plugin/TargetSelectData.h"
#include "tests/processortree/DraggedTree.h"

#include <QDrag>
#include <QImage>
#include <QPixmap>

class TreeViewDraggingTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shouldMoveProcessors_data();
    void shouldMoveProcessors();
    void shouldMoveWhatWasDragged_data();
    void shouldMoveWhatWasDragged();
    void shouldDropNothingInRestrictedMode();
    void shouldKeepRowsWhenRestrictedAtTheDrop();
    void shouldMoveNothingThatIsForbidden_data();
    void shouldMoveNothingThatIsForbidden();
    void shouldEndByEscape();
    void shouldShowTheDraggedRowsTranslucent();
    void shouldNotDrag_data();
    void shouldNotDrag();
    void shouldStandAResetWhileDragging();
    void shouldStandAHostThatTakesTheViewAway();
    void shouldStandTheEndOfTheViewMeanwhile_data();
    void shouldStandTheEndOfTheViewMeanwhile();
    void shouldKeepRowsThatAnotherWidgetTakes();
};

void TreeViewDraggingTest::cleanup()
{
    CTargetSelectData::Instance()->SetReadOnly(false);
}

void TreeViewDraggingTest::shouldMoveProcessors_data()
{
    QTest::addColumn<QList<quint32>>("dragged");
    QTest::addColumn<int>("onto"); // -1 below all rows
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("moves");
    QTest::addColumn<QString>("selected");
    const auto row = [](const char* name, const QList<quint32>& dragged, int onto,
                        const QString& tree, const char* moves, const char* selected) {
        QTest::newRow(name) << dragged << onto << tree << QString::fromLatin1(moves)
                            << QString::fromLatin1(selected);
    };
    row("into another group", {1}, 11, QStringLiteral("All processors(4)[G10[2],G11[1],3,4]"),
        "1>11", "1");
    row("several", {1, 4}, 11, QStringLiteral("All processors(4)[G10[2],G11[1,4],3]"), "1,4>11",
        "1,4");
    row("a whole group", {2, 1}, 11, QStringLiteral("All processors(4)[G10[],G11[2,1],3,4]"),
        "2,1>11", "2,1");
    row("onto one in a group", {4}, 2, QStringLiteral("All processors(4)[G10[1,2,4],G11[],3]"),
        "4>10", "4");
    row("onto one outside", {1}, 4, kUntouched, "", "1");
    row("onto the root", {2}, 0, QStringLiteral("All processors(4)[G10[1],G11[],3,4,2]"), "2>0",
        "2");
    row("below all rows", {1, 2}, -1, QStringLiteral("All processors(4)[G10[],G11[],3,4,1,2]"),
        "1,2>0", "1,2");
    row("onto the own group", {1}, 10, kUntouched, "", "1");
    row("from two parents", {3, 1}, 10, QStringLiteral("All processors(4)[G10[1,2,3],G11[],4]"),
        "3>10", "1,3");
}

void TreeViewDraggingTest::shouldMoveProcessors()
{
    QFETCH(QList<quint32>, dragged);
    QFETCH(int, onto);
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select(dragged);
    tree.host().selections.clear();
    const QPoint to = onto < 0 ? tree.nowhere() : tree.place(static_cast<quint32>(onto));
    QVERIFY(user.pull(tree.place(dragged.first()), to).letGo().run());

    QCOMPARE(user.watch.drops, onto == 4 ? 0 : 1); // refused over that one
    QTEST(tree.dump(), "tree");
    QTEST(tree.moves(), "moves");
    QTEST(tree.selected(), "selected");
    QCOMPARE(tree.view->currentIndex(), tree.index(dragged.first()));
    QVERIFY(tree.host().selections.isEmpty()); // it has not changed
}

void TreeViewDraggingTest::shouldMoveWhatWasDragged_data()
{
    QTest::addColumn<int>("change"); // that the host makes meanwhile
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("moves");
    QTest::newRow("another selection")
        << 0 << QStringLiteral("All processors(4)[G10[2],G11[1,3],4]") << QStringLiteral("1,3>11");
    QTest::newRow("one moved") << 1 << QStringLiteral("All processors(4)[G10[2],G11[1,3],4]")
                               << QStringLiteral("1,3>11");
    QTest::newRow("one removed") << 2 << QStringLiteral("All processors(3)[G10[2],G11[3],4]")
                                 << QStringLiteral("3>11");
    QTest::newRow("all told anew")
        << 3 << QStringLiteral("All processors(4)[G10[2],G11[1,3],4]") << QStringLiteral("1,3>11");
}

void TreeViewDraggingTest::shouldMoveWhatWasDragged()
{
    QFETCH(int, change);
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select({1, 3});
    const QPoint to = tree.place(11);
    user.pull(tree.place(1), to);
    user.call([&] {
        if (change == 0) {
            tree.select({4});
        } else if (change == 1) {
            tree.host().setProcessor(testIpProcessor(1, 0x0A000001, 10));
            tree.panel.notify<QUuid>(25, testId(1));
        } else if (change == 2) {
            tree.host().removeProcessor(testId(1));
            tree.panel.notify<QUuid>(20, testId(1));
        } else {
            tree.panel.notify(16);
            tree.view->expandAll();
        }
    });
    user.moveTo(change == 2 ? to - QPoint(0, 42) : to); // a row less above
    QVERIFY(user.letGo().run());
    QTEST(tree.dump(), "tree");
    QTEST(tree.moves(), "moves");
}

void TreeViewDraggingTest::shouldDropNothingInRestrictedMode()
{
    DraggedTree tree;
    QVERIFY(tree.isReady());
    tree.host().restrictedMode = true;
    DragUser user(tree);
    tree.select({1});
    QVERIFY(user.pull(tree.place(1), tree.place(11)).letGo().run());
    QVERIFY(user.watch.dragged);
    QCOMPARE(user.watch.drops, 0);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

/// The last that the drag knew was that it may be dropped.
void TreeViewDraggingTest::shouldKeepRowsWhenRestrictedAtTheDrop()
{
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select({1});
    user.pull(tree.place(1), tree.place(11));
    user.call([&] { tree.host().restrictedMode = true; });
    QVERIFY(user.letGo().run());
    QCOMPARE(user.watch.drops, 1);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

void TreeViewDraggingTest::shouldMoveNothingThatIsForbidden_data()
{
    QTest::addColumn<bool>("byLock"); // else read-only
    QTest::addColumn<int>("when");    // 0 before the drag, 1 during it, 2 right before the drop
    const char* const moments[] = {"before", "meanwhile", "at the drop"};
    for (const bool byLock : {false, true}) {
        for (int when = 0; when < 3; ++when)
            QTest::addRow("%s, %s", byLock ? "lock" : "read-only", moments[when]) << byLock << when;
    }
}

void TreeViewDraggingTest::shouldMoveNothingThatIsForbidden()
{
    QFETCH(bool, byLock);
    QFETCH(int, when);
    DraggedTree tree;
    QVERIFY(tree.isReady());
    const auto forbid = [&] {
        if (byLock)
            tree.view->SetLocked(true);
        else
            tree.panel.data().SetReadOnly(true);
    };
    DragUser user(tree);
    tree.select({1});
    if (when == 0)
        forbid();
    user.pull(tree.place(1), tree.place(10), when > 0);
    if (when == 1)
        user.call(forbid);
    user.moveTo(tree.place(11));
    if (when == 2)
        user.call(forbid);
    QVERIFY(user.letGo().run());
    QCOMPARE(user.watch.dragged, when > 0);
    QCOMPARE(user.watch.drops, when == 2 ? 1 : 0);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

void TreeViewDraggingTest::shouldEndByEscape()
{
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select({1});
    user.pull(tree.place(1), tree.place(11));
    user.then(QStringLiteral("key Escape"), [&] { return !user.watch.isDragging(); });
    QVERIFY(user.letGo().run());
    QCOMPARE(user.watch.drops, 0);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
    QCOMPARE(tree.selected(), QStringLiteral("1"));
}

/// Without those between them, and without the button of selected rows.
void TreeViewDraggingTest::shouldShowTheDraggedRowsTranslucent()
{
    DraggedTree tree;
    QVERIFY(tree.isReady());
    tree.host().showProcessorMoreButton = true;
    DragUser user(tree);
    tree.select({1, 3});
    const QRect first = tree.view->visualRect(tree.index(1));
    const QRect between = tree.view->visualRect(tree.index(2)).translated(0, -first.top());
    QImage picture;
    user.pull(tree.place(1), tree.place(11));
    user.call([&] { picture = tree.view->findChild<QDrag*>()->pixmap().toImage(); });
    user.then(QStringLiteral("key Escape"), [&] { return !user.watch.isDragging(); });
    QVERIFY(user.letGo().run());

    const QSize seen = picture.size() / picture.devicePixelRatio();
    const QRect last = tree.view->visualRect(tree.index(3));
    QCOMPARE(seen.height(), last.bottom() + 1 - first.top());
    int most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int alpha = qAlpha(picture.pixel(x, y));
            most = qMax(most, alpha);
            if (between.top() <= y && y <= between.bottom())
                QCOMPARE(alpha, 0);
        }
    }
    QCOMPARE(most, 178);
    // The background of a selected row is the same everywhere around the place of the button.
    const QRect button(first.right() + 1 - 40, (first.height() - 20) / 2, 20, 20);
    for (int y = button.top(); y <= button.bottom(); ++y) {
        for (int x = button.left(); x <= button.right(); ++x)
            QCOMPARE(picture.pixel(x, y), picture.pixel(button.topLeft()));
    }
    QCOMPARE(qAlpha(picture.pixel(button.topLeft())), 178);
}

void TreeViewDraggingTest::shouldNotDrag_data()
{
    QTest::addColumn<QList<quint32>>("selected");
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("key");
    QTest::newRow("a group") << QList<quint32>{} << 10 << QString();
    QTest::newRow("the root") << QList<quint32>{} << 0 << QString();
    QTest::newRow("with Shift") << QList<quint32>{3} << 3 << QStringLiteral("shift");
    QTest::newRow("with Ctrl") << QList<quint32>{3} << 3 << QStringLiteral("ctrl");
}

void TreeViewDraggingTest::shouldNotDrag()
{
    QFETCH(QList<quint32>, selected);
    QFETCH(int, from);
    QFETCH(QString, key);
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select(selected);
    if (!key.isEmpty())
        user.then(QStringLiteral("keydown ") + key,
                  [] { return QApplication::queryKeyboardModifiers() != Qt::NoModifier; });
    user.pull(tree.place(static_cast<quint32>(from)), tree.place(4), false).letGo();
    if (!key.isEmpty())
        user.then(QStringLiteral("keyup ") + key,
                  [] { return QApplication::queryKeyboardModifiers() == Qt::NoModifier; });
    QVERIFY(user.run());
    QVERIFY(!user.watch.dragged);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

void TreeViewDraggingTest::shouldStandAResetWhileDragging()
{
    DraggedTree tree;
    QVERIFY(tree.isReady());
    DragUser user(tree);
    tree.select({1});
    const QPoint to = tree.place(11);
    user.pull(tree.place(1), to);
    user.call([&] {
        tree.host().setProject({}, {testProcessor(7)});
        tree.panel.notify(16);
    });
    QVERIFY(user.letGo().run());
    QCOMPARE(tree.dump(), QStringLiteral("All processors(1)[7]"));
    QCOMPARE(tree.moves(), QString());
    QCOMPARE(tree.selected(), QString());
}

void TreeViewDraggingTest::shouldStandAHostThatTakesTheViewAway()
{
    QWidget window;
    DraggedTree tree;
    QVERIFY(tree.isReadyWithin(window));
    DragUser user(tree);
    tree.select({1});
    tree.host().inside = [&](const QString& name) {
        if (name == QLatin1String("SetProcessorGroup"))
            delete tree.view;
    };
    user.pull(tree.place(1), tree.place(11));
    QVERIFY(user.letGo().run());
    QCOMPARE(tree.moves(), QStringLiteral("1>11"));
    QVERIFY(!tree.view);
    tree.host().inside = nullptr;
}

void TreeViewDraggingTest::shouldStandTheEndOfTheViewMeanwhile_data()
{
    QTest::addColumn<QString>("question");
    QTest::newRow("in an event") << QString();
    QTest::newRow("in a question") << QStringLiteral("IsRestrictedMode");
}

void TreeViewDraggingTest::shouldStandTheEndOfTheViewMeanwhile()
{
    QFETCH(QString, question);
    QWidget window;
    DraggedTree tree;
    QVERIFY(tree.isReadyWithin(window));
    DragUser user(tree);
    tree.select({1});
    user.pull(tree.place(1), tree.place(11));
    if (question.isEmpty()) {
        user.call([&] { delete tree.view; });
    } else {
        user.call([&] {
            tree.host().inside = [&](const QString& name) {
                if (name == question && tree.view->parent())
                    tree.view->outlivePanel();
            };
        });
        user.then(QStringLiteral("mousemove_relative 0 2"), [&] { return !tree.view; });
    }
    QVERIFY(user.letGo().run());
    QVERIFY(!tree.view);
    QCOMPARE(tree.moves(), QString());
    tree.host().inside = nullptr;
}

/// Which says that it moved them, as a list of the host's may.
void TreeViewDraggingTest::shouldKeepRowsThatAnotherWidgetTakes()
{
    class Taker final : public QWidget
    {
    public:
        bool taken = false;

    protected:
        void dragEnterEvent(QDragEnterEvent* event) override { take(event); }
        void dragMoveEvent(QDragMoveEvent* event) override
        {
            over = true;
            take(event);
        }
        void dropEvent(QDropEvent* event) override
        {
            taken = true;
            take(event);
        }

    private:
        static void take(QDropEvent* event)
        {
            event->setDropAction(Qt::MoveAction);
            event->accept();
        }

    public:
        bool over = false;
    };

    DraggedTree tree;
    QVERIFY(tree.isReady());
    Taker taker;
    taker.setParent(tree.view);
    taker.setAcceptDrops(true);
    taker.setGeometry(0, 300, 300, 120);
    taker.show();
    DragUser user(tree);
    tree.select({1, 3});
    user.pull(tree.place(1), tree.place(11));
    user.then(QStringLiteral("mousemove ") + xdotoolPlace(taker.mapToGlobal({100, 50}))
                  + QStringLiteral(" mousemove ") + xdotoolPlace(taker.mapToGlobal({110, 60})),
              [&] { return taker.over; });
    QVERIFY(user.letGo().run());
    QVERIFY(taker.taken);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

TSA_TEST_MAIN(TreeViewDraggingTest)
#include "tst_treeviewdragging.moc"
