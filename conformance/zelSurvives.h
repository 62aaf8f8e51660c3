#pragma once

#include <functional>

namespace ZEL::Conformance {

/// Whether a process of its own survives the call, without a word. Once in a test at most.
bool survives(const std::function<void()>& call);

} // namespace ZEL::Conformance
