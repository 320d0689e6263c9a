#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class QWidget;
class QWindow;

/// Reports when a widget moves on the screen, alone or with one of its parents, and when the user
/// can no longer use it. GUI thread.
class CPlaceWatch final : public QObject
{
    Q_OBJECT

public:
    explicit CPlaceWatch(QObject* parent = nullptr);
    ~CPlaceWatch() override;

    /// Watches `widget` until stop(). The widget may be destroyed before that.
    void start(QWidget* widget);
    void stop();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void moved();

    /// Emitted when the widget was hidden, disabled or destroyed, its window was minimised, or
    /// another window, of this or another application, received the keyboard focus.
    void lost();

private:
    void onFocusWindowChanged(const QWindow* window);

    QPointer<QWidget> m_widget;
    QVector<QPointer<QWidget>> m_watched; // the widget and its parents
};
