#pragma once

#include <string>

namespace zelpython {

/// Raises zel.Error: the reason, and the path of the object or file that it is about. An empty path
/// is None. The text of the error is "PATH: REASON", or the reason alone.
[[noreturn]] void raiseError(const std::string& reason, const std::string& path = {});

/// Makes zel.Error, an Exception with the attributes path and reason; for zel._zel.
void createErrorClass();

} // namespace zelpython
