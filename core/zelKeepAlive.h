#pragma once

#include "zelCore.h"

namespace ZEL {

/// Holds an object over calls into host code, which may drop every other reference to it. An object
/// that nobody holds (on the stack, under construction) is left alone; null is allowed.
class KeepAlive {
public:
    explicit KeepAlive(ReferenceCounted* object)
        : m_held(object && object->getRefCount() > 0 ? object : nullptr)
    {
    }

private:
    AddRefWrapper<ReferenceCounted> m_held;
};

} // namespace ZEL
