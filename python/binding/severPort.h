#pragma once

#include "zel.h"

namespace zelpython {

/// Takes all connections of the port off both ends: they are plain pointers, and no port dies, or
/// loses its parent, while it has one. Nobody is asked.
void sever(ZEL::Port& port);

/// Somebody drops a reference: when it is the last, the port, or those of the list that go with it,
/// are severed first.
void beforeRelease(ZEL::Port& port);
void beforeRelease(ZEL::PortList& list);

} // namespace zelpython
