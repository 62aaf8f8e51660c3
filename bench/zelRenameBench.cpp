// Names that change, and nodes that share one.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

using namespace ZEL;

namespace {

constexpr int kRenames = 20000;

std::vector<std::string> numbered(const std::string& stem, int count)
{
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(stem + std::to_string(i));
    return names;
}

/// Scattered over so many entries.
std::vector<int> scatteredPlaces(int steps, int count)
{
    std::vector<int> result;
    result.reserve(static_cast<std::size_t>(steps));
    for (int i = 0; i < steps; ++i)
        result.push_back(static_cast<int>(7919LL * i % count));
    return result;
}

Timing renameLibrary(int count)
{
    LibraryNetwork network(count);
    NodeList& nodes = network.network->nodes();
    const std::vector<std::string> names = numbered("Renamed", kRenames);
    const std::vector<int> renamed = scatteredPlaces(kRenames, count);
    for (int i = 0; i < 100; ++i)
        benchmark::DoNotOptimize(nodes[nodeName(count - 1).c_str()]);
    const StopWatch watch;
    for (int i = 0; i < kRenames; ++i) {
        nodes[renamed[i]]->setName(names[i].c_str());
        benchmark::DoNotOptimize(nodes[names[i].c_str()]);
    }
    return watch.stop(kRenames);
}

Timing renameBaseline(int count)
{
    BaselineNetwork network(count);
    auto& nodes = network.top.compound->nodes;
    const std::vector<std::string> names = numbered("Renamed", kRenames);
    const std::vector<int> renamed = scatteredPlaces(kRenames, count);
    const StopWatch watch;
    for (int i = 0; i < kRenames; ++i) {
        baseline::rename(nodes[renamed[i]].get(), names[i].c_str());
        benchmark::DoNotOptimize(network.top.compound->names.find(names[i]));
    }
    return watch.stop(kRenames);
}

/// As after pasting: all nodes have one name, and each is given a free one, first to last.
Timing renameFromOneName(int count)
{
    LibraryNetwork network(count);
    NodeList& nodes = network.network->nodes();
    std::vector<AddRefWrapper<Node>> pasted;
    for (int i = 0; i < count; ++i) {
        pasted.push_back(nodes[i]);
        pasted.back()->setName("Pasted");
    }
    const std::vector<std::string> names = numbered("Pasted", count);
    const StopWatch watch;
    for (int i = 0; i < count; ++i) {
        if (!nodes[names[i].c_str()])
            pasted[i]->setName(names[i].c_str());
        benchmark::DoNotOptimize(nodes["Pasted"]);
    }
    return watch.stop(count);
}

/// Takes out one node after the other by its name, which another one shares.
Timing removeAmongPairs(int count)
{
    LibraryNetwork network(count);
    NodeList& nodes = network.network->nodes();
    std::vector<std::string> names;
    for (const int place : scatteredPlaces(count, count))
        names.push_back(nodeName(place / 2));
    for (int i = 0; i < count; ++i)
        nodes[i]->setName(nodeName(i / 2).c_str());
    const StopWatch watch;
    for (const std::string& name : names)
        network.network->removeNode(name.c_str());
    return watch.stop(count);
}

} // namespace

std::vector<Workload> renameWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    return {
        {"rename, then look up", {1000, 10000}, renameLibrary, renameBaseline, "2.5x"},
        {"rename many of one name", sizes, renameFromOneName, nullptr, "1500 ns"},
        {"remove by name among pairs", sizes, removeAmongPairs, nullptr, "1500 ns"},
    };
}
