// Finding by path and by name, and writing paths.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

#include <random>

using namespace ZEL;

namespace {

constexpr int kLookups = 20000;

/// Both networks, with so many siblings at each of so many levels, and paths to ports of the
/// deepest.
struct NestedNetworks {
    NestedNetworks(int depth, int siblings)
    {
        AddRefWrapper<Compound> compound = library.network;
        baseline::Compound* plain = plainNetwork.top.compound.get();
        std::string prefix = "Top.";
        for (int level = 1; level <= depth; ++level) {
            for (int i = 0; i < siblings; ++i) {
                library.createNode(*compound, nodeName(i).c_str());
                plainNetwork.createNode(*plain, nodeName(i));
            }
            if (level == depth)
                break;
            const int inner = siblings / 2;
            compound = Compound::createNew(compound->nodes()[inner], nullptr);
            baseline::Node* const owner = plain->nodes[inner].get();
            owner->compound = std::make_unique<baseline::Compound>();
            owner->compound->owner = owner;
            plain = owner->compound.get();
            prefix += nodeName(inner) + ".";
        }
        std::minstd_rand random(1);
        for (int i = 0; i < 1000; ++i)
            paths.push_back(prefix + nodeName(static_cast<int>(random() % siblings)) + ".In2");
        deepest = compound;
        deepestPlain = plain;
    }

    LibraryNetwork library;
    BaselineNetwork plainNetwork;
    std::vector<std::string> paths;
    AddRefWrapper<Compound> deepest;
    baseline::Compound* deepestPlain = nullptr;
};

/// Kept between the runs: the size is depth * 1000000 + siblings.
NestedNetworks& nestedNetworks(int size)
{
    static std::unique_ptr<NestedNetworks> networks;
    static int current = -1;
    if (current != size) {
        networks = nullptr;
        networks = std::make_unique<NestedNetworks>(size / 1000000, size % 1000000);
        current = size;
    }
    return *networks;
}

Timing findPathLibrary(int size)
{
    NestedNetworks& networks = nestedNetworks(size);
    for (int i = 0; i < 100; ++i) // Before the watch starts: what a long list needs is built.
        benchmark::DoNotOptimize(networks.library.findPortFromPath(
            networks.paths[i].c_str(), PortInput, Container::eSearchNode));
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i) {
        const std::string& path = networks.paths[i % networks.paths.size()];
        benchmark::DoNotOptimize(
            networks.library.findPortFromPath(path.c_str(), PortInput, Container::eSearchNode));
    }
    return watch.stop(kLookups);
}

Timing findPathBaseline(int size)
{
    NestedNetworks& networks = nestedNetworks(size);
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i) {
        const std::string& path = networks.paths[i % networks.paths.size()];
        benchmark::DoNotOptimize(
            baseline::findPortFromPath(networks.plainNetwork.top, path, false));
    }
    return watch.stop(kLookups);
}

Timing fullNameLibrary(int depth)
{
    NestedNetworks& networks = nestedNetworks(depth * 1000000 + 10);
    const AddRefWrapper<Port> port = networks.deepest->nodes()[3]->inputs()[2];
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i)
        benchmark::DoNotOptimize(port->getFullPathName());
    return watch.stop(kLookups);
}

Timing fullNameBaseline(int depth)
{
    NestedNetworks& networks = nestedNetworks(depth * 1000000 + 10);
    const baseline::Port& port = *networks.deepestPlain->nodes[3]->inputs[2];
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i)
        benchmark::DoNotOptimize(baseline::fullPathName(port));
    return watch.stop(kLookups);
}

std::vector<std::string> newNames()
{
    std::vector<std::string> names;
    names.reserve(kLookups);
    for (int i = 0; i < kLookups; ++i)
        names.push_back("Renamed" + std::to_string(i));
    return names;
}

Timing renameLibrary(int count)
{
    LibraryNetwork network(count);
    NodeList& nodes = network.network->nodes();
    const std::vector<std::string> names = newNames();
    for (int i = 0; i < 100; ++i)
        benchmark::DoNotOptimize(nodes[nodeName(count - 1).c_str()]);
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i) {
        nodes[(i * 7919) % count]->setName(names[i].c_str());
        benchmark::DoNotOptimize(nodes[names[i].c_str()]);
    }
    return watch.stop(kLookups);
}

Timing renameBaseline(int count)
{
    BaselineNetwork network(count);
    auto& nodes = network.top.compound->nodes;
    const std::vector<std::string> names = newNames();
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i) {
        baseline::rename(nodes[(i * 7919) % count].get(), names[i].c_str());
        benchmark::DoNotOptimize(network.top.compound->names.find(names[i]));
    }
    return watch.stop(kLookups);
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
    const StopWatch watch;
    for (int i = 0; i < count; ++i) {
        const std::string name = "Pasted" + std::to_string(i);
        if (!nodes[name.c_str()])
            pasted[static_cast<std::size_t>(i)]->setName(name.c_str());
        benchmark::DoNotOptimize(nodes["Pasted"]);
    }
    return watch.stop(count);
}

/// Takes out one node after the other by its name, which another one shares.
Timing removeAmongPairs(int count)
{
    LibraryNetwork network(count);
    NodeList& nodes = network.network->nodes();
    for (int i = 0; i < count; ++i)
        nodes[i]->setName(nodeName(i / 2).c_str());
    const StopWatch watch;
    for (int i = 0; i < count; ++i)
        network.network->removeNode(nodeName(i * 7919 % count / 2).c_str());
    return watch.stop(count);
}

} // namespace

std::vector<Workload> lookupWorkloads()
{
    std::vector<int> places = {1100000};
    for (const int depth : {1, 2, 4, 8}) {
        for (const int siblings : {10, 100, 1000, 10000})
            places.push_back(depth * 1000000 + siblings);
    }
    return {
        {"findPortFromPath, depth and siblings", places, findPathLibrary, findPathBaseline, "2x"},
        {"full path name, depth", {1, 4, 8}, fullNameLibrary, fullNameBaseline, "2.5x"},
        {"rename, then look up", {1000, 10000}, renameLibrary, renameBaseline, "2.5x"},
        {"rename many of one name", {1000, 10000, 100000}, renameFromOneName, nullptr, "1500 ns"},
        {"remove by name among pairs", {1000, 10000, 100000}, removeAmongPairs, nullptr, "1500 ns"},
    };
}
