#include "host/workbench/addresses/IpList.h"

#include "host/workbench/addresses/AddressTexts.h"

#include <algorithm>

QString ipEntryText(const IpEntry& entry)
{
    return dottedAddress(entry.address) + QLatin1Char('(') + entry.name + QLatin1Char(')');
}

std::optional<IpEntry> ipEntryOfText(const QString& text)
{
    const int open = text.indexOf(QLatin1Char('('));
    IpEntry entry;
    if (!parseDottedAddress(text.left(open), entry.address))
        return std::nullopt;
    if (open >= 0)
        entry.name = text.mid(open + 1);
    if (entry.name.endsWith(QLatin1Char(')')))
        entry.name.chop(1);
    return entry;
}

QString refusalText(IpRefusal refusal)
{
    switch (refusal) {
    case IpRefusal::None:
        break;
    case IpRefusal::NoAddress:
        return QStringLiteral("there is no valid address");
    case IpRefusal::Unsuitable:
        return QStringLiteral("no processor can have this address");
    case IpRefusal::Unreadable:
        return QStringLiteral("the text cannot be decoded");
    case IpRefusal::NameTooLong:
        return QStringLiteral("the name is longer than %1 characters").arg(IpList::kMaxNameLength);
    case IpRefusal::Duplicate:
        return QStringLiteral("the address is there already");
    case IpRefusal::Full:
        return QStringLiteral("the list is full with %1 entries").arg(ProjectLimits::kMaxIpEntries);
    case IpRefusal::NoSuchRow:
        return QStringLiteral("there is no such row");
    }
    return {};
}

IpRefusal IpList::append(const IpEntry& entry)
{
    if (entry.name.size() > kMaxNameLength)
        return IpRefusal::NameTooLong;
    if (m_addresses.contains(entry.address))
        return IpRefusal::Duplicate;
    if (isFull())
        return IpRefusal::Full;
    m_entries.append(entry);
    m_addresses.insert(entry.address);
    return IpRefusal::None;
}

IpRefusal IpList::replace(int row, const IpEntry& entry)
{
    if (row < 0 || row >= m_entries.size())
        return IpRefusal::NoSuchRow;
    if (entry.name.size() > kMaxNameLength)
        return IpRefusal::NameTooLong;
    const quint32 before = m_entries.at(row).address;
    if (entry.address != before && m_addresses.contains(entry.address))
        return IpRefusal::Duplicate;
    m_addresses.remove(before);
    m_addresses.insert(entry.address);
    m_entries.replace(row, entry);
    return IpRefusal::None;
}

bool IpList::remove(quint32 address)
{
    if (!m_addresses.remove(address))
        return false;
    m_entries.erase(
        std::remove_if(m_entries.begin(), m_entries.end(),
                       [address](const IpEntry& entry) { return entry.address == address; }),
        m_entries.end());
    return true;
}

void IpList::clear()
{
    m_entries.clear();
    m_addresses.clear();
}
