#pragma once

#include "zel.h"

#include <vector>

namespace shading {

/// Finishes the ports of a compound that the library's collapse just made, in the same edit. The
/// library makes a port for each connection that crosses the border, and names it before the nodes
/// come: afterwards there is one port for each source outside that feeds the nodes, one for each
/// output inside that feeds others, and one for a material or shader that nothing reads, which is
/// the end of the network; and no port is called like a node.
void finishCollapsedPorts(ZEL::Compound& compound);

} // namespace shading
