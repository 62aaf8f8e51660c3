// One output connected to many inputs.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <algorithm>
#include <numeric>
#include <random>

using namespace ZEL;

namespace {

enum class Order { firstToLast, lastToFirst, shuffled };

std::vector<int> places(int count, Order order)
{
    std::vector<int> result(count);
    std::iota(result.begin(), result.end(), 0);
    if (order == Order::lastToFirst)
        std::reverse(result.begin(), result.end());
    if (order == Order::shuffled)
        std::shuffle(result.begin(), result.end(), std::minstd_rand(1));
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

template <class Fan>
Timing connectFan(int count)
{
    Fan fan(count);
    const StopWatch watch;
    fan.connect();
    return watch.stop(count);
}

template <Order order>
Timing removeLibrary(int count)
{
    LibraryFan fan(count);
    fan.connect();
    const std::vector<int> removed = places(count, order);
    const StopWatch watch;
    for (const int i : removed)
        fan.output->removeConnection(fan.inputs[i]);
    return watch.stop(count);
}

template <Order order>
Timing removeBaseline(int count)
{
    BaselineFan fan(count);
    fan.connect();
    const std::vector<int> removed = places(count, order);
    const StopWatch watch;
    for (const int i : removed)
        baseline::disconnectInput(fan.inputs[i]);
    return watch.stop(count);
}

Timing removeAllLibrary(int count)
{
    LibraryFan fan(count);
    fan.connect();
    const StopWatch watch;
    fan.output->removeAllConnections();
    return watch.stop(count);
}

Timing removeAllBaseline(int count)
{
    BaselineFan fan(count);
    fan.connect();
    const StopWatch watch;
    while (fan.output->last)
        baseline::disconnect(fan.output->last);
    return watch.stop(count);
}

Timing removeSourceLibrary(int count)
{
    LibraryFan fan(count);
    fan.connect();
    const StopWatch watch;
    fan.network.network->nodes().remove(fan.source);
    return watch.stop(count);
}

Timing removeSourceBaseline(int count)
{
    BaselineFan fan(count);
    fan.connect();
    auto& nodes = fan.network.top.compound->nodes;
    const StopWatch watch;
    fan.network.top.compound->names.erase(nodes[0].get());
    nodes[0] = nullptr;
    return watch.stop(count);
}

} // namespace

std::vector<Workload> fanOutWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    return {
        {"fan-out: connect", sizes, connectFan<LibraryFan>, connectFan<BaselineFan>, "4x"},
        {"fan-out: remove, first to last", sizes, removeLibrary<Order::firstToLast>,
         removeBaseline<Order::firstToLast>, "15x"},
        {"fan-out: remove, last to first", sizes, removeLibrary<Order::lastToFirst>,
         removeBaseline<Order::lastToFirst>, "15x"},
        {"fan-out: remove, shuffled", sizes, removeLibrary<Order::shuffled>,
         removeBaseline<Order::shuffled>, "15x"},
        {"fan-out: removeAllConnections", sizes, removeAllLibrary, removeAllBaseline, "15x"},
        {"fan-out: remove the source node", sizes, removeSourceLibrary, removeSourceBaseline,
         "15x"},
    };
}
