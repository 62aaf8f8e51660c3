#include "zelNameIndex.h"

#include "zelCore.h"
#include "zelSequence.h"

#include <cstring>

namespace ZEL {

namespace {

std::uint32_t hashOf(std::string_view name)
{
    const std::size_t hash = std::hash<std::string_view>()(name);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

} // namespace

NameIndex::~NameIndex()
{
    const Sequence sequence(m_home);
    for (std::uint32_t slot = 0; slot < sequence.usedSlots(); ++slot) {
        Namable* const object = objectAt(slot);
        if (object && object->m_index == this)
            object->m_index = nullptr;
    }
}

Namable* NameIndex::find(std::string_view name)
{
    takeUpNewEntries();
    const std::uint32_t hash = hashOf(name);
    void* const* const slots = Sequence(m_home).slots();
    const std::uint32_t slot = m_table.find(hash, [slots, name](std::uint32_t other) {
        return other != kManySlots && name == static_cast<Namable*>(slots[other])->m_name;
    });
    const bool isUnsure =
        slot == kNoSlot
            ? m_table.find(hash, [](std::uint32_t other) { return other == kManySlots; }) != kNoSlot
            : !hasPlainName(*objectAt(slot));
    const Sequence sequence(m_home);
    if (isUnsure)
        return sequence.scanNames(name);
    // All is read again after each name: a host's own getName may do anything.
    for (std::size_t i = 0; i < m_asked.size() && m_asked[i] < slot; ++i) {
        Namable* const object = m_asked[i] < sequence.usedSlots() ? objectAt(m_asked[i]) : nullptr;
        if (object && name == object->getName())
            return object;
    }
    return slot < sequence.usedSlots() ? objectAt(slot) : nullptr;
}

void NameIndex::erase(Namable* object, std::uint32_t slot)
{
    if (object->m_index != this)
        return;
    object->m_index = nullptr;
    if (slot < m_slots && !m_table.erase(hashOf(object->m_name), slot))
        reset();
}

void NameIndex::trim(std::uint32_t slots)
{
    if (m_slots > slots)
        m_slots = slots;
    while (!m_asked.empty() && m_asked.back() >= slots)
        m_asked.pop_back();
}

void NameIndex::reset()
{
    m_table.clear();
    m_asked.clear();
    m_slots = 0;
}

std::uint32_t NameIndex::beginRename(const Namable& object)
{
    const std::uint32_t hash = hashOf(object.m_name);
    const std::uint32_t slot = m_table.find(hash, [this, &object](std::uint32_t other) {
        return other != kManySlots && objectAt(other) == &object;
    });
    if (slot == kNoSlot)
        reset();
    else
        m_table.erase(hash, slot);
    return slot;
}

void NameIndex::endRename(const Namable& object, std::uint32_t slot)
{
    enter(object, slot);
}

std::string_view NameIndex::nameOf(const Namable& object)
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

void NameIndex::takeUpNewEntries()
{
    const Sequence sequence(m_home);
    for (; m_slots < sequence.usedSlots(); ++m_slots) {
        Namable* const object = objectAt(m_slots);
        if (!object)
            continue;
        const bool isFree = !object->m_index || object->m_index == this;
        if (isFree && hasPlainName(*object)) {
            object->m_index = this;
            enter(*object, m_slots);
        } else {
            m_asked.push_back(m_slots);
        }
    }
}

void NameIndex::enter(const Namable& object, std::uint32_t slot)
{
    const std::uint32_t hash = hashOf(object.m_name);
    const auto hasSameName = [this, &object](std::uint32_t other) {
        return other != kManySlots && objectAt(other)->m_name == object.m_name;
    };
    if (m_table.replace(hash, kManySlots, hasSameName))
        return;
    // The mark of another pair of this hash serves as well: it leads to a scan.
    if (m_table.find(hash, [](std::uint32_t other) { return other == kManySlots; }) == kNoSlot)
        m_table.insert(hash, slot);
}

Namable* NameIndex::objectAt(std::uint32_t slot) const
{
    return static_cast<Namable*>(Sequence(m_home).slots()[slot]);
}

} // namespace ZEL
