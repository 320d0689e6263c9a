#pragma once

#include <QWidget>

#include <optional>

class QToolButton;

/// The title bar of a CDialog. Shows the window title and moves the window.
class DialogTitleBar final : public QWidget
{
    Q_OBJECT

public:
    /// `titleButtons` is a combination of CDialog::TitleButton.
    DialogTitleBar(QString subtitle, int titleButtons, QWidget* dialog);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QToolButton* addButton(const QString& objectName);
    void toggleMaximized();
    void updateButtons();
    QRect textRect() const;
    QString fullText() const;

    QString m_subtitle;
    QToolButton* m_maximize = nullptr; // Qt child
    QToolButton* m_close = nullptr;    // Qt child
    std::optional<QPoint> m_pressed;   ///< Global position of the mouse press.
    QPoint m_grip;                     ///< The same position relative to the window.
    bool m_moving = false;
};
