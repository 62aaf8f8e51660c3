#pragma once

#include <string>
#include <utility>
#include <vector>

namespace shading {

/// The old and the new path of each node that got another name.
using Renamings = std::vector<std::pair<std::string, std::string>>;

} // namespace shading
