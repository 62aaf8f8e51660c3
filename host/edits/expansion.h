#pragma once

#include "document/pointers.h"
#include "edits/renamings.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace shading {

class Document;

/// The reverse of a collapse, for any compound node: it plans on the network as it is, then breaks
/// all connections of the node and of the nodes inside, moves those up, and makes the connections
/// that the plan holds. Every step may be refused; taking back what was done is the journal's work.
class Expansion {
public:
    /// The node must be a compound inside another one, and both are the document's.
    Expansion(Document& document, const NodePtr& graph);

    /// Returns why it cannot be done, empty when it is done.
    std::string run();
    const Renamings& renamed() const { return m_renamed; }

private:
    struct Link {
        PortPtr sender;
        PortPtr receiver;
    };

    /// What an input without a source gave to a port.
    struct Gift {
        PortPtr from;
        PortPtr to;
        std::string value;
    };

    void planNode(ZEL::Node& node);
    void planInput(const PortPtr& outer, const PortPtr& inner);
    void addTargets(ZEL::Port& sender,
                    std::vector<PortPtr>& targets,
                    std::unordered_set<ZEL::Port*>& seen);
    std::vector<PortPtr> targetsOf(ZEL::Port& sender);
    void disconnectAll();
    void give(const Gift& gift);
    std::string moveUp(const NodePtr& node);

    Document& m_document;
    NodePtr m_graph;
    CompoundPtr m_compound;
    CompoundPtr m_around;
    std::vector<NodePtr> m_nodes;
    std::unordered_set<ZEL::Node*> m_planned; ///< The same, to be looked up.
    std::vector<Link> m_links;
    std::vector<Gift> m_gifts;
    Renamings m_renamed;
};

} // namespace shading
