// Binding the command to a document, and writing down what a collapse has to change.

#include "core/zelText.h"
#include "zelCCCmdData.h"
#include "zelCompound.h"
#include "zelContainer.h"
#include "zelNode.h"

namespace ZEL::CmdImpl {

CCCmdData::CCCmdData() = default;

CCCmdData::~CCCmdData() = default;

bool CCCmdData::setParentCompound(Container* newContainer, const char* path)
{
    container = newContainer;
    const AddRefWrapper<Node> node = container ? container->findNodeFromPath(path) : nullptr;
    // Contract: a path that names no node is no failure and keeps the present parent.
    if (!node)
        return true;
    parentCompound = node->getAsCompound();
    return static_cast<bool>(parentCompound);
}

void CCCmdData::setNewCompoundName(const char* name)
{
    newCompoundName = orEmpty(name);
}

bool CCCmdData::addNodeToMove(const char* name)
{
    if (!isReady())
        return false;
    const AddRefWrapper<Node> node = parentCompound->nodes()[name];
    if (!node)
        return false;
    nodeNames.emplace_back(name);
    nodesToMove.set(name, node);
    return true;
}

bool CCCmdData::isReady() const
{
    return container && parentCompound;
}

bool CCCmdData::isExternalCnx(AddRefWrapper<Port>& farEnd, bool* hasNoOwner)
{
    const AddRefWrapper<Node> owner = farEnd->getParentNode();
    *hasNoOwner = !owner;
    // Contract: the name decides, never the object.
    return !owner || !nodesToMove.contains(owner->getName());
}

void CCCmdData::saveExternalAndInternalCnx(const AddRefWrapper<Node>& node,
                                           ExternalCnxs& externals,
                                           InternalCnxs& internals)
{
    savePass(PortInput, node, externals, internals);
    savePass(PortOutput, node, externals, internals);
}

void CCCmdData::savePass(PortIOType ioType,
                         const AddRefWrapper<Node>& node,
                         ExternalCnxs& externals,
                         InternalCnxs& internals)
{
    PortList& ports = ioType == PortInput ? node->inputs() : node->outputs();
    // The lengths are read on every turn: the host makes compound ports meanwhile.
    for (int i = 0; i < ports.size(); ++i) {
        const AddRefWrapper<Port> port = ports[i];
        for (int j = 0; j < port->connectedTo().size(); ++j) {
            AddRefWrapper<Port> farEnd = port->connectedTo()[j];
            bool hasNoOwner = false;
            if (isExternalCnx(farEnd, &hasNoOwner)) {
                const int index = addCompoundPort(ioType, port);
                externals.push_back({ioType == PortInput, index, std::move(farEnd), port});
            } else if (ioType == PortInput) {
                // An inner connection is written down once, from the input that it ends at. A port
                // of the node may have a parent of the host's own.
                const AddRefWrapper<Node> owner = port->getParentNode();
                internals.push_back({farEnd->getParentNode()->getName(), farEnd->getName(),
                                     (owner ? owner : node)->getName(), port->getName(), farEnd,
                                     port});
            }
        }
    }
}

int CCCmdData::addCompoundPort(PortIOType ioType, AddRefWrapper<Port> port)
{
    return newCompound->createCompoundPort(ioType, port->getName(), port->getDataType());
}

} // namespace ZEL::CmdImpl
