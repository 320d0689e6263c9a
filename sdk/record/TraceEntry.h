#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QtGlobal>

/// One line of a recording. docs/trace-format.md describes the fields.
struct CTraceEntry
{
    enum class Kind {
        Call,  ///< An operation of the handler, called by the panel.
        Event, ///< An event that the host tells the panel.
        Layer, ///< An operation of the layer interface, called by the host.
        Input, ///< A gesture of the user on the panel or one of its windows.
    };

    qint64 sequence = 0; ///< From 1, in the order of the beginnings.
    qint64 time = 0;     ///< When it began, in nanoseconds since the start of the recording.
    QString thread;      ///< "gui", or "work", "notify" or "other" with the thread's number.
    Kind kind = Kind::Call;
    QString name;
    QJsonObject arguments;
    QJsonValue answer{QJsonValue::Undefined};
    QJsonObject outs;
    qint64 duration = -1; ///< In nanoseconds; negative while it goes on, and for input.
    qint64 cause = 0;     ///< The entry inside which it happened; 0 for none.
    int line = 0;         ///< In the file that it was read from.

    /// When it ended; the greatest number if it never did.
    qint64 end() const;

    /// Returns name and arguments, such as `RenameGroup {"id":"{…}","name":"Left"}`.
    QString text() const;

    /// Returns the entry as one line of JSON without the line break.
    QByteArray toJson() const;

    /// Reads what toJson() wrote. Returns the name of the first field that is missing or wrong;
    /// empty for none.
    QByteArray fromJson(const QJsonObject& json);
};
