#pragma once

class QIODevice;
class QString;
class QStringList;

/// The IP list as a text file. Each line holds a dotted address, a comma and a name. The file has
/// the text encoding of the user's locale and the line ends of the platform.
namespace IPListFile {

enum class Result {
    Written,
    Replaced, ///< Written, but characters that the encoding lacks were replaced.
    Failed    ///< Not or only partly written.
};

/// Writes `entries`, the host's entry texts, to `device`, which must be open as text.
Result write(QIODevice& device, const QStringList& entries);

} // namespace IPListFile
