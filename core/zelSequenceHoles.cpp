// How a sequence counts past its holes and closes them.

#include "zelSequence.h"

#include <algorithm>

namespace ZEL {

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
    if (left <= kShort / 2 || (rare.holes > kShort && rare.holes / 7 > left))
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
        // How many entries stand before each.
        std::vector<std::uint32_t> moved(entries.used + 1, 0);
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
    rare.names.reset();
    rare.scanWork = 0;
    rare.counts.clear();
}

} // namespace ZEL
