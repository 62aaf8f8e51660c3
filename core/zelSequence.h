#pragma once

#include "zelNameIndex.h"
#include "zelReferenceBalance.h"
#include "zelSlotCounts.h"
#include "zelSlotTable.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ZEL {

class Namable;

/// What only a long or unusual sequence needs.
struct SequenceExtras {
    std::optional<NameIndex> names; ///< None: nothing was looked up by name often enough.
    std::uint32_t first = 0;        ///< The first slot that is no hole.
    std::uint32_t holes = 0;        ///< Slots that were erased, the leading ones too.
    std::uint32_t placedSlots = 0;  ///< How many slots the places hold, from slot 0.
    std::uint32_t countedReads = 0; ///< By index, through the counts, since holes were closed.
    std::uint64_t searchWork = 0;   ///< Slots visited and moved before the places were filled.
    std::uint64_t scanWork = 0;     ///< Slots visited by name before there were names.
    SlotTable places;               ///< From an object to its slots.
    SlotCounts counts;              ///< Empty unless an index was asked for among holes.
    ReferenceBalance balance;       ///< PortList's; it survives an assignment.

    /// An erased entry leaves a hole: tables know the slots of the others.
    bool leavesHoles() const { return placedSlots > 0 || holes > 0 || names || !counts.isEmpty(); }
};

/// A block of slots; they follow it in memory. Where there is room for extras, a pointer to them
/// stands before it.
struct SequenceBlock {
    std::uint32_t used = 0; ///< Slots in use, the holes among them too.
    std::uint32_t capacity : 31;
    std::uint32_t hasExtrasRoom : 1;

    void** slots() { return reinterpret_cast<void**>(this + 1); }
    /// Owned; null before they are needed. Only where there is room.
    SequenceExtras*& extras() { return reinterpret_cast<SequenceExtras**>(this)[-1]; }
    /// Null: no holes, no tables.
    SequenceExtras* findExtras() { return hasExtrasRoom ? extras() : nullptr; }
};

/// Ordered pointers: the entries of a list of ports, of nodes, of editors. The one place that knows
/// how such a list finds and removes an entry. It owns nothing. Null is no entry and is never
/// found.
///
/// The state is one word of the list: nothing, the only entry, or a block of slots. A short
/// sequence is a plain array. In a long one an erased entry leaves a hole, and a table finds an
/// object's slots, as soon as plain searching has cost more than filling the table does; counts of
/// the entries find a slot by its index among holes. Holes are closed when there are seven times as
/// many as entries, when they are a quarter of all and an addition finds no room, and when as many
/// entries were read through the counts as there are slots; the tables follow. So appending,
/// finding, erasing and reading cost the same at any length and in any order, but for a logarithm,
/// and the order is kept. Inserting and moving cost what they cost in an array.
class Sequence {
public:
    explicit Sequence(std::uintptr_t& data) : m_data(data) {}

    int size() const
    {
        SequenceBlock* const entries = block();
        if (!entries)
            return m_data == 0 ? 0 : 1;
        const SequenceExtras* const rare = entries->findExtras();
        return static_cast<int>(entries->used - (rare ? rare->holes : 0));
    }
    /// The index must be in range.
    void* at(int index) const
    {
        SequenceBlock* const entries = block();
        if (!entries)
            return single();
        SequenceExtras* const rare = entries->findExtras();
        return entries->slots()[rare ? slotAt(*rare, index) : static_cast<std::uint32_t>(index)];
    }
    /// -1 when the object is not in the sequence.
    int indexOf(const void* object) const;
    bool contains(const void* object) const;
    /// True when the object has exactly one place and that is seen at once: not in a long sequence.
    bool isKnownOnce(const void* object) const;

    /// Returns the slot; it is the object's until it is erased or entries move.
    std::uint32_t append(void* object)
    {
        if (m_data == 0) {
            m_data = reinterpret_cast<std::uintptr_t>(object) + 1;
            return 0;
        }
        SequenceBlock* const entries = block();
        if (!entries || entries->used == entries->capacity || entries->hasExtrasRoom != 0)
            return appendMore(object);
        entries->slots()[entries->used] = object;
        return entries->used++;
    }
    /// Erases the first place of the object. False when it has none.
    bool eraseFirst(const void* object);
    /// The same for an object that has no second place, and had that slot once.
    bool eraseOnly(const void* object, std::uint32_t slot);
    /// Erases every place of the object; returns how many there were.
    int eraseEvery(const void* object);
    /// Erases the entry at the index, which must be in range.
    void eraseAt(int index);
    /// Inserts before the index, from 0 to size().
    void insertAt(int index, void* object);
    void clear();
    /// Exchanges the entries; neither may have an index.
    void swap(Sequence other);
    void assign(const Sequence& other);

    // By name; only for sequences of Namable pointers.
    /// The first entry whose getName() is the name, null when there is none. Uses an index when the
    /// sequence is long; its entries must then not die before they are erased.
    Namable* findNamed(std::string_view name);
    /// The same without an index.
    Namable* scanNames(std::string_view name) const;
    /// As contains and eraseFirst. The index, if there is one, tells where an entry stands.
    bool containsNamed(const Namable* object) const;
    bool eraseFirstNamed(const Namable* object);
    /// What a search found without running code of the host.
    struct Unasked {
        Namable* entry = nullptr; ///< Null: there is none, if that is sure.
        bool isSure = true;       ///< False: an entry has to be asked for its name first.
        std::uint32_t slot = 0;   ///< Of the entry that has to be asked, after a scan.
    };
    /// The two above, as far as no entry has to be asked.
    Unasked findUnasked(std::string_view name);
    Unasked scanUnasked(std::string_view name) const;

    /// Ends the use of an index: from here on the entries may die.
    void dropIndex();

    /// Made when first asked for; lives until clear.
    SequenceExtras& extras();
    /// Null when there are none.
    SequenceExtras* findExtras() const;

    // For the name index.
    /// Appends every slot of the object, ascending.
    void collectSlots(const void* object, std::vector<std::uint32_t>& slots) const;
    /// How many slots there are, holes too; 0 for a sequence without a block.
    std::uint32_t usedSlots() const;
    /// The slots, null for a hole; only for a sequence with a block. Valid until it changes.
    void* const* slots() const;

private:
    /// Up to this length a sequence is only ever searched slot by slot.
    static constexpr std::uint32_t kShort = 32;
    /// So many entries are moved rather than leave a hole.
    static constexpr std::uint32_t kFew = 256;
    /// A table is filled when plain work has visited every slot about so many times.
    static constexpr std::uint64_t kPatience = 4;
    /// The same for the table of objects: to visit one, no object needs to be looked at.
    static constexpr std::uint64_t kSearchPatience = 32;

    // The word tells a block from an only entry by its lowest bit.
    // NOLINTBEGIN(performance-no-int-to-ptr)
    SequenceBlock* block() const
    {
        return m_data == 0 || (m_data & 1) != 0 ? nullptr
                                                : reinterpret_cast<SequenceBlock*>(m_data);
    }
    void* single() const
    {
        return (m_data & 1) != 0 ? reinterpret_cast<void*>(m_data - 1) : nullptr;
    }
    // NOLINTEND(performance-no-int-to-ptr)
    SequenceBlock& growTo(std::uint32_t capacity, bool withExtrasRoom);
    SequenceBlock& grow(SequenceBlock& entries);
    std::uint32_t appendMore(void* object);
    SequenceExtras* findPlaces() const;
    const SlotCounts& countedSlots(SequenceExtras& rare) const;
    std::uint32_t findSlot(const void* object) const;
    std::uint32_t findNamedSlot(const Namable* object) const;
    void place(SequenceExtras& rare, std::uint32_t slot) const;
    int eraseByScan(const void* object);
    void eraseSlot(std::uint32_t slot, std::uint32_t few = kFew);
    void leaveHole(SequenceExtras& rare, std::uint32_t slot);
    void tidyHoles(SequenceExtras& rare);
    void closeHoles() const;
    void dropTables(SequenceExtras& rare) const;
    std::uint32_t slotAt(SequenceExtras& rare, int index) const;
    /// The index when it is to be used; else null.
    NameIndex* findNames()
    {
        SequenceBlock* const entries = block();
        if (!entries || entries->used <= kShort)
            return nullptr;
        SequenceExtras* const rare = entries->findExtras();
        return rare && rare->names ? &*rare->names : beginNames();
    }
    NameIndex* beginNames();
    static std::uint32_t firstToAsk(SequenceBlock& entries, std::string_view name);
    Namable* askBefore(std::string_view name, const NameIndex& names, Namable* found) const;

    std::uintptr_t& m_data; ///< 0: empty; odd: the only entry, plus 1; else a SequenceBlock.
};

} // namespace ZEL
