#pragma once

class QIODevice;
class QString;
class QStringList;

/// The IP list as a text file. Each line holds a dotted address, a comma and a name. The file has
/// the text encoding of the user's locale and the line ends of the platform.
namespace IPListFile {

/// Writes `entries`, the host's entry texts, to `device`, which is open for text. False when not
/// all of it got through, or a name has characters that the encoding lacks and that are replaced.
bool write(QIODevice& device, const QStringList& entries);

} // namespace IPListFile
