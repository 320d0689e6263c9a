#pragma once

#include <QPointer>
#include <QWidget>

/// An outline around a widget while it has the focus, 2 pixels away from it: for a widget that is
/// too small for one of its own. Takes no mouse events. The widget's parent owns it. GUI thread.
class FocusRing final : public QWidget
{
    Q_OBJECT

public:
    /// Follows `target` until that is destroyed.
    explicit FocusRing(QWidget* target);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();

    QPointer<QWidget> m_target;
};
