#include "zel/sever.h"

#include <unordered_set>
#include <vector>

namespace zelpython {

namespace {

using Ports = std::vector<ZEL::AddRefWrapper<ZEL::Port>>;
using Insides = std::unordered_set<const ZEL::Node*>;

void addPorts(ZEL::PortList& list, Ports& ports)
{
    for (int i = 0; i < list.size(); ++i)
        ports.push_back(list[i]);
}

/// The own lists of the class, whatever a host's override says.
ZEL::AddRefWrapper<ZEL::Compound> ownedCompound(ZEL::Node& node)
{
    return node.Node::getAsCompound();
}

/// The node and all below it, and the ports inside of the compounds.
void collect(ZEL::Node& top, Insides& nodes, Ports& innerPorts)
{
    std::vector<ZEL::AddRefWrapper<ZEL::Node>> open{&top};
    while (!open.empty()) {
        const ZEL::AddRefWrapper<ZEL::Node> node = open.back();
        open.pop_back();
        if (!nodes.insert(node.get()).second)
            continue;
        if (node != &top) {
            addPorts(node->inputs(), innerPorts);
            addPorts(node->outputs(), innerPorts);
        }
        const ZEL::AddRefWrapper<ZEL::Compound> compound = ownedCompound(*node);
        if (!compound)
            continue;
        addPorts(compound->Compound::innerInputs(), innerPorts);
        addPorts(compound->Compound::innerOutputs(), innerPorts);
        for (ZEL::Node* const inside : compound->Compound::nodes())
            open.emplace_back(inside);
    }
}

/// Takes off the connections of the port whose other end lies outside. False when one was refused.
bool disconnectOutside(ZEL::Port& port, const Insides& nodes)
{
    Ports outside;
    for (ZEL::Port* const other : port.connectedTo()) {
        if (nodes.count(other->getParentNode().get()) == 0)
            outside.emplace_back(other);
    }
    bool isDone = true;
    for (const auto& other : outside) {
        if (port.connectedTo().findPort(other) >= 0)
            isDone = port.removeConnection(other) && isDone;
    }
    return isDone;
}

} // namespace

void sever(ZEL::PortList& list)
{
    for (ZEL::Port* const port : list)
        sever(*port);
}

void sever(ZEL::Node& node)
{
    sever(node.inputs());
    sever(node.outputs());
}

void severInnerPorts(ZEL::Compound& compound)
{
    sever(compound.Compound::innerInputs());
    sever(compound.Compound::innerOutputs());
}

bool disconnect(ZEL::Port& port)
{
    port.removeAllConnections();
    return !port.isConnected();
}

bool disconnect(ZEL::Node& node)
{
    Ports ports;
    addPorts(node.inputs(), ports);
    addPorts(node.outputs(), ports);
    bool isDone = true;
    for (const auto& port : ports)
        isDone = disconnect(*port) && isDone;
    if (!ownedCompound(node))
        return isDone;

    Insides inside;
    Ports innerPorts;
    collect(node, inside, innerPorts);
    for (const auto& port : innerPorts)
        isDone = disconnectOutside(*port, inside) && isDone;
    return isDone;
}

} // namespace zelpython
