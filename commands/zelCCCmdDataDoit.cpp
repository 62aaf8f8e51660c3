// Doing a collapse: break, move, make the connections again.

#include "graph/zelLostPort.h"
#include "zelCCCmdData.h"
#include "zelCompound.h"
#include "zelNode.h"

#include <unordered_map>

namespace ZEL::CmdImpl {

namespace {

/// How many references to each port the records hold.
using Holds = std::unordered_map<const Port*, int>;

/// Connects the port at the index; a list that has none there, its port being refused, is passed
/// over.
void connectEntry(PortList& ports, int index, const AddRefWrapper<Port>& other, const Holds& holds)
{
    const AddRefWrapper<Port> port = ports[index];
    if (port && port->addConnection(other))
        forgetLostPort(port, other, 1, holds.at(other.get()));
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
    // From here on the names do: who holds a port besides these records shows in its count.
    for (InternalCnxToMakeInfo& cnx : internals) {
        cnx.srcPort = nullptr;
        cnx.dstPort = nullptr;
    }
    makeNewConnections(externals);
    externals.clear();
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
    // A listener may take a port, or its node, away at any time: then only the records have it.
    Holds holds;
    for (const ExternalCnxToMakeInfo& cnx : externals) {
        ++holds[cnx.outsidePort.get()];
        ++holds[cnx.insidePort.get()];
    }
    for (const ExternalCnxToMakeInfo& cnx : externals) {
        const int index = cnx.compoundPortIndex;
        if (index == -1)
            continue;
        connectEntry(cnx.isInput ? compoundNode->inputs() : compoundNode->outputs(), index,
                     cnx.outsidePort, holds);
        connectEntry(cnx.isInput ? newCompound->innerInputs() : newCompound->innerOutputs(), index,
                     cnx.insidePort, holds);
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
        if (dstPort && srcPort && dstPort->addConnection(srcPort))
            forgetLostPort(dstPort, srcPort);
    }
}

} // namespace ZEL::CmdImpl
