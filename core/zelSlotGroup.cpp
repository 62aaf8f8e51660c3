#include "zelSlotGroup.h"

#include <utility>

namespace ZEL {

void SlotGroup::appendTo(std::vector<std::uint32_t>& slots) const
{
    slots.push_back(m_first);
    slots.push_back(m_second);
    if (m_rest)
        slots.insert(slots.end(), m_rest->begin(), m_rest->end());
}

void SlotGroup::insert(std::uint32_t slot)
{
    if (slot < m_first)
        std::swap(slot, m_first);
    if (slot < m_second)
        std::swap(slot, m_second);
    if (!m_rest)
        m_rest = std::make_unique<std::set<std::uint32_t>>();
    m_rest->insert(m_rest->end(), slot);
}

bool SlotGroup::erase(std::uint32_t slot)
{
    if (slot == m_first || slot == m_second) {
        if (slot == m_first)
            m_first = m_second;
        m_second = takeLowestOfRest();
        return true;
    }
    if (!m_rest || m_rest->erase(slot) == 0)
        return false;
    if (m_rest->empty())
        m_rest = nullptr;
    return true;
}

std::uint32_t SlotGroup::takeLowestOfRest()
{
    if (!m_rest)
        return kNone;
    const std::uint32_t lowest = *m_rest->begin();
    m_rest->erase(m_rest->begin());
    if (m_rest->empty())
        m_rest = nullptr;
    return lowest;
}

} // namespace ZEL
