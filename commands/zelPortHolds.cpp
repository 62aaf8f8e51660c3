#include "zelPortHolds.h"

namespace ZEL::CmdImpl {

void PortHolds::reset(std::size_t ports)
{
    constexpr int kBits = 64;
    m_entries = {};
    if (ports == 0)
        return;
    int bits = 1;
    while ((std::size_t(1) << bits) < 2 * ports)
        ++bits;
    m_entries.resize(std::size_t(1) << bits);
    m_shift = kBits - bits;
}

} // namespace ZEL::CmdImpl
