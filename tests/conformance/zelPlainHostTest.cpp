// The least host that there is passes the kit.
#include "zelPlainHost.h"

namespace {

const bool kRegistered =
    ZEL::registerConformanceTests("PlainHost", [] { return std::make_unique<plain::Host<>>(); });

} // namespace
