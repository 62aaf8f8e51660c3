#include "zelDirection.h"

#include <unordered_map>

namespace ZEL {

namespace {

std::unordered_map<const void*, PortIOType>& directions()
{
    static auto* const all = new std::unordered_map<const void*, PortIOType>; // Outlives all ports.
    return *all;
}

} // namespace

void keepDirectionElsewhere(const void* object, PortIOType type)
{
    directions()[object] = type;
}

void forgetDirectionElsewhere(const void* object)
{
    directions().erase(object);
}

PortIOType directionElsewhere(const void* object)
{
    return directions().at(object);
}

} // namespace ZEL
