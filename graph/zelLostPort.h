#pragma once

#include "zelPort.h"

namespace ZEL {

/// After a connection was made of ports that the caller holds by so many wrappers each: when a
/// listener has dropped every other reference to one of them, they forget each other. It would die
/// connected.
inline void forgetLostPort(const AddRefWrapper<Port>& a,
                           const AddRefWrapper<Port>& b,
                           int holdsOfA = 1,
                           int holdsOfB = 1)
{
    if (a->getRefCount() > holdsOfA && b->getRefCount() > holdsOfB)
        return;
    a->removeFromConnectedList(b.get());
    b->removeFromConnectedList(a.get());
}

} // namespace ZEL
