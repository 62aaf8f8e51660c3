// How a sequence finds an entry by its name.

#include "zelCore.h"
#include "zelNameIndex.h"
#include "zelSequence.h"

#include <cstring>

namespace ZEL {

namespace {

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

} // namespace

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
    Namable* const found = rare.names->find(name);
    return rare.names->asks() ? askBefore(name, *rare.names, found) : found;
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
    if (SequenceExtras* const rare = entries ? entries->findExtras() : nullptr)
        rare->scanWork += slot;
    return found;
}

} // namespace ZEL
