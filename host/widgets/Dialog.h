#pragma once

#include "host/widgets/HostWidgetsExport.h"

#include <QDialog>
#include <QDialogButtonBox>

class DialogTitleBar;
class QBoxLayout;
class QVBoxLayout;

/// A dialog in the host's frame: a title bar that moves the window, a body, and a row of standard
/// buttons at the bottom if SetDialogBtnRole() sets some.
///
/// A derived class overrides hooks and calls Init() at the end of its constructor. The frame takes
/// kTitleBarHeight pixels at the top and, with buttons, kButtonRowHeight pixels at the bottom. Its
/// outline is drawn over the body and takes no room.
///
/// The dialog is window modal while exec() runs. It appears over the middle of its parent's window,
/// or where it was moved before, and always completely on a screen. Escape, the close button of the
/// title bar and the window manager's close call OnReject(); Enter presses the default button. The
/// first widget of the body has the initial focus, and the buttons are last in the tab order.
///
/// The dialog may be on the stack while its parent is destroyed. It then becomes parentless and
/// closes itself and all dialogs and menus open above it, without a signal. A running or later
/// exec() of the dialog, or of a dialog above it, returns 0. The caller of exec() must expect that
/// its own object is destroyed by then. So a dialog belongs to its creator, except one that was
/// only shown by show() or open(), which belongs to its parent.
///
/// While OnAccept() runs, pressing the button again has no effect.
///
/// GUI thread.
class HOSTWIDGETS_EXPORT CDialog : public QDialog
{
    Q_OBJECT

public:
    /// Buttons of the title bar; combine them for the constructor. With MaximizeTitleButton, a
    /// double click on the title bar maximizes and restores the window.
    enum TitleButton { NoTitleButton = 0, CloseTitleButton = 1, MaximizeTitleButton = 2 };

    static constexpr int kTitleBarHeight = 30;
    static constexpr int kButtonRowHeight = 34;

    /// `title` is the window title; `subtitle` is shown beside it in a weaker colour. Both may be
    /// empty.
    CDialog(QWidget* parent, const QString& title, const QString& subtitle, int titleButtons);
    ~CDialog() override;

    /// Calls InitWidgets(), InitLayout() with the layout of the body, and InitConnections(). Later
    /// calls have no effect.
    void Init();

    /// Replaces the standard buttons. Enter presses `defaultButton`. Buttons with an accepting role
    /// call OnAccept(), those with a rejecting role OnReject(). The texts follow the language.
    void SetDialogBtnRole(QDialogButtonBox::StandardButtons buttons,
                          QDialogButtonBox::StandardButton defaultButton);

    /// Enables or disables a standard button; has no effect if the dialog does not have it.
    void EnableDialogBtn(QDialogButtonBox::StandardButton button, bool enabled);

public slots:
    /// Closes the dialog with `result`. If its parent was destroyed, the result stays 0.
    void done(int result) override;

    /// Shows the dialog, blocks until it is closed and returns its result.
    int exec() override;

    /// Calls OnReject().
    void reject() override;

protected:
    /// Called when an accepting button is pressed. Closes the dialog with result 1.
    virtual void OnAccept();

    /// Called for a rejecting button, Escape or closing. Closes the dialog with result 0. An
    /// override closes the dialog with done(), because reject() calls this function.
    virtual void OnReject();

    /// Creates the widgets of the body. Does nothing by default.
    virtual void InitWidgets();

    /// Adds the widgets to `body`, a vertical layout without margins and spacing that fills the
    /// frame. Does nothing by default.
    virtual void InitLayout(QBoxLayout* body);

    /// Connects the widgets. Does nothing by default.
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
    QVBoxLayout* m_body;           // owned by the dialog's layout
    QDialogButtonBox* m_buttonBox; // Qt child
    QWidget* m_outline;            // Qt child
    QMetaObject::Connection m_parentWatch;
    QPoint m_place; // position when it was last shown
    bool m_placed = false;
    bool m_accepting = false;
    bool m_initialised = false;
    bool m_executed = false;
    bool m_shown = false;
    bool m_abandoned = false; ///< The parent was destroyed.
};
