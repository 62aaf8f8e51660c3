#pragma once

#include "zelSlotGroup.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ZEL {

/// A hash table from keys to slot numbers and to the object in the lowest slot of each; a key may
/// have any number of slots. It knows no keys: the caller gives the hash of one, and a function
/// that tells whether an object has it. All work on one slot takes the same time at any length, but
/// for a logarithm among those that share a key. Erasing leaves no marks.
class SlotTable {
public:
    static constexpr std::uint32_t kNoSlot = UINT32_MAX;

    /// The object in the lowest slot of a key, null when it has none.
    template <class HasKey>
    void* findObject(std::uint32_t hash, HasKey hasKey) const
    {
        const Entry* const entry = findEntry(hash, hasKey);
        return entry ? entry->object : nullptr;
    }
    /// The lowest slot of a key, kNoSlot when it has none, its object, and how many slots there
    /// are.
    struct First {
        std::uint32_t slot = kNoSlot;
        std::uint32_t count = 0;
        void* object = nullptr;
    };
    template <class HasKey>
    First find(std::uint32_t hash, HasKey hasKey) const
    {
        const Entry* const entry = findEntry(hash, hasKey);
        if (!entry)
            return {};
        return {lowest(*entry), isGroup(*entry) ? groupOf(*entry).size() : 1, entry->object};
    }
    template <class HasKey>
    std::uint32_t first(std::uint32_t hash, HasKey hasKey) const
    {
        return find(hash, hasKey).slot;
    }
    /// Appends all slots of the key, ascending.
    template <class HasKey>
    void collect(std::uint32_t hash, HasKey hasKey, std::vector<std::uint32_t>& slots) const
    {
        const Entry* const entry = findEntry(hash, hasKey);
        if (!entry)
            return;
        if (isGroup(*entry))
            groupOf(*entry).appendTo(slots);
        else
            slots.push_back(entry->slot);
    }
    /// Makes room for so many more keys at once.
    void reserve(std::size_t keys);
    /// Adds a slot of the key, with the object in it, which is not null; the slot must not be there
    /// yet.
    template <class HasKey>
    void insert(std::uint32_t hash, std::uint32_t slot, void* object, HasKey hasKey)
    {
        if (Entry* const entry = findEntry(hash, hasKey))
            addToGroup(*entry, slot, object);
        else
            insertEntry({object, hash, slot});
    }
    /// False when no key of that hash has the slot. The objects in the other slots of the key are
    /// read from objects, by slot.
    bool erase(std::uint32_t hash, std::uint32_t slot, void* const* objects);
    /// Gives every slot its new number; the objects go with them. The order must stay as it is.
    template <class NewSlot>
    void renumber(NewSlot newSlot)
    {
        for (std::size_t place = 0; place < size(); ++place) {
            Entry& entry = m_entries[place];
            if (entry.object && !isGroup(entry))
                entry.slot = newSlot(entry.slot);
        }
        for (SlotGroup& group : m_groups)
            group.renumber(newSlot);
    }
    void clear();

private:
    struct Entry {
        void* object = nullptr; ///< In the lowest slot; not owned. Null: free.
        std::uint32_t hash = 0;
        /// With the highest bit: the number of a group. Else the key's only slot.
        std::uint32_t slot = kNoSlot;
    };
    static constexpr std::uint32_t kGroupBit = 1u << 31;

    static bool isGroup(const Entry& entry) { return (entry.slot & kGroupBit) != 0; }
    const SlotGroup& groupOf(const Entry& entry) const { return m_groups[entry.slot & ~kGroupBit]; }
    SlotGroup& groupOf(const Entry& entry) { return m_groups[entry.slot & ~kGroupBit]; }
    std::uint32_t lowest(const Entry& entry) const
    {
        return isGroup(entry) ? groupOf(entry).lowest() : entry.slot;
    }
    template <class HasKey>
    Entry* findEntry(std::uint32_t hash, HasKey hasKey) const
    {
        if (!m_entries)
            return nullptr;
        for (std::size_t place = hash & m_mask;; place = (place + 1) & m_mask) {
            Entry& entry = m_entries[place];
            if (!entry.object)
                return nullptr;
            if (entry.hash == hash && hasKey(entry.object))
                return &entry;
        }
    }
    std::size_t size() const { return m_entries ? m_mask + 1 : 0; }
    void insertEntry(const Entry& entry);
    void eraseEntry(std::size_t hole);
    void addToGroup(Entry& entry, std::uint32_t slot, void* object);
    bool eraseFromGroup(Entry& entry, std::uint32_t slot, void* const* objects);
    void growTo(std::size_t newSize);

    std::unique_ptr<Entry[]> m_entries; ///< A power of two, at most half of them used, or null.
    std::size_t m_mask = 0;             ///< Their number less one.
    std::size_t m_used = 0;
    std::vector<SlotGroup> m_groups;         ///< Two slots or more in each, but for the free ones.
    std::vector<std::uint32_t> m_freeGroups; ///< With kGroupBit.
};

} // namespace ZEL
