#pragma once

#include <QEvent>
#include <QJsonObject>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>

class CTraceWriter;
class QDropEvent;
class QFocusEvent;
class QInputEvent;

/// Records what the user does on the panel and on its dialogs, menus and popups: mouse, wheel,
/// keys, input methods, context menus and drops. Each gesture is written with the path of its
/// widget and the position in it. Of moves without a button only the last one before another
/// gesture is written. Looks at the events and changes nothing. GUI thread.
class CInputRecorder final : public QObject
{
    Q_OBJECT

public:
    explicit CInputRecorder(std::shared_ptr<CTraceWriter> writer, QObject* parent = nullptr);

    /// Records on this panel from now on, and on no other. Null for none.
    void watch(QWidget* panel);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Last
    {
        QEvent::Type type = QEvent::None;
        ulong timestamp = 0;
        QPoint at;
        int key = 0;
        QPointer<QWidget> widget;
    };

    void look(QWidget& widget, QEvent& event);
    void lookAtMouse(QWidget& widget, QEvent& event);
    void lookAtKey(QWidget& widget, QEvent& event);
    void lookAtDrop(QWidget& widget, const QDropEvent& event);
    void lookAtFocus(QWidget& widget, const QFocusEvent& event);
    void lookAtOthers(QWidget& widget, QEvent& event);
    bool isRepeated(QWidget& widget, const QInputEvent& event, const QPoint& at, int key);
    void note(const QWidget& widget, const QString& name, QJsonObject arguments);
    void notePendingMove();

    const std::shared_ptr<CTraceWriter> m_writer;
    QPointer<QWidget> m_panel;
    Last m_last;
    Last m_override;           // the last key that a shortcut may take
    QJsonObject m_pendingMove; // empty for none
};
