#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace shading {

/// A table of values by the addresses of objects, which are not touched. It only grows. Where there
/// are millions of them, one look into memory finds a value, and no single addition lasts: the
/// table is many small ones.
template <class Key, class Value>
class PointerMap {
public:
    /// The value of the key, made when it has none. Must not be null. The next one may move it.
    Value& operator[](const Key* key)
    {
        const std::uint64_t mixed = mix(key);
        Part& part = m_parts[mixed >> kPartShift];
        if (part.size * 2 >= part.entries.size())
            grow(part);
        Entry& entry = part.entries[placeOf(part, key, mixed)];
        if (!entry.key) {
            entry.key = key;
            ++part.size;
        }
        return entry.value;
    }
    /// Null when it has none; so has null.
    const Value* find(const Key* key) const
    {
        const std::uint64_t mixed = mix(key);
        const Part& part = m_parts[mixed >> kPartShift];
        const Entry* const entry =
            part.size > 0 ? &part.entries[placeOf(part, key, mixed)] : nullptr;
        return key && entry && entry->key ? &entry->value : nullptr;
    }

private:
    static constexpr std::size_t kPartCount = 64;
    static constexpr unsigned kPartShift = 58; ///< What is left of the bits chooses the part.

    struct Entry {
        const Key* key = nullptr; ///< Null: free.
        Value value = Value();
    };
    struct Part {
        std::vector<Entry> entries; ///< A power of 2 of them, at most half in use.
        std::size_t size = 0;
    };

    static std::uint64_t mix(const Key* key)
    {
        return reinterpret_cast<std::uintptr_t>(key) * 0x9E3779B97F4A7C15U;
    }
    /// Where the key is, or would be.
    static std::size_t placeOf(const Part& part, const Key* key, std::uint64_t mixed)
    {
        const std::vector<Entry>& entries = part.entries;
        std::size_t place = static_cast<std::size_t>(mixed >> 26U) & (entries.size() - 1);
        while (entries[place].key && entries[place].key != key)
            place = (place + 1) & (entries.size() - 1);
        return place;
    }
    static void grow(Part& part)
    {
        std::vector<Entry> entries(part.entries.empty() ? 16 : part.entries.size() * 4);
        entries.swap(part.entries);
        for (Entry& entry : entries) {
            if (entry.key)
                part.entries[placeOf(part, entry.key, mix(entry.key))] = std::move(entry);
        }
    }

    std::array<Part, kPartCount> m_parts;
};

} // namespace shading
