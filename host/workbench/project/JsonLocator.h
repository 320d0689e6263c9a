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

/// Returns the byte offset of the first key in `json`, which must be well-formed, that occurs
/// before in the same object. JSON leaves open which of the two values counts.
std::optional<int> locateRepeatedMember(const QByteArray& json);
