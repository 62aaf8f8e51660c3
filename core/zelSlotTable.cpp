#include "zelSlotTable.h"

namespace ZEL {

bool SlotTable::erase(std::uint32_t hash, std::uint32_t slot, void* const* objects)
{
    if (!m_entries)
        return false;
    for (std::size_t place = hash & m_mask; m_entries[place].object; place = (place + 1) & m_mask) {
        Entry& entry = m_entries[place];
        if (entry.hash != hash)
            continue;
        if (entry.slot == slot) {
            eraseEntry(place);
            return true;
        }
        if (isGroup(entry) && eraseFromGroup(entry, slot, objects))
            return true;
    }
    return false;
}

void SlotTable::clear()
{
    *this = SlotTable();
}

void SlotTable::reserve(std::size_t keys)
{
    constexpr std::size_t kSmallest = 64;
    std::size_t newSize = m_entries ? size() : kSmallest;
    while ((m_used + keys) * 2 > newSize)
        newSize *= 2;
    if (newSize != size())
        growTo(newSize);
}

void SlotTable::insertEntry(const Entry& entry)
{
    reserve(1);
    std::size_t place = entry.hash & m_mask;
    while (m_entries[place].object)
        place = (place + 1) & m_mask;
    m_entries[place] = entry;
    ++m_used;
}

void SlotTable::eraseEntry(std::size_t hole)
{
    // Entries behind the hole move up, unless they would then stand before their own place.
    for (std::size_t place = (hole + 1) & m_mask; m_entries[place].object;
         place = (place + 1) & m_mask) {
        const std::size_t distance = (place - m_entries[place].hash) & m_mask;
        if (distance >= ((place - hole) & m_mask)) {
            m_entries[hole] = m_entries[place];
            hole = place;
        }
    }
    m_entries[hole] = {};
    --m_used;
}

void SlotTable::addToGroup(Entry& entry, std::uint32_t slot, void* object)
{
    if (slot < lowest(entry))
        entry.object = object;
    if (isGroup(entry)) {
        groupOf(entry).insert(slot);
        return;
    }
    std::uint32_t number = static_cast<std::uint32_t>(m_groups.size()) | kGroupBit;
    if (m_freeGroups.empty()) {
        m_groups.emplace_back();
    } else {
        number = m_freeGroups.back();
        m_freeGroups.pop_back();
    }
    m_groups[number & ~kGroupBit] = SlotGroup(entry.slot, slot);
    entry.slot = number;
}

bool SlotTable::eraseFromGroup(Entry& entry, std::uint32_t slot, void* const* objects)
{
    SlotGroup& group = groupOf(entry);
    const std::uint32_t lowest = group.lowest();
    if (!group.erase(slot))
        return false;
    if (group.lowest() != lowest)
        entry.object = objects[group.lowest()];
    if (group.isSingle()) {
        m_freeGroups.push_back(entry.slot);
        entry.slot = group.lowest();
        group = SlotGroup();
    }
    return true;
}

void SlotTable::growTo(std::size_t newSize)
{
    const std::size_t oldSize = size();
    auto old = std::make_unique<Entry[]>(newSize);
    old.swap(m_entries);
    m_mask = newSize - 1;
    m_used = 0;
    for (std::size_t place = 0; place < oldSize; ++place) {
        if (old[place].object)
            insertEntry(old[place]);
    }
}

} // namespace ZEL
