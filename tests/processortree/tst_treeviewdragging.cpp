#include "plugin/TargetSelectData.h"
#include "tests/processortree/WholeTree.h"

#include <QApplication>
#include <QDrag>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QProcess>
#include <QTimer>

#include <deque>
#include <functional>

namespace {

QString at(const QPoint& place)
{
    return QStringLiteral("%1 %2").arg(place.x()).arg(place.y());
}

/// Records the mouse and drag events that reach the tree.
class Watch final : public QObject
{
public:
    explicit Watch(const WholeTree& tree)
        : m_view(tree.view)
    {
        tree.viewport()->installEventFilter(this);
    }

    bool isDragging() const { return m_view && m_view->findChild<QDrag*>() != nullptr; }
    bool isOver() const { return !isDragging() && QApplication::mouseButtons() == Qt::NoButton; }
    void forget() { lastPosition = {-1, -1}; }

    QPoint lastPosition{-1, -1};
    bool pressed = false;
    bool dragged = false;
    bool accepted = false; // by the last move of the drag
    int drops = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            pressed = true;
            break;
        case QEvent::MouseMove:
            lastPosition = static_cast<QMouseEvent*>(event)->pos();
            break;
        case QEvent::DragEnter:
            dragged = true;
            break;
        case QEvent::DragMove:
            lastPosition = static_cast<QDragMoveEvent*>(event)->pos();
            break;
        case QEvent::Drop:
            ++drops;
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QPointer<CProcessorTreeView> m_view;
};

/// Uses mouse and keys as a user does: through the display and its window manager. A drag keeps
/// whoever made the move waiting until it is over, so the steps run by a timer.
class User final
{
public:
    explicit User(WholeTree& tree)
        : watch(tree)
        , m_tree(tree)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { advance(); });
    }

    /// Has xdotool run `commands`, then waits until `done`.
    User& then(const QString& commands, std::function<bool()> done)
    {
        m_steps.push_back({commands, std::move(done)});
        return *this;
    }

    /// Presses the mouse at `from` and moves it until it is at `to`.
    User& pull(const QPoint& from, const QPoint& to, bool isDrag = true)
    {
        const QPoint start = global(from);
        then(QStringLiteral("mousemove ") + at(start) + QStringLiteral(" mousedown 1"),
             [this] { return watch.pressed; });
        // The first move makes the view ready for a drag, the next one starts it.
        for (const QPoint& step : {QPoint(4, 4), QPoint(8, 8)}) {
            then(QStringLiteral("mousemove ") + at(start + step),
                 [this, from, step] { return watch.lastPosition == from + step; });
        }
        if (isDrag)
            then(QString(), [this] { return watch.isDragging(); });
        return moveTo(to);
    }

    User& moveTo(const QPoint& to)
    {
        const QPoint end = global(to);
        return then(
            QStringLiteral("mousemove %1 mousemove %2").arg(at(end + QPoint(3, 0)), at(end)),
            [this, to] { return watch.lastPosition == to; });
    }

    User& letGo()
    {
        return then(QStringLiteral("mouseup 1"), [this] { return watch.isOver(); });
    }

    User& call(const std::function<void()>& action)
    {
        return then(QString(), [action] {
            action();
            return true;
        });
    }

    /// Whether all steps ran to their end in time.
    bool run()
    {
        m_timer.start(2);
        const bool all = QTest::qWaitFor([this] { return m_steps.empty(); }, 40000);
        m_timer.stop();
        m_process.waitForFinished();
        return all && m_worked;
    }

    Watch watch;

private:
    struct Step
    {
        QString commands;
        std::function<bool()> done;
    };

    QPoint global(const QPoint& place) const { return m_tree.viewport()->mapToGlobal(place); }

    void advance()
    {
        if (m_steps.empty() || m_process.state() != QProcess::NotRunning)
            return;
        if (!m_started) {
            m_started = true;
            m_elapsed.start();
            if (!m_steps.front().commands.isEmpty()) {
                m_process.start(QStringLiteral("xdotool"),
                                m_steps.front().commands.split(QLatin1Char(' ')));
                return;
            }
        }
        m_worked = m_worked && m_process.exitCode() == 0;
        if (m_steps.front().done()) {
            m_steps.pop_front();
            m_started = false;
        } else if (m_elapsed.hasExpired(6000)) {
            qWarning("no effect of: %s", qPrintable(m_steps.front().commands));
            giveUp();
        }
    }

    /// Releases the mouse buttons and keys, so that no test waits for ever.
    void giveUp()
    {
        m_worked = false;
        m_steps.clear();
        m_started = false;
        m_process.start(
            QStringLiteral("xdotool"),
            QStringLiteral("key Escape mouseup 1 keyup shift keyup ctrl").split(QLatin1Char(' ')));
    }

    WholeTree& m_tree;
    std::deque<Step> m_steps;
    QTimer m_timer;
    QProcess m_process;
    QElapsedTimer m_elapsed;
    bool m_started = false;
    bool m_worked = true;
};

/// The tree on a real display, where it can be dragged.
struct DraggedTree : WholeTree
{
    DraggedTree()
        : WholeTree(Qt::FramelessWindowHint)
    {
    }

    /// Whether the display has the window where Qt believes that it is, with the keyboard.
    bool isReady()
    {
        return QTest::qWaitForWindowActive(view, 30000)
               && QTest::qWaitFor([this] { return isPlaced(); }, 30000);
    }

    /// Moves the view into a window of the host's; whether that is ready then.
    bool isReadyWithin(QWidget& window)
    {
        if (!isReady())
            return false;
        window.setWindowFlags(Qt::FramelessWindowHint);
        window.setGeometry(view->geometry());
        view->setParent(&window);
        view->move(0, 0);
        view->show();
        window.show();
        return QTest::qWaitForWindowActive(&window, 30000);
    }

    QString dump() { return panel.dump(); }

private:
    bool isPlaced()
    {
        QProcess process;
        process.start(QStringLiteral("xdotool"),
                      {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"),
                       QString::number(view->winId())});
        if (!process.waitForFinished())
            return false;
        const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
        const QPoint place = view->geometry().topLeft();
        return lines.contains("X=" + QByteArray::number(place.x()))
               && lines.contains("Y=" + QByteArray::number(place.y()));
    }
};

} // namespace

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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
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
    User user(tree);
    tree.select({1, 3});
    user.pull(tree.place(1), tree.place(11));
    user.then(QStringLiteral("mousemove ") + at(taker.mapToGlobal({100, 50}))
                  + QStringLiteral(" mousemove ") + at(taker.mapToGlobal({110, 60})),
              [&] { return taker.over; });
    QVERIFY(user.letGo().run());
    QVERIFY(taker.taken);
    QCOMPARE(tree.dump(), kUntouched);
    QCOMPARE(tree.moves(), QString());
}

TSA_TEST_MAIN(TreeViewDraggingTest)
#include "tst_treeviewdragging.moc"
