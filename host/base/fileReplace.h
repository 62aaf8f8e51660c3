#pragma once

#include "base/file.h"

#include <string>

namespace shading {

/// Writes the bytes into a new file beside that one, makes sure that they are on the disk, and then
/// puts it in the place of the other, whose permissions it takes over. A symbolic link stays: the
/// file that it names is replaced; one that names nothing is left alone. What is no regular file is
/// not replaced. False when it failed, with the reason: the file is as it was, and nothing is left
/// beside it.
bool replaceFile(const std::string& path, const std::string& bytes, std::string& problem);
/// The same, with the stamp of the file as it was written.
bool replaceFile(const std::string& path,
                 const std::string& bytes,
                 FileStamp& stamp,
                 std::string& problem);

} // namespace shading
