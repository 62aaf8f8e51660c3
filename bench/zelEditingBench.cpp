// Commands and observers: measured against absolute goals.

#include "zelBenchNetworks.h"
#include "zelCommands.h"
#include "zelWorkload.h"

#include <algorithm>
#include <random>

using namespace ZEL;

namespace {

/// Runs one step of connect-replace, undo, redo on every node; the step counts from 0.
Timing runCommands(int count, int measuredStep)
{
    LibraryNetwork network(count);
    network.connectAll();
    NodeList& nodes = network.network->nodes();
    std::vector<ConnectCommand> commands(count);
    Timing timing;
    for (int step = 0; step < 3; ++step) {
        const StopWatch watch;
        for (int i = 0; i < count; ++i) {
            if (step == 0) {
                AddRefWrapper<Port> output = nodes[(i + 1) % count]->outputs()[0];
                AddRefWrapper<Port> input = nodes[i]->inputs()[0];
                commands[i].connect(&network, output, input);
            } else if (step == 1) {
                commands[i].undo(&network);
            } else {
                commands[i].redo(&network);
            }
        }
        if (step == measuredStep)
            timing = watch.stop(count);
    }
    return timing;
}

template <int step>
Timing runCommandStep(int count)
{
    return runCommands(count, step);
}

/// Collapses count nodes out of the middle of the network.
Timing collapseMiddle(LibraryNetwork& network, int count)
{
    const int first = (network.network->nodes().size() - count) / 2;
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(nodeName(first + i));
    const StopWatch watch;
    CreateCompoundCommand command;
    command.setParentCompound(&network, "Top");
    for (const std::string& name : names)
        command.addNodeToMove(name.c_str());
    command.doit();
    return watch.stop(count);
}

/// Of a chain of twice as many.
Timing collapseChain(int count)
{
    LibraryNetwork network;
    network.network = new NestingCompound(network.top);
    network.createNodes(2 * count);
    NodeList& nodes = network.network->nodes();
    for (int i = 1; i < 2 * count; ++i)
        nodes[i]->inputs()[0]->addConnection(nodes[i - 1]->outputs()[0]);
    return collapseMiddle(network, count);
}

/// Of nodes that are all connected with any others: a hundred, or twice as many.
Timing collapseScattered(int count)
{
    LibraryNetwork network;
    network.network = new NestingCompound(network.top);
    network.createNodes(std::max(100, 2 * count));
    network.connectAll();
    return collapseMiddle(network, count);
}

class CountingEditor : public HostEditor {
public:
    void zel_onNodeChange(ENodeChangeType,
                          const AddRefWrapper<Compound>&,
                          const AddRefWrapper<Node>&) override
    {
        ++changes;
    }
    int changes = 0;
};

enum class EditorStep { registration, notification, nodesDie, shuffledNodesDie, editorDies };

std::vector<AddRefWrapper<Node>> createNodes(int count, bool withPorts)
{
    std::vector<AddRefWrapper<Node>> nodes;
    nodes.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        nodes.push_back(Node::createNew(nullptr, "Node"));
        for (int j = 0; withPorts && j < kInputs; ++j)
            nodes.back()->inputs().addPort(inputName(j), nullptr);
        for (int j = 0; withPorts && j < kOutputs; ++j)
            nodes.back()->outputs().addPort(outputName(j), nullptr);
    }
    return nodes;
}

template <EditorStep measured, bool withPorts = false>
Timing observe(int count)
{
    std::vector<AddRefWrapper<Node>> nodes = createNodes(count, withPorts);
    auto editor = std::make_unique<CountingEditor>();
    const StopWatch registration;
    for (const AddRefWrapper<Node>& node : nodes)
        node->registerEditor(editor.get());
    if (measured == EditorStep::registration)
        return registration.stop(count);
    if (measured == EditorStep::notification) {
        const StopWatch watch;
        for (const AddRefWrapper<Node>& node : nodes)
            node->notifyNodeChange(eNodeChanged, nullptr, node);
        return watch.stop(count);
    }
    if (measured == EditorStep::shuffledNodesDie)
        std::shuffle(nodes.begin(), nodes.end(), std::minstd_rand(1));
    const StopWatch watch;
    if (measured == EditorStep::editorDies) {
        editor = nullptr;
    } else {
        for (AddRefWrapper<Node>& node : nodes)
            node = nullptr;
    }
    return watch.stop(count);
}

} // namespace

std::vector<Workload> editingWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    const std::vector<int> collapsed = {10, 100, 1000, 10000};
    const std::vector<int> watched = {10, 100, 1000, 10000, 100000, 1000000};
    return {
        {"ConnectCommand: connect", {1000}, runCommandStep<0>, nullptr, "1.2 us"},
        {"ConnectCommand: undo", {1000}, runCommandStep<1>, nullptr, "1.2 us"},
        {"ConnectCommand: redo", {1000}, runCommandStep<2>, nullptr, "1.2 us"},
        {"CreateCompoundCommand, a node", collapsed, collapseChain, nullptr, "1.2 us"},
        {"CreateCompoundCommand, scattered", collapsed, collapseScattered, nullptr, "1.2 us"},
        {"one editor: register with a node", sizes, observe<EditorStep::registration>, nullptr,
         "flat"},
        {"one editor: a notification", sizes, observe<EditorStep::notification>, nullptr, "25 ns"},
        {"one editor: a node dies", watched, observe<EditorStep::nodesDie>, nullptr, "500 ns"},
        {"one editor: a node with 6 ports dies", watched, observe<EditorStep::nodesDie, true>,
         nullptr, "500 ns"},
        {"one editor: a node dies, shuffled", watched, observe<EditorStep::shuffledNodesDie>,
         nullptr, "500 ns"},
        {"one editor: dies before a node", sizes, observe<EditorStep::editorDies>, nullptr, "flat"},
    };
}
