// Doing a collapse: break, move, make the connections again.

#include "zelCCCmdData.h"
#include "zelCompound.h"
#include "zelNode.h"

namespace ZEL::CmdImpl {

namespace {

/// Connects the port at the index; a list that has none there, its port being refused, is passed
/// over.
void connectEntry(PortList& ports, int index, const AddRefWrapper<Port>& other)
{
    if (const AddRefWrapper<Port> port = ports[index])
        port->addConnection(other);
}

} // namespace

bool CCCmdData::doit()
{
    if (!isReady())
        return false;
    newCompound = parentCompound->createNewCompound(newCompoundName.c_str());
    if (!newCompound)
        return false;
    ExternalCnxs externals;
    InternalCnxs internals;
    for (auto& [name, node] : nodesToMove)
        saveExternalAndInternalCnx(node, externals, internals);
    breakConnections(externals);
    breakConnections(internals);
    moveNodesIntoCompound();
    makeNewConnections(externals);
    makeNewConnections(internals);
    const AddRefWrapper<Node> compoundNode = newCompound->getAsNode();
    createdCompoundPath = compoundNode ? compoundNode->getFullPathName().getName() : "";
    container = nullptr;
    parentCompound = nullptr;
    newCompound = nullptr;
    return true;
}

bool CCCmdData::undo(Container* newContainer)
{
    // Contract: the path is empty, so the parent stays and only the container changes.
    setParentCompound(newContainer, parentPath.c_str());
    return isReady();
}

void CCCmdData::breakConnections(ExternalCnxs& externals)
{
    for (const ExternalCnxToMakeInfo& cnx : externals)
        cnx.outsidePort->removeConnection(cnx.insidePort);
}

void CCCmdData::breakConnections(InternalCnxs& internals)
{
    for (const InternalCnxToMakeInfo& cnx : internals)
        cnx.srcPort->removeConnection(cnx.dstPort);
}

void CCCmdData::moveNodesIntoCompound()
{
    for (const auto& [name, node] : nodesToMove) {
        parentCompound->nodes().remove(node);
        // Contract: added also when the parent refused to let it go.
        newCompound->nodes().add(node);
    }
}

void CCCmdData::makeNewConnections(ExternalCnxs& externals)
{
    const AddRefWrapper<Node> compoundNode = newCompound->getAsNode();
    if (!compoundNode)
        return;
    for (const ExternalCnxToMakeInfo& cnx : externals) {
        const int index = cnx.compoundPortIndex;
        if (index == -1)
            continue;
        connectEntry(cnx.isInput ? compoundNode->inputs() : compoundNode->outputs(), index,
                     cnx.outsidePort);
        connectEntry(cnx.isInput ? newCompound->innerInputs() : newCompound->innerOutputs(), index,
                     cnx.insidePort);
    }
}

void CCCmdData::makeNewConnections(InternalCnxs& internals)
{
    for (const InternalCnxToMakeInfo& cnx : internals) {
        const AddRefWrapper<Node> srcNode = newCompound->nodes()[cnx.srcNodeName.c_str()];
        const AddRefWrapper<Node> dstNode = newCompound->nodes()[cnx.dstNodeName.c_str()];
        if (!srcNode || !dstNode)
            continue;
        const AddRefWrapper<Port> dstPort = dstNode->inputs()[cnx.dstPortName.c_str()];
        const AddRefWrapper<Port> srcPort = srcNode->outputs()[cnx.srcPortName.c_str()];
        if (dstPort && srcPort)
            dstPort->addConnection(srcPort);
    }
}

} // namespace ZEL::CmdImpl
