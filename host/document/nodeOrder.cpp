#include "document/nodeOrder.h"

#include <algorithm>
#include <climits>

namespace shading {

namespace {

constexpr std::size_t kBlockSize = 512; ///< A block of twice as many is split.

} // namespace

NodeOrder::NodeOrder(ZEL::NodeList& list)
{
    m_blocks.emplace_back();
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : list) {
        if (m_blocks.back().size() == kBlockSize)
            m_blocks.emplace_back();
        m_blocks.back().push_back(node);
    }
}

void NodeOrder::indexBlocks()
{
    if (!m_blockOf.empty())
        return;
    for (auto block = m_blocks.begin(); block != m_blocks.end(); ++block) {
        for (const ZEL::AddRefWrapper<ZEL::Node>& node : *block)
            m_blockOf[node.get()] = block;
    }
}

int NodeOrder::placeOf(ZEL::Node* node)
{
    indexBlocks();
    const auto found = m_blockOf.find(node);
    if (found == m_blockOf.end())
        return -1;
    std::ptrdiff_t place = 0;
    for (auto block = m_blocks.begin(); block != found->second; ++block)
        place += static_cast<std::ptrdiff_t>(block->size());
    const Block& block = *found->second;
    return static_cast<int>(place + (std::find(block.begin(), block.end(), node) - block.begin()));
}

void NodeOrder::insert(int place, ZEL::Node* node)
{
    auto block = m_blocks.begin();
    auto offset = static_cast<std::size_t>(place);
    while (offset > block->size() && std::next(block) != m_blocks.end())
        offset -= (block++)->size();
    offset = std::min(offset, block->size());
    block->insert(block->begin() + static_cast<std::ptrdiff_t>(offset), node);
    if (!m_blockOf.empty())
        m_blockOf[node] = block;
    if (block->size() < 2 * kBlockSize)
        return;
    const auto middle = block->begin() + kBlockSize;
    const auto behind = m_blocks.emplace(std::next(block), middle, block->end());
    block->erase(middle, block->end());
    for (const ZEL::AddRefWrapper<ZEL::Node>& moved : *behind) {
        if (!m_blockOf.empty())
            m_blockOf[moved.get()] = behind;
    }
}

void NodeOrder::remove(ZEL::Node* node)
{
    indexBlocks();
    const auto found = m_blockOf.find(node);
    if (found == m_blockOf.end())
        return;
    Block& block = *found->second;
    block.erase(std::find(block.begin(), block.end(), node));
    m_blockOf.erase(found);
}

/// A node list only appends, and to take the followers out would cost them their connections; but
/// an assignment takes over another list's order. The other list belongs to a compound of its own,
/// so that nobody is asked.
void NodeOrder::applyTo(ZEL::Compound& compound) const
{
    ZEL::NodeList& list = compound.nodes();
    const ZEL::AddRefWrapper<ZEL::Node> owner = ZEL::Node::createNew(nullptr, nullptr);
    const ZEL::AddRefWrapper<ZEL::Compound> scratch = ZEL::Compound::createNew(owner, nullptr);
    ZEL::NodeList& ordered = scratch->nodes();
    bool isSame = true;
    int place = 0;
    for (const Block& block : m_blocks) {
        for (const ZEL::AddRefWrapper<ZEL::Node>& node : block) {
            isSame = isSame && list[place++] == node;
            ordered.add(node);
        }
    }
    if (!isSame)
        list = ordered;
    list.setParentCompound(&compound); // Adding to the other list made that one the parent.
}

int NodeOrders::placeOf(ZEL::Compound& compound, ZEL::Node* node)
{
    if (++m_lookUps[&compound] > 1)
        return keep(compound).placeOf(node);
    ZEL::NodeList& list = compound.nodes();
    for (int place = 0; place < list.size(); ++place) {
        if (list[place] == node)
            return place;
    }
    return -1;
}

NodeOrder& NodeOrders::keep(ZEL::Compound& compound)
{
    return m_orders.try_emplace(&compound, compound.nodes()).first->second;
}

void NodeOrders::noteAppended(ZEL::Compound& compound, ZEL::Node* node)
{
    const auto found = m_orders.find(&compound);
    if (found != m_orders.end())
        found->second.insert(INT_MAX, node);
}

void NodeOrders::noteRemoved(ZEL::Compound& compound, ZEL::Node* node)
{
    const auto found = m_orders.find(&compound);
    if (found != m_orders.end())
        found->second.remove(node);
}

void NodeOrders::apply()
{
    for (const auto& [compound, order] : m_orders)
        order.applyTo(*compound);
    forget();
}

void NodeOrders::forget()
{
    m_orders.clear();
    m_lookUps.clear();
}

} // namespace shading
