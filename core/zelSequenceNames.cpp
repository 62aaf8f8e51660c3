// How a sequence finds an entry by its name.

#include "zelCore.h"
#include "zelNameIndex.h"
#include "zelSequence.h"
#include "zelShortText.h"

#include <cstring>

namespace ZEL {

namespace {

/// True when the object is known to answer Namable's own name.
bool isPlain(const Namable& object)
{
#if defined(ZEL_NAMES_BY_TYPE) // There asking costs less than finding out.
    (void)object;
    return false;
#else
    return hasPlainName(object);
#endif
}

} // namespace

bool hasName(const Namable& object, std::string_view name)
{
    if (isPlain(object))
        return ShortText::areEqual(NameIndex::nameOf(object), name);
    const char* const text = object.getName();
    return std::strncmp(text, name.data(), name.size()) == 0 && text[name.size()] == '\0';
}

/// Makes the index of a long sequence when it is to be used from now on; else null.
NameIndex* Sequence::beginNames()
{
    SequenceExtras& rare = extras();
    if (rare.scanWork <= kPatience * usedSlots())
        return nullptr;
    return &rare.names.emplace(m_data);
}

bool Sequence::containsNamed(const Namable* object) const
{
    return findNamedSlot(object) != SlotTable::kNoSlot;
}

bool Sequence::eraseFirstNamed(const Namable* object)
{
    const std::uint32_t slot = findNamedSlot(object);
    if (slot == SlotTable::kNoSlot)
        return false;
    eraseSlot(slot);
    return true;
}

std::uint32_t Sequence::findNamedSlot(const Namable* object) const
{
    const SequenceExtras* const rare = findExtras();
    const std::uint32_t slot =
        rare && rare->names && object ? rare->names->firstSlotOf(*object) : SlotTable::kNoSlot;
    return slot == SlotTable::kNoSlot ? findSlot(object) : slot;
}

Namable* Sequence::findNamed(std::string_view name)
{
    NameIndex* const names = findNames();
    if (!names)
        return scanNames(name);
    Namable* const found = names->find(name);
    return names->asks() ? askBefore(name, *names, found) : found;
}

Sequence::Unasked Sequence::findUnasked(std::string_view name)
{
    NameIndex* const names = findNames();
    if (!names)
        return scanUnasked(name);
    Namable* const found = names->find(name);
    return {found, !names->asks(), 0};
}

/// Asks the entries before the one that the index found; when none has the name, that one stands.
Namable* Sequence::askBefore(std::string_view name, const NameIndex& names, Namable* found) const
{
    const std::uint32_t slot = names.firstSlot(name);
    std::vector<std::uint32_t> asked;
    names.collectAsked(slot, asked);
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

/// The first slot of the block whose entry has the name or has to be asked; behind them all when
/// there is none.
std::uint32_t Sequence::firstToAsk(SequenceBlock& entries, std::string_view name)
{
    void* const* const slots = entries.slots();
    const std::uint32_t used = entries.used;
    const ShortText::Pattern pattern(name);
    std::uint32_t slot = 0;
    for (; slot < used; ++slot) {
        const auto* const object = static_cast<Namable*>(slots[slot]);
        if (object && (!isPlain(*object) || pattern.isEqual(NameIndex::nameOf(*object))))
            break;
    }
    if (SequenceExtras* const rare = entries.findExtras())
        rare->scanWork += slot;
    return slot;
}

Sequence::Unasked Sequence::scanUnasked(std::string_view name) const
{
    SequenceBlock* const entries = block();
    if (!entries) {
        auto* const only = static_cast<Namable*>(single());
        if (only && !isPlain(*only))
            return {nullptr, false, 0};
        return {only && hasName(*only, name) ? only : nullptr, true, 0};
    }
    const std::uint32_t slot = firstToAsk(*entries, name);
    if (slot == entries->used)
        return {};
    auto* const object = static_cast<Namable*>(entries->slots()[slot]);
    if (isPlain(*object))
        return {object, true, slot};
    return {nullptr, false, slot};
}

Namable* Sequence::scanNames(std::string_view name) const
{
    const Unasked unasked = scanUnasked(name);
    if (unasked.isSure)
        return unasked.entry;
    SequenceBlock* entries = block();
    if (!entries) {
        auto* const only = static_cast<Namable*>(single());
        return hasName(*only, name) ? only : nullptr;
    }
    // All is read again after each name: a host's own getName may do anything.
    std::uint32_t slot = unasked.slot;
    Namable* found = nullptr;
    for (; !found && entries && slot < entries->used; entries = block(), ++slot) {
        auto* const object = static_cast<Namable*>(entries->slots()[slot]);
        if (object && hasName(*object, name))
            found = object;
    }
    if (SequenceExtras* const rare = findExtras())
        rare->scanWork += slot - unasked.slot;
    return found;
}

} // namespace ZEL
