#pragma once

#include "zel.h"
#include "zelBaseline.h"

#include <memory>
#include <string>
#include <vector>

// The same networks, once of the library and once of the baseline: nodes with the inputs In0 to In3
// and the outputs Out0 and Out1.

constexpr int kInputs = 4;
constexpr int kOutputs = 2;

inline const char* inputName(int index)
{
    static const char* const kNames[] = {"In0", "In1", "In2", "In3"};
    return kNames[index];
}

inline const char* outputName(int index)
{
    static const char* const kNames[] = {"Out0", "Out1"};
    return kNames[index];
}

inline std::string nodeName(int index)
{
    return "Node" + std::to_string(index);
}

/// The node whose output feeds that input: the same scattered pattern for both networks.
inline int sourceOf(int node, int input, int count)
{
    return static_cast<int>((static_cast<long long>(node) * 7919 + input * 104729 + 1) % count);
}

/// A compound that makes compounds, as commands that collapse need it.
class NestingCompound : public ZEL::Compound {
public:
    explicit NestingCompound(const ZEL::AddRefWrapper<ZEL::Node>& owner) : Compound(owner) {}
    using Compound::operator=;
    ZEL::AddRefWrapper<ZEL::Compound> createNewCompound(const char* name) override
    {
        const ZEL::AddRefWrapper<ZEL::Node> node = ZEL::Node::createNew(nullptr, name);
        ZEL::AddRefWrapper<ZEL::Compound> compound(new NestingCompound(node));
        return nodes().add(node) ? compound : nullptr;
    }
};

class LibraryNetwork : public ZEL::Container {
public:
    LibraryNetwork()
        : top(ZEL::Node::createNew(this, "Top")),
          network(ZEL::Compound::createNew(top, nullptr))
    {
        for (const char* name : {"float", "color3", "vector3", "string"})
            types.push_back(ZEL::PortDataType::createNew(name));
    }
    explicit LibraryNetwork(int count) : LibraryNetwork() { createNodes(count); }

    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return top; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return nullptr; }

    /// A node that stands in no list yet.
    ZEL::AddRefWrapper<ZEL::Node> makeNode(const char* name)
    {
        ZEL::AddRefWrapper<ZEL::Node> node = ZEL::Node::createNew(this, name);
        for (int i = 0; i < kInputs; ++i)
            node->inputs().addPort(inputName(i), types[i]);
        for (int i = 0; i < kOutputs; ++i)
            node->outputs().addPort(outputName(i), types[i]);
        return node;
    }
    ZEL::AddRefWrapper<ZEL::Node> createNode(ZEL::Compound& parent, const char* name)
    {
        ZEL::AddRefWrapper<ZEL::Node> node = makeNode(name);
        parent.nodes().add(node);
        return node;
    }
    void addNode(const std::string& name) { createNode(*network, name.c_str()); }
    void createNodes(int count)
    {
        for (int i = 0; i < count; ++i)
            addNode(nodeName(i));
    }
    /// Connects every input.
    void connectAll()
    {
        ZEL::NodeList& nodes = network->nodes();
        for (int i = 0; i < nodes.size(); ++i) {
            for (int j = 0; j < kInputs; ++j) {
                const ZEL::AddRefWrapper<ZEL::Node> source = nodes[sourceOf(i, j, nodes.size())];
                nodes[i]->inputs()[j]->addConnection(source->outputs()[j % kOutputs]);
            }
        }
    }

    std::vector<ZEL::AddRefWrapper<ZEL::PortDataType>> types;
    ZEL::AddRefWrapper<ZEL::Node> top;
    ZEL::AddRefWrapper<ZEL::Compound> network;
};

class BaselineNetwork {
public:
    BaselineNetwork()
    {
        for (const char* name : {"float", "color3", "vector3", "string"})
            types.push_back({name});
        top.name = "Top";
        top.compound = std::make_unique<baseline::Compound>();
        top.compound->owner = &top;
    }
    explicit BaselineNetwork(int count) : BaselineNetwork() { createNodes(count); }

    void addPorts(baseline::Node* node)
    {
        for (int i = 0; i < kInputs; ++i)
            baseline::addPort(node, inputName(i), &types[i], false);
        for (int i = 0; i < kOutputs; ++i)
            baseline::addPort(node, outputName(i), &types[i], true);
    }
    baseline::Node* createNode(baseline::Compound& parent, std::string name)
    {
        baseline::Node* const node = baseline::addNode(parent, std::move(name));
        addPorts(node);
        return node;
    }
    void addNode(const std::string& name) { createNode(*top.compound, name); }
    void createNodes(int count)
    {
        for (int i = 0; i < count; ++i)
            addNode(nodeName(i));
    }
    void connectAll()
    {
        auto& nodes = top.compound->nodes;
        const int count = static_cast<int>(nodes.size());
        for (int i = 0; i < count; ++i) {
            for (int j = 0; j < kInputs; ++j)
                baseline::connect(nodes[sourceOf(i, j, count)]->outputs[j % kOutputs].get(),
                                  nodes[i]->inputs[j].get());
        }
    }

    std::vector<baseline::Type> types;
    baseline::Node top;
};
