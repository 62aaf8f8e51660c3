// Doing a collapse: break, move, make the connections again.

#include "graph/zelLostPort.h"
#include "zelCCCmdData.h"
#include "zelCompound.h"
#include "zelNode.h"

namespace ZEL::CmdImpl {

namespace {

/// Connects the port at the index; a list that has none there, its port being refused, is passed
/// over. The records hold the other port so often.
void connectEntry(PortList& ports, int index, const AddRefWrapper<Port>& other, int holdsOfOther)
{
    const AddRefWrapper<Port> port = ports[index];
    if (port && port->addConnection(other))
        forgetLostPort(port, other, 1, holdsOfOther);
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
    countHolds(externals, internals);
    makeNewConnections(externals);
    makeNewConnections(internals);
    m_holds.clear();
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

void CCCmdData::countHolds(const ExternalCnxs& externals, const InternalCnxs& internals)
{
    for (const ExternalCnxToMakeInfo& cnx : externals) {
        ++m_holds[cnx.outsidePort.get()];
        ++m_holds[cnx.insidePort.get()];
    }
    for (const InternalCnxToMakeInfo& cnx : internals) {
        ++m_holds[cnx.srcPort.get()];
        ++m_holds[cnx.dstPort.get()];
    }
}

int CCCmdData::holdsOf(const AddRefWrapper<Port>& port) const
{
    const auto place = m_holds.find(port.get());
    return place == m_holds.end() ? 0 : place->second;
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
                     cnx.outsidePort, holdsOf(cnx.outsidePort));
        connectEntry(cnx.isInput ? newCompound->innerInputs() : newCompound->innerOutputs(), index,
                     cnx.insidePort, holdsOf(cnx.insidePort));
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
            forgetLostPort(dstPort, srcPort, 1 + holdsOf(dstPort), 1 + holdsOf(srcPort));
    }
}

} // namespace ZEL::CmdImpl
