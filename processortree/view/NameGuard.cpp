#include "processortree/view/NameGuard.h"

#include <QStringView>
#include <QTextCodec>

#include <algorithm>
#include <vector>

namespace {

constexpr int kUtf8Mib = 106;

int encodedSize(const QTextCodec& codec, QStringView text)
{
    return codec.fromUnicode(text).size();
}

bool isPair(QStringView text, int position)
{
    return position + 1 < text.size() && text.at(position).isHighSurrogate()
           && text.at(position + 1).isLowSurrogate();
}

/// Whole prefixes are encoded, not characters: a codec may keep a half character back until it sees
/// what follows.
int longestFit(const QString& text, int maxBytes, const QTextCodec& codec)
{
    std::vector<int> ends;
    ends.reserve(static_cast<std::size_t>(text.size()));
    for (int position = 0; position < text.size();) {
        position += isPair(text, position) ? 2 : 1;
        ends.push_back(position);
    }
    const auto firstTooLong = std::partition_point(ends.cbegin(), ends.cend(), [&](int end) {
        return encodedSize(codec, QStringView(text).left(end)) <= maxBytes;
    });
    return firstTooLong == ends.cbegin() ? 0 : *std::prev(firstTooLong);
}

} // namespace

const QTextCodec& NameGuard::codec(bool utf8)
{
    if (!utf8) {
        for (const char* name : {"GBK", "GB18030"}) {
            if (const QTextCodec* found = QTextCodec::codecForName(name))
                return *found;
        }
    }
    return *QTextCodec::codecForMib(kUtf8Mib); // part of every Qt
}

NameGuard::Fit NameGuard::fit(const QString& text, int cursor, int maxBytes,
                              const QTextCodec& codec)
{
    Fit fit{text, kUnlimitedLength, std::clamp(cursor, 0, text.size())};
    const int last = fit.cursor - 1;
    if (last >= 0 && text.at(last).isHighSurrogate() && !isPair(text, last)) {
        fit.text.remove(last, 1);
        fit.cursor = last;
    }
    if (maxBytes <= 0) {
        fit.maxLength = std::max(kUnlimitedLength, fit.text.size());
        return fit;
    }

    const int size = encodedSize(codec, fit.text);
    if (size < maxBytes) {
        fit.maxLength = std::max(maxBytes, fit.text.size());
    } else if (size == maxBytes) {
        fit.maxLength = fit.text.size();
    } else {
        fit.text.truncate(longestFit(fit.text, maxBytes, codec));
        fit.maxLength = fit.text.size() + maxBytes - encodedSize(codec, fit.text);
        fit.cursor = std::min(fit.cursor, fit.text.size());
    }
    return fit;
}
