#pragma once

#include <cstdint>
#include <vector>

namespace ZEL {

/// How many entries stand before a slot, in slots with holes among them: counts of blocks of slots,
/// summed up in a binary indexed tree. Every question and change takes a time that is logarithmic
/// in the number of slots.
class SlotCounts {
public:
    bool isEmpty() const { return m_sums.empty(); }
    /// Counts the slots that are not null.
    void count(void* const* slots, std::uint32_t used);
    void clear();

    /// The slot's entry was erased; nothing happens before count.
    void onErased(std::uint32_t slot);
    /// An entry was appended there; not before count.
    void onAppended(std::uint32_t slot);

    /// The slot of the entry at the index, which must be in range.
    std::uint32_t slotAt(void* const* slots, std::uint32_t index) const;
    /// How many entries stand before the slot.
    std::uint32_t indexOf(void* const* slots, std::uint32_t slot) const;

private:
    static constexpr std::uint32_t kBlock = 64;

    void add(std::uint32_t block, std::uint32_t change);

    /// The tree, from 1: each node sums as many blocks up to its own as its lowest set bit says.
    std::vector<std::uint32_t> m_sums;
};

} // namespace ZEL
