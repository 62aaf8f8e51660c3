#pragma once

#include <filesystem>

namespace shading {

/// The file of the running program, with links followed; empty when the system does not tell.
std::filesystem::path programPath();

} // namespace shading
