#pragma once

#include "window/gestures/desk.h"

#include <vector>

namespace shading {

class Edits;
class PickPopup;

/// Makes a port of the compound for the loose end of the wire, and connects it: two edits, to be
/// run in one. The wire's port is inside of the compound.
bool connectToNewPort(Edits& edits,
                      const CompoundPtr& compound,
                      const LooseWire& wire,
                      const std::function<bool(const PortPtr& made)>& connect);

// Connections by name instead of by the mouse. The popups go by themselves; null, and refused, when
// there is nothing to choose.

/// Lists what these ports may be connected to, the nearest first.
PickPopup* pickConnection(Desk& desk, const std::vector<PortPtr>& ports);
/// Lists the connections of these ports, to take one off.
PickPopup* pickDisconnection(Desk& desk, const std::vector<PortPtr>& ports);
/// Lists the outputs that all connections of the port can be moved to.
PickPopup* pickReroute(Desk& desk, const PortPtr& output);
/// Lists the connections that the node can be inserted into, the nearest first.
PickPopup* pickInsertion(Desk& desk, const NodePtr& node);
/// Lists the data types, to make a port of the compound.
PickPopup* pickNewPort(Desk& desk, bool isInput);

/// All ports of the selected nodes.
std::vector<PortPtr> portsOfSelection(const Desk& desk);
/// Shows the port: selects its node, in another compound too.
void goTo(Desk& desk, ZEL::Port& port);

} // namespace shading
