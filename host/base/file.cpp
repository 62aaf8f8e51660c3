#include "base/file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

namespace shading {

namespace {

FileStamp stampFrom(const struct stat& status)
{
    FileStamp stamp;
    stamp.device = status.st_dev;
    stamp.number = status.st_ino;
    stamp.size = static_cast<std::uintmax_t>(status.st_size);
#if defined(__APPLE__)
    const struct timespec& changed = status.st_mtimespec;
#else
    const struct timespec& changed = status.st_mtim;
#endif
    stamp.seconds = changed.tv_sec;
    stamp.nanoseconds = changed.tv_nsec;
    return stamp;
}

} // namespace

bool FileStamp::operator==(const FileStamp& other) const
{
    return device == other.device && number == other.number && size == other.size &&
           seconds == other.seconds && nanoseconds == other.nanoseconds;
}

bool readFile(const std::string& path,
              std::string& bytes,
              std::string& problem,
              FileStamp* stamp,
              int* number)
{
    const auto fail = [&](int error) {
        problem = error == 0 ? "Not a regular file" : std::strerror(error);
        if (number)
            *number = error;
        return false;
    };
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_other(status))
        return fail(0);
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (!file)
        return fail(errno);
    if (stamp)
        *stamp = stampOf(fileno(file));
    std::array<char, 65536> buffer;
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), file)) > 0)
        bytes.append(buffer.data(), count);
    const int error = std::ferror(file) ? errno : 0;
    std::fclose(file);
    return error == 0 || fail(error);
}

std::optional<FileStamp> stampOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? std::optional(stampFrom(status)) : std::nullopt;
}

FileStamp stampOf(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 ? stampFrom(status) : FileStamp();
}

std::string canonicalPath(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::canonical(path, error);
    return error ? path : canonical.string();
}

} // namespace shading
