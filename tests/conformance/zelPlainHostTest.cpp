// The least host that there is passes the kit.
#include "zelPlainHost.h"

namespace {

const bool g_registered =
    ZEL::registerConformanceTests("PlainHost", [] { return std::make_unique<plain::Host<>>(); });

} // namespace
