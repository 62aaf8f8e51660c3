#pragma once

#include "zel.h"

namespace shading {

/// What a picture of the document shows of a node when it does not show all: false for an input
/// that says no more than the definition of the node does.
bool isTelling(ZEL::Node& node, ZEL::Port& port);
/// True for a plain node of a document that has no definition: nobody knows its ports.
bool isUnknown(ZEL::Node& node);

} // namespace shading
