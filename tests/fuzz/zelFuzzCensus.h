#pragma once

#include "zel.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zelFuzz {

class SideListener;

/// Objects of one kind, each with the number of references that its known holders have. In the
/// order of the walk, so that one input always makes one run.
template <class T>
class Counted {
public:
    /// True when the object was not known before.
    bool add(T* object)
    {
        if ((m_order.size() + 1) * 2 > m_slots.size())
            grow();
        Slot& slot = m_slots[placeOf(object)];
        const bool isNew = slot.count++ == 0;
        if (isNew) {
            slot.object = object;
            m_order.push_back(object);
        }
        return isNew;
    }
    bool has(const T* object) const { return count(object) > 0; }
    int count(const T* object) const
    {
        return m_slots.empty() ? 0 : m_slots[placeOf(object)].count;
    }
    const std::vector<T*>& all() const& { return m_order; }
    const std::vector<T*>& all() const&& = delete;

private:
    struct Slot {
        const T* object = nullptr;
        int count = 0;
    };

    /// Where the object stands in the table, or would.
    std::size_t placeOf(const T* object) const
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t place = (reinterpret_cast<std::uintptr_t>(object) / 16) * 0x9E3779B1U & mask;
        while (m_slots[place].count > 0 && m_slots[place].object != object)
            place = (place + 1) & mask;
        return place;
    }
    void grow()
    {
        std::vector<Slot> former(std::max<std::size_t>(64, m_slots.size() * 4));
        former.swap(m_slots);
        for (const Slot& slot : former) {
            if (slot.count > 0)
                m_slots[placeOf(slot.object)] = slot;
        }
    }

    std::vector<Slot> m_slots; ///< A power of two of them, at most half in use.
    std::vector<T*> m_order;
};

/// Walks down from what it is given and counts who holds whom. It keeps plain pointers and holds
/// nothing: valid until something changes.
struct Census {
    void addNode(ZEL::Node* node);
    void addCompound(ZEL::Compound* compound);
    void addList(ZEL::PortList* list);
    void addSide(SideListener* side); ///< Null: the class has no second base.
    void addPort(ZEL::Port* port) { ports.add(port); }

    Counted<ZEL::Node> nodes;
    Counted<ZEL::Compound> compounds;
    Counted<ZEL::PortList> lists;
    Counted<ZEL::NodeList> nodeLists;
    Counted<ZEL::Port> ports;
};

/// So many entries of the list are that object.
template <class List, class T>
int countIn(List& list, const T* object)
{
    int count = 0;
    for (const T* const entry : list)
        count += entry == object ? 1 : 0;
    return count;
}

} // namespace zelFuzz
