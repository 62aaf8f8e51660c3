#include "console/completion.h"

#include "base/commandLine.h"
#include "console/console.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace {

const char* const kCompletedNetwork =
    "<nodegraph name='graph'><input name='x' type='t'/><n name='inner' type='t'>"
    "<input name='i' type='t'/></n><n name='a.b' type='t'/><output name='o' type='t'/>"
    "<backdrop name='frame'/></nodegraph><nodegraph name='empty'/><n name='two words' type='t'/>"
    "<n name='two wheels' type='t'/><n name='n\xC3\xA9' type='t'/><n name='n\xC3\xA8' type='t'/>";

const struct {
    const char* line;
    const char* text;       ///< The line afterwards.
    const char* candidates; ///< Each in brackets.
} kCompletions[] = {
    // Commands.
    {"co", "co", "[collapse][connect][connections][copy]"},
    {"col", "collapse ", "[collapse]"},
    {"x", "x", ""},
    {"help hist", "help history ", "[history]"},
    {"ls # T", "ls # T", ""},
    // Paths, level by level.
    {"ls ", "ls Top", "[Top][Top.]"},
    {"ls Top.", "ls Top.", "[Top.empty][Top.graph]"},
    {"ls Top.g", "ls Top.graph ", "[Top.graph]"},
    {"tree Top.g", "tree Top.graph", "[Top.graph][Top.graph.]"},
    {"ls Top.empty", "ls Top.empty ", "[Top.empty]"},
    {"ls Top Top", "ls Top Top", ""},
    {"ports Top.graph.", "ports Top.graph.inner ", "[Top.graph.inner]"},
    {"ports Top.no.", "ports Top.no.", ""},
    {"connect Top.g", "connect Top.graph.", "[Top.graph.]"},
    {"connect Top.graph.", "connect Top.graph.", "[Top.graph.inner.][Top.graph.o][Top.graph.x]"},
    {"connect a Top.graph.inner.", "connect a Top.graph.inner.",
     "[Top.graph.inner.i][Top.graph.inner.out]"},
    {"connect a b ", "connect a b ", ""},
    {"find Top.graph.", "find Top.graph.", "[Top.graph.inner][Top.graph.o][Top.graph.x]"},
    // Names with blanks; characters of several bytes.
    {"ports Top.t", "ports \"Top.two w", "[\"Top.two wheels\"][\"Top.two words\"]"},
    {"ports 'Top.two wo", "ports \"Top.two words\" ", "[\"Top.two words\"]"},
    {"ports Top.two\\ wh", "ports \"Top.two wheels\" ", "[\"Top.two wheels\"]"},
    {"ports \"Top.n", "ports Top.n", "[Top.n\xC3\xA8][Top.n\xC3\xA9]"},
    // Other kinds.
    {"collapse Top.graph q inner ", "collapse Top.graph q inner ", "[a.b][inner]"},
    {"collapse Top.graph q inner i", "collapse Top.graph q inner inner ", "[inner]"},
    {"move Top.graph.inner 1 2 Top.graph.i", "move Top.graph.inner 1 2 Top.graph.inner ",
     "[Top.graph.inner]"},
    {"move Top.graph.inner 1 ", "move Top.graph.inner 1 ", ""},
    {"arrange Top.graph i", "arrange Top.graph inner ", "[inner]"},
    {"backdrop rename Top.graph ", "backdrop rename Top.graph frame ", "[frame]"},
    {"backdrop nodes Top.graph frame i", "backdrop nodes Top.graph frame inner ", "[inner]"},
    {"reroute Top.graph.x Top.graph.x --", "reroute Top.graph.x Top.graph.x --inside ",
     "[--inside]"},
    {"port ", "port ", "[add][delete][move][rename][type]"},
    {"port type Top.graph x ", "port type Top.graph x t ", "[t]"},
    {"port add Top.graph ", "port add Top.graph ", "[input][output]"},
    {"port add Top.graph input new ", "port add Top.graph input new t ", "[t]"},
    {"port delete Top.graph ", "port delete Top.graph ", "[o][x]"},
    {"port rename Top.graph x ", "port rename Top.graph x ", ""},
    {"ls --", "ls --json ", "[--json]"},
    {"ls --json Top.e", "ls --json Top.empty ", "[Top.empty]"},
    {"draw a.svg Top.e", "draw a.svg Top.empty ", "[Top.empty]"},
    {"draw a.svg Top --d", "draw a.svg Top --depth ", "[--depth]"},
    {"draw --depth ", "draw --depth ", ""},
    {"draw --depth 1 a.svg Top.e", "draw --depth 1 a.svg Top.empty ", "[Top.empty]"},
    {"undo ", "undo ", ""},
};

TEST(Completion, KnowsWhatEachArgumentTakes)
{
    const TestDocument document(kCompletedNetwork);
    std::ostringstream out;
    shading::Session session = sessionOn(*document.opened);
    shading::Console shell(session, out, out);
    shell.add(shading::viewCommands());
    shell.add(shading::editCommands());
    shell.add(shading::drawCommands());
    for (const auto& c : kCompletions) {
        SCOPED_TRACE(c.line);
        const shading::Completion found =
            shading::complete(shell.commands(), *document.opened, c.line);
        std::string candidates;
        for (const std::string& candidate : found.candidates)
            candidates += "[" + candidate + "]";
        EXPECT_EQ(c.candidates, candidates);
        const std::string line = c.line;
        EXPECT_EQ(c.text, candidates.empty() ? line : line.substr(0, found.start) + found.text);
    }
}

TEST(Completion, FindsFilesTypesAndDefinitions)
{
    const TestFile file("");
    const std::string folder = file.path().substr(0, file.path().rfind('/') + 1);
    std::filesystem::create_directory(folder + "sub dir");
    const std::vector<shading::Command> commands = {
        {"read", "FILE", "", 1, 1, nullptr, "file"},
        {"make", "TYPE", "", 1, 1, nullptr, "nodetype type"},
    };
    const TestDocument document("");
    document.opened->dataType("t");
    const auto textFor = [&](const std::string& line) {
        return shading::complete(commands, *document.opened, line).text;
    };
    EXPECT_EQ(file.path() + " ", textFor("read " + folder + "t"));
    EXPECT_EQ("\"" + folder + "sub dir/", textFor("read " + folder + "s"));
    EXPECT_EQ("", textFor("read /no/such/"));
    EXPECT_EQ("", textFor("make "));
    EXPECT_EQ("t ", textFor("make any "));
}

TEST(CommandLine, AQuotedWordIsReadBack)
{
    for (const char* const word : {"plain", "two words", "#", "say \"a\\b\"", "it's", "a#b", ""}) {
        SCOPED_TRACE(word);
        std::vector<std::string> words;
        std::string problem;
        ASSERT_TRUE(shading::splitCommand("x " + shading::quoteWord(word), words, problem));
        EXPECT_EQ(word, words.back());
        EXPECT_EQ(word, shading::splitUnfinished(shading::quoteWord(word, false)).word);
    }
}

} // namespace
