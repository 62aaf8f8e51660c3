#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL {

/// An open-addressing table from a hash to slot numbers. What the hash is of is the caller's: it
/// compares the entries of one hash itself. Erasing leaves no marks.
class SlotTable {
public:
    static constexpr std::uint32_t kNoSlot = UINT32_MAX;

    /// The first slot of that hash for which matches(slot) is true, kNoSlot when there is none.
    template <class Matches>
    std::uint32_t find(std::uint32_t hash, Matches matches) const
    {
        const std::size_t place = findPlace(hash, matches);
        return place == kNoPlace ? kNoSlot : m_entries[place].slot;
    }
    /// Replaces the slot that find would give. False when there is none.
    template <class Matches>
    bool replace(std::uint32_t hash, std::uint32_t slot, Matches matches)
    {
        const std::size_t place = findPlace(hash, matches);
        if (place == kNoPlace)
            return false;
        m_entries[place].slot = slot;
        return true;
    }
    /// Adds an entry; one that is there already is added again.
    void insert(std::uint32_t hash, std::uint32_t slot);
    /// False when there is no such entry.
    bool erase(std::uint32_t hash, std::uint32_t slot);
    void clear();

private:
    struct Entry {
        std::uint32_t hash = 0;
        std::uint32_t slot = kNoSlot; ///< kNoSlot: free.
    };
    static constexpr std::size_t kNoPlace = SIZE_MAX;

    template <class Matches>
    std::size_t findPlace(std::uint32_t hash, Matches matches) const
    {
        if (m_entries.empty())
            return kNoPlace;
        for (std::size_t place = hash & mask();; place = (place + 1) & mask()) {
            const Entry& entry = m_entries[place];
            if (entry.slot == kNoSlot)
                return kNoPlace;
            if (entry.hash == hash && matches(entry.slot))
                return place;
        }
    }
    std::size_t mask() const { return m_entries.size() - 1; }
    void grow();

    std::vector<Entry> m_entries; ///< A power of two of them, at most three quarters used.
    std::size_t m_used = 0;
};

} // namespace ZEL
