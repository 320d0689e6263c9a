#pragma once

#include <QByteArray>
#include <QStringList>

/// Where something stands in a text; both counted from 1, columns in characters.
struct TextPosition
{
    int line = 1;
    int column = 1;
};

/// The position of byte `offset` of a UTF-8 text.
TextPosition textPosition(const QByteArray& text, int offset);

/// The byte offset of the value that `path` leads to in `json`, which must be well-formed. A step
/// is the key of an object's member or the number of an array's element. Leads nowhere: the offset
/// of the last value that was found on the way. Of members with the same key the last one counts.
int locateJsonValue(const QByteArray& json, const QStringList& path);
