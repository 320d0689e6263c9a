// The host destroys the panel inside a question, at every step that the user can take.

#include "host/widgets/MenuToolButton.h"
#include "host/widgets/PureImageBtn.h"
#include "plugin/TargetSelectArea.h"
#include "processortree/model/ProcessorTreeModel.h"
#include "processortree/view/ProcessorTreeView.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/NestedLoop.h"
#include "tests/support/TestPanel.h"
#include "tests/support/WarningTrap.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QStandardItem>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>

namespace {
/// Closes every menu and dialog as soon as it is shown.
class Closer final : public QObject
{
public:
    Closer() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show
            && (qobject_cast<QMenu*>(watched) || qobject_cast<QDialog*>(watched)))
            QMetaObject::invokeMethod(watched, "close", Qt::QueuedConnection);
        return false;
    }
};

/// Destroys the panel as soon as one of its menus or dialogs is shown.
class Ender final : public QObject
{
public:
    explicit Ender(bool nested)
        : m_nested(nested)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show
            && (qobject_cast<QMenu*>(watched) || qobject_cast<QDialog*>(watched))) {
            const auto end = [] { delete CTargetSelectArea::Existing(); };
            QMetaObject::invokeMethod(
                qApp, [this, end] { runWithin(m_nested, end); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool m_nested;
};

/// The shown panel of the process over two groups with two processors each, the first one current.
struct ShownTree
{
    ShownTree()
    {
        panel.host().showProcessorMoreButton = true;
        panel.host().showNodeMoreButton = true;
        panel.host().canRename = true;
        panel.host().canAdd = panel.host().addEnabled = true;
        panel.host().setProject({testGroup(10), testGroup(11)},
                                {testProcessor(1, 10), testProcessor(2, 10), testProcessor(3, 11),
                                 testProcessor(4, 11)});
        panel.notify(16);
        view = panel.area().findChild<CProcessorTreeView*>();
        panel.area().resize(220, 700);
        panel.area().show();
        panel.area().activateWindow();
        view->setFocus();
        if (!QTest::qWaitForWindowActive(&panel.area()))
            QTest::qFail("the panel is not active", __FILE__, __LINE__);
        view->selectionModel()->setCurrentIndex(index(1), QItemSelectionModel::ClearAndSelect);
        QTest::mouseMove(view->viewport(), place(1));
        panel.host().clearCalls();
    }

    QModelIndex index(quint32 n) { return panel.model().getItem(testId(n))->index(); }

    QPoint place(quint32 n)
    {
        const QRect row = view->visualRect(index(n));
        return {row.left() + 60, row.center().y()};
    }

    QWidget* viewport() const { return view ? view->viewport() : nullptr; }

    template <typename Button>
    Button* button()
    {
        return panel.area().findChild<Button*>();
    }

    TestPanel panel;
    QPointer<CProcessorTreeView> view;
};

using Gesture = std::function<void(ShownTree&)>;

void send(QWidget* widget, QEvent&& event)
{
    if (widget)
        QApplication::sendEvent(widget, &event);
}

void pressKey(ShownTree& tree, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    if (tree.view)
        QTest::keyClick(tree.view.data(), key, modifiers);
}

void openMenu(ShownTree& tree, quint32 n)
{
    const QPoint place = tree.place(n);
    QTest::mousePress(tree.viewport(), Qt::RightButton, Qt::NoModifier, place);
    if (tree.view)
        send(tree.viewport(), QContextMenuEvent(QContextMenuEvent::Mouse, place,
                                                tree.viewport()->mapToGlobal(place)));
}

void typeAName(ShownTree& tree)
{
    pressKey(tree, Qt::Key_F2);
    const QPointer<QLineEdit> editor =
        tree.view ? tree.viewport()->findChild<QLineEdit*>() : nullptr;
    if (editor)
        QTest::keyClicks(editor, QStringLiteral("Ab"));
    if (editor && tree.view)
        QTest::keyClick(editor, Qt::Key_Return);
}

void drop(ShownTree& tree)
{
    const std::unique_ptr<QMimeData> data(tree.panel.model().mimeData({tree.index(1)}));
    const QPoint place = tree.place(11);
    send(tree.viewport(),
         QDragEnterEvent(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier));
    send(tree.viewport(),
         QDragMoveEvent(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier));
    send(tree.viewport(),
         QDropEvent(place, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier));
}

void clickMore(ShownTree& tree)
{
    const QRect row = tree.view->visualRect(tree.index(1));
    const QPoint more(row.left() + row.width() - 30, row.center().y());
    QTest::mouseMove(tree.viewport(), more);
    if (tree.view)
        QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::NoModifier, more);
    if (tree.view)
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, more);
    QCoreApplication::processEvents();
}

} // namespace

Q_DECLARE_METATYPE(Gesture)

class PanelEndTest final : public QObject
{
    Q_OBJECT

private slots:
    void shouldStandItInEveryQuestion_data();
    void shouldStandItInEveryQuestion();
    void shouldStandItUnderWhatItOpened_data();
    void shouldStandItUnderWhatItOpened();
    void shouldStandItInAnEntryOfTheHosts_data();
    void shouldStandItInAnEntryOfTheHosts();
    void shouldLeaveNothingBehindThatReports();
};

void PanelEndTest::shouldStandItInEveryQuestion_data()
{
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<bool>("nested");
    const auto add = [](const char* name, const Gesture& gesture) {
        QTest::addRow("%s", name) << gesture << false;
        QTest::addRow("%s, nested loop", name) << gesture << true;
    };
    add("click", [](ShownTree& tree) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(3));
    });
    add("click on a group", [](ShownTree& tree) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(11));
    });
    add("double click", [](ShownTree& tree) {
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(3));
    });
    add("control click", [](ShownTree& tree) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ControlModifier, tree.place(3));
    });
    add("menu", [](ShownTree& tree) { openMenu(tree, 1); });
    add("menu of another row", [](ShownTree& tree) { openMenu(tree, 3); });
    add("menu by key", [](ShownTree& tree) { pressKey(tree, Qt::Key_F10, Qt::ShiftModifier); });
    add("down", [](ShownTree& tree) { pressKey(tree, Qt::Key_Down); });
    add("home", [](ShownTree& tree) { pressKey(tree, Qt::Key_Home); });
    add("all", [](ShownTree& tree) { pressKey(tree, Qt::Key_A, Qt::ControlModifier); });
    add("delete", [](ShownTree& tree) { pressKey(tree, Qt::Key_Delete); });
    add("rename", typeAName);
    add("drop", drop);
    add("more", clickMore);
}

void PanelEndTest::shouldStandItInEveryQuestion()
{
    QFETCH(Gesture, gesture);
    QFETCH(bool, nested);
    const Closer closer;
    QStringList questions;
    {
        ShownTree tree;
        gesture(tree);
        questions = tree.panel.host().callNames();
    }
    questions.removeDuplicates();
    QVERIFY(!questions.isEmpty());
    int ends = 0;
    for (const QString& question : qAsConst(questions)) {
        ShownTree tree;
        bool ended = false;
        tree.panel.host().inside = [&](const QString& asked) {
            // A window must not be destroyed while it is being painted.
            const bool painting =
                tree.viewport() && tree.viewport()->testAttribute(Qt::WA_WState_InPaintEvent);
            if (asked != question || painting || std::exchange(ended, true))
                return;
            ++ends;
            runWithin(nested, [] { delete CTargetSelectArea::Existing(); });
        };
        gesture(tree);
        QCOMPARE(CTargetSelectArea::Existing() == nullptr, ended);
        if (ended)
            QTRY_VERIFY2(!tree.view, qPrintable(question));
    }
    QVERIFY(ends > 0);
}

void PanelEndTest::shouldStandItUnderWhatItOpened_data()
{
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<bool>("nested");
    const auto add = [](const char* name, const Gesture& gesture) {
        QTest::addRow("%s", name) << gesture << false;
        QTest::addRow("%s, nested loop", name) << gesture << true;
    };
    const auto press = [](QWidget* button, const QPoint& place) {
        QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, place);
    };
    add("menu", [](ShownTree& tree) { openMenu(tree, 1); });
    add("menu by key", [](ShownTree& tree) { pressKey(tree, Qt::Key_F10, Qt::ShiftModifier); });
    add("more", clickMore);
    add("deletion", [](ShownTree& tree) { pressKey(tree, Qt::Key_Delete); });
    add("add", [press](ShownTree& tree) { press(tree.button<CPureImageBtn>(), {8, 8}); });
    add("add by key",
        [](ShownTree& tree) { QTest::keyClick(tree.button<CPureImageBtn>(), Qt::Key_Down); });
    add("detection", [press](ShownTree& tree) {
        auto* const button = tree.button<CMenuToolButton>();
        press(button, {button->width() - 5, button->height() / 2});
    });
    add("detection by key",
        [](ShownTree& tree) { QTest::keyClick(tree.button<CMenuToolButton>(), Qt::Key_Down); });
    add("addresses", [](ShownTree& tree) {
        tree.panel.area().onDetectStrategyChanged(2);
        QTest::keyClick(tree.button<QPushButton>(), Qt::Key_Space);
    });
}

void PanelEndTest::shouldStandItUnderWhatItOpened()
{
    QFETCH(Gesture, gesture);
    QFETCH(bool, nested);
    ShownTree tree;
    const Ender ender(nested);
    gesture(tree);
    QTRY_VERIFY(!CTargetSelectArea::Existing());
    QTRY_VERIFY(!tree.view);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!QApplication::activeModalWidget());
}

void PanelEndTest::shouldStandItInAnEntryOfTheHosts_data()
{
    QTest::addColumn<bool>("byKeys");
    QTest::addColumn<bool>("nested");
    for (const bool nested : {false, true}) {
        QTest::addRow("keys%s", nested ? ", nested loop" : "") << true << nested;
        QTest::addRow("mouse%s", nested ? ", nested loop" : "") << false << nested;
    }
}

void PanelEndTest::shouldStandItInAnEntryOfTheHosts()
{
    QFETCH(bool, byKeys);
    QFETCH(bool, nested);
    ShownTree tree;
    const auto end = [nested] { runWithin(nested, [] { delete CTargetSelectArea::Existing(); }); };
    tree.panel.host().appendEntries = [end](QMenu& menu) {
        const QAction* entry = menu.addAction(QStringLiteral("Close the project"));
        QObject::connect(entry, &QAction::triggered, qApp, end);
    };
    DialogDriver driver;
    driver.then([byKeys](QWidget& opened) {
        auto* const menu = qobject_cast<QMenu*>(&opened);
        QAction* const entry = menu->actions().constLast();
        if (byKeys) {
            menu->setActiveAction(entry);
            QTest::keyClick(menu, Qt::Key_Return);
        } else {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                              menu->actionGeometry(entry).center());
        }
    });
    openMenu(tree, 1);
    QVERIFY(!CTargetSelectArea::Existing());
    QTRY_VERIFY(!tree.view);
}

/// The host creates another panel in the question in which it destroys the first one.
void PanelEndTest::shouldLeaveNothingBehindThatReports()
{
    ShownTree tree;
    tree.view->selectionModel()->select(tree.index(10), QItemSelectionModel::ClearAndSelect);
    tree.panel.host().clearCalls();
    const auto handler = tree.panel.area().m_controlHandler;
    std::unique_ptr<CTargetSelectArea> second;
    bool ended = false;
    tree.panel.host().inside = [&](const QString& asked) {
        if (asked != QLatin1String("GetProcessorNode") || std::exchange(ended, true))
            return;
        runInNestedLoop([&] {
            delete CTargetSelectArea::Existing();
            second.reset(CTargetSelectArea::Instance());
            second->m_controlHandler = handler;
            tree.panel.model().removeNode(testId(10));
        });
        QVERIFY(tree.view);
    };
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.place(3));
    QVERIFY(second);
    QTRY_VERIFY(!tree.view);
    QCOMPARE(tree.panel.host().callCount(QStringLiteral("ReportSelection")), 0);
}

TSA_TEST_MAIN(PanelEndTest)

#include "tst_panelend.moc"
