#pragma once

#include "zelFuzzCensus.h"

#include <initializer_list>
#include <string>

namespace zelFuzz {

class Universe;

/// What a host guarantees to the library, as the steps of the universe and its listeners keep it.
/// One function for each rule, or group of rules, of docs/caller-guarantees.md; its numbers stand
/// in the comments. What needs no function: the steps pass no null where the rules A forbid it,
/// make objects on the heap (N1, N2), pair references (N4), never touch one end of a connection by
/// hand (P7), copy no list with a parent (L2, P8) and set no list's parent (L3).
namespace callerRules {

/// P1, P2, P3: a port that goes is disconnected first. The host's own listeners do not refuse that.
void disconnect(Universe& universe, ZEL::Port& port);
/// P1, P2, P3: before a node may go, with all below it, its ports are disconnected, the connections
/// that lead out are taken off, and so are those of everything below that somebody else holds.
void prepareEnd(Universe& universe, ZEL::Node& node);
/// The same for a compound that its node lets go.
void prepareEnd(Universe& universe, ZEL::Compound& compound);
/// P1, P4: before the document closes; all else that the host held is let go.
void prepareClosing(Universe& universe);
/// P1: a port that a listener has taken away while it was asked is connected no more.
bool mayConnect(Universe& universe, ZEL::Port& port, ZEL::Port& other);

/// P4, P6, P9, L4: a parent that dies is taken off the ports that the host holds, which are
/// disconnected while they still know it. Those that stand in its own lists lose it by themselves.
void forgetParent(Universe& universe,
                  ZEL::PortNotification* parent,
                  std::initializer_list<ZEL::PortList*> lists = {});
/// L7: likewise a compound that dies, off the nodes that the host holds and that it does not list.
void forgetCompound(Universe& universe, ZEL::Compound* compound);
/// N7: a compound that its node has let go is dropped before the node.
void forgetOwner(Universe& universe, ZEL::Node* node);
/// L7: a node that stands in no list names no compound. A parent that it kept would make paths
/// without end when that compound's node is put below it.
void forgetFormerCompounds(Universe& universe);

/// P5: true when the port stands in another owning list.
bool standsElsewhere(Universe& universe, ZEL::Port& port, const ZEL::PortList* list);
/// L6, N6: true unless the node stands in another compound's list, which a new one does not, or has
/// the compound below it.
bool mayAddNode(Universe& universe, ZEL::Node& node, ZEL::Compound* compound, bool isNew = false);
/// N6, L6: true when all nodes of a collapse stand in its parent, and the parent in none of them.
bool mayCollapse(ZEL::Compound& parent, const std::vector<ZEL::Node*>& nodes);
/// N7: true when the node's compound has no other node and is in no command.
bool mayReplaceCompound(Universe& universe, ZEL::Node& node);

/// A forward move drops a port that the list keeps alive: it is disconnected, for no walk finds it.
void prepareMove(Universe& universe, const ZEL::PortList& list, int from, int to);
/// So many ports of the list have the name.
int countNamed(ZEL::PortList& list, const std::string& name);

} // namespace callerRules
} // namespace zelFuzz
