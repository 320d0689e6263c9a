// Address files of any content: what is read from them is a list that the host can keep, and comes
// back the same when it is written to a file.

#include "Interface/ProjectLimits.h"
#include "host/workbench/addresses/AddressTexts.h"
#include "host/workbench/addresses/IpCheck.h"
#include "host/workbench/addresses/IpFile.h"
#include "host/workbench/project/Project.h"

#include <cstddef>
#include <cstdint>

namespace {

void expect(bool condition, const char* what)
{
    if (!condition)
        qFatal("%s", what);
}

QByteArray fileOf(const IpList& list)
{
    QString text;
    for (const IpEntry& entry : list.entries())
        text += dottedAddress(entry.address) + QLatin1Char(',') + entry.name + QLatin1Char('\n');
    return text.toUtf8();
}

/// The list that the lines make; each of them has to find its place.
IpList listOf(const ImportedIpList& imported)
{
    IpList list;
    int before = 0;
    for (const ImportedIpLine& line : imported.lines) {
        expect(line.number > before, "lines are not numbered in order");
        before = line.number;
        expect(isHostAddress(line.entry.address), "no processor can have this address");
        expect(list.append(line.entry) == IpRefusal::None, "the list refuses a line");
    }
    return list;
}

void check(const QByteArray& bytes)
{
    const ImportedIpList imported = parseIpFile(bytes);
    expect(imported.lines.size() <= ProjectLimits::kMaxIpEntries, "too many entries");
    expect(imported.refused.size() <= ImportedIpList::kMaxRefusedKept, "too many refused lines");
    expect(imported.refusedCount >= imported.refused.size(), "refused lines are not counted");
    for (const RefusedIpLine& line : imported.refused)
        expect(line.reason != IpRefusal::None, "a line is refused without a reason");
    const IpList list = listOf(imported);
    const ImportedIpList again = parseIpFile(fileOf(list));
    expect(again.refusedCount == 0, "a line that was written is refused");
    expect(listOf(again) == list, "what was written reads differently");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    check(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    return 0;
}
