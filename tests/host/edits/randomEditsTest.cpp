#include "randomEdits.h"

#include "check/zelCheck.h"
#include "format/validator.h"
#include "format/xml.h"
#include "paths.h"
#include "reading/definitionReader.h"
#include "reading/openDocument.h"
#include "savedText.h"
#include "saving/save.h"
#include "shell/watcher.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

namespace {

long setting(const char* name, long otherwise)
{
    const char* const text = std::getenv(name);
    return text ? std::strtol(text, nullptr, 10) : otherwise;
}

std::string findings(shading::Document& document)
{
    std::string text;
    for (const zelCheck::Finding& finding : zelCheck::checkNetwork(document))
        text += zelCheck::findingText(finding) + "\n";
    return text;
}

/// What became of the documents that were saved: "saved", or the reason of a refusal without paths.
using Outcomes = std::map<std::string, int>;

std::string reasonOf(const shading::SaveProblem& problem)
{
    std::istringstream words(problem.reason);
    std::string reason;
    for (std::string word; words >> word;)
        reason += (reason.empty() ? "" : " ") + (word.compare(0, 4, "Top.") == 0 ? "PATH" : word);
    return reason;
}

/// The rules of the format that the text breaks: how often, by their names.
std::map<std::string, int> brokenRules(const std::string& text, std::string& faults)
{
    shading::XmlSource xml;
    shading::Message error;
    EXPECT_TRUE(xml.loadText("", text, error)) << shading::messageText(error);
    std::map<std::string, int> rules;
    for (const shading::FormatFault& fault : shading::formatFaults(xml.documentElement())) {
        ++rules[shading::nameOf(fault.rule)];
        faults += fault.path + ": " + fault.text + "\n";
    }
    return rules;
}

/// No rule of the format is broken more often than it was when the document was opened.
void validate(shading::Document& document, const std::map<std::string, int>& before)
{
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    if (!shading::saveToBytes(document, bytes, problems))
        return;
    std::string faults;
    for (const auto& [rule, count] : brokenRules(bytes, faults)) {
        const auto known = before.find(rule);
        ASSERT_LE(count, known == before.end() ? 0 : known->second) << rule << "\n"
                                                                    << faults << bytes;
    }
}

/// Saves the document and opens what was written: the network is the same.
void saveAndOpen(shading::Document& document, Outcomes& outcomes)
{
    const std::string before = networkText(document);
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    if (!shading::saveToBytes(document, bytes, problems)) {
        ASSERT_FALSE(problems.empty());
        std::set<std::string> reasons;
        for (const shading::SaveProblem& problem : problems)
            reasons.insert(reasonOf(problem));
        for (const std::string& reason : reasons)
            ++outcomes[reason];
        ASSERT_EQ(before, networkText(document));
        return;
    }
    ++outcomes["saved"];
    const TestFile file(bytes);
    std::vector<shading::Message> messages;
    shading::OpenOptions options;
    options.runtime = document.getRuntime();
    const auto saved = shading::openDocument(file.path(), options, messages);
    ASSERT_TRUE(saved) << bytes;
    ASSERT_EQ(savedText(document), savedText(*saved)) << bytes;
    ASSERT_EQ(backdropsText(document), backdropsText(*saved)) << bytes;
    ASSERT_EQ(before, networkText(document));
}

/// Edits the document, then goes back to the start and again to the end.
void editAtRandom(const std::string& path, ZEL::Runtime& runtime, unsigned seed, long steps)
{
    SCOPED_TRACE(path + ", SHADING_SEED=" + std::to_string(seed));
    std::vector<shading::Message> messages;
    shading::OpenOptions options;
    options.runtime = &runtime;
    const auto document = shading::openDocument(path, options, messages);
    ASSERT_TRUE(document);
    // A document may be unsound from the start: then it only has to come back.
    const bool isSound = findings(*document).empty();
    const std::string before = networkText(*document);
    RandomEdits random(*document, seed);
    shading::History& history = random.edits().history();
    Outcomes outcomes;
    std::string ignored;
    const std::map<std::string, int> broken = brokenRules(document->xml().text(), ignored);
    std::ostringstream told;
    const shading::Watcher watcher(document->getRootNode(), told);
    for (long i = 0; i < steps; ++i) {
        const std::string unchanged = networkText(*document);
        const int count = history.undoCount();
        told.str("");
        const std::string last = random.step();
        const std::string where = "step " + std::to_string(i) + ": " + last;
        if (isSound) {
            ASSERT_EQ("", findings(*document)) << where;
        }
        if (last.find(": refused: ") != std::string::npos) {
            ASSERT_EQ(unchanged, networkText(*document)) << where;
            ASSERT_EQ(count, history.undoCount()) << where;
            ASSERT_EQ("", told.str()) << where;
        }
        SCOPED_TRACE(where);
        ASSERT_NO_FATAL_FAILURE(validate(*document, broken));
        if (i % 10 == 9) {
            ASSERT_NO_FATAL_FAILURE(saveAndOpen(*document, outcomes));
        }
    }
    for (const auto& [outcome, times] : outcomes)
        std::cout << std::filesystem::path(path).filename().string() << ": " << times
                  << " times: " << outcome << "\n";
    const int count = history.undoCount();
    const std::string after = networkText(*document);
    std::string title;
    std::string problem;
    while (history.undoCount() > 0)
        ASSERT_TRUE(history.undo(title, problem)) << title << ": " << problem;
    EXPECT_EQ(before, networkText(*document));
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(shading::saveToBytes(*document, bytes, problems));
    EXPECT_EQ(fileBytes(path), bytes);
    while (history.undoCount() < count)
        ASSERT_TRUE(history.redo(title, problem)) << title << ": " << problem;
    EXPECT_EQ(after, networkText(*document));
}

void editAllAtRandom(const std::string& folder)
{
    const auto seed = static_cast<unsigned>(setting("SHADING_SEED", 1));
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".mtlx")
            paths.push_back(entry.path().string());
    }
    // The definitions that the documents bring are those of their nodes.
    ZEL::Runtime runtime;
    std::vector<shading::Message> ignored;
    for (const std::string& path : paths)
        shading::readDefinitions(path, runtime, ignored);
    for (const std::string& path : paths) {
        editAtRandom(path, runtime, seed, setting("SHADING_STEPS", 150));
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_FALSE(paths.empty());
}

TEST(RandomEdits, ReturnToTheStartAndToTheEnd)
{
    editAllAtRandom(paths::kDocuments);
}

TEST(RandomEdits, ReturnInAFolderOfChoice)
{
    const char* const folder = std::getenv("SHADING_EXTRA_DOCUMENTS");
    if (!folder)
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    editAllAtRandom(folder);
}

} // namespace
