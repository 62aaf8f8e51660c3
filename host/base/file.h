#pragma once

#include <string>

namespace shading {

/// Reads all of a file. False, with the problem, when it cannot be read or is no regular file: one
/// of those may never end, or wait for a writer that never comes.
bool readFile(const std::string& path, std::string& bytes, std::string& problem);

} // namespace shading
