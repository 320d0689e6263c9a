#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

/// A position in a text. Lines and columns count from 1, columns in UTF-16 units.
struct TextPosition
{
    int line = 1;
    int column = 1;
};

/// Returns the position of the byte at `offset` in a UTF-8 text.
TextPosition textPosition(const QByteArray& text, int offset);

/// Returns the byte offset of the value at `path` in `json`, which must be well-formed. A step is
/// the key of a member of an object or the index of an element of an array. If the path does not
/// exist, returns the offset of the last value found along it.
int locateJsonValue(const QByteArray& json, const QStringList& path);

/// A member of an object in a JSON text.
struct JsonMember
{
    QString key;
    int offset = 0; ///< of the key, in bytes
};

/// Returns the first member in `json`, which must be well-formed, whose key occurs before in the
/// same object. JSON leaves open which of the two values counts.
std::optional<JsonMember> locateRepeatedMember(const QByteArray& json);
