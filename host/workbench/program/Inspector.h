#pragma once

#include <QJsonObject>
#include <QObject>

class QLocalServer;

/// Tells other programs what a screen reader would find in the windows: whoever connects gets one
/// JSON object, and the connection ends. It only tells; nothing can be done through it.
///
///     {"focus": ELEMENT or null, "windows": [ELEMENT, ...]}
///
/// Windows come as they lie, the one in front first: open popups, the modal dialog, the others. An
/// ELEMENT has "role", "name", "value", "description" (the last three unless they are empty),
/// "states" such as "disabled" or "selected", "rect" as [x, y, width, height] on the screen, and
/// "children". Only what is in view is told, of lists, tables and trees the cells in view.
class Inspector final : public QObject
{
    Q_OBJECT

public:
    explicit Inspector(QObject* parent = nullptr);

    /// Answers under `name`, a name or a path as QLocalServer takes it. False with `problem` when
    /// nobody can connect.
    bool listen(const QString& name, QString& problem);

    /// What is told.
    static QJsonObject tree();

private:
    void answer();

    QLocalServer* m_server; // child of this
};
