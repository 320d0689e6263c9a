#pragma once

#include <QWidget>

#include <optional>

class QToolButton;

/// The title bar of a CDialog: shows the window's title and moves the window.
class DialogTitleBar final : public QWidget
{
    Q_OBJECT

public:
    /// `titleButtons` is a sum of CDialog::TitleButton.
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
    std::optional<QPoint> m_pressed;   ///< Where on the screen the button went down.
    QPoint m_grip;                     ///< That place, from the window's corner.
    bool m_moving = false;
};
