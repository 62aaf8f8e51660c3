#include "zelCompound.h"
#include "zelNode.h"

#include <cstdio>

namespace ZEL {

namespace {

void printCompound(Compound& compound);

/// The name of what owns the port's list: a node, or a compound, which has its node's name.
const char* getPortParentNodeName(const AddRefWrapper<Port>& port)
{
    const auto* const parent = dynamic_cast<Namable*>(port->getParent());
    return parent ? parent->getName() : "";
}

void printPortList(const char* title, PortList& list)
{
    std::printf("\n%d %s:\n", list.size(), title);
    for (int i = 0; i < list.size(); ++i) {
        const AddRefWrapper<Port> port = list[i];
        const AddRefWrapper<PortDataType> type = port->getDataType();
        std::printf("#%d:  \"%s\" of type \"%s\"\n", i, port->getName(),
                    type ? type->getName() : "");
        for (int j = 0; j < port->connectedTo().size(); ++j) {
            const AddRefWrapper<Port> other = port->connectedTo()[j];
            std::printf("  connected to %s on node %s\n", other->getName(),
                        getPortParentNodeName(other));
        }
    }
}

void printName(Node* node)
{
    std::printf("name: %s\n", node->getFullPathName().getName());
}

void printNode(Node* node, int index)
{
    std::puts("\n====================================");
    const AddRefWrapper<Compound> parent = node->getParentCompound();
    std::printf("NODE %d of compound \"%s\"\n", index, parent ? parent->getName() : "");
    printName(node);
    printPortList("inputs", node->inputs());
    printPortList("outputs", node->outputs());
    const AddRefWrapper<Compound> compound = node->isCompound() ? node->getAsCompound() : nullptr;
    if (compound)
        compound->debugPrint();
}

void printNodeList(NodeList& list)
{
    std::printf("%d nodes\n", list.size());
    for (int i = 0; i < list.size(); ++i) {
        const AddRefWrapper<Node> node = list[i];
        const AddRefWrapper<Compound> compound =
            node->isCompound() ? node->getAsCompound() : nullptr;
        if (compound)
            printCompound(*compound);
        else
            printNode(node.get(), i);
    }
}

void printCompound(Compound& compound)
{
    std::printf("ZEL Compound \"%s\"\n", compound.getName());
    printPortList("Internal Inputs", compound.innerInputs());
    printPortList("Internal Outputs", compound.innerOutputs());
    if (const AddRefWrapper<Node> owner = compound.getAsNode()) {
        printPortList("Inputs", owner->inputs());
        printPortList("Outputs", owner->outputs());
    }
    printNodeList(compound.nodes());
}

} // namespace

void Compound::debugPrint()
{
    printCompound(*this);
}

} // namespace ZEL
