#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace shading {

struct DraftItem;

/// Elements by the offset at which they begin in a text. Private to the host's library.
class OffsetIndex {
public:
    void clear();
    /// Each offset must be larger than the one before.
    void add(std::size_t offset, DraftItem& item);
    /// Null when no element begins there.
    DraftItem* at(std::size_t offset) const;
    std::size_t size() const { return m_entries.size(); }

private:
    std::vector<std::pair<std::size_t, DraftItem*>> m_entries;
    std::vector<std::size_t>
        m_blocks; ///< The first entry that is not before each block of the text.
};

} // namespace shading
