#include "zelSequence.h"

#include "zelCore.h"
#include "zelNameIndex.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ZEL {

namespace {

constexpr std::uint32_t kNoSlot = SlotTable::kNoSlot;

/// Up to this length a sequence is only ever searched slot by slot.
constexpr std::uint32_t kShort = 32;

/// A table is filled when plain work has visited every slot about so many times.
constexpr std::uint64_t kPatience = 4;

/// How many slots can be moved in the time that it takes to visit one.
constexpr std::uint32_t kMovesPerVisit = 8;

std::uint32_t hashOf(const void* object)
{
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    return static_cast<std::uint32_t>((reinterpret_cast<std::uintptr_t>(object) * kSpread) >> 32);
}

/// Asks the object only if its class has a getName of its own.
bool hasName(const Namable& object, std::string_view name)
{
    if (hasPlainName(object)) {
        // Names of one list often differ in their last character only: that one first.
        const std::string_view own = NameIndex::nameOf(object);
        return own.size() == name.size() &&
               (own.empty() || (own.back() == name.back() && own == name));
    }
    const char* const text = object.getName();
    return std::strncmp(text, name.data(), name.size()) == 0 && text[name.size()] == '\0';
}

void freeBlock(SequenceBlock* block)
{
    ::operator delete(block);
}

} // namespace

SequenceExtras::SequenceExtras() = default;

SequenceExtras::~SequenceExtras() = default;

// The word tells a block from an only entry by its lowest bit.
// NOLINTBEGIN(performance-no-int-to-ptr)
SequenceBlock* Sequence::block() const
{
    return m_data == 0 || (m_data & 1) != 0 ? nullptr : reinterpret_cast<SequenceBlock*>(m_data);
}

void* Sequence::single() const
{
    return (m_data & 1) != 0 ? reinterpret_cast<void*>(m_data - 1) : nullptr;
}
// NOLINTEND(performance-no-int-to-ptr)

int Sequence::size() const
{
    const SequenceBlock* const entries = block();
    if (!entries)
        return m_data == 0 ? 0 : 1;
    return static_cast<int>(entries->used - (entries->extras ? entries->extras->holes : 0));
}

void* Sequence::at(int index) const
{
    SequenceBlock* const entries = block();
    return entries ? entries->slots()[slotAt(index)] : single();
}

int Sequence::indexOf(const void* object) const
{
    SequenceExtras* const rare = findExtras();
    if (rare && rare->holes > rare->first)
        closeHoles();
    const std::uint32_t slot = findSlot(object);
    return slot == kNoSlot ? -1 : static_cast<int>(slot - (rare ? rare->first : 0));
}

bool Sequence::contains(const void* object) const
{
    return findSlot(object) != kNoSlot;
}

void Sequence::append(void* object)
{
    if (m_data == 0) {
        m_data = reinterpret_cast<std::uintptr_t>(object) + 1;
        return;
    }
    SequenceBlock* entries = block();
    if (!entries)
        entries = &growTo(2);
    else if (entries->used == entries->capacity) {
        SequenceExtras* const rare = entries->extras;
        if (rare && rare->holes > kShort && rare->holes * 4 > entries->used)
            closeHoles();
        else
            entries = &growTo(entries->capacity * 2);
    }
    entries->slots()[entries->used++] = object;
}

bool Sequence::eraseFirst(const void* object)
{
    const std::uint32_t slot = findSlot(object);
    if (slot == kNoSlot)
        return false;
    eraseSlot(slot);
    return true;
}

int Sequence::eraseEvery(const void* object)
{
    SequenceBlock* const entries = block();
    if (entries && !entries->extras && entries->used <= kShort) {
        void** const begin = entries->slots();
        void** const end = begin + entries->used;
        const auto erased = end - std::remove(begin, end, object);
        entries->used -= static_cast<std::uint32_t>(erased);
        return static_cast<int>(erased);
    }
    int erased = 0;
    bool mayStandTwice = true;
    while (mayStandTwice && eraseFirst(object)) {
        ++erased;
        SequenceExtras* const rare = findExtras();
        mayStandTwice = !rare || rare->placedSlots == 0;
    }
    return erased;
}

void Sequence::eraseAt(int index)
{
    eraseSlot(block() ? slotAt(index) : 0);
}

void Sequence::insertAt(int index, void* object)
{
    append(object);
    closeHoles();
    if (SequenceBlock* const entries = block()) {
        void** const slots = entries->slots();
        std::rotate(slots + index, slots + entries->used - 1, slots + entries->used);
    }
}

void Sequence::clear()
{
    if (SequenceBlock* const entries = block()) {
        delete entries->extras;
        freeBlock(entries);
    }
    m_data = 0;
}

void Sequence::swap(Sequence other)
{
    std::swap(m_data, other.m_data);
}

void Sequence::assign(const Sequence& other)
{
    std::vector<void*> entries;
    entries.reserve(static_cast<std::size_t>(other.size()));
    for (int i = 0; i < other.size(); ++i)
        entries.push_back(other.at(i));
    std::vector<std::pair<void*, int>> balance;
    if (SequenceExtras* const rare = findExtras())
        balance.swap(rare->balance);
    clear();
    for (void* object : entries)
        append(object);
    if (!balance.empty())
        extras().balance.swap(balance);
}

void Sequence::dropIndex()
{
    if (SequenceExtras* const rare = findExtras())
        rare->names = nullptr;
}

SequenceExtras& Sequence::extras()
{
    SequenceBlock* entries = block();
    if (!entries)
        entries = &growTo(2);
    if (!entries->extras)
        entries->extras = new SequenceExtras;
    return *entries->extras;
}

SequenceExtras* Sequence::findExtras() const
{
    SequenceBlock* const entries = block();
    return entries ? entries->extras : nullptr;
}

SequenceBlock& Sequence::growTo(std::uint32_t capacity)
{
    void* const memory = ::operator new(sizeof(SequenceBlock) + capacity * sizeof(void*));
    auto* const grown = new (memory) SequenceBlock;
    grown->capacity = capacity;
    if (SequenceBlock* const old = block()) {
        grown->used = old->used;
        grown->extras = old->extras;
        std::memcpy(grown->slots(), old->slots(), old->used * sizeof(void*));
        freeBlock(old);
    } else if (m_data != 0) {
        grown->used = 1;
        grown->slots()[0] = single();
    }
    m_data = reinterpret_cast<std::uintptr_t>(grown);
    return *grown;
}

// Slots.

/// The slot of the entry at the index. Holes are closed first, unless all stand before the entries.
std::uint32_t Sequence::slotAt(int index) const
{
    SequenceExtras* const rare = findExtras();
    if (!rare)
        return static_cast<std::uint32_t>(index);
    if (rare->holes > rare->first)
        closeHoles();
    return rare->first + static_cast<std::uint32_t>(index);
}

/// The first slot of the object, kNoSlot when it has none.
std::uint32_t Sequence::findSlot(const void* object) const
{
    SequenceBlock* const entries = block();
    if (!entries)
        return m_data != 0 && single() == object ? 0 : kNoSlot;
    if (entries->used > kShort) {
        SequenceExtras& rare = Sequence(m_data).extras();
        if (!rare.hasDoubles && rare.searchWork > kPatience * entries->used) {
            const std::uint32_t slot = findPlacedSlot(rare, object);
            if (!rare.hasDoubles)
                return slot;
        }
    }
    void** const begin = entries->slots() + (entries->extras ? entries->extras->first : 0);
    void** const end = entries->slots() + entries->used;
    void** const place = std::find(begin, end, object);
    if (entries->extras)
        entries->extras->searchWork += static_cast<std::uint64_t>(place - begin);
    return place == end ? kNoSlot : static_cast<std::uint32_t>(place - entries->slots());
}

std::uint32_t Sequence::findPlacedSlot(SequenceExtras& rare, const void* object) const
{
    SequenceBlock& entries = *block();
    void** const slots = entries.slots();
    for (; rare.placedSlots < entries.used; ++rare.placedSlots) {
        void* const entry = slots[rare.placedSlots];
        if (!entry)
            continue;
        const auto isEntry = [slots, entry](std::uint32_t slot) { return slots[slot] == entry; };
        if (rare.places.find(hashOf(entry), isEntry) != kNoSlot) {
            rare.hasDoubles = true;
            rare.places.clear();
            rare.placedSlots = 0;
            return kNoSlot;
        }
        rare.places.insert(hashOf(entry), rare.placedSlots);
    }
    return rare.places.find(hashOf(object),
                            [slots, object](std::uint32_t slot) { return slots[slot] == object; });
}

void Sequence::eraseSlot(std::uint32_t slot)
{
    SequenceBlock* const entries = block();
    if (!entries) {
        m_data = 0;
        return;
    }
    SequenceExtras* const rare = entries->extras;
    if (rare && (rare->placedSlots > 0 || rare->holes > 0 || rare->names)) {
        leaveHole(*rare, slot);
        return;
    }
    void** const place = entries->slots() + slot;
    --entries->used;
    const std::uint32_t moved = entries->used - slot;
    std::memmove(place, place + 1, moved * sizeof(void*));
    if (rare)
        rare->searchWork += moved / kMovesPerVisit;
}

void Sequence::leaveHole(SequenceExtras& rare, std::uint32_t slot)
{
    SequenceBlock& entries = *block();
    void** const slots = entries.slots();
    if (slot < rare.placedSlots)
        rare.places.erase(hashOf(slots[slot]), slot);
    if (rare.names)
        rare.names->erase(static_cast<Namable*>(slots[slot]), slot);
    slots[slot] = nullptr;
    ++rare.holes;
    for (; entries.used > 0 && !slots[entries.used - 1]; --entries.used)
        --rare.holes;
    rare.first = std::min(rare.first, entries.used);
    while (rare.first < entries.used && !slots[rare.first])
        ++rare.first;
    rare.placedSlots = std::min(rare.placedSlots, entries.used);
    if (rare.names)
        rare.names->trim(entries.used);
    if (rare.holes > kShort && rare.holes * 2 > entries.used)
        closeHoles();
}

/// Gives the entries the first slots, and empties the tables, which hold the old ones.
void Sequence::closeHoles() const
{
    SequenceExtras* const rare = findExtras();
    if (!rare)
        return;
    SequenceBlock& entries = *block();
    void** const slots = entries.slots();
    void** const end = std::remove(slots, slots + entries.used, nullptr);
    entries.used = static_cast<std::uint32_t>(end - slots);
    rare->first = 0;
    rare->holes = 0;
    rare->places.clear();
    rare->placedSlots = 0;
    rare->hasDoubles = false;
    rare->searchWork = 0;
    if (rare->names)
        rare->names->reset();
    rare->scanWork = 0;
}

std::uint32_t Sequence::usedSlots() const
{
    SequenceBlock* const entries = block();
    return entries ? entries->used : 0;
}

void* const* Sequence::slots() const
{
    return block()->slots();
}

// Names.

Namable* Sequence::findNamed(std::string_view name)
{
    SequenceBlock* const entries = block();
    if (!entries || entries->used <= kShort)
        return scanNames(name);
    SequenceExtras& rare = extras();
    if (!rare.names || !rare.names->isInUse()) {
        if (rare.scanWork <= kPatience * entries->used)
            return scanNames(name);
        if (!rare.names)
            rare.names = std::make_unique<NameIndex>(m_data);
    }
    return rare.names->find(name);
}

Namable* Sequence::scanNames(std::string_view name) const
{
    if (m_data == 0)
        return nullptr;
    SequenceBlock* entries = block();
    if (!entries) {
        auto* const only = static_cast<Namable*>(single());
        return hasName(*only, name) ? only : nullptr;
    }
    // All is read again after each name: a host's own getName may do anything.
    std::uint32_t slot = 0;
    Namable* found = nullptr;
    for (; !found && entries && slot < entries->used; entries = block(), ++slot) {
        auto* const object = static_cast<Namable*>(entries->slots()[slot]);
        if (object && hasName(*object, name))
            found = object;
    }
    if (entries && entries->extras)
        entries->extras->scanWork += slot;
    return found;
}

} // namespace ZEL
