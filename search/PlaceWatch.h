#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class QWidget;
class QWindow;

/// Says when a widget changes its place on the screen, whichever of its parents it is that moves,
/// and when the user can no longer use it. GUI thread.
class CPlaceWatch final : public QObject
{
    Q_OBJECT

public:
    explicit CPlaceWatch(QObject* parent = nullptr);
    ~CPlaceWatch() override;

    /// Watches `widget`, which may be destroyed meanwhile, until stop().
    void start(QWidget* widget);
    void stop();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void moved();

    /// It was hidden, disabled or destroyed, its window minimised, or another window, of this or
    /// another application, has the keyboard.
    void lost();

private:
    void onFocusWindowChanged(const QWindow* window);

    QPointer<QWidget> m_widget;
    QVector<QPointer<QWidget>> m_watched; // it and its parents
};
