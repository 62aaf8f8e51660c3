// A tenth of a large network collapsed into a node of its own.

#include "zelBenchNetworks.h"
#include "zelCommands.h"
#include "zelWorkload.h"

#include <algorithm>

using namespace ZEL;

namespace {

/// Every node is fed by the one before it and by the tenth before it, as long graphs are.
void connectNeighbours(NodeList& nodes)
{
    for (int i = 1; i < nodes.size(); ++i) {
        nodes[i]->inputs()[0]->addConnection(nodes[i - 1]->outputs()[0]);
        nodes[i]->inputs()[1]->addConnection(nodes[std::max(0, i - 10)]->outputs()[1]);
    }
}

/// Of so many nodes the tenth in the middle is moved; the time is for one of these.
Timing collapseTenth(int count)
{
    LibraryNetwork network;
    network.network = new NestingCompound(network.top);
    network.createNodes(count);
    connectNeighbours(network.network->nodes());
    const int moved = count / 10;
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(moved));
    for (int i = 0; i < moved; ++i)
        names.push_back(nodeName(count / 2 + i));
    CreateCompoundCommand command;
    const StopWatch watch;
    command.setParentCompound(&network, "Top");
    for (const std::string& name : names)
        command.addNodeToMove(name.c_str());
    command.doit();
    return watch.stop(moved);
}

} // namespace

std::vector<Workload> collapseTenthWorkloads()
{
    const char* const job = "collapse a tenth of so many nodes";
    return {
        {job, {100000}, collapseTenth, nullptr, ""}, // What the million is held against.
        {job, {1000000}, collapseTenth, nullptr, "1.3x of 100000"},
    };
}
