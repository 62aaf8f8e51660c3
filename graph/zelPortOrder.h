#pragma once

#include "zelPort.h"

namespace ZEL {

/// Exchanges the two when the first is an input, so that an output, if there is one, comes first.
/// Leaves both alone when the first is empty. The second is not looked at.
inline void SwapPortsForOutputInput(AddRefWrapper<Port>& a, AddRefWrapper<Port>& b)
{
    if (a && a->getPortIOType() == PortInput)
        a.swap(b);
}

} // namespace ZEL
