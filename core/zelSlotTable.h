#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace ZEL {

/// A hash table from keys to slot numbers; a key may have any number of slots. It knows no keys:
/// the caller gives the hash of one, and a function that tells whether the entry in a slot has it.
/// All work on one slot takes the same time at any length, but for a logarithm among those that
/// share a key. Erasing leaves no marks.
class SlotTable {
public:
    static constexpr std::uint32_t kNoSlot = UINT32_MAX;

    /// The lowest slot of a key, kNoSlot when it has none, and whether it is the only one.
    struct First {
        std::uint32_t slot = kNoSlot;
        bool isOnly = false;
    };
    template <class HasKey>
    First find(std::uint32_t hash, HasKey hasKey) const
    {
        const std::size_t place = findKey(hash, hasKey);
        if (place == kNoPlace)
            return {};
        const std::uint32_t slot = m_entries[place].slot;
        return {lowest(slot), !isGroup(slot)};
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
        const std::size_t place = findKey(hash, hasKey);
        if (place == kNoPlace)
            return;
        const std::uint32_t slot = m_entries[place].slot;
        if (isGroup(slot))
            slots.insert(slots.end(), group(slot).begin(), group(slot).end());
        else
            slots.push_back(slot);
    }
    /// Adds a slot of the key; it must not be there yet.
    template <class HasKey>
    void insert(std::uint32_t hash, std::uint32_t slot, HasKey hasKey)
    {
        const std::size_t place = findKey(hash, hasKey);
        if (place == kNoPlace)
            insertEntry(hash, slot);
        else
            addToGroup(m_entries[place], slot);
    }
    /// False when no key of that hash has the slot.
    bool erase(std::uint32_t hash, std::uint32_t slot);
    /// Gives every slot its new number. The order must stay as it is.
    template <class NewSlot>
    void renumber(NewSlot newSlot)
    {
        for (Entry& entry : m_entries) {
            if (entry.slot != kNoSlot && !isGroup(entry.slot))
                entry.slot = newSlot(entry.slot);
        }
        for (Group& slots : m_groups) {
            Group renumbered;
            for (const std::uint32_t slot : slots)
                renumbered.insert(renumbered.end(), newSlot(slot));
            slots.swap(renumbered);
        }
    }
    void clear();

private:
    using Group = std::set<std::uint32_t>;
    struct Entry {
        std::uint32_t hash = 0;
        /// kNoSlot: free. With the highest bit: the number of a group. Else the key's only slot.
        std::uint32_t slot = kNoSlot;
    };
    static constexpr std::size_t kNoPlace = SIZE_MAX;
    static constexpr std::uint32_t kGroupBit = 1u << 31;

    static bool isGroup(std::uint32_t slot) { return (slot & kGroupBit) != 0; }
    const Group& group(std::uint32_t slot) const { return m_groups[slot & ~kGroupBit]; }
    std::uint32_t lowest(std::uint32_t slot) const
    {
        return isGroup(slot) ? *group(slot).begin() : slot;
    }
    template <class HasKey>
    std::size_t findKey(std::uint32_t hash, HasKey hasKey) const
    {
        if (m_entries.empty())
            return kNoPlace;
        for (std::size_t place = hash & mask();; place = (place + 1) & mask()) {
            const Entry& entry = m_entries[place];
            if (entry.slot == kNoSlot)
                return kNoPlace;
            if (entry.hash == hash && hasKey(lowest(entry.slot)))
                return place;
        }
    }
    std::size_t mask() const { return m_entries.size() - 1; }
    void insertEntry(std::uint32_t hash, std::uint32_t slot);
    void eraseEntry(std::size_t hole);
    void addToGroup(Entry& entry, std::uint32_t slot);
    bool eraseFromGroup(Entry& entry, std::uint32_t slot);
    void grow();

    std::vector<Entry> m_entries; ///< A power of two of them, at most three quarters used.
    std::size_t m_used = 0;
    std::vector<Group> m_groups;             ///< Two slots or more in each, but for the free ones.
    std::vector<std::uint32_t> m_freeGroups; ///< With kGroupBit.
};

} // namespace ZEL
