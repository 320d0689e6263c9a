#include "host/workbench/addresses/IpFile.h"

#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/addresses/IpCheck.h"

#include <QTextCodec>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kTextShown = 60;
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr int kUtf8Mib = 106; // in IANA's list of character sets

using State = QTextCodec::ConverterState;

QTextCodec* utf8()
{
    return QTextCodec::codecForMib(kUtf8Mib);
}

bool isUtf8(const QByteArray& bytes)
{
    State state(QTextCodec::IgnoreHeader);
    utf8()->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

/// Returns whether the codec encodes text as UTF-8 does. That of Windows has no number in IANA's
/// list.
bool isUtf8(const QTextCodec& codec)
{
    const QString chinese(QChar(0x5927));
    return codec.mibEnum() == kUtf8Mib || codec.fromUnicode(chinese) == chinese.toUtf8();
}

/// Returns whether bytes that are UTF-8 are more likely text in the encoding of the system: one
/// with two bytes for a Chinese character, which can be a letter of Europe in UTF-8, but hardly
/// ever another Chinese one, which has three there.
bool isLikelyOfTwoBytes(const QByteArray& bytes, const QTextCodec& locale)
{
    const auto hasByteFrom = [&bytes](uchar least) {
        return std::any_of(bytes.begin(), bytes.end(),
                           [least](char byte) { return static_cast<uchar>(byte) >= least; });
    };
    return locale.fromUnicode(QString(QChar(0x5927))).size() == 2 && hasByteFrom(0x80)
           && !hasByteFrom(0xE0);
}

QTextCodec* codecFor(const QByteArray& bytes)
{
    QTextCodec* locale = QTextCodec::codecForLocale();
    if (bytes.startsWith(kByteOrderMark) || (isUtf8(bytes) && !isLikelyOfTwoBytes(bytes, *locale)))
        return utf8();
    if (!isUtf8(*locale))
        return locale;
    QTextCodec* chinese = QTextCodec::codecForName("GB18030");
    return chinese ? chinese : locale;
}

/// Reads the lines of a file. Splits them before it decodes them, because in all supported
/// encodings no byte of a multi-byte character equals a line end.
class Lines final
{
public:
    explicit Lines(const QByteArray& bytes)
        : m_bytes(bytes)
    {
        if (m_bytes.startsWith(kByteOrderMark))
            m_next = static_cast<int>(std::size(kByteOrderMark)) - 1;
    }

    bool atEnd() const { return m_next >= m_bytes.size(); }
    int number() const { return m_number; }

    QByteArray next()
    {
        const int start = m_next;
        while (!atEnd() && m_bytes.at(m_next) != '\r' && m_bytes.at(m_next) != '\n')
            ++m_next;
        QByteArray line = m_bytes.mid(start, m_next - start);
        const bool hasTwo = m_next + 1 < m_bytes.size() && m_bytes.at(m_next) == '\r'
                            && m_bytes.at(m_next + 1) == '\n';
        m_next += hasTwo ? 2 : 1;
        ++m_number;
        return line;
    }

private:
    const QByteArray& m_bytes;
    int m_next = 0;
    int m_number = 0;
};

class IpFileParser final
{
public:
    explicit IpFileParser(QTextCodec& codec)
        : m_codec(codec)
    {
    }

    void add(const QByteArray& line, int number)
    {
        State state(QTextCodec::IgnoreHeader);
        const QString text = m_codec.toUnicode(line.constData(), line.size(), &state);
        if (text.trimmed().isEmpty())
            return;
        IpEntry entry;
        const IpRefusal reason = isDecoded(text, state) ? read(text, entry) : IpRefusal::Unreadable;
        if (reason == IpRefusal::None) {
            m_result.lines.append({number, entry});
            return;
        }
        m_result.refuse({number, reason, text.left(kTextShown)});
    }

    const ImportedIpList& result() const { return m_result; }

private:
    /// Not every codec counts the bytes that it replaces. UTF-8 does, so a replacement character in
    /// its text is an ordinary character.
    bool isDecoded(const QString& text, const State& state) const
    {
        return state.invalidChars == 0 && state.remainingChars == 0
               && (m_codec.mibEnum() == kUtf8Mib || !text.contains(QChar::ReplacementCharacter));
    }

    IpRefusal read(const QString& text, IpEntry& entry)
    {
        const int comma = text.indexOf(QLatin1Char(','));
        if (!parseDottedAddress(text.left(comma).trimmed(), entry.address))
            return IpRefusal::NoAddress;
        if (!isHostAddress(entry.address))
            return IpRefusal::Unsuitable;
        if (comma >= 0)
            entry.name = text.mid(comma + 1);
        return m_list.append(entry);
    }

    QTextCodec& m_codec;
    IpList m_list;
    ImportedIpList m_result;
};

} // namespace

void ImportedIpList::refuse(const RefusedIpLine& line)
{
    ++refusedCount;
    if (refused.size() < kMaxRefusedKept)
        refused.append(line);
}

ImportedIpList parseIpFile(const QByteArray& bytes)
{
    Lines lines(bytes);
    IpFileParser parser(*codecFor(bytes));
    while (!lines.atEnd()) {
        const QByteArray line = lines.next();
        parser.add(line, lines.number());
    }
    return parser.result();
}
