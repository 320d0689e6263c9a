#include "tests/ipmanage/ReferenceAddresses.h"

#include <array>
#include <bitset>

namespace {

/// First to fourth.
using Octets = std::array<int, 4>;

Octets split(quint32 address)
{
    Octets octets{};
    for (auto octet = octets.rbegin(); octet != octets.rend(); ++octet) {
        *octet = static_cast<int>(address % 256);
        address /= 256;
    }
    return octets;
}

quint32 join(const Octets& octets)
{
    quint32 address = 0;
    for (const int octet : octets)
        address = address * 256 + static_cast<quint32>(octet);
    return address;
}

void toNextCandidate(Octets& octets)
{
    auto& [first, second, third, fourth] = octets;
    if (fourth == 255) {
        fourth = 2;
        third = third == 255 ? 1 : third + 1;
    } else {
        ++fourth;
    }
    if (second == 255)
        second = 1;
    if (first == 0 || first == 255)
        first = 192;
}

} // namespace

ReferenceResult referenceRun(quint32 start, int count, const std::function<bool(quint32)>& rejects)
{
    ReferenceResult result;
    const Octets from = split(start);
    std::bitset<8> second(static_cast<unsigned>(from[1]));
    for (int row = from[2]; count > 0; ++row) {
        second |= std::bitset<8>(static_cast<unsigned>(row / 256));
        const bool isStart = row == from[2];
        const bool isFirstRow = row < 256;
        if (!isFirstRow)
            --count;
        const int begin = isStart ? from[3] : (isFirstRow ? 1 : 2);
        for (int fourth = begin; fourth < 256 && count > 0; ++fourth) {
            const quint32 address =
                join({from[0], static_cast<int>(second.to_ulong()), row % 256, fourth});
            if (!isFirstRow || fourth != begin) {
                result.asked.append(address);
                if (rejects(address))
                    continue;
            }
            result.found.append(address);
            --count;
        }
    }
    return result;
}

ReferenceResult referenceProposals(quint32 base, int wanted,
                                   const std::function<bool(quint32)>& rejects)
{
    ReferenceResult result;
    Octets candidate = split(base);
    while (result.found.size() < wanted && result.asked.size() < 256 + wanted) {
        toNextCandidate(candidate);
        result.asked.append(join(candidate));
        if (!rejects(result.asked.last()))
            result.found.append(result.asked.last());
    }
    return result;
}
