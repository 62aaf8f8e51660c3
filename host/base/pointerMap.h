#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace shading {

/// A table of values by the addresses of objects, which are not touched. It only grows. Where there
/// are millions of them, one look into memory finds a value.
template <class Key, class Value>
class PointerMap {
public:
    /// The value of the key, made when it has none. Must not be null. The next one may move it.
    Value& operator[](const Key* key)
    {
        if (m_size * 2 >= m_entries.size())
            grow();
        Entry& entry = m_entries[placeOf(key)];
        if (!entry.key) {
            entry.key = key;
            ++m_size;
        }
        return entry.value;
    }
    /// Null when it has none; so has null.
    const Value* find(const Key* key) const
    {
        const Entry* const entry = m_size > 0 ? &m_entries[placeOf(key)] : nullptr;
        return key && entry && entry->key ? &entry->value : nullptr;
    }

private:
    struct Entry {
        const Key* key = nullptr; ///< Null: free.
        Value value = Value();
    };

    /// Where the key is, or would be.
    std::size_t placeOf(const Key* key) const
    {
        const std::uint64_t mixed = reinterpret_cast<std::uintptr_t>(key) * 0x9E3779B97F4A7C15U;
        std::size_t place = static_cast<std::size_t>(mixed >> 32U) & (m_entries.size() - 1);
        while (m_entries[place].key && m_entries[place].key != key)
            place = (place + 1) & (m_entries.size() - 1);
        return place;
    }

    void grow()
    {
        std::vector<Entry> entries(m_entries.empty() ? 16 : m_entries.size() * 4);
        entries.swap(m_entries);
        for (Entry& entry : entries) {
            if (entry.key)
                m_entries[placeOf(entry.key)] = std::move(entry);
        }
    }

    std::vector<Entry> m_entries; ///< A power of 2 of them, at most half in use.
    std::size_t m_size = 0;
};

} // namespace shading
