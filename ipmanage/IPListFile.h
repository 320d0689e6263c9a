#pragma once

class QIODevice;
class QString;
class QStringList;

/// The IP list as a text file: one entry a line, the dotted address, a comma, the name as it is; in
/// the text encoding of the user's locale, lines ended as the platform ends them.
namespace IPListFile {

/// Writes `entries`, the host's entry texts, to `device`, which is open for text. False when not
/// all of it got through, or a name has characters that the encoding lacks and that are replaced.
bool write(QIODevice& device, const QStringList& entries);

} // namespace IPListFile
