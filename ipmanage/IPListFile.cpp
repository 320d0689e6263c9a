#include "ipmanage/IPListFile.h"

#include "base/IPText.h"

#include <QFileDevice>
#include <QStringList>
#include <QTextCodec>
#include <QTextStream>

namespace {

/// Returns whether nothing of `text` is replaced. QTextCodec::canEncode() counts what was replaced,
/// which the codec for the encoding of Windows does not.
bool isEncodable(const QString& text, const QTextCodec& codec)
{
    return codec.toUnicode(codec.fromUnicode(text)) == text;
}

} // namespace

namespace IPListFile {

Result write(QIODevice& device, const QStringList& entries)
{
    Q_ASSERT(device.isWritable() && device.isTextModeEnabled());
    QTextStream stream(&device);
    bool lossless = true;
    for (const QString& entry : entries) {
        const QString line = exportLine(entry);
        lossless = lossless && isEncodable(line, *stream.codec());
        stream << line << '\n';
    }
    stream.flush();
    if (stream.status() != QTextStream::Ok)
        return Result::Failed;
    // A file buffers its data, so a full disk is noticed only when it is flushed.
    auto* file = qobject_cast<QFileDevice*>(&device);
    if (file && !file->flush())
        return Result::Failed;
    return lossless ? Result::Written : Result::Replaced;
}

} // namespace IPListFile
