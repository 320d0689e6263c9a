#include "host/workbench/IpList.h"

#include "host/workbench/Project.h"

#include <algorithm>

namespace {

bool hasAddress(const QString& entry, quint32 address)
{
    quint32 own = 0;
    return parseDottedAddress(ipOfEntry(entry), own) && own == address;
}

} // namespace

QString ipEntry(const QString& ip, const QString& name)
{
    return ip + QLatin1Char('(') + name + QLatin1Char(')');
}

QString ipOfEntry(const QString& entry)
{
    return entry.left(entry.indexOf(QLatin1Char('(')));
}

QString nameOfEntry(const QString& entry)
{
    const int open = entry.indexOf(QLatin1Char('('));
    if (open < 0)
        return {};
    const QString rest = entry.mid(open + 1);
    return rest.endsWith(QLatin1Char(')')) ? rest.chopped(1) : rest;
}

bool containsIp(const QStringList& entries, quint32 address)
{
    return std::any_of(entries.begin(), entries.end(),
                       [&](const QString& entry) { return hasAddress(entry, address); });
}

bool removeIp(QStringList& entries, quint32 address)
{
    const int before = entries.size();
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [&](const QString& entry) { return hasAddress(entry, address); }),
                  entries.end());
    return entries.size() != before;
}

bool mergeIpEntries(QStringList& entries, const QStringList& fresh)
{
    for (const QString& entry : fresh) {
        quint32 address = 0;
        if (!parseDottedAddress(ipOfEntry(entry), address) || containsIp(entries, address))
            continue;
        if (entries.size() >= Project::kMaxIpEntries)
            return false;
        entries.append(entry);
    }
    return true;
}

QStringList ipEntriesOfText(const QString& text)
{
    QStringList entries;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QString ip = line.section(QLatin1Char(','), 0, 0).trimmed();
        quint32 address = 0;
        if (parseDottedAddress(ip, address))
            entries.append(ipEntry(ip, line.section(QLatin1Char(','), 1).trimmed()));
    }
    return entries;
}
