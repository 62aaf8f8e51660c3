// Gives a fuzz target the files named by the arguments, and those in the folders among them, in
// the order of their names. For compilers without a fuzzer, and for the tests.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> filesAt(const std::string& path)
{
    std::vector<std::string> files;
    if (!std::filesystem::is_directory(path))
        return {path};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file())
            files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::string& path : filesAt(argv[i])) {
            std::ifstream file(path, std::ios::binary);
            if (!file) {
                std::cerr << path << ": cannot be read\n";
                return 1;
            }
            std::cerr << path << std::endl; // At once: the last line names what breaks.
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
            ++count;
        }
    }
    std::cerr << count << " inputs replayed\n";
    return count > 0 ? 0 : 1;
}
