// Commands and observers: measured against absolute goals.

#include "zelBenchNetworks.h"
#include "zelCommands.h"
#include "zelWorkload.h"

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

/// Collapses count nodes out of the middle of a chain of twice as many.
Timing collapse(int count)
{
    LibraryNetwork network;
    network.network = new NestingCompound(network.top);
    network.createNodes(2 * count);
    NodeList& nodes = network.network->nodes();
    for (int i = 1; i < 2 * count; ++i)
        nodes[i]->inputs()[0]->addConnection(nodes[i - 1]->outputs()[0]);
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(nodeName(count / 2 + i));
    const StopWatch watch;
    CreateCompoundCommand command;
    command.setParentCompound(&network, "Top");
    for (const std::string& name : names)
        command.addNodeToMove(name.c_str());
    command.doit();
    return watch.stop(count);
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

enum class EditorStep { registration, notification, nodesDie, editorDies };

template <EditorStep measured>
Timing observe(int count)
{
    std::vector<AddRefWrapper<Node>> nodes;
    nodes.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        nodes.push_back(Node::createNew(nullptr, "Node"));
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
    const StopWatch watch;
    if (measured == EditorStep::nodesDie) {
        for (AddRefWrapper<Node>& node : nodes)
            node = nullptr;
    } else {
        editor = nullptr;
    }
    return watch.stop(count);
}

} // namespace

std::vector<Workload> editingWorkloads()
{
    const std::vector<int> sizes = {1000, 10000, 100000};
    return {
        {"ConnectCommand: connect", {1000}, runCommandStep<0>, nullptr, "1.5 us"},
        {"ConnectCommand: undo", {1000}, runCommandStep<1>, nullptr, "1.5 us"},
        {"ConnectCommand: redo", {1000}, runCommandStep<2>, nullptr, "1.5 us"},
        {"CreateCompoundCommand, a node", {10, 100, 1000, 10000}, collapse, nullptr, "1.5 us"},
        {"one editor: register with a node", sizes, observe<EditorStep::registration>, nullptr,
         "flat"},
        {"one editor: a notification", sizes, observe<EditorStep::notification>, nullptr, "25 ns"},
        {"one editor: a node dies", sizes, observe<EditorStep::nodesDie>, nullptr, "flat"},
        {"one editor: dies before a node", sizes, observe<EditorStep::editorDies>, nullptr, "flat"},
    };
}
