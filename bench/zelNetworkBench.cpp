// Making, connecting and destroying whole networks.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

using namespace ZEL;

namespace {

template <class Network>
Timing create(int count)
{
    Network network;
    const StopWatch watch;
    network.createNodes(count);
    return watch.stop(count);
}

template <class Network>
Timing destroy(int count)
{
    auto network = std::make_unique<Network>(count);
    network->connectAll();
    const StopWatch watch;
    network = nullptr;
    return watch.stop(count);
}

Timing connectLibrary(int count)
{
    LibraryNetwork network(count);
    std::vector<std::pair<AddRefWrapper<Port>, AddRefWrapper<Port>>> pairs;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < kInputs; ++j)
            pairs.emplace_back(
                network.network->nodes()[sourceOf(i, j, count)]->outputs()[j % kOutputs],
                network.network->nodes()[i]->inputs()[j]);
    }
    const StopWatch watch;
    for (const auto& [output, input] : pairs)
        input->addConnection(output);
    return watch.stop(static_cast<double>(pairs.size()));
}

Timing connectBaseline(int count)
{
    BaselineNetwork network(count);
    std::vector<std::pair<baseline::Port*, baseline::Port*>> pairs;
    auto& nodes = network.top.compound->nodes;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < kInputs; ++j)
            pairs.emplace_back(nodes[sourceOf(i, j, count)]->outputs[j % kOutputs].get(),
                               nodes[i]->inputs[j].get());
    }
    const StopWatch watch;
    for (const auto& [output, input] : pairs)
        baseline::connect(output, input);
    return watch.stop(static_cast<double>(pairs.size()));
}

std::vector<std::string> nodeNames(int count)
{
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(nodeName(i));
    return names;
}

Timing connectByNameLibrary(int count)
{
    LibraryNetwork network(count);
    const std::vector<std::string> names = nodeNames(count);
    NodeList& nodes = network.network->nodes();
    const StopWatch watch;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < kInputs; ++j) {
            const AddRefWrapper<Node> source = nodes[names[sourceOf(i, j, count)].c_str()];
            const AddRefWrapper<Node> target = nodes[names[i].c_str()];
            target->inputs()[inputName(j)]->addConnection(
                source->outputs()[outputName(j % kOutputs)]);
        }
    }
    return watch.stop(count * kInputs);
}

Timing connectByNameBaseline(int count)
{
    BaselineNetwork network(count);
    const std::vector<std::string> names = nodeNames(count);
    const baseline::NameTable& nodes = network.top.compound->names;
    const StopWatch watch;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < kInputs; ++j) {
            baseline::Node* const source = nodes.find(names[sourceOf(i, j, count)]);
            baseline::Node* const target = nodes.find(names[i]);
            baseline::connect(baseline::findPort(source->outputs, outputName(j % kOutputs)),
                              baseline::findPort(target->inputs, inputName(j)));
        }
    }
    return watch.stop(count * kInputs);
}

} // namespace

std::vector<Workload> networkWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    return {
        {"create a node with 6 ports", sizes, create<LibraryNetwork>, create<BaselineNetwork>,
         "2.5x"},
        {"connect, ports at hand", sizes, connectLibrary, connectBaseline, "2.5x"},
        {"connect, both ends by name", sizes, connectByNameLibrary, connectByNameBaseline, "2.5x"},
        {"destroy a connected node", sizes, destroy<LibraryNetwork>, destroy<BaselineNetwork>,
         "3x"},
    };
}
