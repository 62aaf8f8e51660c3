#include "zelCore.h"

#include <limits>

namespace ZEL {

namespace {

/// No number of wrappers that come and go in a destructor brings this down to 0.
constexpr std::int32_t kDyingCount = std::numeric_limits<std::int32_t>::max() / 2;

} // namespace

void ReferenceCounted::deleteThis()
{
    m_count = kDyingCount;
    delete this;
}

ReferenceCounted::~ReferenceCounted() = default;

} // namespace ZEL
