#include "tests/ipmanage/RandomAddresses.h"

#include <array>

namespace {

quint32 scattered(quint32 address, quint32 salt)
{
    quint32 hash = (address ^ salt) * 0x9E3779B1U;
    hash = (hash ^ (hash >> 15)) * 0x85EBCA77U;
    return hash ^ (hash >> 13);
}

template <std::size_t Size>
quint32 edgeOctet(QRandomGenerator& random, const std::array<quint32, Size>& edges)
{
    if (random.bounded(100) < 30)
        return random.bounded(256U);
    return edges.at(random.bounded(static_cast<quint32>(Size)));
}

} // namespace

RandomRejection::RandomRejection(QRandomGenerator& random)
{
    const quint32 salt = random.generate();
    switch (random.bounded(6)) {
    case 0:
        name = QStringLiteral("none");
        rejects = [](quint32) { return false; };
        break;
    case 1:
        name = QStringLiteral("all");
        rejects = [](quint32) { return true; };
        dense = true;
        break;
    case 2: {
        const quint32 nth = 2 + random.bounded(6U);
        name = QStringLiteral("every %1th").arg(nth);
        rejects = [nth, salt](quint32 address) { return (address + salt) % nth == 0; };
        break;
    }
    case 3: {
        const quint32 nth = 2 + random.bounded(400U);
        name = QStringLiteral("all but every %1th").arg(nth);
        rejects = [nth, salt](quint32 address) { return (address + salt) % nth != 0; };
        dense = true;
        break;
    }
    case 4: {
        constexpr std::array<quint32, 6> kDensities{5, 20, 50, 80, 95, 99};
        const quint32 percent =
            kDensities.at(random.bounded(static_cast<quint32>(kDensities.size())));
        name = QStringLiteral("scattered %1%").arg(percent);
        rejects = [percent, salt](quint32 address) {
            return scattered(address, salt) % 100 < percent;
        };
        dense = percent > 50;
        break;
    }
    default: {
        const quint32 size = 1 + random.bounded(300U);
        name = QStringLiteral("blocks of %1").arg(size);
        rejects = [size, salt](quint32 address) { return (address + salt) / size % 2 == 0; };
        dense = size > 100;
        break;
    }
    }
}

quint32 randomAddress(QRandomGenerator& random)
{
    switch (random.bounded(32)) {
    case 0:
        return 0;
    case 1:
        return 0xFFFFFFFF;
    case 2:
        return 0x7F000001;
    default:
        break;
    }
    const quint32 first = edgeOctet<4>(random, {0, 255, 192, 10});
    const quint32 second = edgeOctet<5>(random, {0, 255, 254, 168, 1});
    const quint32 third = edgeOctet<5>(random, {253, 254, 255, 0, 1});
    const quint32 fourth = edgeOctet<9>(random, {0, 1, 2, 250, 251, 252, 253, 254, 255});
    return (first << 24) | (second << 16) | (third << 8) | fourth;
}
