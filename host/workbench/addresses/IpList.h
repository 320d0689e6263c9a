#pragma once

#include "Interface/ProjectLimits.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

/// One entry of the host's IP list. The name may hold anything but line ends.
struct IpEntry
{
    quint32 address = 0;
    QString name;
};

inline bool operator==(const IpEntry& left, const IpEntry& right)
{
    return left.address == right.address && left.name == right.name;
}

/// Returns the text that the host and the panel exchange: the dotted address directly followed by
/// the name in parentheses.
QString ipEntryText(const IpEntry& entry);

/// Reads such a text. The address ends at the first "(", the name at a ")" at the end of the text.
/// A text without "(" is an address without a name. Returns nothing if there is no address.
std::optional<IpEntry> ipEntryOfText(const QString& text);

/// Why an entry is not added to the IP list.
enum class IpRefusal {
    None,
    NoAddress,
    Unsuitable, ///< An address, but none that a processor can have.
    Unreadable, ///< Bytes that cannot be decoded.
    NameTooLong,
    Duplicate,
    Full,
    NoSuchRow
};

/// Returns the reason in English, for the log.
QString refusalText(IpRefusal refusal);

/// The host's IP list: at most ProjectLimits::kMaxIpEntries entries, no address twice, in the order
/// in which they were added. A plain value.
class IpList final
{
public:
    static constexpr int kMaxNameLength = 256;

    const QList<IpEntry>& entries() const { return m_entries; }
    const QSet<quint32>& addresses() const { return m_addresses; }
    int size() const { return m_entries.size(); }
    bool isFull() const { return size() >= ProjectLimits::kMaxIpEntries; }

    IpRefusal append(const IpEntry& entry);

    /// Replaces the entry at `row`, which may keep its own address.
    IpRefusal replace(int row, const IpEntry& entry);

    /// Removes the entry with this address. Returns whether there was one.
    bool remove(quint32 address);

    void clear();

private:
    QList<IpEntry> m_entries;
    QSet<quint32> m_addresses; // of m_entries
};

inline bool operator==(const IpList& left, const IpList& right)
{
    return left.entries() == right.entries();
}
