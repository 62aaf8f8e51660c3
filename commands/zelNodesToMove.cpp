#include "zelNodesToMove.h"

#include "core/zelShortText.h"
#include "zelNode.h"

#include <algorithm>

namespace ZEL::CmdImpl {

namespace {

/// The first bytes of a name, so that they compare as one number: most names differ there.
std::uint64_t firstBytes(const std::string& name)
{
    constexpr std::size_t kBits = 8;
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < sizeof(bytes); ++i)
        bytes = (bytes << kBits) | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0);
    return bytes;
}

} // namespace

NodesToMove::NodesToMove() = default;

NodesToMove::~NodesToMove() = default;

void NodesToMove::set(const char* name, const AddRefWrapper<Node>& node)
{
    m_sorted.clear();
    if (m_table.size() < 2 * (m_entries.size() + 1))
        grow();
    const Found found = find(name);
    Place& place = m_table[found.place];
    if (found.isThere) {
        m_entries[place.number - 1].node = node;
        return;
    }
    m_entries.push_back({name, node});
    place = {found.hash, static_cast<std::uint32_t>(m_entries.size())};
}

NodesToMove::Found NodesToMove::find(std::string_view name) const
{
    if (m_table.empty())
        return {};
    Found found;
    found.hash = ShortText::hashOf(name);
    const std::size_t mask = m_table.size() - 1;
    for (found.place = found.hash & mask;; found.place = (found.place + 1) & mask) {
        const Place& place = m_table[found.place];
        if (place.number == 0)
            return found;
        found.isThere =
            place.hash == found.hash && ShortText::areEqual(m_entries[place.number - 1].name, name);
        if (found.isThere)
            return found;
    }
}

void NodesToMove::grow()
{
    constexpr std::size_t kSmallest = 64;
    std::vector<Place> old(std::max(kSmallest, 2 * m_table.size()));
    old.swap(m_table);
    const std::size_t mask = m_table.size() - 1;
    for (const Place& moved : old) {
        if (moved.number == 0)
            continue;
        std::size_t place = moved.hash & mask;
        while (m_table[place].number != 0)
            place = (place + 1) & mask;
        m_table[place] = moved;
    }
}

const std::vector<const AddRefWrapper<Node>*>& NodesToMove::inOrder()
{
    if (m_sorted.size() == m_entries.size())
        return m_sorted;
    struct Key {
        std::uint64_t bytes;
        const Entry* entry;

        bool operator<(const Key& other) const
        {
            return bytes != other.bytes ? bytes < other.bytes : entry->name < other.entry->name;
        }
    };
    std::vector<Key> keys;
    keys.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        keys.push_back({firstBytes(entry.name), &entry});
    std::sort(keys.begin(), keys.end());
    m_sorted.reserve(keys.size());
    for (const Key& key : keys)
        m_sorted.push_back(&key.entry->node);
    return m_sorted;
}

} // namespace ZEL::CmdImpl
