#pragma once

#include "zelBatch.h"
#include "zelBenchNetworks.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Jobs on a whole network and what they find ready, once of the library and once of the baseline.

inline std::vector<std::string> nodeNames(int count)
{
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(nodeName(i));
    return names;
}

/// An empty network, and the names of the nodes that it will get.
template <class Network>
struct EmptyNetwork {
    explicit EmptyNetwork(int count) : names(nodeNames(count)) {}
    void create()
    {
        for (const std::string& name : names)
            network.addNode(name);
    }

    std::vector<std::string> names;
    Network network;
};

/// A network with every input connected, which can be dropped.
template <class Network>
struct ConnectedNetwork {
    explicit ConnectedNetwork(int count) : network(std::make_unique<Network>(count))
    {
        network->connectAll();
    }
    void destroy() { network = nullptr; }

    std::unique_ptr<Network> network;
};

/// The ports that connectAll would connect, output and input, both held.
struct LibraryPairs {
    explicit LibraryPairs(int count) : network(count)
    {
        ZEL::NodeList& nodes = network.network->nodes();
        pairs.reserve(static_cast<std::size_t>(count) * kInputs);
        for (int i = 0; i < count; ++i) {
            for (int j = 0; j < kInputs; ++j)
                pairs.emplace_back(nodes[sourceOf(i, j, count)]->outputs()[j % kOutputs],
                                   nodes[i]->inputs()[j]);
        }
    }
    void connect()
    {
        for (const auto& [output, input] : pairs)
            input->addConnection(output);
    }
    void disconnect()
    {
        for (const auto& [output, input] : pairs)
            output->removeConnection(input);
    }
    void removeAll()
    {
        for (ZEL::Node* const node : network.network->nodes()) {
            for (int i = 0; i < kOutputs; ++i)
                node->outputs()[i]->removeAllConnections();
        }
    }

    LibraryNetwork network;
    std::vector<std::pair<ZEL::AddRefWrapper<ZEL::Port>, ZEL::AddRefWrapper<ZEL::Port>>> pairs;
};

struct BaselinePairs {
    explicit BaselinePairs(int count) : network(count)
    {
        auto& nodes = network.top.compound->nodes;
        pairs.reserve(static_cast<std::size_t>(count) * kInputs);
        for (int i = 0; i < count; ++i) {
            for (int j = 0; j < kInputs; ++j)
                pairs.emplace_back(nodes[sourceOf(i, j, count)]->outputs[j % kOutputs].get(),
                                   nodes[i]->inputs[j].get());
        }
    }
    void connect()
    {
        for (const auto& [output, input] : pairs)
            baseline::connect(output, input);
    }
    void disconnect()
    {
        for (const auto& [output, input] : pairs)
            baseline::disconnectInput(input);
    }
    void removeAll()
    {
        for (const auto& node : network.top.compound->nodes) {
            for (const auto& output : node->outputs) {
                while (output->last)
                    baseline::disconnect(output->last);
            }
        }
    }

    BaselineNetwork network;
    std::vector<std::pair<baseline::Port*, baseline::Port*>> pairs;
};

/// The pairs, connected.
template <class Pairs>
struct ConnectedPairs : Pairs {
    explicit ConnectedPairs(int count) : Pairs(count) { Pairs::connect(); }
};

template <class Network>
Timing timeCreate(int count)
{
    return timeBatch<EmptyNetwork<Network>>(count, count, [](auto& empty) { empty.create(); });
}

template <class Network>
Timing timeDestroy(int count)
{
    return timeBatch<ConnectedNetwork<Network>>(count, count,
                                                [](auto& connected) { connected.destroy(); });
}

template <class Pairs>
Timing timeConnect(int count)
{
    return timeBatch<Pairs>(count, static_cast<double>(count) * kInputs,
                            [](Pairs& pairs) { pairs.connect(); });
}
