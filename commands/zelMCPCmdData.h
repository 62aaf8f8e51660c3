#pragma once

#include "zelPort.h"

#include <deque>
#include <string>
#include <vector>

namespace ZEL {

class Compound;
class Container;

namespace CmdImpl {

struct CreatePortInfo {
    std::string name;
    std::string createdName; ///< The name received at the last creation; empty: there is no port.
    PortIOType ioType;       ///< On the compound node.
    AddRefWrapper<PortDataType> dataType;
};

/// A connection of a deleted port to a node inside the compound.
struct CnxInfo {
    std::string nodeName;
    std::string portName;
};

struct DeletePortInfo {
    std::string name;
    PortIOType ioType = PortInput; ///< On the compound node; filled at the deletion, as all below.
    std::int32_t position = -1;    ///< Index among the inner ports of that direction.
    AddRefWrapper<PortDataType> dataType;
    bool failed = false; ///< Contract: never cleared; undo passes the record over.
    std::vector<CnxInfo> connections;
};

struct RenameInfo {
    std::string oldName; ///< Corrected by undo to the name that the port got back.
    std::string newName;
    std::string actualName; ///< The name received at the last redo.
    bool failed = false;    ///< Contract: never cleared; undo passes the record over.
};

/// The record of a ModifyCompoundPortCommand.
struct MCPCmdData {
    MCPCmdData();
    MCPCmdData(const MCPCmdData&) = delete;
    MCPCmdData& operator=(const MCPCmdData&) = delete;
    ~MCPCmdData();

    bool setParentCompound(Container* newContainer, const char* path);
    bool createPort(PortIOType ioType, const char* name, const char* dataTypeName);
    bool deletePort(const char* name);
    bool renamePort(const char* oldName, const char* newName);
    bool doit();
    void undo(Container* unused);
    void redo(Container* unused);

    /// The inner input of that name, or else the inner output; empty when there is none.
    AddRefWrapper<Port> getCompoundPort(const char* name);
    /// The inner ports that mirror the compound node's ports of that direction.
    PortList& innerPorts(PortIOType ioType);
    AddRefWrapper<Port> findPort(PortIOType ioType, const CnxInfo& cnx);
    void doRenamePort(RenameInfo& info);
    bool doCreatePort(CreatePortInfo& info);
    bool doDeletePort(DeletePortInfo& info);
    void undoRenamePort(RenameInfo& info);
    void undoCreatePort(CreatePortInfo& info);
    void undoDeletePort(DeletePortInfo& info);

    // Records stay where they are when a listener adds a request in the middle of a redo.
    std::deque<RenameInfo> renames;
    std::deque<DeletePortInfo> deletes;
    std::deque<CreatePortInfo> creates;
    Container* container = nullptr; ///< Not owned.
    std::string compoundPath;
    AddRefWrapper<Compound> compound; ///< Empty: no request is taken or carried out.
};

/// The index of the first port of that name, -1 when there is none.
int findPortInPortList(PortList& list, const char* name);

} // namespace CmdImpl
} // namespace ZEL
