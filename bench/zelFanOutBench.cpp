// One output connected to many inputs.

#include "zelBatch.h"
#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <algorithm>
#include <numeric>
#include <random>

using namespace ZEL;

namespace {

enum class Order { firstToLast, lastToFirst, shuffled, strided };

std::vector<int> places(int count, Order order)
{
    std::vector<int> result(count);
    std::iota(result.begin(), result.end(), 0);
    if (order == Order::lastToFirst)
        std::reverse(result.begin(), result.end());
    if (order == Order::shuffled)
        std::shuffle(result.begin(), result.end(), std::minstd_rand(1));
    if (order == Order::strided) { // Every 37th, round and round: a prime, so each once.
        for (int i = 0; i < count; ++i)
            result[i] = static_cast<int>(37LL * i % count);
    }
    return result;
}

/// One node whose first output feeds the first input of every other node.
struct LibraryFan {
    explicit LibraryFan(int count) : network(count + 1)
    {
        NodeList& nodes = network.network->nodes();
        source = nodes[0];
        output = source->outputs()[0];
        for (int i = 1; i <= count; ++i)
            inputs.push_back(nodes[i]->inputs()[0]);
    }
    void connect()
    {
        for (const AddRefWrapper<Port>& input : inputs)
            output->addConnection(input);
    }

    LibraryNetwork network;
    AddRefWrapper<Node> source;
    AddRefWrapper<Port> output;
    std::vector<AddRefWrapper<Port>> inputs;
};

struct BaselineFan {
    explicit BaselineFan(int count) : network(count + 1)
    {
        auto& nodes = network.top.compound->nodes;
        output = nodes[0]->outputs[0].get();
        for (int i = 1; i <= count; ++i)
            inputs.push_back(nodes[i]->inputs[0].get());
    }
    void connect()
    {
        for (baseline::Port* input : inputs)
            baseline::connect(output, input);
    }

    BaselineNetwork network;
    baseline::Port* output;
    std::vector<baseline::Port*> inputs;
};

/// The fan, connected.
template <class Fan>
struct ConnectedFan : Fan {
    explicit ConnectedFan(int count) : Fan(count) { Fan::connect(); }
};

template <class Fan>
Timing connectFan(int count)
{
    return timeBatch<Fan>(count, count, [](Fan& fan) { fan.connect(); });
}

template <Order order>
Timing removeLibrary(int count)
{
    const std::vector<int> removed = places(count, order);
    return timeBatch<ConnectedFan<LibraryFan>>(count, count, [&removed](LibraryFan& fan) {
        for (const int i : removed)
            fan.output->removeConnection(fan.inputs[i]);
    });
}

template <Order order>
Timing removeBaseline(int count)
{
    const std::vector<int> removed = places(count, order);
    return timeBatch<ConnectedFan<BaselineFan>>(count, count, [&removed](BaselineFan& fan) {
        for (const int i : removed)
            baseline::disconnectInput(fan.inputs[i]);
    });
}

Timing removeAllLibrary(int count)
{
    return timeBatch<ConnectedFan<LibraryFan>>(
        count, count, [](LibraryFan& fan) { fan.output->removeAllConnections(); });
}

Timing removeAllBaseline(int count)
{
    return timeBatch<ConnectedFan<BaselineFan>>(count, count, [](BaselineFan& fan) {
        while (fan.output->last)
            baseline::disconnect(fan.output->last);
    });
}

Timing removeSourceLibrary(int count)
{
    return timeBatch<ConnectedFan<LibraryFan>>(
        count, count, [](LibraryFan& fan) { fan.network.network->nodes().remove(fan.source); });
}

Timing removeSourceBaseline(int count)
{
    return timeBatch<ConnectedFan<BaselineFan>>(count, count, [](BaselineFan& fan) {
        baseline::Compound& compound = *fan.network.top.compound;
        compound.names.erase(compound.nodes[0].get());
        compound.nodes[0] = nullptr;
    });
}

} // namespace

std::vector<Workload> fanOutWorkloads()
{
    const std::vector<int> sizes = {10, 100, 1000, 10000, 100000};
    const std::vector<int> longOnes = {1000, 10000, 100000};
    return {
        {"fan-out: connect", sizes, connectFan<LibraryFan>, connectFan<BaselineFan>, "1.5x"},
        {"fan-out: remove, first to last", sizes, removeLibrary<Order::firstToLast>,
         removeBaseline<Order::firstToLast>, "5x"},
        {"fan-out: remove, last to first", sizes, removeLibrary<Order::lastToFirst>,
         removeBaseline<Order::lastToFirst>, "5x"},
        {"fan-out: remove, shuffled", sizes, removeLibrary<Order::shuffled>,
         removeBaseline<Order::shuffled>, "5x"},
        {"fan-out: remove, every 37th", sizes, removeLibrary<Order::strided>,
         removeBaseline<Order::strided>, "5x"},
        {"fan-out: removeAllConnections", sizes, removeAllLibrary, removeAllBaseline, "4x"},
        {"fan-out: remove the source node", longOnes, removeSourceLibrary, removeSourceBaseline,
         "4x"},
    };
}
