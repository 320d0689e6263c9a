#pragma once

#include "Interface/TargetSelectArea.h"
#include "Interface/TargetSelectAreaInterface.h"
#include "sdk/validate/Test.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QAbstractButton;
class QTreeView;

/// The panel of the library under test in a host's window: what a host does to it, and what there
/// is to see of it. GUI thread.
class Panel final
{
public:
    /// Loads the library and builds the panel. Ends the test where that fails.
    explicit Panel(Test& test);

    /// The same, and starts it in a window that is shown, with `handler`.
    Panel(Test& test, const std::shared_ptr<IAbstractControlInterface>& handler);

    /// Closes the window and handles what that leaves to be done.
    ~Panel();

    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /// Returns the library's entry point. Ends the test where there is none. Any thread.
    static TargetSelectAreaInit entryPoint(Test& test);

    void initialize();

    /// Destroys the window, and with it the panel.
    void close();

    bool isAlive() const { return !m_widget.isNull(); }
    QWidget* window() const { return m_window.get(); }
    QWidget* widget() const { return m_widget; }
    IAbstractLayerInterface* layer() const { return m_layer; }
    ITargetSelectAreaInterface* area() const { return m_area; }

    /// Handles events until the window is on the screen and painted. Ends the test if it never is.
    void waitUntilPainted() const;

    /// Returns the tree as GetProcessorTree hands it out, as describe() writes it.
    QString tree(bool isSorted = false) const;

    /// Returns the rows of the view as one line, "G100[P1],P2".
    QString rows(bool isSorted = false) const;

    /// Returns the view of the tree, null if there is none.
    QTreeView* view() const;

    /// Returns the identity of the row that is current in the view.
    QUuid currentRow() const;

    /// Returns the button whose text or tool tip begins so, null if there is none.
    QAbstractButton* button(const QString& text) const;

private:
    Test& m_test;
    std::unique_ptr<QWidget> m_window;
    QPointer<QWidget> m_widget;                 // its parent's
    IAbstractLayerInterface* m_layer = nullptr; // the panel's
    ITargetSelectAreaInterface* m_area = nullptr;
};

/// Handles events until panel and view show `expected`. Ends the test with the finding `code`
/// unless they do.
void expectTree(Test& test, const Panel& panel, const QString& expected, Code code,
                const QString& what, bool isSorted = false);
