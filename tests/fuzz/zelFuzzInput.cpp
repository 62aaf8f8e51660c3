#include "zelFuzzInput.h"

#include <cstdio>
#include <cstdlib>

namespace zelFuzz {

void expect(bool holds, const std::string& text)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", text.c_str());
    std::abort();
}

} // namespace zelFuzz

/// Called once before the first input: the lines that the library prints are of no interest.
// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}
