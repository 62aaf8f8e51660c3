#include "zelSlotTable.h"

namespace ZEL {

bool SlotTable::erase(std::uint32_t hash, std::uint32_t slot)
{
    if (m_entries.empty())
        return false;
    for (std::size_t place = hash & mask(); m_entries[place].slot != kNoSlot;
         place = (place + 1) & mask()) {
        Entry& entry = m_entries[place];
        if (entry.hash != hash)
            continue;
        if (entry.slot == slot) {
            eraseEntry(place);
            return true;
        }
        if (isGroup(entry.slot) && eraseFromGroup(entry, slot))
            return true;
    }
    return false;
}

void SlotTable::clear()
{
    *this = SlotTable();
}

void SlotTable::insertEntry(std::uint32_t hash, std::uint32_t slot)
{
    if ((m_used + 1) * 4 > m_entries.size() * 3)
        grow();
    std::size_t place = hash & mask();
    while (m_entries[place].slot != kNoSlot)
        place = (place + 1) & mask();
    m_entries[place] = {hash, slot};
    ++m_used;
}

void SlotTable::eraseEntry(std::size_t hole)
{
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
}

void SlotTable::addToGroup(Entry& entry, std::uint32_t slot)
{
    if (!isGroup(entry.slot)) {
        std::uint32_t number = static_cast<std::uint32_t>(m_groups.size()) | kGroupBit;
        if (m_freeGroups.empty()) {
            m_groups.emplace_back();
        } else {
            number = m_freeGroups.back();
            m_freeGroups.pop_back();
        }
        m_groups[number & ~kGroupBit] = {entry.slot};
        entry.slot = number;
    }
    Group& slots = m_groups[entry.slot & ~kGroupBit];
    slots.insert(slots.end(), slot);
}

bool SlotTable::eraseFromGroup(Entry& entry, std::uint32_t slot)
{
    Group& slots = m_groups[entry.slot & ~kGroupBit];
    if (slots.erase(slot) == 0)
        return false;
    if (slots.size() > 1)
        return true;
    m_freeGroups.push_back(entry.slot);
    entry.slot = *slots.begin();
    slots.clear();
    return true;
}

void SlotTable::grow()
{
    constexpr std::size_t kSmallest = 64;
    std::vector<Entry> old(m_entries.empty() ? kSmallest : m_entries.size() * 2);
    old.swap(m_entries);
    m_used = 0;
    for (const Entry& entry : old) {
        if (entry.slot != kNoSlot)
            insertEntry(entry.hash, entry.slot);
    }
}

} // namespace ZEL
