#pragma once

#include "zelPort.h"

namespace ZEL {

/// A port as the sequences of lists hold it: they find entries by name.
inline void* toEntry(Port* port)
{
    return static_cast<Namable*>(port);
}

inline Port* toPort(void* entry)
{
    return static_cast<Port*>(static_cast<Namable*>(entry));
}

} // namespace ZEL
