#pragma once

#include "zel.h"

#include <list>
#include <unordered_map>
#include <vector>

namespace shading {

/// The order of a compound's nodes while many of them come and go: a place is found and changed in
/// about the square root of their number, where the library's list would be walked or made anew
/// each time. It holds the nodes.
class NodeOrder {
public:
    explicit NodeOrder(ZEL::NodeList& list);

    /// -1 for a node that is not there.
    int placeOf(ZEL::Node* node);
    /// The node gets that place; beyond the last it gets the next.
    void insert(int place, ZEL::Node* node);
    void remove(ZEL::Node* node);
    /// Brings the compound's list, which has the same nodes, into this order. Nobody is asked.
    void applyTo(ZEL::Compound& compound) const;

private:
    using Block = std::vector<ZEL::AddRefWrapper<ZEL::Node>>;

    void indexBlocks();

    std::list<Block> m_blocks; ///< At least one.
    /// Empty until a node is looked for.
    std::unordered_map<ZEL::Node*, std::list<Block>::iterator> m_blockOf;
};

/// The orders of the compounds that one edit, or one replay, works on.
class NodeOrders {
public:
    /// The place of a node that is about to leave, or -1. The first one of a compound is looked up
    /// in the list itself.
    int placeOf(ZEL::Compound& compound, ZEL::Node* node);
    /// The order of the compound's list: as it is now when it was not kept yet.
    NodeOrder& keep(ZEL::Compound& compound);
    /// What happens to a list whose order is kept; nothing otherwise.
    void noteAppended(ZEL::Compound& compound, ZEL::Node* node);
    void noteRemoved(ZEL::Compound& compound, ZEL::Node* node);
    /// Brings all lists into the orders that were kept, and forgets those.
    void apply();
    void forget();

private:
    std::unordered_map<ZEL::Compound*, int> m_lookUps; ///< How many removals asked for a place.
    std::unordered_map<ZEL::Compound*, NodeOrder> m_orders;
};

} // namespace shading
