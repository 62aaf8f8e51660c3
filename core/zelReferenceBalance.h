#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL {

/// Where a list's references and places differ: an entry with references that have no place
/// (positive), or with places that have no reference (negative). In the order in which the entries
/// became uneven; a change takes the same time at any length.
class ReferenceBalance {
public:
    bool isEmpty() const { return m_places.empty(); }
    void add(void* entry, int change)
    {
        const auto [found, isNew] = m_places.try_emplace(entry, m_entries.size());
        if (isNew)
            m_entries.emplace_back(entry, 0);
        int& uneven = m_entries[found->second].second;
        if ((uneven += change) == 0) {
            m_places.erase(found);
            dropEven();
        }
    }
    /// The entry is gone, or counts as even from now on.
    void forget(void* entry)
    {
        if (const int uneven = of(entry))
            add(entry, -uneven);
    }
    /// 0 for an entry with one reference for each place.
    int of(void* entry) const
    {
        const auto found = m_places.find(entry);
        return found == m_places.end() ? 0 : m_entries[found->second].second;
    }
    /// Calls visit(entry, number) for each uneven entry.
    template <class Visit>
    void forEach(Visit visit) const
    {
        for (const auto& [entry, uneven] : m_entries) {
            if (uneven != 0)
                visit(entry, uneven);
        }
    }

private:
    /// Closes the gaps that entries left when they became even, once most are gaps.
    void dropEven()
    {
        if (m_places.size() * 2 > m_entries.size())
            return;
        std::size_t kept = 0;
        for (const auto& entry : m_entries) {
            if (entry.second == 0)
                continue;
            m_places[entry.first] = kept;
            m_entries[kept++] = entry;
        }
        m_entries.resize(kept);
    }

    std::vector<std::pair<void*, int>> m_entries;    ///< 0: became even, is no entry any more.
    std::unordered_map<void*, std::size_t> m_places; ///< Of the uneven entries in m_entries.
};

} // namespace ZEL
