#include "zel.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>

using namespace ZEL;

namespace {

/// A document with a chain of nodes in the compound of Top: N0, N1 and so on, three inputs and
/// three outputs each.
class ChainDocument : public Container {
public:
    AddRefWrapper<Node> getRootNode() override { return m_root; }
    void rebuildCompounds() override {}
    Runtime* getRuntime() override { return nullptr; }

    NodeList& nodes() { return m_network->nodes(); }

    void createNodes(int count)
    {
        for (int i = 0; i < count; ++i) {
            AddRefWrapper<Node> node = Node::createNew(this, nodeName(i).c_str());
            for (const char* name : {"In0", "In1", "In2"})
                node->inputs().addPort(name, m_type);
            for (const char* name : {"Out0", "Out1", "Out2"})
                node->outputs().addPort(name, m_type);
            nodes().add(node);
        }
    }

    /// Connects each node's first output to the next one's first input.
    void connectChain()
    {
        for (int i = 0; i + 1 < nodes().size(); ++i)
            nodes()[i]->outputs()[0]->addConnection(nodes()[i + 1]->inputs()[0]);
    }

    static std::string nodeName(int index) { return "N" + std::to_string(index); }

private:
    AddRefWrapper<Node> m_root = Node::createNew(this, "Top");
    AddRefWrapper<Compound> m_network = Compound::createNew(m_root, nullptr);
    AddRefWrapper<PortDataType> m_type = PortDataType::createNew("image");
};

/// The size of the network that a run works on.
int nodeCount(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

/// Shows the work as nodes (or connections, or names) per second.
void countItems(benchmark::State& state, std::int64_t perIteration)
{
    state.SetItemsProcessed(state.iterations() * perIteration);
}

void createNodes(benchmark::State& state)
{
    while (state.KeepRunning()) {
        auto document = std::make_unique<ChainDocument>();
        document->createNodes(nodeCount(state));
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    countItems(state, nodeCount(state));
}

void connectNodes(benchmark::State& state)
{
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto document = std::make_unique<ChainDocument>();
        document->createNodes(nodeCount(state));
        state.ResumeTiming();
        document->connectChain();
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    countItems(state, nodeCount(state) - 1);
}

void findPortFromPath(benchmark::State& state)
{
    ChainDocument document;
    document.createNodes(nodeCount(state));
    // The node in the middle stands for the average one: lookups walk the list.
    const std::string path = "Top." + ChainDocument::nodeName(nodeCount(state) / 2) + ".In2";
    while (state.KeepRunning())
        benchmark::DoNotOptimize(
            document.findPortFromPath(path.c_str(), PortInput, Container::eSearchNode));
    countItems(state, 1);
}

void renameNodes(benchmark::State& state)
{
    ChainDocument document;
    document.createNodes(nodeCount(state));
    bool renamed = false;
    while (state.KeepRunning()) {
        renamed = !renamed;
        for (const AddRefWrapper<Node>& node : document.nodes())
            node->setName(renamed ? "AnotherName" : "OneName");
    }
    countItems(state, nodeCount(state));
}

void removeNodes(benchmark::State& state)
{
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto document = std::make_unique<ChainDocument>();
        document->createNodes(nodeCount(state));
        document->connectChain();
        state.ResumeTiming();
        while (document->nodes().size() > 0)
            document->nodes().remove(document->nodes()[0]);
    }
    countItems(state, nodeCount(state));
}

void destroyNetwork(benchmark::State& state)
{
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto document = std::make_unique<ChainDocument>();
        document->createNodes(nodeCount(state));
        document->connectChain();
        state.ResumeTiming();
        document.reset();
    }
    countItems(state, nodeCount(state));
}

} // namespace

BENCHMARK(createNodes)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(connectNodes)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(findPortFromPath)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(renameNodes)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
// Each removal shifts the entries behind it: the sizes stop where that rules the time.
BENCHMARK(removeNodes)->RangeMultiplier(10)->Range(1000, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(destroyNetwork)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
