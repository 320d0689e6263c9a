#pragma once

#include "tests/processortree/WholeTree.h"

#include <QApplication>
#include <QDrag>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPointer>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>

/// A place of the screen as xdotool takes it.
inline QString xdotoolPlace(const QPoint& place)
{
    return QStringLiteral("%1 %2").arg(place.x()).arg(place.y());
}

/// Records the mouse and drag events that reach the tree.
class DragWatch final : public QObject
{
public:
    explicit DragWatch(const WholeTree& tree)
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
class DragUser final
{
public:
    explicit DragUser(WholeTree& tree)
        : watch(tree)
        , m_tree(tree)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { advance(); });
    }

    /// Runs `commands` by xdotool, then waits until `done`.
    DragUser& then(const QString& commands, std::function<bool()> done)
    {
        m_steps.push_back({commands, std::move(done)});
        return *this;
    }

    /// Presses the mouse at `from` and moves it until it is at `to`.
    DragUser& pull(const QPoint& from, const QPoint& to, bool isDrag = true)
    {
        const QPoint start = global(from);
        then(QStringLiteral("mousemove ") + xdotoolPlace(start) + QStringLiteral(" mousedown 1"),
             [this] { return watch.pressed; });
        // The first move makes the view ready for a drag, the next one starts it.
        for (const QPoint& step : {QPoint(4, 4), QPoint(8, 8)}) {
            then(QStringLiteral("mousemove ") + xdotoolPlace(start + step),
                 [this, from, step] { return watch.lastPosition == from + step; });
        }
        if (isDrag)
            then(QString(), [this] { return watch.isDragging(); });
        return moveTo(to);
    }

    DragUser& moveTo(const QPoint& to)
    {
        const QPoint end = global(to);
        return then(QStringLiteral("mousemove %1 mousemove %2")
                        .arg(xdotoolPlace(end + QPoint(3, 0)), xdotoolPlace(end)),
                    [this, to] { return watch.lastPosition == to; });
    }

    DragUser& letGo()
    {
        return then(QStringLiteral("mouseup 1"), [this] { return watch.isOver(); });
    }

    DragUser& call(const std::function<void()>& action)
    {
        return then(QString(), [action] {
            action();
            return true;
        });
    }

    /// Returns whether all steps ran to their end in time.
    bool run()
    {
        m_timer.start(2);
        const bool all = QTest::qWaitFor([this] { return m_steps.empty(); }, 40000);
        m_timer.stop();
        m_process.waitForFinished();
        return all && m_worked;
    }

    DragWatch watch;

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

    /// Returns whether the display has the window where Qt believes that it is, with the keyboard.
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
