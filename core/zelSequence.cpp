#include "zelSequence.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace ZEL {

namespace {

constexpr std::uint32_t kNoSlot = SlotTable::kNoSlot;

/// How many slots can be moved in the time that it takes to visit one.
constexpr std::uint32_t kMovesPerVisit = 8;

std::uint32_t hashOf(const void* object)
{
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    return static_cast<std::uint32_t>((reinterpret_cast<std::uintptr_t>(object) * kSpread) >> 32);
}

/// Whether an object is this one.
auto isObject(const void* object)
{
    return [object](const void* other) { return other == object; };
}

/// Only where there is room.
SequenceExtras& extrasOf(SequenceBlock& block)
{
    if (!block.extras())
        block.extras() = new SequenceExtras;
    return *block.extras();
}

SequenceBlock& newBlock(std::uint32_t capacity, bool withExtrasRoom)
{
    const std::size_t before = withExtrasRoom ? sizeof(void*) : 0;
    void* const memory = ::operator new(before + sizeof(SequenceBlock) + capacity * sizeof(void*));
    auto* const block = new (static_cast<unsigned char*>(memory) + before) SequenceBlock;
    block->capacity = capacity;
    block->hasExtrasRoom = withExtrasRoom ? 1 : 0;
    if (withExtrasRoom)
        block->extras() = nullptr;
    return *block;
}

void freeBlock(SequenceBlock& block)
{
    if (block.hasExtrasRoom)
        ::operator delete(&block.extras());
    else
        ::operator delete(&block);
}

} // namespace

int Sequence::indexOf(const void* object) const
{
    const std::uint32_t slot = findSlot(object);
    if (slot == kNoSlot)
        return -1;
    SequenceExtras* const rare = findExtras();
    if (!rare)
        return static_cast<int>(slot);
    if (rare->holes == rare->first)
        return static_cast<int>(slot - rare->first);
    return static_cast<int>(countedSlots(*rare).indexOf(slots(), slot));
}

bool Sequence::contains(const void* object) const
{
    return findSlot(object) != kNoSlot;
}

bool Sequence::isKnownOnce(const void* object) const
{
    SequenceBlock* const entries = block();
    if (!entries)
        return m_data != 0 && single() == object;
    void** const slots = entries->slots();
    return entries->used <= kShort && std::count(slots, slots + entries->used, object) == 1;
}

std::uint32_t Sequence::appendMore(void* object)
{
    SequenceBlock* entries = block();
    if (!entries) {
        SequenceBlock& pair = newBlock(2, false);
        pair.slots()[0] = single();
        pair.slots()[1] = object;
        pair.used = 2;
        m_data = reinterpret_cast<std::uintptr_t>(&pair);
        return 1;
    }
    SequenceExtras* const rare = entries->findExtras();
    if (entries->used == entries->capacity) {
        if (rare && rare->holes > kShort && rare->holes * 4 > entries->used)
            closeHoles();
        else
            entries = &grow(*entries);
    }
    entries->slots()[entries->used++] = object;
    if (rare && !rare->counts.isEmpty())
        rare->counts.onAppended(entries->used - 1);
    return entries->used - 1;
}

bool Sequence::eraseFirst(const void* object)
{
    const std::uint32_t slot = findSlot(object);
    if (slot == kNoSlot)
        return false;
    eraseSlot(slot);
    return true;
}

bool Sequence::eraseOnly(const void* object, std::uint32_t slot)
{
    SequenceBlock* const entries = block();
    if (!entries)
        return eraseFirst(object);
    void** const slots = entries->slots();
    const std::uint32_t used = entries->used;
    if (slot >= used || slots[slot] != object) {
        if (used == 0 || slots[used - 1] != object)
            return eraseFirst(object);
        slot = used - 1;
    }
    eraseSlot(slot, kShort); // Others know their slots, too.
    return true;
}

int Sequence::eraseEvery(const void* object)
{
    if (!object || !block())
        return eraseFirst(object) ? 1 : 0;
    int erased = 0;
    while (const SequenceExtras* const rare = findPlaces()) {
        const SlotTable::First first = rare->places.find(hashOf(object), isObject(object));
        if (first.slot == kNoSlot)
            return erased;
        eraseSlot(first.slot);
        ++erased;
        if (first.count == 1)
            return erased;
    }
    return erased + eraseByScan(object); // There are no places, or no longer: it is short now.
}

/// Erases every place of the object in one walk over the slots.
int Sequence::eraseByScan(const void* object)
{
    SequenceBlock& entries = *block();
    SequenceExtras* const rare = entries.findExtras();
    void** const begin = entries.slots();
    if (rare)
        rare->searchWork += entries.used;
    if (!rare || !rare->leavesHoles()) {
        void** const end = begin + entries.used;
        const auto erased = end - std::remove(begin, end, object);
        entries.used -= static_cast<std::uint32_t>(erased);
        return static_cast<int>(erased);
    }
    int erased = 0;
    for (std::uint32_t slot = rare->first; slot < entries.used; ++slot) {
        if (begin[slot] == object) {
            leaveHole(*rare, slot);
            ++erased;
        }
    }
    tidyHoles(*rare);
    return erased;
}

void Sequence::eraseAt(int index)
{
    SequenceExtras* const rare = findExtras();
    eraseSlot(rare ? slotAt(*rare, index) : static_cast<std::uint32_t>(index));
}

void Sequence::insertAt(int index, void* object)
{
    closeHoles();
    append(object);
    SequenceBlock* const entries = block();
    if (!entries)
        return;
    const auto slot = static_cast<std::uint32_t>(index);
    void** const slots = entries->slots();
    std::rotate(slots + slot, slots + entries->used - 1, slots + entries->used);
    SequenceExtras* const rare = entries->findExtras();
    if (!rare)
        return;
    if (slot < rare->placedSlots) {
        rare->places.renumber([slot](std::uint32_t old) { return old < slot ? old : old + 1; });
        ++rare->placedSlots;
        place(*rare, slot);
    }
    if (rare->names)
        rare->names->onInserted(slot);
}

void Sequence::clear()
{
    if (SequenceBlock* const entries = block()) {
        delete entries->findExtras();
        freeBlock(*entries);
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
    ReferenceBalance balance;
    if (SequenceExtras* const rare = findExtras())
        std::swap(balance, rare->balance);
    clear();
    for (void* object : entries)
        append(object);
    if (!balance.isEmpty())
        std::swap(extras().balance, balance);
}

void Sequence::dropIndex()
{
    if (SequenceExtras* const rare = findExtras())
        rare->names.reset();
}

SequenceExtras& Sequence::extras()
{
    SequenceBlock* entries = block();
    if (!entries)
        entries = &growTo(2, true);
    else if (!entries->hasExtrasRoom)
        entries = &growTo(entries->capacity, true);
    return extrasOf(*entries);
}

SequenceExtras* Sequence::findExtras() const
{
    SequenceBlock* const entries = block();
    return entries ? entries->findExtras() : nullptr;
}

/// Makes room for more entries. A long sequence will want extras.
SequenceBlock& Sequence::grow(SequenceBlock& entries)
{
    const std::uint32_t capacity = entries.capacity * 2;
    return growTo(capacity, capacity > kShort || entries.hasExtrasRoom != 0);
}

SequenceBlock& Sequence::growTo(std::uint32_t capacity, bool withExtrasRoom)
{
    SequenceBlock& grown = newBlock(capacity, withExtrasRoom);
    SequenceBlock* const old = block();
    if (old) {
        if (withExtrasRoom)
            grown.extras() = old->findExtras();
        grown.used = old->used;
        std::memcpy(grown.slots(), old->slots(), old->used * sizeof(void*));
        freeBlock(*old);
    } else if (m_data != 0) {
        grown.used = 1;
        grown.slots()[0] = single();
    }
    m_data = reinterpret_cast<std::uintptr_t>(&grown);
    return grown;
}

// Slots.

/// The extras when the places are to be used, and then up to date; else null.
SequenceExtras* Sequence::findPlaces() const
{
    SequenceBlock* const entries = block();
    if (!entries || entries->used <= kShort)
        return nullptr;
    SequenceExtras& rare = extrasOf(*entries);
    if (rare.placedSlots == 0 && rare.searchWork <= kSearchPatience * entries->used)
        return nullptr;
    if (rare.placedSlots < entries->used)
        rare.places.reserve(entries->used - rare.placedSlots);
    for (; rare.placedSlots < entries->used; ++rare.placedSlots) {
        if (entries->slots()[rare.placedSlots])
            place(rare, rare.placedSlots);
    }
    return &rare;
}

void Sequence::place(SequenceExtras& rare, std::uint32_t slot) const
{
    void* const object = slots()[slot];
    rare.places.insert(hashOf(object), slot, object, isObject(object));
}

/// The first slot of the object, kNoSlot when it has none.
std::uint32_t Sequence::findSlot(const void* object) const
{
    if (!object)
        return kNoSlot; // A hole is no entry.
    SequenceBlock* const entries = block();
    if (!entries)
        return m_data != 0 && single() == object ? 0 : kNoSlot;
    SequenceExtras* const rare = entries->findExtras();
    void** const slots = entries->slots();
    const std::uint32_t first = rare ? rare->first : 0;
    if (first < entries->used && slots[first] == object)
        return first;
    if (const SequenceExtras* const placed = findPlaces())
        return placed->places.first(hashOf(object), isObject(object));
    void** const begin = slots + first;
    void** const end = slots + entries->used;
    void** const place = std::find(begin, end, object);
    if (rare)
        rare->searchWork += static_cast<std::uint64_t>(place - begin);
    return place == end ? kNoSlot : static_cast<std::uint32_t>(place - slots);
}

void Sequence::collectSlots(const void* object, std::vector<std::uint32_t>& slots) const
{
    SequenceBlock* const entries = block();
    if (const SequenceExtras* const rare = findPlaces()) {
        rare->places.collect(hashOf(object), isObject(object), slots);
        return;
    }
    for (std::uint32_t slot = 0; slot < entries->used; ++slot) {
        if (entries->slots()[slot] == object)
            slots.push_back(slot);
    }
    if (SequenceExtras* const rare = entries->findExtras())
        rare->searchWork += entries->used;
}

/// Moves the entries behind the slot if they are few enough, and if no table knows their slots.
void Sequence::eraseSlot(std::uint32_t slot, std::uint32_t few)
{
    SequenceBlock* const entries = block();
    if (!entries) {
        m_data = 0;
        return;
    }
    const std::uint32_t behind = entries->used - 1 - slot;
    SequenceExtras* const rare = behind > kShort ? &extrasOf(*entries) : entries->findExtras();
    // A hole at the beginning costs nothing later; one in the middle costs counting for an index.
    if (rare && (rare->leavesHoles() || behind > few || (behind > kShort && slot == 0))) {
        leaveHole(*rare, slot);
        tidyHoles(*rare);
        return;
    }
    void** const place = entries->slots() + slot;
    --entries->used;
    std::memmove(place, place + 1, behind * sizeof(void*));
    if (rare)
        rare->searchWork += behind / kMovesPerVisit;
}

void Sequence::leaveHole(SequenceExtras& rare, std::uint32_t slot)
{
    void*& place = block()->slots()[slot];
    void* const object = place;
    if (slot < rare.placedSlots)
        rare.places.erase(hashOf(object), slot, slots());
    place = nullptr;
    ++rare.holes;
    rare.counts.onErased(slot);
    if (rare.names)
        rare.names->onErased(static_cast<Namable*>(object), slot);
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

} // namespace ZEL
