#pragma once

#include "zel.h"

#include <string>

namespace shading {

struct Tie;

// A graph that implements a `nodedef` shares its interface with all that use that: its inputs are
// those of the `nodedef`, and its outputs are called as there. So a change of its ports changes the
// `nodedef`, when nothing else uses that, and is refused otherwise.

/// What ties the node to the `nodedef` that it implements: null for a plain node, for a graph that
/// implements none, and for one that an edit made.
const Tie* tieOf(ZEL::Node& node);

extern const char* const kStaysAtTheTop; ///< The words for what such a graph does.

/// Why a port of the node must stay as the `nodedef` has it; empty where it need not. The name is
/// that which the document gave the port, empty for a new one.
std::string interfaceProblem(ZEL::Node& node,
                             ZEL::PortIOType ioType,
                             const std::string& readName,
                             bool isRemoval = false);

} // namespace shading
