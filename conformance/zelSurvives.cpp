#include "zelSurvives.h"

#include <cstdlib>

#if defined(_WIN32)
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <windows.h>
#else
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace ZEL::Conformance {

#if defined(_WIN32)

// Windows cannot fork: GoogleTest starts the program once more, for this test alone up to this
// call. A bad end there brings up no debugger, and what is said of it is left to the caller.
bool survives(const std::function<void()>& call)
{
    testing::TestPartResultArray said;
    {
        using Reporter = testing::ScopedFakeTestPartResultReporter;
        const Reporter reporter(Reporter::INTERCEPT_ONLY_CURRENT_THREAD, &said);
        const auto justEnd = [](EXCEPTION_POINTERS*) -> LONG { std::_Exit(EXIT_FAILURE); };
        EXPECT_EXIT((SetUnhandledExceptionFilter(justEnd), call(), std::_Exit(0)),
                    testing::ExitedWithCode(0), "");
    }
    return said.size() == 0;
}

#else

bool survives(const std::function<void()>& call)
{
    const pid_t child = fork();
    if (child == 0) {
        close(STDERR_FILENO);
        call();
        _exit(0);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

#endif

} // namespace ZEL::Conformance
