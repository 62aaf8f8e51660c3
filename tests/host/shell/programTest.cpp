#include "paths.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace {

struct Result {
    int status;
    std::string output;
};

/// Runs the shell command with `zelsh` for the program and "$1" for the path.
Result runProgram(const std::string& command, const std::string& path)
{
    const std::string line =
        "set -- '" + path + "'; zelsh() { '" + paths::kZelsh + "' \"$@\"; }; " + command;
    std::FILE* const pipe = popen(line.c_str(), "r");
    Result result = {-1, ""};
    if (!pipe)
        return result;
    int c = 0;
    while ((c = std::fgetc(pipe)) != EOF)
        result.output += static_cast<char>(c);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

const char* const kText =
    "<materialx>\n<n name='n' type='t'><input name='a' type='t' nodename='no'/></n></materialx>";

const struct {
    const char* command;
    int status;
    const char* output;
} kRuns[] = {
    {"zelsh \"$1\" -c ls -c 'find Top.n' 2>/dev/null", 0, "n n\nnode\n"},
    {"zelsh -c ls \"$1\" 2>&1 >/dev/null | sed 's:.*/::'", 0,
     "t.mtlx:2: warning: Top.n.a: no node \"no\" in Top\n"},
    {"zelsh --strict \"$1\" -c ls 2>/dev/null", 1, ""},
    {"zelsh \"$1\" -c 'ls x' -c ls 2>/dev/null", 1, "n n\n"},
    {"printf 'ls x\\n\\nls' | zelsh \"$1\" 2>/dev/null", 1, "n n\n"},
    {"printf 'ls\\nquit\\nls\\n' | zelsh \"$1\" 2>/dev/null", 0, "n n\n"},
    {"zelsh --watch \"$1\" -c 'rename Top.n m' -c undo 2>/dev/null", 0,
     "node renamed: Top.m\nnode renamed: Top.n\nundo: Rename n to m\n"},
    {"zelsh \"$1\" -c check 2>/dev/null", 1, "Top.n.a: no node \"no\"\n"},
    {"zelsh \"$1\" -c 'delete Top.n' -c check 2>/dev/null", 0, ""},
    {"echo '<materialx><n name=\"a.b\" type=\"t\"/></materialx>' >\"$1.bad\"; "
     "zelsh \"$1.bad\" -c check 2>/dev/null",
     1, "Top.a.b: no path reaches a name with a \".\" in it\n"},
    {"zelsh \"$1\" -c 'rename Top.n m' -c \"save $1.new\" 2>/dev/null; sed -n 2p \"$1.new\"", 0,
     "<n name='m' type='t'><input name='a' type='t' nodename='no'/></n></materialx>"},
    {"zelsh \"$1\" -c 'rename Top.n x-y' -c \"save $1\" -c undo 2>&1 | grep -v warning", 0,
     "error: rename: Top.n: a name has letters, digits and _, and begins with no digit\n"
     "error: undo: history: nothing to undo\n"},
    {"zelsh \"$1\" -c \"save $1/x\" 2>/dev/null", 1, ""},
    {"zelsh \"$1.bad\" -c 'check --json' 2>/dev/null", 1,
     "[{\"path\":\"Top.a.b\",\"reason\":\"no path reaches a name with a \\\".\\\" in it\"}]\n"},
    {"zelsh \"$1\" -c 'delete Top.n' -c 'check --json' 2>/dev/null", 0, "[]\n"},
    {"zelsh \"$1\" </dev/null 2>/dev/null", 0, ""},
    {"zelsh \"$1\" -c 'find Top.n' -c dump -c ls 2>/dev/null | grep -E '^(node|ZEL|name|n n)'", 0,
     "node\nZEL Compound \"Top\"\nname: Top.n\nn n\n"},
    {"zelsh \"$1\" -c ls 2>&1 >/dev/full | sed 1d", 0,
     "error: standard output: cannot be written\n"},
    {"zelsh \"$1\" -c ls >/dev/full 2>/dev/null", 1, ""},
    {"zelsh --help 2>&1 >/dev/full", 1, "error: standard output: cannot be written\n"},
    {"zelsh \"$1\" 2>&1 </ | sed 1d", 0, "error: standard input: cannot be read\n"},
    {"zelsh \"$1\" </ 2>/dev/null", 1, ""},
    {"zelsh \"$1.no\" -c ls 2>/dev/null", 1, ""},
    {"zelsh 2>&1 | head -1", 0, "zelsh: no document\n"},
    {"zelsh 2>/dev/null", 2, ""},
    {"zelsh \"$1\" \"$1\" 2>/dev/null", 2, ""},
    {"zelsh \"$1\" --no-such 2>/dev/null", 2, ""},
    {"zelsh --new \"$1\" -c save 2>&1 | sed 's:.*/::'", 0,
     "t.mtlx:1:1: error: a new document needs a new file, and this one is there\n"},
    {"zelsh --new \"$1\" 2>/dev/null", 1, ""},
    {"zelsh --new \"$1.fresh\" -c ls -c save 2>/dev/null; cat \"$1.fresh\"", 0,
     "<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n</materialx>\n"},
    {"zelsh --new \"$1.a\" \"$1\" 2>/dev/null", 2, ""},
    {"cp \"$1\" \"$1.own\"; zelsh \"$1.own\" -c 'rename Top.n m' -c save 2>/dev/null; "
     "sed -n 2p \"$1.own\" | cut -c 1-11",
     0, "<n name='m'\n"},
    {"zelsh --help | head -1", 0, "usage: zelsh [OPTION]... DOCUMENT.mtlx [-c COMMAND]...\n"},
};

TEST(Program, RunsCommandsAndTellsTheOutcome)
{
    const TestFile file(kText);
    for (const auto& c : kRuns) {
        SCOPED_TRACE(c.command);
        const Result result = runProgram(c.command, file.path());
        EXPECT_EQ(c.status, result.status);
        EXPECT_EQ(c.output, result.output);
    }
}

/// Opens each document below the folder; returns how many nodes the largest has.
int openAll(const std::string& folder, bool isStrict, int& count)
{
    int largest = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".mtlx")
            continue;
        SCOPED_TRACE(entry.path().string());
        ++count;
        std::vector<shading::Message> messages;
        shading::OpenOptions options;
        options.isStrict = isStrict;
        const auto document = shading::openDocument(entry.path().string(), options, messages);
        EXPECT_TRUE(document);
        if (!document)
            continue;
        for (const auto& node : document->getRootNode()->getAsCompound()->nodes()) {
            if (node->isCompound())
                largest = std::max(largest, node->getAsCompound()->nodes().size());
        }
    }
    return largest;
}

TEST(Documents, OpenWithoutAWarning)
{
    int count = 0;
    EXPECT_LE(30, openAll(paths::kDocuments, true, count));
    EXPECT_LE(3, count);
}

TEST(Documents, OpenFromAFolderOfChoice)
{
    const char* const folder = std::getenv("SHADING_EXTRA_DOCUMENTS");
    if (!folder)
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    int count = 0;
    openAll(folder, false, count);
    EXPECT_LT(0, count);
}

} // namespace
