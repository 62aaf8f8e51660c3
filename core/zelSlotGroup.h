#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

namespace ZEL {

/// The slots of one key that has several, ascending. The two lowest lie in the group itself: most
/// doubles are pairs. All work on one slot takes a logarithm of their number at most.
class SlotGroup {
public:
    /// Without a key.
    SlotGroup() = default;
    /// Two different slots.
    SlotGroup(std::uint32_t a, std::uint32_t b) : m_first(a < b ? a : b), m_second(a < b ? b : a) {}

    std::uint32_t lowest() const { return m_first; }
    /// After an erasure: one slot is left.
    bool isSingle() const { return m_second == kNone; }
    /// How many slots there are, when it is not single.
    std::uint32_t size() const
    {
        return m_rest ? static_cast<std::uint32_t>(m_rest->size()) + 2 : 2;
    }
    void appendTo(std::vector<std::uint32_t>& slots) const;

    /// The slot must not be there yet.
    void insert(std::uint32_t slot);
    /// False when the slot is not there. Not of a group that is single.
    bool erase(std::uint32_t slot);
    /// Gives every slot its new number. The order must stay as it is.
    template <class NewSlot>
    void renumber(NewSlot newSlot)
    {
        if (m_first == kNone)
            return;
        m_first = newSlot(m_first);
        m_second = newSlot(m_second);
        if (!m_rest)
            return;
        std::set<std::uint32_t> renumbered;
        for (const std::uint32_t slot : *m_rest)
            renumbered.insert(renumbered.end(), newSlot(slot));
        m_rest->swap(renumbered);
    }

private:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    std::uint32_t takeLowestOfRest();

    std::uint32_t m_first = kNone;
    std::uint32_t m_second = kNone;
    std::unique_ptr<std::set<std::uint32_t>> m_rest; ///< Those above. Null: there are none.
};

} // namespace ZEL
