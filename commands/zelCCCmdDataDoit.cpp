// Doing a collapse: break, move, make the connections again.

#include "graph/zelLostPort.h"
#include "zelCCCmdData.h"
#include "zelCompound.h"
#include "zelNode.h"
#include "zelPrefetch.h"

#include <utility>

namespace ZEL::CmdImpl {

namespace {

constexpr auto kEndsOfExternal = [](const ExternalCnxToMakeInfo& cnx) {
    return std::pair(cnx.outsidePort.get(), cnx.insidePort.get());
};
constexpr auto kEndsOfInternal = [](const InternalCnxToMakeInfo& cnx) {
    return std::pair(cnx.srcPort.get(), cnx.dstPort.get());
};

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
    const std::vector<const AddRefWrapper<Node>*>& nodes = nodesToMove.inOrder();
    RecordingPrefetch prefetch(nodes);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        prefetch.onReached(i);
        saveExternalAndInternalCnx(*nodes[i], externals, internals);
    }
    breakConnections(externals);
    breakConnections(internals);
    moveNodesIntoCompound();
    countHolds(externals, internals);
    makeNewConnections(externals);
    makeNewConnections(internals);
    m_holds.reset(0);
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
    for (std::size_t i = 0; i < externals.size(); ++i) {
        prefetchRecords(externals, i, kEndsOfExternal, m_holds);
        externals[i].outsidePort->removeConnection(externals[i].insidePort);
    }
}

void CCCmdData::breakConnections(InternalCnxs& internals)
{
    for (std::size_t i = 0; i < internals.size(); ++i) {
        prefetchRecords(internals, i, kEndsOfInternal, m_holds);
        internals[i].srcPort->removeConnection(internals[i].dstPort);
    }
}

void CCCmdData::moveNodesIntoCompound()
{
    for (const AddRefWrapper<Node>* const node : nodesToMove.inOrder()) {
        parentCompound->nodes().remove(*node);
        // Contract: added also when the parent refused to let it go.
        newCompound->nodes().add(*node);
    }
}

void CCCmdData::countHolds(const ExternalCnxs& externals, const InternalCnxs& internals)
{
    m_holds.reset(2 * (externals.size() + internals.size()));
    for (const ExternalCnxToMakeInfo& cnx : externals) {
        m_holds.add(cnx.outsidePort.get());
        m_holds.add(cnx.insidePort.get());
    }
    for (const InternalCnxToMakeInfo& cnx : internals) {
        m_holds.add(cnx.srcPort.get());
        m_holds.add(cnx.dstPort.get());
    }
}

void CCCmdData::makeNewConnections(ExternalCnxs& externals)
{
    const AddRefWrapper<Node> compoundNode = newCompound->getAsNode();
    if (!compoundNode)
        return;
    for (std::size_t i = 0; i < externals.size(); ++i) {
        prefetchRecords(externals, i, kEndsOfExternal, m_holds);
        const ExternalCnxToMakeInfo& cnx = externals[i];
        const int index = cnx.compoundPortIndex;
        if (index == -1)
            continue;
        connectEntry(cnx.isInput ? compoundNode->inputs() : compoundNode->outputs(), index,
                     cnx.outsidePort, m_holds.of(cnx.outsidePort.get()));
        connectEntry(cnx.isInput ? newCompound->innerInputs() : newCompound->innerOutputs(), index,
                     cnx.insidePort, m_holds.of(cnx.insidePort.get()));
    }
}

void CCCmdData::makeNewConnections(InternalCnxs& internals)
{
    for (std::size_t i = 0; i < internals.size(); ++i) {
        prefetchRecords(internals, i, kEndsOfInternal, m_holds);
        const InternalCnxToMakeInfo& cnx = internals[i];
        const AddRefWrapper<Node> srcNode = newCompound->nodes()[cnx.srcNodeName.c_str()];
        const AddRefWrapper<Node> dstNode = newCompound->nodes()[cnx.dstNodeName.c_str()];
        if (!srcNode || !dstNode)
            continue;
        const AddRefWrapper<Port> dstPort = dstNode->inputs()[cnx.dstPortName.c_str()];
        const AddRefWrapper<Port> srcPort = srcNode->outputs()[cnx.srcPortName.c_str()];
        if (dstPort && srcPort && dstPort->addConnection(srcPort))
            forgetLostPort(dstPort, srcPort, 1 + m_holds.of(dstPort.get()),
                           1 + m_holds.of(srcPort.get()));
    }
}

} // namespace ZEL::CmdImpl
