#pragma once

#include "base/message.h"
#include "saving/draftNetwork.h"

#include <string>
#include <vector>

namespace zelshading {

/// Raises the OSError of that number: FileNotFoundError, PermissionError and the like.
[[noreturn]] void raiseOSError(int number, const std::string& path);
/// Raises the errors among the messages: as OSError where the system refused a file, else as
/// zel.Error about the path.
[[noreturn]] void raiseMessages(const std::vector<shading::Message>& messages,
                                const std::string& path);
/// Likewise. There is one at least.
[[noreturn]] void raiseProblems(const std::vector<shading::SaveProblem>& problems);

} // namespace zelshading
