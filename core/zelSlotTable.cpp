#include "zelSlotTable.h"

namespace ZEL {

void SlotTable::insert(std::uint32_t hash, std::uint32_t slot)
{
    if ((m_used + 1) * 4 > m_entries.size() * 3)
        grow();
    std::size_t place = hash & mask();
    while (m_entries[place].slot != kNoSlot)
        place = (place + 1) & mask();
    m_entries[place] = {hash, slot};
    ++m_used;
}

bool SlotTable::erase(std::uint32_t hash, std::uint32_t slot)
{
    std::size_t hole = findPlace(hash, [slot](std::uint32_t other) { return other == slot; });
    if (hole == kNoPlace)
        return false;
    // Entries behind the hole move up, unless they would then stand before their own place.
    for (std::size_t place = (hole + 1) & mask(); m_entries[place].slot != kNoSlot;
         place = (place + 1) & mask()) {
        const std::size_t distance = (place - m_entries[place].hash) & mask();
        if (distance >= ((place - hole) & mask())) {
            m_entries[hole] = m_entries[place];
            hole = place;
        }
    }
    m_entries[hole] = {};
    --m_used;
    return true;
}

void SlotTable::clear()
{
    m_entries.clear();
    m_entries.shrink_to_fit();
    m_used = 0;
}

void SlotTable::grow()
{
    constexpr std::size_t kSmallest = 64;
    std::vector<Entry> old(m_entries.empty() ? kSmallest : m_entries.size() * 2);
    old.swap(m_entries);
    m_used = 0;
    for (const Entry& entry : old) {
        if (entry.slot != kNoSlot)
            insert(entry.hash, entry.slot);
    }
}

} // namespace ZEL
