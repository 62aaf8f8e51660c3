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
        Shard& shard = m_shards[mixed >> kShardShift];
        if (shard.size * 2 >= shard.entries.size())
            grow(shard);
        Entry& entry = shard.entries[placeOf(shard, key, mixed)];
        if (!entry.key) {
            entry.key = key;
            ++shard.size;
        }
        return entry.value;
    }
    /// Null when it has none; so has null.
    const Value* find(const Key* key) const
    {
        const std::uint64_t mixed = mix(key);
        const Shard& shard = m_shards[mixed >> kShardShift];
        const Entry* const entry =
            shard.size > 0 ? &shard.entries[placeOf(shard, key, mixed)] : nullptr;
        return key && entry && entry->key ? &entry->value : nullptr;
    }

private:
    static constexpr std::size_t kShardCount = 64;
    static constexpr unsigned kShardShift = 58; ///< What is left of the bits chooses the shard.

    struct Entry {
        const Key* key = nullptr; ///< Null: free.
        Value value = Value();
    };
    struct Shard {
        std::vector<Entry> entries; ///< A power of 2 of them, at most half in use.
        std::size_t size = 0;
    };

    static std::uint64_t mix(const Key* key)
    {
        return reinterpret_cast<std::uintptr_t>(key) * 0x9E3779B97F4A7C15U;
    }
    /// Where the key is, or would be.
    static std::size_t placeOf(const Shard& shard, const Key* key, std::uint64_t mixed)
    {
        const std::vector<Entry>& entries = shard.entries;
        std::size_t place = static_cast<std::size_t>(mixed >> 26U) & (entries.size() - 1);
        while (entries[place].key && entries[place].key != key)
            place = (place + 1) & (entries.size() - 1);
        return place;
    }
    static void grow(Shard& shard)
    {
        std::vector<Entry> entries(shard.entries.empty() ? 16 : shard.entries.size() * 4);
        entries.swap(shard.entries);
        for (Entry& entry : entries) {
            if (entry.key)
                shard.entries[placeOf(shard, entry.key, mix(entry.key))] = std::move(entry);
        }
    }

    std::array<Shard, kShardCount> m_shards;
};

} // namespace shading
