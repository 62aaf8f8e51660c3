// Networks of ten nodes, as most are: nothing is to get slower there for the sake of long lists.

#include "zelCommands.h"
#include "zelNetworkJobs.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

using namespace ZEL;

namespace {

constexpr int kRoundsOfTen = 10;

/// A network of so many nodes, and the path of an input of each.
template <class Network>
struct TenPaths {
    explicit TenPaths(int count) : network(count)
    {
        for (int i = 0; i < count; ++i)
            paths.push_back("Top." + nodeName(i) + ".In2");
    }

    Network network;
    std::vector<std::string> paths;
};

template <class Pairs>
Timing disconnectTen(int count)
{
    return timeBatch<ConnectedPairs<Pairs>>(count, count * kInputs,
                                            [](Pairs& pairs) { pairs.disconnect(); });
}

template <class Pairs>
Timing removeAllOfTen(int count)
{
    return timeBatch<ConnectedPairs<Pairs>>(count, count * kInputs,
                                            [](Pairs& pairs) { pairs.removeAll(); });
}

Timing findLibrary(int count)
{
    return timeBatch<TenPaths<LibraryNetwork>>(count, count * kRoundsOfTen, [](auto& ten) {
        for (int round = 0; round < kRoundsOfTen; ++round) {
            for (const std::string& path : ten.paths)
                benchmark::DoNotOptimize(
                    ten.network.findPortFromPath(path.c_str(), PortInput, Container::eSearchNode));
        }
    });
}

Timing findBaseline(int count)
{
    return timeBatch<TenPaths<BaselineNetwork>>(count, count * kRoundsOfTen, [](auto& ten) {
        for (int round = 0; round < kRoundsOfTen; ++round) {
            for (const std::string& path : ten.paths)
                benchmark::DoNotOptimize(baseline::findPortFromPath(ten.network.top, path, false));
        }
    });
}

/// A network with every input connected, in which every second node is to be collapsed.
struct HalfToCollapse {
    explicit HalfToCollapse(int count)
    {
        network.network = new NestingCompound(network.top);
        network.createNodes(count);
        network.connectAll();
        for (int i = 0; i < count; i += 2)
            names.push_back(nodeName(i));
    }
    void collapse()
    {
        command.setParentCompound(&network, "Top");
        for (const std::string& name : names)
            command.addNodeToMove(name.c_str());
        command.doit();
    }

    LibraryNetwork network;
    std::vector<std::string> names;
    CreateCompoundCommand command;
};

Timing collapseHalf(int count)
{
    return timeBatch<HalfToCollapse>(count, count / 2.0,
                                     [](HalfToCollapse& half) { half.collapse(); });
}

} // namespace

std::vector<Workload> tenNodesWorkloads()
{
    const std::vector<int> ten = {10};
    const char* const goal = "as before";
    return {
        {"10 nodes: create a node with 6 ports", ten, timeCreate<LibraryNetwork>,
         timeCreate<BaselineNetwork>, goal},
        {"10 nodes: connect, ports at hand", ten, timeConnect<LibraryPairs>,
         timeConnect<BaselinePairs>, goal},
        {"10 nodes: findPortFromPath", ten, findLibrary, findBaseline, goal},
        {"10 nodes: removeConnection", ten, disconnectTen<LibraryPairs>,
         disconnectTen<BaselinePairs>, goal},
        {"10 nodes: removeAllConnections", ten, removeAllOfTen<LibraryPairs>,
         removeAllOfTen<BaselinePairs>, goal},
        {"10 nodes: destroy a connected node", ten, timeDestroy<LibraryNetwork>,
         timeDestroy<BaselineNetwork>, goal},
        {"10 nodes: collapse every second", ten, collapseHalf, nullptr, goal},
    };
}
