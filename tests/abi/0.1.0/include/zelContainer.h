#pragma once

#include "zelPort.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ZEL {

class Node;
class Runtime;

/// One document: the host derives its own, which holds the root node. The library gives it the
/// lookups.
///
/// A path is a sequence of names joined by ".": the root node's, then of a node inside the compound
/// of the one before, and so on; a port path ends with the port's name. Node::getFullPathName and
/// Port::getFullPathName give the same texts. Nothing is escaped: a name with a "." in it cannot be
/// reached. The first match wins where siblings have one name. A null path names nothing.
class ZEL_API Container {
public:
    /// How far findPortFromPath looks. Any other value counts as eSearchNode.
    enum ESearchMode : std::int32_t {
        eSearchNode = 0,         ///< Only the ports of the node.
        eSearchNodeAndInner = 1, ///< Then the inner ports of the compound that the node owns.
    };

    Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    // Virtual operations: the order is binary contract. A host may add its own after them.
    virtual ~Container();
    /// The top-level node; empty when the document has none. Called once in each lookup.
    virtual AddRefWrapper<Node> getRootNode() = 0;
    /// Brings the compounds up to date after the runtime's definitions have changed. May close and
    /// open other documents, but neither register nor unregister this container.
    virtual void rebuildCompounds() = 0;
    /// The host's own; the library never calls it. Does nothing by default.
    virtual void hostOperation();
    /// The runtime that serves this document, not owned by the caller; null when there is none.
    virtual Runtime* getRuntime() = 0;

    /// Appends the names in path to tokens. A "." at the end adds no empty name; others do.
    static void tokenizePath(std::string path, std::vector<std::string>& tokens);

    /// Empty when the path names no node.
    AddRefWrapper<Node> findNodeFromPath(const char* path);
    /// Looks among the inputs (PortInput) or the outputs (any other direction) of the node. With
    /// eSearchNodeAndInner it then looks for a port of that direction inside: inner outputs for
    /// PortInput, inner inputs otherwise. Empty when the path names no such port.
    AddRefWrapper<Port> findPortFromPath(const char* path, PortIOType ioType, ESearchMode mode);
    /// Finds the two ends of a connection, given in either order. Each path names an output or else
    /// an input. When both have one direction, one of them must be the port of a compound node that
    /// the other end's node lies in; the inner port that mirrors it takes its place. When neither
    /// is, prints "bad set of ports in findPortsForConnection: PATHA and PATHB" on standard output.
    /// False then, and when a path names no port: the outputs are not touched. Contract:
    /// *outPort or *inPort may be empty although the result is true: the compound node's port had
    /// no mirror.
    bool findPortsForConnection(const char* pathA,
                                const char* pathB,
                                AddRefWrapper<Port>* outPort,
                                AddRefWrapper<Port>* inPort);
    /// The inner port that mirrors a compound node's port; empty when the port has no node, the
    /// node no compound, or the port no mirror.
    AddRefWrapper<Port> reverseThisExternalPort(const AddRefWrapper<Port>& port);

    // One table for the process, from a text that the host calls a UUID to a container. It owns
    // nothing: before a container dies the host registers null under its UUID.
    /// Adds an entry or replaces the container of the present one. Entries are never removed. A
    /// null UUID adds nothing.
    static void registerWithUUID(const char* uuid, Container* container);
    /// Null when the UUID is null, was never registered, or was registered with null.
    static Container* getFromUUID(const char* uuid);
};

} // namespace ZEL
