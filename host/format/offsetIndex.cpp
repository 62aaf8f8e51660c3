#include "format/offsetIndex.h"

namespace shading {

namespace {

/// A few elements fit in.
constexpr std::size_t kBlock = 64;

} // namespace

void OffsetIndex::clear()
{
    m_entries.clear();
    m_blocks.clear();
}

void OffsetIndex::add(std::size_t offset, DraftItem& item)
{
    m_blocks.resize(offset / kBlock + 1, m_entries.size());
    m_entries.emplace_back(offset, &item);
}

DraftItem* OffsetIndex::at(std::size_t offset) const
{
    const std::size_t block = offset / kBlock;
    std::size_t i = block < m_blocks.size() ? m_blocks[block] : m_entries.size();
    while (i < m_entries.size() && m_entries[i].first < offset)
        ++i;
    return i < m_entries.size() && m_entries[i].first == offset ? m_entries[i].second : nullptr;
}

} // namespace shading
