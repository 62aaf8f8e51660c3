#include "zelSequence.h"

#include "zelCore.h"
#include "zelNameIndex.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

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
#if !defined(ZEL_NAMES_BY_TYPE) // There asking costs less than finding out.
    if (hasPlainName(object)) {
        // Names of one list often differ in their last character only: that one first.
        const std::string_view own = NameIndex::nameOf(object);
        return own.size() == name.size() &&
               (own.empty() || (own.back() == name.back() && own == name));
    }
#endif
    const char* const text = object.getName();
    return std::strncmp(text, name.data(), name.size()) == 0 && text[name.size()] == '\0';
}

SequenceExtras& extrasOf(SequenceBlock& block)
{
    if (!block.extras)
        block.extras = new SequenceExtras;
    return *block.extras;
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

/// Whether a slot holds the object.
auto Sequence::isAt(const void* object) const
{
    return [slots = slots(), object](std::uint32_t slot) { return slots[slot] == object; };
}

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
    if (!entries)
        return single();
    return entries->slots()[entries->extras ? slotAt(*entries->extras, index) : index];
}

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
    if (entries->extras && !entries->extras->counts.isEmpty())
        entries->extras->counts.onAppended(entries->used - 1);
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
    if (!object || !block())
        return eraseFirst(object) ? 1 : 0;
    int erased = 0;
    while (const SequenceExtras* const rare = findPlaces()) {
        const SlotTable::First first = rare->places.find(hashOf(object), isAt(object));
        if (first.slot == kNoSlot)
            return erased;
        eraseSlot(first.slot);
        ++erased;
        if (first.isOnly)
            return erased;
    }
    return erased + eraseByScan(object); // There are no places, or no longer: it is short now.
}

/// Erases every place of the object in one walk over the slots.
int Sequence::eraseByScan(const void* object)
{
    SequenceBlock& entries = *block();
    SequenceExtras* const rare = entries.extras;
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
    SequenceExtras* const rare = entries->extras;
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
        rare->names = nullptr;
}

SequenceExtras& Sequence::extras()
{
    SequenceBlock* entries = block();
    if (!entries)
        entries = &growTo(2);
    return extrasOf(*entries);
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

/// The slot of the entry at the index, in a sequence that may have holes.
std::uint32_t Sequence::slotAt(SequenceExtras& rare, int index) const
{
    const auto number = static_cast<std::uint32_t>(index);
    if (rare.holes > rare.first && ++rare.countedReads > block()->used)
        closeHoles();
    if (rare.holes == rare.first)
        return rare.first + number;
    return countedSlots(rare).slotAt(slots(), number);
}

const SlotCounts& Sequence::countedSlots(SequenceExtras& rare) const
{
    if (rare.counts.isEmpty())
        rare.counts.count(slots(), block()->used);
    return rare.counts;
}

/// The extras when the places are to be used, and then up to date; else null.
SequenceExtras* Sequence::findPlaces() const
{
    SequenceBlock* const entries = block();
    if (!entries || entries->used <= kShort)
        return nullptr;
    SequenceExtras& rare = extrasOf(*entries);
    if (rare.placedSlots == 0 && rare.searchWork <= kPatience * entries->used)
        return nullptr;
    for (; rare.placedSlots < entries->used; ++rare.placedSlots) {
        if (entries->slots()[rare.placedSlots])
            place(rare, rare.placedSlots);
    }
    return &rare;
}

void Sequence::place(SequenceExtras& rare, std::uint32_t slot) const
{
    void* const object = slots()[slot];
    rare.places.insert(hashOf(object), slot, isAt(object));
}

/// The first slot of the object, kNoSlot when it has none.
std::uint32_t Sequence::findSlot(const void* object) const
{
    if (!object)
        return kNoSlot; // A hole is no entry.
    SequenceBlock* const entries = block();
    if (!entries)
        return m_data != 0 && single() == object ? 0 : kNoSlot;
    if (const SequenceExtras* const rare = findPlaces())
        return rare->places.first(hashOf(object), isAt(object));
    void** const begin = entries->slots() + (entries->extras ? entries->extras->first : 0);
    void** const end = entries->slots() + entries->used;
    void** const place = std::find(begin, end, object);
    if (entries->extras)
        entries->extras->searchWork += static_cast<std::uint64_t>(place - begin);
    return place == end ? kNoSlot : static_cast<std::uint32_t>(place - entries->slots());
}

void Sequence::collectSlots(const void* object, std::vector<std::uint32_t>& slots) const
{
    SequenceBlock* const entries = block();
    if (const SequenceExtras* const rare = findPlaces()) {
        rare->places.collect(hashOf(object), isAt(object), slots);
        return;
    }
    for (std::uint32_t slot = 0; slot < entries->used; ++slot) {
        if (entries->slots()[slot] == object)
            slots.push_back(slot);
    }
    if (entries->extras)
        entries->extras->searchWork += entries->used;
}

void Sequence::eraseSlot(std::uint32_t slot)
{
    SequenceBlock* const entries = block();
    if (!entries) {
        m_data = 0;
        return;
    }
    SequenceExtras* const rare = entries->extras;
    if (rare && rare->leavesHoles()) {
        leaveHole(*rare, slot);
        tidyHoles(*rare);
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
    void*& place = block()->slots()[slot];
    void* const object = place;
    if (slot < rare.placedSlots)
        rare.places.erase(hashOf(object), slot);
    place = nullptr;
    ++rare.holes;
    rare.counts.onErased(slot);
    if (rare.names)
        rare.names->onErased(static_cast<Namable*>(object), slot);
}

/// After entries left: holes at the end go, and all when they are many.
void Sequence::tidyHoles(SequenceExtras& rare)
{
    SequenceBlock& entries = *block();
    void** const slots = entries.slots();
    for (; entries.used > 0 && !slots[entries.used - 1]; --entries.used)
        --rare.holes;
    rare.first = std::min(rare.first, entries.used);
    while (rare.first < entries.used && !slots[rare.first])
        ++rare.first;
    rare.placedSlots = std::min(rare.placedSlots, entries.used);
    if (rare.names)
        rare.names->trim(entries.used);
    const std::uint32_t left = entries.used - rare.holes;
    if (left <= kShort / 2 || (rare.holes > kShort && rare.holes * 2 > entries.used))
        closeHoles();
    if (left <= kShort / 2)
        dropTables(rare);
}

/// Gives the entries the first slots; the tables follow.
void Sequence::closeHoles() const
{
    SequenceExtras* const rare = findExtras();
    if (!rare || rare->holes == 0)
        return;
    SequenceBlock& entries = *block();
    void** const slots = entries.slots();
    if (rare->placedSlots > 0 || rare->names) {
        std::vector<std::uint32_t> moved(entries.used + 1,
                                         0); // How many entries stand before each.
        for (std::uint32_t slot = 0; slot < entries.used; ++slot)
            moved[slot + 1] = moved[slot] + (slots[slot] ? 1 : 0);
        rare->places.renumber([&moved](std::uint32_t slot) { return moved[slot]; });
        rare->placedSlots = moved[rare->placedSlots];
        if (rare->names)
            rare->names->onHolesClosed(moved);
    }
    void** const end = std::remove(slots, slots + entries.used, nullptr);
    entries.used = static_cast<std::uint32_t>(end - slots);
    rare->first = 0;
    rare->holes = 0;
    rare->counts.clear();
    rare->countedReads = 0;
}

/// A sequence that is short again needs none.
void Sequence::dropTables(SequenceExtras& rare) const
{
    rare.places.clear();
    rare.placedSlots = 0;
    rare.searchWork = 0;
    rare.names = nullptr;
    rare.scanWork = 0;
    rare.counts.clear();
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
    if (!rare.names) {
        if (rare.scanWork <= kPatience * entries->used)
            return scanNames(name);
        rare.names = std::make_unique<NameIndex>(m_data);
    }
    const std::uint32_t slot = rare.names->find(name);
    Namable* const found =
        slot == kNoSlot ? nullptr : static_cast<Namable*>(block()->slots()[slot]);
    std::vector<std::uint32_t> asked;
    rare.names->collectAsked(slot, asked);
    return asked.empty() ? found : askBefore(name, asked, found, slot);
}

/// Asks the entries in those slots; when none has the name, the one that the index found stands.
Namable* Sequence::askBefore(std::string_view name,
                             const std::vector<std::uint32_t>& asked,
                             Namable* found,
                             std::uint32_t slot) const
{
    // All is read again after each name: a host's own getName may do anything.
    const auto entryAt = [this](std::uint32_t place) {
        return place < usedSlots() ? static_cast<Namable*>(slots()[place]) : nullptr;
    };
    for (const std::uint32_t place : asked) {
        Namable* const object = entryAt(place);
        if (object && hasName(*object, name))
            return object;
    }
    return !found || entryAt(slot) == found ? found : scanNames(name);
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
