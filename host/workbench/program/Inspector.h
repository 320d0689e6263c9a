#pragma once

#include <QJsonObject>
#include <QObject>

class QLocalServer;

/// Describes the windows to other programs as a screen reader would find them: a client that
/// connects gets one JSON object, and the connection is closed. It is read-only.
///
///     {"focus": ELEMENT or null, "windows": [ELEMENT, ...]}
///
/// Windows are listed from front to back: open popups, the modal dialog, the others. An ELEMENT has
/// "role", "name", "value", "description" (the last three only if they are not empty), "states"
/// such as "disabled" or "selected", "rect" as [x, y, width, height] on the screen, and "children".
/// Only visible elements are listed, and only the visible cells of lists, tables and trees.
class Inspector final : public QObject
{
    Q_OBJECT

public:
    explicit Inspector(QObject* parent = nullptr);

    /// Listens under `name`, a name or a path as QLocalServer takes it. Returns false and sets
    /// `problem` on failure: when a file that is no socket is there, or another program listens.
    bool listen(const QString& name, QString& problem);

    /// Returns the JSON text.
    static QJsonObject tree();

private:
    static QString obstacle(const QString& name);
    void answer();

    QLocalServer* m_server; // child of this
};
