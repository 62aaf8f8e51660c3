#include "base/programPath.h"

#if defined(_WIN32)
#include <windows.h>
#elif defined(__APPLE__)
#include <cstdint>
#include <mach-o/dyld.h>
#endif
#include <string>

namespace shading {

std::filesystem::path programPath()
{
    std::error_code ignored;
#if defined(_WIN32)
    constexpr std::size_t kLongest = 32768; // Of Windows, with the terminator.
    std::wstring path(kLongest, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::canonical(path, ignored);
#elif defined(__APPLE__)
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size); // Says the size with the terminator.
    std::string path(size, '\0');
    if (_NSGetExecutablePath(path.data(), &size) != 0)
        return {};
    return std::filesystem::canonical(path.c_str(), ignored);
#else
    return std::filesystem::read_symlink("/proc/self/exe", ignored);
#endif
}

} // namespace shading
