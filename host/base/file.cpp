#include "base/file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace shading {

bool readFile(const std::string& path, std::string& bytes, std::string& problem)
{
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_other(status)) {
        problem = "Not a regular file";
        return false;
    }
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (!file) {
        problem = std::strerror(errno);
        return false;
    }
    std::array<char, 65536> buffer;
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), file)) > 0)
        bytes.append(buffer.data(), count);
    const int error = std::ferror(file) ? errno : 0;
    std::fclose(file);
    if (error != 0)
        problem = std::strerror(error);
    return error == 0;
}

} // namespace shading
