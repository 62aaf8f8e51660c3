#include "zelSlotCounts.h"

namespace ZEL {

namespace {

std::size_t lowestBit(std::size_t number)
{
    return number & (~number + 1);
}

} // namespace

void SlotCounts::count(void* const* slots, std::uint32_t used)
{
    m_sums.assign(used / kBlock + 2, 0);
    for (std::uint32_t slot = 0; slot < used; ++slot) {
        if (slots[slot])
            ++m_sums[slot / kBlock + 1];
    }
    for (std::size_t node = 1; node < m_sums.size(); ++node) {
        const std::size_t next = node + lowestBit(node);
        if (next < m_sums.size())
            m_sums[next] += m_sums[node];
    }
}

void SlotCounts::clear()
{
    m_sums.clear();
    m_sums.shrink_to_fit();
}

void SlotCounts::onErased(std::uint32_t slot)
{
    if (!isEmpty())
        add(slot / kBlock, UINT32_MAX); // One less, in arithmetic that wraps round.
}

void SlotCounts::onAppended(std::uint32_t slot)
{
    const std::size_t node = slot / kBlock + 1;
    while (m_sums.size() <= node) { // A new node sums up the blocks before it that are its own.
        const std::size_t added = m_sums.size();
        std::uint32_t sum = 0;
        for (std::size_t part = added - 1; part > added - lowestBit(added); part -= lowestBit(part))
            sum += m_sums[part];
        m_sums.push_back(sum);
    }
    add(slot / kBlock, 1);
}

std::uint32_t SlotCounts::slotAt(void* const* slots, std::uint32_t index) const
{
    std::size_t step = 1;
    while (step * 2 < m_sums.size())
        step *= 2;
    std::size_t blocks = 0; // That many blocks hold no more than index entries.
    for (; step > 0; step /= 2) {
        if (blocks + step < m_sums.size() && m_sums[blocks + step] <= index) {
            blocks += step;
            index -= m_sums[blocks];
        }
    }
    auto slot = static_cast<std::uint32_t>(blocks) * kBlock;
    for (;; ++slot) {
        if (slots[slot] && index-- == 0)
            return slot;
    }
}

std::uint32_t SlotCounts::indexOf(void* const* slots, std::uint32_t slot) const
{
    std::uint32_t index = 0;
    for (std::size_t node = slot / kBlock; node > 0; node -= lowestBit(node))
        index += m_sums[node];
    for (std::uint32_t other = slot - slot % kBlock; other < slot; ++other)
        index += slots[other] ? 1 : 0;
    return index;
}

void SlotCounts::add(std::uint32_t block, std::uint32_t change)
{
    for (std::size_t node = block + 1; node < m_sums.size(); node += lowestBit(node))
        m_sums[node] += change;
}

} // namespace ZEL
