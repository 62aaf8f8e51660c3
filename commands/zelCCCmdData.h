#pragma once

#include "zelNodesToMove.h"
#include "zelPort.h"
#include "zelPortHolds.h"

#include <string>
#include <vector>

/// One connection between a port of a moved node and a port outside the set.
struct ExternalCnxToMakeInfo {
    bool isInput;                   ///< The moved node's port is an input.
    std::int32_t compoundPortIndex; ///< In both lists of that direction; -1 when no port was made.
    ZEL::AddRefWrapper<ZEL::Port> outsidePort;
    ZEL::AddRefWrapper<ZEL::Port> insidePort; ///< The moved node's own port.
};

/// One connection between two moved nodes, from the sending end to the receiving input. The ports
/// serve to break it, the names to make it again inside the new compound.
struct InternalCnxToMakeInfo {
    std::string srcNodeName;
    std::string srcPortName;
    std::string dstNodeName;
    std::string dstPortName;
    ZEL::AddRefWrapper<ZEL::Port> srcPort;
    ZEL::AddRefWrapper<ZEL::Port> dstPort;
};

namespace ZEL {

class Compound;
class Container;
class Node;

namespace CmdImpl {

/// The record of a CreateCompoundCommand.
struct CCCmdData {
    using ExternalCnxs = std::vector<ExternalCnxToMakeInfo>;
    using InternalCnxs = std::vector<InternalCnxToMakeInfo>;

    CCCmdData();
    CCCmdData(const CCCmdData&) = delete;
    CCCmdData& operator=(const CCCmdData&) = delete;
    ~CCCmdData();

    bool setParentCompound(Container* newContainer, const char* path);
    void setNewCompoundName(const char* name);
    bool addNodeToMove(const char* name);
    /// True when both the container and the parent compound are set.
    bool isReady() const;
    bool doit();
    bool undo(Container* newContainer);

    // The steps of doit.
    /// True when the owner of the far end is none, or is not named like a moved node. The flag is
    /// true when there is no owner.
    bool isExternalCnx(AddRefWrapper<Port>& farEnd, bool* hasNoOwner);
    /// Writes down each connection of the node; makes the compound ports of the external ones.
    void saveExternalAndInternalCnx(const AddRefWrapper<Node>& node,
                                    ExternalCnxs& externals,
                                    InternalCnxs& internals);
    /// The index of the new compound port, -1 when none was made.
    int addCompoundPort(PortIOType ioType, AddRefWrapper<Port> port);
    void breakConnections(ExternalCnxs& externals);
    void breakConnections(InternalCnxs& internals);
    void moveNodesIntoCompound();
    void makeNewConnections(ExternalCnxs& externals);
    void makeNewConnections(InternalCnxs& internals);

    std::string parentPath; ///< Contract: never assigned; undo looks the empty path up.
    AddRefWrapper<Compound> parentCompound; ///< Empty: none was set, or doit has succeeded.
    AddRefWrapper<Compound> newCompound;    ///< Empty but while doit runs.
    Container* container = nullptr;         ///< Not owned.
    NodesToMove nodesToMove;                ///< Every pass runs in the order of the names.
    std::vector<std::string> nodeNames;     ///< Every name added, in the order of the calls.
    std::string newCompoundName = "Compound";
    std::string createdCompoundPath; ///< Empty before a successful doit.

private:
    void savePass(PortIOType ioType,
                  const AddRefWrapper<Node>& node,
                  ExternalCnxs& externals,
                  InternalCnxs& internals);
    void countHolds(const ExternalCnxs& externals, const InternalCnxs& internals);

    /// By the records. A listener may let a port, or its node, go at any time: one that nobody else
    /// holds must not be left connected when the records go. Empty but while connections are made
    /// again.
    PortHolds m_holds;
};

} // namespace CmdImpl
} // namespace ZEL
