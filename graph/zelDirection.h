#pragma once

#include "zelPort.h"

namespace ZEL {

// Ports and lists keep a direction in 24 bits. One that does not fit, a value of the host's own, is
// kept in a table, by the address of the object.

/// The lowest number of 24 bits stands for all that do not fit.
constexpr std::int32_t kDirectionElsewhere = -(1 << 23);

void keepDirectionElsewhere(const void* object, PortIOType type);
void forgetDirectionElsewhere(const void* object);
PortIOType directionElsewhere(const void* object);

/// What the object keeps.
inline std::int32_t keepDirection(const void* object, PortIOType type)
{
    const auto number = static_cast<std::int32_t>(type);
    if (number > kDirectionElsewhere && number < -kDirectionElsewhere)
        return number;
    keepDirectionElsewhere(object, type);
    return kDirectionElsewhere;
}

/// The object goes, or gets another direction.
inline void forgetDirection(const void* object, std::int32_t kept)
{
    if (kept == kDirectionElsewhere)
        forgetDirectionElsewhere(object);
}

inline PortIOType directionOf(const void* object, std::int32_t kept)
{
    return kept == kDirectionElsewhere ? directionElsewhere(object) : static_cast<PortIOType>(kept);
}

} // namespace ZEL
