#pragma once

#include "zel.h"

namespace shading {

class Node;

// The wrappers that the host's code passes on: of the library's classes, which are all that its
// operations ask for, and of the host's own node.
using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;
using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using CompoundPtr = ZEL::AddRefWrapper<ZEL::Compound>;
using TypePtr = ZEL::AddRefWrapper<ZEL::PortDataType>;
using HostNodePtr = ZEL::AddRefWrapper<Node>;

} // namespace shading
