#pragma once

#include "host/widgets/Dialog.h"

class QLabel;
class QScrollArea;

/// Messages and questions in the host's frame. The text is plain, wraps within the given width and
/// scrolls when it is longer than the screen is high.
///
/// Each call shows a modal box over `parent` and returns when it is answered; by keyboard: Enter
/// for the default button, Tab and arrows between buttons, Escape. `caption` is the title, `width`
/// the box's width in pixels. GUI thread; the caller must expect `parent` to be gone afterwards.
class HOSTWIDGETS_EXPORT CMessageBox final : public CDialog
{
    Q_OBJECT

public:
    /// What a box returns: the rank of the pressed button among those that can be asked for.
    enum Answer { Yes = 0, No = 1, Ok = 0, Cancel = 1 };

    static constexpr int kDefaultWidth = 330;

    /// Tells the user something. Returns Ok, also when the box was closed otherwise.
    static int information(QWidget* parent, const QString& text, const QString& caption,
                           QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Ok,
                           QDialogButtonBox::StandardButton defaultButton = QDialogButtonBox::Ok,
                           int width = kDefaultWidth);

    /// Asks the user. Returns Yes (0) when that, or another accepting button, was pressed, else,
    /// also when the box was closed by Escape, its frame or the end of `parent`, No (1).
    static int question(QWidget* parent, const QString& text, const QString& caption,
                        QDialogButtonBox::StandardButtons buttons = QDialogButtonBox::Yes
                                                                    | QDialogButtonBox::No,
                        QDialogButtonBox::StandardButton defaultButton = QDialogButtonBox::Yes,
                        int width = kDefaultWidth);

protected:
    void InitWidgets() override;
    void InitLayout(QBoxLayout* body) override;

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
