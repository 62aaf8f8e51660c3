#pragma once

#include "binding/severPort.h"
#include "zel.h"

namespace zelpython {

/// Severs all ports of the list; see severPort.h.
void sever(ZEL::PortList& list);
/// The same for the inputs and outputs of the node, after NodeList::remove too, which leaves the
/// node's ports with the connections that the others forgot.
void sever(ZEL::Node& node);
/// The same for the inner ports of the compound.
void severInnerPorts(ZEL::Compound& compound);

/// Disconnects the port as anybody would, so that its listeners are asked. False when one refused.
bool disconnect(ZEL::Port& port);
/// The same for the node's ports, and for every connection that leads out of the compound in it.
bool disconnect(ZEL::Node& node);

} // namespace zelpython
