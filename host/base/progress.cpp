#include "base/progress.h"

#include <chrono>
#include <future>

namespace shading {

namespace {

/// Between two tellings while a thread works.
constexpr std::chrono::milliseconds kPause(10);

} // namespace

const char* const kCancelled = "cancelled";

void Progress::await(const std::function<void()>& work)
{
    awaitResult(work);
    if (m_isCancelled)
        throw Cancelled();
}

void Progress::awaitResult(const std::function<void()>& work)
{
    if (!m_tell)
        return work();
    std::future<void> done = std::async(std::launch::async, work);
    while (done.wait_for(kPause) != std::future_status::ready)
        note(m_done);
    done.get();
}

Progress::Tell Progress::within(int from, int to)
{
    if (!m_tell)
        return {};
    return [this, from, to](int permille) { return pass(from + permille * (to - from) / 1000); };
}

Progress::Tell withoutCancel(const Progress::Tell& tell)
{
    if (!tell)
        return {};
    return [tell](int permille) {
        tell(permille);
        return true;
    };
}

} // namespace shading
