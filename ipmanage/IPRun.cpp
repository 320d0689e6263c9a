#include "ipmanage/IPRun.h"

void generateIPRun(quint32 start, int count, const std::function<bool(quint32)>& isRejected,
                   const std::function<bool(quint32)>& emitAddress)
{
    // Unsigned, because the third octet grows with the count and may exceed 32 bits when shifted.
    quint32 candidate = start;
    quint32 third = (start >> 8) & 0xFF;
    quint32 last = start & 0xFF;
    quint32 increment = 0;
    int produced = 0;
    while (produced < count) {
        if (last + increment > 0xFF) {
            ++third;
            last = 1;
            if (third > 0xFF) {
                increment = 1;
                ++produced;
                continue;
            }
            increment = 0;
        }
        candidate = (candidate & 0xFFFF0000) | (third << 8) | (last + increment);
        if (increment > 0 && isRejected(candidate)) {
            ++increment;
            continue;
        }
        if (!emitAddress(candidate))
            return;
        ++increment;
        ++produced;
    }
}
