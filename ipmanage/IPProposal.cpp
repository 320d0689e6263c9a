#include "ipmanage/IPProposal.h"

namespace {

constexpr int kMostRefusals = 256;

class Candidates final
{
public:
    explicit Candidates(quint32 base)
        : m_base(base)
    {
    }

    quint32 next()
    {
        ++m_step;
        if (octet(0) + m_step > 255) {
            setOctet(1, octet(1) < 255 ? octet(1) + 1 : 1);
            setOctet(0, 1);
            m_step = 1;
        }
        if (octet(2) == 255)
            setOctet(2, 1);
        if (octet(3) == 0 || octet(3) == 255)
            setOctet(3, 192);
        return m_base + m_step; // does not exceed the last octet
    }

private:
    // Octet 0 is the last one.
    quint32 octet(int place) const { return (m_base >> (8 * place)) & 0xFF; }
    void setOctet(int place, quint32 value)
    {
        m_base = (m_base & ~(quint32{0xFF} << (8 * place))) | (value << (8 * place));
    }

    quint32 m_base;
    quint32 m_step = 0;
};

} // namespace

QList<quint32> proposeIPAddresses(quint32 base, int wanted,
                                  const std::function<bool(quint32)>& isRejected)
{
    QList<quint32> found;
    Candidates candidates(base);
    int refusals = 0;
    for (int search = 0; search < wanted; ++search) {
        for (;;) {
            const quint32 candidate = candidates.next();
            if (!isRejected(candidate)) {
                found.append(candidate);
                break;
            }
            if (++refusals > kMostRefusals)
                break;
        }
    }
    return found;
}
