// Making, connecting and destroying whole networks.

#include "zelNetworkJobs.h"
#include "zelWorkload.h"

using namespace ZEL;

namespace {

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
    return watch.stop(static_cast<double>(count) * kInputs);
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
    return watch.stop(static_cast<double>(count) * kInputs);
}

} // namespace

std::vector<Workload> networkWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    const std::vector<int> million = {1000000};
    const char* const asSmaller = "1.3x of 100000";
    const char* const creating = "create a node with 6 ports";
    const char* const connecting = "connect, ports at hand";
    const char* const destroying = "destroy a connected node";
    const auto create = timeCreate<LibraryNetwork>;
    const auto createPlain = timeCreate<BaselineNetwork>;
    const auto connect = timeConnect<LibraryPairs>;
    const auto connectPlain = timeConnect<BaselinePairs>;
    const auto destroy = timeDestroy<LibraryNetwork>;
    const auto destroyPlain = timeDestroy<BaselineNetwork>;
    return {
        {creating, sizes, create, createPlain, "1.2x"},
        {creating, million, create, createPlain, asSmaller},
        {"create a node with 6 ports, cold heap", sizes, create, createPlain, "", nullptr, true},
        {connecting, sizes, connect, connectPlain, "1.5x"},
        {connecting, million, connect, connectPlain, asSmaller},
        {"connect, both ends by name", sizes, connectByNameLibrary, connectByNameBaseline, "2.5x"},
        {destroying, sizes, destroy, destroyPlain, "1.3x"},
        {destroying, million, destroy, destroyPlain, asSmaller},
    };
}
