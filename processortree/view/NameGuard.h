#pragma once

#include <QString>

class QTextCodec;

/// How much of a name the host takes, whose limit counts encoded bytes.
namespace NameGuard {

/// The longest text that a field takes when nothing limits it: what Qt's fields start with.
constexpr int kUnlimitedLength = 32767;

/// What a field is to hold.
struct Fit
{
    QString text;
    int maxLength = kUnlimitedLength; ///< In UTF-16 units, never below the text's.
    int cursor = 0;
};

/// The codec of names: UTF-8, or GBK. Where GBK is missing, GB18030, which encodes the same
/// characters the same way, or else UTF-8, whose names are nowhere shorter.
const QTextCodec& codec(bool utf8);

/// Fits `text`, with the cursor at `cursor`, into `maxBytes` bytes of `codec`: cut to the longest
/// prefix of whole code points when it is longer. `maxLength` then keeps what cannot fit from being
/// entered: nothing once the text is as long as the limit, up to a character a byte before.
///
/// A limit of 0 or less is none. Half of a surrogate pair right before the cursor is what a field's
/// maximum length left of a character, and is dropped.
Fit fit(const QString& text, int cursor, int maxBytes, const QTextCodec& codec);

} // namespace NameGuard
