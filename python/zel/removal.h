#pragma once

#include "zel.h"

namespace zelpython {

/// What a host of C++ leaves undone after a removal from that list: outside of every list the node
/// must not know its compound, and its ports must not remember what forgot them.
void afterRemoval(ZEL::NodeList& list, ZEL::Node& node);

} // namespace zelpython
