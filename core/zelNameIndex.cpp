#include "zelNameIndex.h"

#include "zelCore.h"
#include "zelSequence.h"
#include "zelShortText.h"

#include <algorithm>

namespace ZEL {

using ShortText::hashOf;

NameIndex::~NameIndex()
{
    const Sequence sequence(m_home);
    for (std::uint32_t slot = 0; slot < sequence.usedSlots(); ++slot) {
        Namable* const object = objectAt(slot);
        if (object && object->m_index == this)
            object->m_index = nullptr;
    }
}

/// Whether an entry has the name.
auto NameIndex::isNamed(std::string_view name)
{
    return [name](const void* entry) {
        return ShortText::areEqual(static_cast<const Namable*>(entry)->m_name, name);
    };
}

Namable* NameIndex::find(std::string_view name)
{
    takeUpNewEntries();
    const std::uint32_t hash = hashOf(name);
    auto* object = static_cast<Namable*>(m_table.findObject(hash, isNamed(name)));
    // An object's class changes while it is constructed and destroyed.
    while (object && !hasPlainName(*object)) {
        leaveToAsking(*object);
        object = static_cast<Namable*>(m_table.findObject(hash, isNamed(name)));
    }
    return object;
}

std::uint32_t NameIndex::firstSlot(std::string_view name) const
{
    return m_table.first(hashOf(name), isNamed(name));
}

std::uint32_t NameIndex::firstSlotOf(const Namable& object) const
{
    if (object.m_index != this || asks())
        return kNoSlot;
    const SlotTable::First first = m_table.find(hashOf(object.m_name), isNamed(object.m_name));
    return first.object == &object ? first.slot : kNoSlot;
}

void NameIndex::collectAsked(std::uint32_t before, std::vector<std::uint32_t>& slots) const
{
    const auto end = std::lower_bound(m_asked.begin(), m_asked.end(), before);
    slots.assign(m_asked.begin(), end);
}

void NameIndex::onErased(Namable* object, std::uint32_t slot)
{
    if (object->m_index != this)
        return;
    erase(hashOf(object->m_name), slot);
    if (!isEntered(*object))
        object->m_index = nullptr;
}

void NameIndex::onInserted(std::uint32_t slot)
{
    if (slot >= m_slots)
        return;
    m_table.renumber([slot](std::uint32_t old) { return old < slot ? old : old + 1; });
    for (std::uint32_t& asked : m_asked)
        asked += asked < slot ? 0 : 1;
    ++m_slots;
    takeUp(slot);
}

void NameIndex::trim(std::uint32_t slots)
{
    m_slots = std::min(m_slots, slots);
    while (!m_asked.empty() && m_asked.back() >= slots)
        m_asked.pop_back();
}

void NameIndex::onHolesClosed(const std::vector<std::uint32_t>& entriesBefore)
{
    m_table.renumber([&](std::uint32_t slot) { return entriesBefore[slot]; });
    const auto isHole = [&](std::uint32_t slot) {
        return entriesBefore[slot] == entriesBefore[slot + 1];
    };
    m_asked.erase(std::remove_if(m_asked.begin(), m_asked.end(), isHole), m_asked.end());
    for (std::uint32_t& slot : m_asked)
        slot = entriesBefore[slot];
    m_slots = entriesBefore[m_slots];
}

void NameIndex::rename(Namable& object, std::string& name)
{
    const std::uint32_t hash = hashOf(object.m_name);
    const SlotTable::First first = m_table.find(hash, isNamed(object.m_name));
    // Who has a name alone stands in one slot; of several of one name, the object has some.
    if (first.count == 1) {
        erase(hash, first.slot);
        object.m_name.swap(name);
        enter(object, first.slot);
        return;
    }
    std::vector<std::uint32_t> slots = slotsOf(object);
    const auto isAsked = [this, hash](std::uint32_t slot) { return !erase(hash, slot); };
    slots.erase(std::remove_if(slots.begin(), slots.end(), isAsked), slots.end());
    object.m_name.swap(name);
    for (const std::uint32_t slot : slots)
        enter(object, slot);
}

const std::string& NameIndex::nameOf(const Namable& object)
{
    return object.m_name;
}

void NameIndex::appendName(const Namable& object, std::string& text)
{
    if (hasPlainName(object))
        text += object.m_name;
    else
        text += object.getName();
}

/// The slots that hold the object under its name, and perhaps others of it that were taken up.
std::vector<std::uint32_t> NameIndex::slotsOf(const Namable& object) const
{
    constexpr std::uint32_t kFew = 8; // So many are looked through.
    const std::uint32_t hash = hashOf(object.m_name);
    std::vector<std::uint32_t> slots;
    if (m_table.find(hash, isNamed(object.m_name)).count <= kFew) {
        const auto isOther = [&](std::uint32_t slot) { return objectAt(slot) != &object; };
        m_table.collect(hash, isNamed(object.m_name), slots);
        slots.erase(std::remove_if(slots.begin(), slots.end(), isOther), slots.end());
    } else {
        Sequence(m_home).collectSlots(&object, slots);
        slots.erase(std::lower_bound(slots.begin(), slots.end(), m_slots), slots.end());
    }
    return slots;
}

/// Whether a slot holds the object under its name.
bool NameIndex::isEntered(const Namable& object) const
{
    const SlotTable::First first = m_table.find(hashOf(object.m_name), isNamed(object.m_name));
    return first.object == &object || (first.count > 1 && !slotsOf(object).empty());
}

void NameIndex::takeUpNewEntries()
{
    const std::uint32_t used = Sequence(m_home).usedSlots();
    if (m_slots == used)
        return;
    m_table.reserve(used - m_slots);
    while (m_slots < used)
        takeUp(m_slots++);
}

void NameIndex::takeUp(std::uint32_t slot)
{
    Namable* const object = objectAt(slot);
    if (!object)
        return;
    const bool isFree = !object->m_index || object->m_index == this;
    if (isFree && hasPlainName(*object)) {
        object->m_index = this;
        enter(*object, slot);
    } else {
        ask(slot);
    }
}

void NameIndex::enter(Namable& object, std::uint32_t slot)
{
    m_table.insert(hashOf(object.m_name), slot, &object, isNamed(object.m_name));
}

/// False when no name of that hash has the slot.
bool NameIndex::erase(std::uint32_t hash, std::uint32_t slot)
{
    return m_table.erase(hash, slot, Sequence(m_home).slots());
}

void NameIndex::leaveToAsking(Namable& object)
{
    const std::uint32_t hash = hashOf(object.m_name);
    for (const std::uint32_t slot : slotsOf(object)) {
        if (erase(hash, slot))
            ask(slot);
    }
    object.m_index = nullptr;
}

void NameIndex::ask(std::uint32_t slot)
{
    m_asked.insert(std::upper_bound(m_asked.begin(), m_asked.end(), slot), slot);
}

Namable* NameIndex::objectAt(std::uint32_t slot) const
{
    return static_cast<Namable*>(Sequence(m_home).slots()[slot]);
}

} // namespace ZEL
