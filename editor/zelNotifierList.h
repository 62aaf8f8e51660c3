#pragma once

#include <cstdint>
#include <vector>

namespace ZEL {

class HostEditorNotifier;

/// The notifiers of one editor in the order of registration; it owns none. Each knows its slot, so
/// that erasing one costs the same at any length and in any order, and nothing is looked for: its
/// slot becomes a hole. Holes are closed when an addition finds no room and half of all are holes.
class NotifierList {
public:
    /// Appends the notifier and returns its slot. When others have moved up before that,
    /// onMoved(notifier, slot) is called for each of them.
    template <class OnMoved>
    std::uint32_t append(HostEditorNotifier* notifier, OnMoved onMoved)
    {
        if (m_slots.size() == m_slots.capacity() && m_holes > m_slots.size() / 2)
            closeHoles(onMoved);
        m_slots.push_back(notifier);
        return static_cast<std::uint32_t>(m_slots.size() - 1);
    }
    /// The slot must hold a notifier.
    void erase(std::uint32_t slot)
    {
        m_slots[slot] = nullptr;
        ++m_holes;
        for (; !m_slots.empty() && !m_slots.back(); --m_holes)
            m_slots.pop_back();
    }

    /// The slots, holes too.
    std::uint32_t slotCount() const { return static_cast<std::uint32_t>(m_slots.size()); }
    /// Null for a hole.
    HostEditorNotifier* at(std::uint32_t slot) const { return m_slots[slot]; }

private:
    template <class OnMoved>
    void closeHoles(OnMoved onMoved)
    {
        std::uint32_t used = 0;
        for (HostEditorNotifier* const notifier : m_slots) {
            if (!notifier)
                continue;
            m_slots[used] = notifier;
            onMoved(*notifier, used++);
        }
        m_slots.resize(used);
        m_holes = 0;
    }

    std::vector<HostEditorNotifier*> m_slots; ///< The last is no hole.
    std::uint32_t m_holes = 0;
};

} // namespace ZEL
