#pragma once

#include "host/widgets/Dialog.h"

class QLabel;
class QScrollArea;

/// Messages and questions in the host's frame. The text is plain, wraps at the given width, and
/// scrolls if it is higher than the screen.
///
/// Each function shows a modal box over `parent` and blocks until it is answered. Enter presses the
/// default button, Tab and the arrows move between buttons, Escape rejects. `caption` is the title,
/// `width` the width of the box in pixels. `parent` may be destroyed before the function returns.
/// GUI thread.
class HOSTWIDGETS_EXPORT CMessageBox final : public CDialog
{
    Q_OBJECT

public:
    /// The returned value: the position of the pressed button among the possible ones.
    enum Answer { Yes = 0, No = 1, Ok = 0, Cancel = 1 };

    static constexpr int kDefaultWidth = 330;

    /// Shows a message. Returns Ok, however the box was closed.
    static int information(QWidget* parent, const QString& text, const QString& caption,
                           QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Ok,
                           QDialogButtonBox::StandardButton defaultButton = QDialogButtonBox::Ok,
                           int width = kDefaultWidth);

    /// Asks a question. Returns Yes (0) for Yes or another accepting button, and No (1) for any
    /// other button, Escape, closing, or the destruction of `parent`.
    static int question(QWidget* parent, const QString& text, const QString& caption,
                        QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Yes
                                                                    | QDialogButtonBox::No,
                        QDialogButtonBox::StandardButton defaultButton = QDialogButtonBox::Yes,
                        int width = kDefaultWidth);

protected:
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;
    void showEvent(QShowEvent* event) override;

private:
    enum class Kind { Information, Question };

    CMessageBox(QWidget* parent, Kind kind, const QString& text, const QString& caption, int width);

    static bool ask(QWidget* parent, Kind kind, const QString& text, const QString& caption,
                    QDialogButtonBox::StandardButtons buttons,
                    QDialogButtonBox::StandardButton defaultButton, int width);

    Kind m_kind;
    QString m_text;
    int m_width;
    QLabel* m_icon = nullptr;      // Qt child
    QScrollArea* m_area = nullptr; // Qt child
};
