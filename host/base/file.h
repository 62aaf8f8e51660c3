#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace shading {

/// Which file stood at a path, and what can be seen of its content without reading it.
struct FileStamp {
    std::uintmax_t device = 0;
    std::uintmax_t number = 0; ///< Of the file on its device.
    std::uintmax_t size = 0;   ///< In bytes.
    std::intmax_t seconds = 0; ///< Of the last change, like the next.
    std::intmax_t nanoseconds = 0;

    bool operator==(const FileStamp& other) const;
    bool operator!=(const FileStamp& other) const { return !(*this == other); }
};

/// Reads all of a file. False, with the problem, when it cannot be read or is no regular file: one
/// of those may never end, or wait for a writer that never comes. The stamp is taken before the
/// first byte is read.
bool readFile(const std::string& path, std::string& bytes, FileStamp& stamp, std::string& problem);
bool readFile(const std::string& path, std::string& bytes, std::string& problem);

/// Of the file that the path leads to; empty when it leads to none.
std::optional<FileStamp> stampOf(const std::string& path);
/// Of an open file.
FileStamp stampOf(int file);

/// The path without links in it; as it is when it leads to nothing.
std::string canonicalPath(const std::string& path);

} // namespace shading
