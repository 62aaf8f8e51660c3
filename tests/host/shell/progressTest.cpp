#include "shell/progressLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using std::chrono::milliseconds;

const struct {
    const char* name;
    int columns;
    std::vector<std::pair<int, int>> updates; ///< Milliseconds since the start, permille.
    const char* text;
} kProgress[] = {
    {"a quick one is silent", 80, {{0, 0}, {999, 990}}, ""},
    {"a terminal sees ten lines a second, cleared at the end",
     80,
     {{1000, 99}, {1099, 500}, {1100, 1000}, {1150, 1000}},
     "\rtä: 9 %\rtä: 100 %\r          \r"},
    {"elsewhere nothing is written", 0, {{999, 1}, {1500, 421}, {2000, 600}}, ""},
    {"a narrow terminal sees the end", 8, {{1000, 421}}, "\r: 42 %\r      \r"},
};

TEST(ProgressLine, AppearsAfterASecond)
{
    for (const auto& c : kProgress) {
        SCOPED_TRACE(c.name);
        std::chrono::steady_clock::time_point now;
        const auto start = now;
        std::ostringstream out;
        {
            shading::ProgressLine line(out, c.columns, "tä", [&] { return now; });
            for (const auto& [time, permille] : c.updates) {
                now = start + milliseconds(time);
                line.update(permille);
            }
        }
        EXPECT_EQ(c.text, out.str());
    }
}

} // namespace
