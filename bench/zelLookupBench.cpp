// Finding by path, and writing paths.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

#include <random>

using namespace ZEL;

namespace {

constexpr int kLookups = 20000;
constexpr int kPaths = 1000;

/// Both networks, with so many siblings at each of so many levels, and paths to ports of the
/// deepest: a thousand, and one for each lookup.
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
        for (int i = 0; i < kLookups; ++i)
            scattered.push_back(prefix + nodeName(static_cast<int>(random() % siblings)) + ".In2");
        paths.assign(scattered.begin(), scattered.begin() + kPaths);
        deepest = compound;
        deepestPlain = plain;
    }

    LibraryNetwork library;
    BaselineNetwork plainNetwork;
    std::vector<std::string> paths;
    std::vector<std::string> scattered;
    AddRefWrapper<Compound> deepest;
    baseline::Compound* deepestPlain = nullptr;
};

std::unique_ptr<NestedNetworks> g_nested;

/// Kept between the runs of one size.
NestedNetworks& nestedNetworks(int size)
{
    if (!g_nested)
        g_nested = std::make_unique<NestedNetworks>(size / kLevel, size % kLevel);
    return *g_nested;
}

void dropNestedNetworks()
{
    g_nested = nullptr;
}

using Paths = std::vector<std::string> NestedNetworks::*;

template <Paths paths>
Timing findPathLibrary(int size)
{
    NestedNetworks& networks = nestedNetworks(size);
    for (int i = 0; i < 100; ++i) // Before the watch starts: what a long list needs is built.
        benchmark::DoNotOptimize(networks.library.findPortFromPath(
            networks.paths[i].c_str(), PortInput, Container::eSearchNode));
    const auto rounds = kLookups / (networks.*paths).size();
    const StopWatch watch;
    for (std::size_t round = 0; round < rounds; ++round) {
        for (const std::string& path : networks.*paths)
            benchmark::DoNotOptimize(
                networks.library.findPortFromPath(path.c_str(), PortInput, Container::eSearchNode));
    }
    return watch.stop(kLookups);
}

template <Paths paths>
Timing findPathBaseline(int size)
{
    NestedNetworks& networks = nestedNetworks(size);
    const auto rounds = kLookups / (networks.*paths).size();
    const StopWatch watch;
    for (std::size_t round = 0; round < rounds; ++round) {
        for (const std::string& path : networks.*paths)
            benchmark::DoNotOptimize(
                baseline::findPortFromPath(networks.plainNetwork.top, path, false));
    }
    return watch.stop(kLookups);
}

Timing fullNameLibrary(int depth)
{
    NestedNetworks& networks = nestedNetworks(depth * kLevel + 10);
    const AddRefWrapper<Port> port = networks.deepest->nodes()[3]->inputs()[2];
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i)
        benchmark::DoNotOptimize(port->getFullPathName());
    return watch.stop(kLookups);
}

Timing fullNameBaseline(int depth)
{
    NestedNetworks& networks = nestedNetworks(depth * kLevel + 10);
    const baseline::Port& port = *networks.deepestPlain->nodes[3]->inputs[2];
    const StopWatch watch;
    for (int i = 0; i < kLookups; ++i)
        benchmark::DoNotOptimize(baseline::fullPathName(port));
    return watch.stop(kLookups);
}

} // namespace

std::vector<Workload> lookupWorkloads()
{
    std::vector<int> places;
    for (const int depth : {1, 2, 4, 8}) {
        for (const int siblings : {10, 100, 1000, 10000})
            places.push_back(depth * kLevel + siblings);
    }
    places.push_back(kLevel + 100000);
    const std::vector<int> farPlaces = {kLevel + 10000, kLevel + 100000, 8 * kLevel + 10000};
    const std::vector<int> million = {kLevel + 1000000};
    const char* const path = "findPortFromPath";
    const char* const scatteredPath = "findPortFromPath, 20000 places";
    const auto find = findPathLibrary<&NestedNetworks::paths>;
    const auto findPlain = findPathBaseline<&NestedNetworks::paths>;
    const auto findFar = findPathLibrary<&NestedNetworks::scattered>;
    const auto findFarPlain = findPathBaseline<&NestedNetworks::scattered>;
    const char* const asSmaller = "1.3x of 1 x 100000";
    return {
        {path, places, find, findPlain, "1.5x", dropNestedNetworks},
        {path, million, find, findPlain, asSmaller, dropNestedNetworks},
        {scatteredPath, farPlaces, findFar, findFarPlain, "1.5x", dropNestedNetworks},
        {scatteredPath, million, findFar, findFarPlain, asSmaller, dropNestedNetworks},
        {"full path name, depth",
         {1, 4, 8},
         fullNameLibrary,
         fullNameBaseline,
         "2.5x",
         dropNestedNetworks},
    };
}
