#pragma once

#include "zelCore.h"
#include "zelPort.h"

#include <cstdint>

namespace ZEL {

class Container;

namespace CmdImpl {
struct CCCmdData;
struct MCPCmdData;
} // namespace CmdImpl

/// Connects or disconnects ports and can undo it. It records paths, never objects: undo and redo
/// act on the ports that bear the paths then, also on ones made anew. A command does one of its
/// three edits in its life, as often as it is asked to. The container is not owned and must live
/// during a call.
class ZEL_API ConnectCommand {
public:
    ConnectCommand();
    ConnectCommand(const ConnectCommand&) = delete;
    ConnectCommand& operator=(const ConnectCommand&) = delete;

    /// Removes all connections of the input end, remembers them, and connects the two ports, given
    /// in either order. False when an argument is empty: nothing is recorded or changed; otherwise
    /// the result of Port::addConnection. Contract: the two wrappers are exchanged in the caller's
    /// variables when the input came first, and on a command that was told to disconnect before,
    /// also in vain, this disconnects again.
    bool connect(Container* container, AddRefWrapper<Port>& a, AddRefWrapper<Port>& b);
    /// Disconnects the two ports, given in either order and exchanged as above. False when an
    /// argument is empty; otherwise the result of Port::removeConnection.
    bool disconnect(Container* container, AddRefWrapper<Port>& a, AddRefWrapper<Port>& b);
    /// Removes all connections of the port. False when an argument is empty, otherwise true, also
    /// when a listener refused one. Contract: undo and redo look the one path up as a pair, which
    /// fails with the line of Container::findPortsForConnection: they return false and change
    /// nothing.
    bool disconnectAll(Container* container, AddRefWrapper<Port>& port);

    /// Takes the edit back: removes the connection made and makes those remembered again, in their
    /// order, passing over paths that name no output now; or makes the removed connection again.
    /// False, with nothing changed, for a null container, before any edit, or when the paths do not
    /// give two ports. Contract: what the connections themselves answer is not passed on.
    bool undo(Container* container);
    /// Does the edit again on the ports that the paths name now, and records it anew: what undo
    /// brings back is what the input had at this redo. False as for undo, otherwise the result of
    /// the edit.
    bool redo(Container* container);
    /// The two ports that the recorded paths name in the container of the last call, with the
    /// answer of Container::findPortsForConnection: true also when one is empty. False without such
    /// a container and before any edit: nothing is looked up.
    bool resolvePorts(AddRefWrapper<Port>& outPort, AddRefWrapper<Port>& inPort);

private:
    bool resolveBothPorts(Container* container,
                          AddRefWrapper<Port>& outPort,
                          AddRefWrapper<Port>& inPort);

    Container* m_container = nullptr; ///< Not owned: of the last connect, undo or redo.
    PropertyList m_state;    ///< "Output", "Input" and the child list "Connections"; all are paths.
    std::int32_t m_mode = 1; ///< 1 connect, 2 disconnect, 3 disconnect all.
};

/// Collapses nodes of one compound into a new compound node there: moves the nodes into it and
/// leads each connection that crossed the border through a compound port of its own. In this order:
/// setParentCompound, setNewCompoundName if wanted, addNodeToMove for each node, doit.
///
/// The order of events in doit: createNewCompound of the parent is asked; every compound port is
/// made (nodes by ascending name, inputs before outputs, each named and typed like the moved node's
/// port); the crossing connections are broken, then the inner ones; the nodes are moved one by one;
/// the crossing connections are made, outer half before inner half, then the inner ones. Listeners
/// are asked at each step, but a refusal only leaves that step undone; nothing is rolled back.
/// Contract: undo and redo change nothing in the network; a host that wants the collapse undone
/// records it itself.
class ZEL_API CreateCompoundCommand {
public:
    CreateCompoundCommand();
    CreateCompoundCommand(const CreateCompoundCommand&) = delete;
    CreateCompoundCommand& operator=(const CreateCompoundCommand&) = delete;
    ~CreateCompoundCommand();

    /// Names the compound by the path of the node that owns it; the command holds the compound
    /// until doit succeeds. The container is not owned and must not be null unless the path is
    /// empty. False when the node owns no compound; then there is no parent compound any more.
    /// Contract: a path that names no node answers true and leaves the parent compound as it was.
    bool setParentCompound(Container* container, const char* path);
    /// The name asked for; "Compound" without this call. A null one counts as empty; it is not
    /// checked.
    void setNewCompoundName(const char* name);
    /// Adds the first node of that name in the parent compound, and holds it for the command's
    /// life. A name given twice counts once. False, with nothing recorded, when there is no such
    /// node or no parent compound.
    bool addNodeToMove(const char* name);
    /// Does the collapse, once for each setParentCompound. False, with nothing changed, without a
    /// parent compound or when its createNewCompound answers empty; true otherwise.
    /// Contract: inside or outside is decided by the node's name alone, and one port is made for
    /// each crossing connection, so names of ports may repeat.
    bool doit();
    /// Contract: changes nothing in the network. True before doit; false without a parent compound
    /// and after a successful doit. Before doit the container becomes the command's: a null one
    /// leaves it without, and then the answer is false, too.
    bool undo(Container* container);
    /// Contract: changes nothing. True before doit, while there are a parent compound and a
    /// container; false otherwise. The argument is not used.
    bool redo(Container* container);
    /// The full path of the compound node that doit made; "" before. Valid until the next doit.
    const char* getCreatedCompoundPath();

private:
    CmdImpl::CCCmdData* m_data; ///< Owned, never null.
};

/// Renames, creates and deletes ports of one compound in one undoable step. Requests are recorded
/// by name; nothing changes before doit. Every port is found by name when it is needed, among the
/// inner inputs first, so the command holds the compound but no port.
///
/// doit and redo apply all renames, then all creations, then all deletions; undo takes back the
/// deletions, the creations, the renames; each group in the order of recording. A request that
/// cannot be carried out is passed over. Contract: a rename or deletion that failed once is never
/// undone again, also if a later redo succeeds.
class ZEL_API ModifyCompoundPortCommand {
public:
    ModifyCompoundPortCommand();
    ModifyCompoundPortCommand(const ModifyCompoundPortCommand&) = delete;
    ModifyCompoundPortCommand& operator=(const ModifyCompoundPortCommand&) = delete;
    ~ModifyCompoundPortCommand();

    /// As CreateCompoundCommand::setParentCompound, but the compound is held for the command's
    /// life. Contract: a path that names no node answers true and leaves the compound as it was.
    bool setParentCompound(Container* container, const char* path);
    /// Records a new port with the direction that it has on the compound node. False, with nothing
    /// recorded, without a compound or a runtime, or when the runtime has no data type of that
    /// name. A null name counts as empty.
    bool createPort(PortIOType ioType, const char* name, const char* dataTypeName);
    /// False, with nothing recorded, without a compound or when it has no port of that name.
    bool deletePort(const char* name);
    /// False as for deletePort. A null new name counts as empty.
    bool renamePort(const char* oldName, const char* newName);

    /// Carries out the requests. Always true.
    bool doit();
    /// The container is not used. A deleted port is made again at its former place among the inner
    /// ports, with its connections to nodes inside. Contract: the compound node's own port goes to
    /// the end of its list, and connections from outside, or straight to another inner port, are
    /// not made again. A renamed port's mirror gets the old name as requested; redo gives it the
    /// name that the port received.
    void undo(Container* container);
    /// Carries out the requests again, with the names as undo left them. The container is not used.
    void redo(Container* container);

private:
    CmdImpl::MCPCmdData* m_data; ///< Owned, never null.
};

} // namespace ZEL
