#pragma once

#include <cstdint>
#include <functional>
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
/// of those may never end, or wait for a writer that never comes. The stamp, unless it is null, is
/// taken before the first byte is read. The number, unless it is null, is the errno of the problem,
/// 0 where the system has none for it.
bool readFile(const std::string& path,
              std::string& bytes,
              std::string& problem,
              FileStamp* stamp = nullptr,
              int* number = nullptr);

/// Writes the bytes into a new file beside that one, makes sure that they are on the disk, and then
/// puts it in the place of the other, whose permissions it takes over. A symbolic link stays: the
/// file that it names is replaced; one that names nothing is left alone. What is no regular file is
/// not replaced. False when it failed, with the reason: the file is as it was, and nothing is left
/// beside it. The stamp, unless it is null, is that of the file as it was written; the number is
/// that of readFile.
/// While it is written it is asked now and then whether it goes on; when not, it fails.
bool replaceFile(const std::string& path,
                 const std::string& bytes,
                 std::string& problem,
                 FileStamp* stamp = nullptr,
                 const std::function<bool()>& goesOn = {},
                 int* number = nullptr);

/// Of the file that the path leads to; empty when it leads to none.
std::optional<FileStamp> stampOf(const std::string& path);
/// Of an open file.
FileStamp stampOf(int file);

/// The path without links in it; as it is when it leads to nothing.
std::string canonicalPath(const std::string& path);

} // namespace shading
