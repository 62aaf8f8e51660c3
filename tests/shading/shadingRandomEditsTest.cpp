#include "shadingRandomEdits.h"

#include "shadingWatcher.h"
#include "zelCheck.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace {

long setting(const char* name, long otherwise)
{
    const char* const text = std::getenv(name);
    return text ? std::strtol(text, nullptr, 10) : otherwise;
}

std::string findings(shading::Container& container)
{
    std::string text;
    for (const zelCheck::Finding& finding : zelCheck::checkNetwork(container))
        text += zelCheck::findingText(finding) + "\n";
    return text;
}

/// Edits the document, then goes back to the start and again to the end.
void editAtRandom(const std::string& path, unsigned seed, long steps)
{
    SCOPED_TRACE(path + ", SHADING_SEED=" + std::to_string(seed));
    std::vector<shading::Message> messages;
    const auto container = shading::Container::open(path, {}, messages);
    ASSERT_TRUE(container);
    // A document may be unsound from the start: then it only has to come back.
    const bool isSound = findings(*container).empty();
    const std::string before = networkText(*container);
    RandomEdits edits(*container, seed);
    shading::History& history = edits.editor().history();
    std::ostringstream told;
    const shading::Watcher watcher(container->getRootNode(), told);
    for (long i = 0; i < steps; ++i) {
        const std::string unchanged = networkText(*container);
        const int count = history.undoCount();
        told.str("");
        const std::string last = edits.step();
        const std::string where = "step " + std::to_string(i) + ": " + last;
        if (isSound) {
            ASSERT_EQ("", findings(*container)) << where;
        }
        if (last.find(": refused: ") != std::string::npos) {
            ASSERT_EQ(unchanged, networkText(*container)) << where;
            ASSERT_EQ(count, history.undoCount()) << where;
            ASSERT_EQ("", told.str()) << where;
        }
    }
    const int count = history.undoCount();
    const std::string after = networkText(*container);
    std::string title;
    std::string problem;
    while (history.undoCount() > 0)
        ASSERT_TRUE(history.undo(title, problem)) << title << ": " << problem;
    EXPECT_EQ(before, networkText(*container));
    while (history.undoCount() < count)
        ASSERT_TRUE(history.redo(title, problem)) << title << ": " << problem;
    EXPECT_EQ(after, networkText(*container));
}

void editAllAtRandom(const std::string& folder)
{
    const auto seed = static_cast<unsigned>(setting("SHADING_SEED", 1));
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".mtlx")
            continue;
        ++count;
        editAtRandom(entry.path().string(), seed, setting("SHADING_STEPS", 150));
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_LT(0, count);
}

TEST(RandomEdits, ReturnToTheStartAndToTheEnd)
{
    editAllAtRandom(SHADING_DOCUMENTS);
}

TEST(RandomEdits, ReturnInAFolderOfChoice)
{
    const char* const folder = std::getenv("SHADING_EXTRA_DOCUMENTS");
    if (!folder)
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    editAllAtRandom(folder);
}

} // namespace
