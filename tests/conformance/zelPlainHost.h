#pragma once

#include "zelConformance.h"

#include <memory>
#include <string>

/// The least that a host overrides.
namespace plain {

using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;
using CompoundPtr = ZEL::AddRefWrapper<ZEL::Compound>;

/// Takes the connections off a port that is about to go.
inline bool disconnect(const PortPtr& port)
{
    port->removeAllConnections();
    return !port->isConnected();
}

class Compound : public ZEL::Compound {
public:
    using ZEL::Compound::Compound;
    using ZEL::Compound::operator=;

    bool onPortListPortRemoved(const ZEL::PortList& /*list*/, const PortPtr& port) override
    {
        return disconnect(port);
    }
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override
    {
        followMove(list, from, to);
    }
    bool onNodeRemove(const NodePtr& node) override
    {
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            for (int i = 0; i < list->size(); ++i) {
                if (!disconnect((*list)[i]))
                    return false;
            }
        }
        return true;
    }
    CompoundPtr createNewCompound(const char* name) override;

    /// Told of a move in one of the four lists: does the same in the mirroring one.
    void followMove(const ZEL::PortList& list, int from, int to)
    {
        const NodePtr owner = getAsNode();
        ZEL::PortList* const pairs[][2] = {{&innerInputs(), &owner->inputs()},
                                           {&owner->inputs(), &innerInputs()},
                                           {&innerOutputs(), &owner->outputs()},
                                           {&owner->outputs(), &innerOutputs()}};
        for (const auto& [moved, mirror] : pairs) {
            if (moved != &list || m_isFollowing)
                continue;
            m_isFollowing = true;
            mirror->movePort(from, to);
            m_isFollowing = false;
        }
    }

private:
    bool m_isFollowing = false; ///< The mirroring list is being moved.
};

class Node : public ZEL::Node {
public:
    using ZEL::Node::Node;
    using ZEL::Node::operator=;

    bool onPortListPortRemoved(const ZEL::PortList& /*list*/, const PortPtr& port) override
    {
        return disconnect(port);
    }
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override
    {
        const CompoundPtr compound = getAsCompound();
        if (auto* const own = dynamic_cast<Compound*>(compound.get()))
            own->followMove(list, from, to);
    }
};

/// A node and a compound of any classes, in the compound that makes them.
template <class NodeClass, class CompoundClass>
CompoundPtr makeCompound(ZEL::Compound& parent, const char* name)
{
    const NodePtr node(new NodeClass(parent.getAsNode()->getContainer()));
    node->setName(name);
    CompoundPtr made(new CompoundClass(node));
    return parent.nodes().add(node) ? made : nullptr;
}

inline CompoundPtr Compound::createNewCompound(const char* name)
{
    return makeCompound<Node, Compound>(*this, name);
}

/// A document of any classes.
template <class NodeClass, class CompoundClass>
class Document : public ZEL::Container {
public:
    Document() : m_root(new NodeClass(this))
    {
        m_root->setName("Top");
        const CompoundPtr network(new CompoundClass(m_root)); // The root node holds it.
    }

    NodePtr getRootNode() override { return m_root; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return &m_runtime; }

private:
    // Destroyed in reverse order: the nodes before the runtime that serves them.
    ZEL::Runtime m_runtime;
    NodePtr m_root;
};

/// What the kit is told of the host.
template <class NodeClass = Node,
          class CompoundClass = Compound,
          class DocumentClass = Document<NodeClass, CompoundClass>>
class Host : public ZEL::ConformanceHost {
public:
    std::unique_ptr<ZEL::Container> makeDocument() override
    {
        return std::make_unique<DocumentClass>();
    }
    NodePtr makeNode(ZEL::Container& document, const char* name) override
    {
        NodePtr node(new NodeClass(&document));
        node->setName(name);
        return node;
    }
};

} // namespace plain
