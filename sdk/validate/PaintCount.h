#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

/// Counts how often a widget is painted.
class PaintCount final : public QObject
{
    Q_OBJECT

public:
    explicit PaintCount(QWidget* widget)
        : QObject(widget)
    {
        widget->installEventFilter(this);
    }

    int count() const { return m_count; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++m_count;
        return QObject::eventFilter(watched, event);
    }

private:
    int m_count = 0;
};
