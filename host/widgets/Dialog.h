#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QDialog>
#include <QDialogButtonBox>

class DialogTitleBar;
class QBoxLayout;
class QVBoxLayout;

/// A dialog in the host's frame: a title bar that drags the window, a body, and a row of standard
/// buttons at the foot when SetDialogBtnRole() asks for them.
///
/// A dialog derives from it, overrides hooks, and calls Init() at the end of its constructor, when
/// its members stand. The frame costs kTitleBarHeight pixels at the top and, with buttons,
/// kButtonRowHeight at the foot; its outline is drawn over the body and costs nothing.
///
/// Modal over its parent's window while exec() runs. Shown over the middle of that window, or where
/// it was moved to before, and always wholly on a screen. Escape, the close button of the title bar
/// and the window manager's close all lead to OnReject(); Enter presses the default button. The
/// first widget of the body has the focus at first, the buttons come last.
///
/// May be created on the stack below a parent that dies meanwhile. The dialog then leaves its
/// parent, and closes itself and every dialog and menu open above it, without a signal; an exec()
/// that runs, or is still to come, of it or a dialog above it, returns 0. The caller must expect
/// that its own object is gone by then. A dialog thus belongs to whoever created it, except one
/// that show() or open() alone brought up: that is its parent's.
///
/// While OnAccept() runs, pressing the button again has no effect.
///
/// GUI thread.
class HOSTWIDGETS_EXPORT CDialog : public QDialog
{
    Q_OBJECT

public:
    /// Buttons of the title bar; a sum of them is the constructor's flag argument. With
    /// MaximizeTitleButton, a double click on the bar maximizes and restores too.
    enum TitleButton { NoTitleButton = 0, CloseTitleButton = 1, MaximizeTitleButton = 2 };

    static constexpr int kTitleBarHeight = 30;
    static constexpr int kButtonRowHeight = 34;

    /// `title` is the window title, which setWindowTitle() changes later; `subtitle` stands beside
    /// it, weaker. Both may be empty.
    CDialog(QWidget* parent, const QString& title, const QString& subtitle, int titleButtons);
    ~CDialog() override;

    /// Runs InitWidgets(), InitLayout() with the body's layout, and InitConnections(), once.
    void Init();

    /// Gives the dialog these standard buttons at its foot, in place of those it had;
    /// `defaultButton` is the one that Enter presses. Buttons of an accepting role call OnAccept(),
    /// of a rejecting one OnReject(). Their texts follow the language.
    void SetDialogBtnRole(QDialogButtonBox::StandardButtons buttons,
                          QDialogButtonBox::StandardButton defaultButton);

    /// Enables or disables one of them; no effect on one that the dialog does not have.
    void EnableDialogBtn(QDialogButtonBox::StandardButton button, bool enabled);

public slots:
    /// Closes the dialog with `result`; one that lost its parent keeps its 0.
    void done(int result) override;

    /// Shows the dialog and returns its result when it is closed.
    int exec() override;

    /// What Escape and closing do: OnReject().
    void reject() override;

protected:
    /// An accepting button was pressed. Accepts the dialog: it closes with result 1.
    virtual void OnAccept();

    /// A rejecting button, Escape or closing. Rejects the dialog: it closes with result 0. An
    /// override closes with done(), not with reject(), which leads here.
    virtual void OnReject();

    /// Creates the body's widgets. Does nothing.
    virtual void InitWidgets();

    /// Arranges them in `body`, a vertical layout without margins and spacing, which takes all that
    /// the frame leaves. Does nothing.
    virtual void InitLayout(QBoxLayout* body);

    /// Connects them. Does nothing.
    virtual void InitConnections();

    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void watchParent();
    void leaveDyingParent();
    bool isAbandoned() const;
    void takeAccept();
    void placeOnScreen();
    void settle();
    void putButtonsLastInTabOrder();
    void focusFirst();
    void retranslateButtons();

    DialogTitleBar* m_titleBar;    // Qt child
    QVBoxLayout* m_body;           // of the dialog's layout
    QDialogButtonBox* m_buttonBox; // Qt child
    QWidget* m_outline;            // Qt child
    QMetaObject::Connection m_parentWatch;
    QPoint m_place; // where it was put when it was last shown
    bool m_placed = false;
    bool m_accepting = false;
    bool m_initialised = false;
    bool m_executed = false;
    bool m_shown = false;
    bool m_abandoned = false; ///< Its parent has died.
};
