#pragma once

#include "core/zelCacheHint.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL {

class Port;

namespace CmdImpl {

/// How many references the records of a command hold to each port.
class PortHolds {
public:
    /// Makes room for so many ports at most, and forgets all.
    void reset(std::size_t ports);
    void add(const Port* port)
    {
        Entry& entry = m_entries[placeOf(port)];
        entry.port = port;
        ++entry.holds;
    }
    /// 0 for a port that was not added, and when there is no room at all.
    int of(const Port* port) const
    {
        return m_entries.empty() ? 0 : m_entries[placeOf(port)].holds;
    }
    /// Asks for the memory that of will read.
    void prefetch(const Port* port) const
    {
        if (!m_entries.empty())
            prefetchToRead(&m_entries[homeOf(port)]);
    }

private:
    struct Entry {
        const Port* port = nullptr; ///< Null: free.
        int holds = 0;
    };

    std::size_t homeOf(const Port* port) const
    {
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(port) * kSpread) >>
                                        m_shift);
    }
    /// Of its entry, or where that would stand.
    std::size_t placeOf(const Port* port) const
    {
        std::size_t place = homeOf(port);
        while (m_entries[place].port && m_entries[place].port != port)
            place = (place + 1) & (m_entries.size() - 1);
        return place;
    }

    std::vector<Entry> m_entries; ///< A power of two of them, at most half used.
    int m_shift = 0;
};

} // namespace CmdImpl
} // namespace ZEL
