#pragma once

#include "zelBenchNetworks.h"

#include <memory>
#include <vector>

// Nodes with ports and connections that stand in no list: what is counted is theirs alone.

class LooseLibraryNodes {
public:
    explicit LooseLibraryNodes(int count) { m_nodes.reserve(static_cast<std::size_t>(count)); }
    /// A port is to forget another one before that dies.
    ~LooseLibraryNodes()
    {
        for (const ZEL::AddRefWrapper<ZEL::Node>& node : m_nodes)
            node->onThisNodeDeleted();
    }
    LooseLibraryNodes(const LooseLibraryNodes&) = delete;
    LooseLibraryNodes& operator=(const LooseLibraryNodes&) = delete;

    void makeNode() { m_nodes.push_back(m_network.makeNode("Node")); }
    int size() const { return static_cast<int>(m_nodes.size()); }
    void connect(int from, int output, int to, int input)
    {
        m_nodes[to]->inputs()[input]->addConnection(m_nodes[from]->outputs()[output]);
    }

private:
    LibraryNetwork m_network;
    std::vector<ZEL::AddRefWrapper<ZEL::Node>> m_nodes;
};

class LooseBaselineNodes {
public:
    explicit LooseBaselineNodes(int count) { m_nodes.reserve(static_cast<std::size_t>(count)); }

    void makeNode()
    {
        m_nodes.push_back(std::make_unique<baseline::Node>());
        m_nodes.back()->name = "Node";
        m_network.addPorts(m_nodes.back().get());
    }
    int size() const { return static_cast<int>(m_nodes.size()); }
    void connect(int from, int output, int to, int input)
    {
        baseline::connect(m_nodes[from]->outputs[output].get(), m_nodes[to]->inputs[input].get());
    }

private:
    BaselineNetwork m_network;
    std::vector<std::unique_ptr<baseline::Node>> m_nodes;
};
