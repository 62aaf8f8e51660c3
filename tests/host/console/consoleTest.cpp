#include "console/console.h"

#include "base/commandLine.h"
#include "document/node.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace {

const char* const kElements =
    "<nodegraph name='g'><input name='x' type='t' value='say &quot;a\\b&quot;'/>"
    "<n name='x' type='t'><input name='i' type='t' interfacename='x'/></n>"
    "<output name='o' type='t' nodename='x'/></nodegraph><n name='two words' type='t'/>";

const struct {
    const char* line;
    const char* output;
} kCommands[] = {
    {"", ""},
    {"  # ls", ""},
    {"ls", "g nodegraph compound\ntwo words n\n"},
    {"ls Top.g", "x n\n"},
    {"ls Top.g.x", "error: ls: Top.g.x: not a compound\n"},
    {"ls Top.no", "error: ls: Top.no: no such node\n"},
    {"ls Top Top", "error: ls: 2 arguments: usage: ls [--json] [PATH]\n"},
    {"ports", "error: ports: 0 arguments: usage: ports [--json] PATH\n"},
    {"ports Top.g",
     "input x t \"say \\\"a\\\\b\\\"\" -> Top.g.x.i\noutput o t \"\" <- Top.g.x.out\n"},
    {"ports 'Top.two words'", "output out t \"\"\n"},
    {"connections Top.g", "Top.g.x -> Top.g.x.i\nTop.g.x.out -> Top.g.o\n"},
    {"connections Top.g.x", "error: connections: Top.g.x: not a compound\n"},
    {"find Top", "compound\n"},
    {"find Top.g.x", "node\ninput\n"},
    {"find Top.g.x.out", "output\n"},
    {"find Top.g.y", "nothing\n"},
    {"find top", "nothing\n"},
    {"dump Top.no", "error: dump: Top.no: no such node\n"},
    {"ls --json", "[{\"name\":\"g\",\"type\":\"nodegraph\",\"compound\":true},"
                  "{\"name\":\"two words\",\"type\":\"n\",\"compound\":false}]\n"},
    {"ls Top.g.x --json", "error: ls: Top.g.x: not a compound\n"},
    {"find --json", "nothing\n"}, // No option of this one.
    {"ports Top.g --json",
     "[{\"direction\":\"input\",\"name\":\"x\",\"type\":\"t\",\"value\":\"say \\\"a\\\\b\\\"\","
     "\"sources\":[],\"targets\":[\"Top.g.x.i\"]},{\"direction\":\"output\",\"name\":\"o\","
     "\"type\":\"t\",\"value\":\"\",\"sources\":[\"Top.g.x.out\"],\"targets\":[]}]\n"},
    {"connections --json Top.g", "[{\"source\":\"Top.g.x\",\"target\":\"Top.g.x.i\"},"
                                 "{\"source\":\"Top.g.x.out\",\"target\":\"Top.g.o\"}]\n"},
    {"tree", "Top materialx compound\n  g nodegraph compound\n    x n\n  two words n\n"},
    {"tree Top.g.x", "x n\n"},
    {"stats", "nodes 3\ncompounds 1\ndepth 2\nports 5\nconnections 2\nbytes 264\n"},
    {"stats Top.g", "nodes 1\ncompounds 0\ndepth 1\nports 2\nconnections 2\nbytes 264\n"},
    {"LS", "error: LS: no such command; help lists them\n"},
    {"prots", "error: prots: no such command; did you mean \"ports\"?\n"},
    {"sl", "error: sl: no such command; did you mean \"ls\"?\n"},
    {"ls 'Top", "error: ls 'Top: no closing '\n"},
    {"help quit",
     "quit\n    Ends the session; so does the end of the input. On a terminal, edits that were "
     "not\n"
     "    saved are told first, and the next `quit` or Control-D ends. Control-C drops the\n"
     "    line that is typed, or stops a script before its next line.\n"},
    {"help find",
     "find PATH\n    What a path names. `node` or `compound`, `input`, `output`, each that applies "
     "on a line,\n    or `nothing`.\n    Example: find Top.NG_gate.age\n"},
    {"help no", "error: help: no: no such command; help lists them\n"},
};

TEST(Console, PrintsWhatACommandAsksFor)
{
    const TestDocument document(kElements);
    for (const auto& c : kCommands) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(c.output, document.run(c.line));
    }
}

TEST(Console, ListsTheCommandsByGroup)
{
    const TestDocument document("");
    const std::string text = document.run("help");
    EXPECT_EQ(0U, text.find("The session\n  help            What the commands do.\n"));
    EXPECT_NE(std::string::npos,
              text.find("\n\nMore\n  ls              The nodes inside a compound.\n"
                        "  tree            A node and everything below it.\n"));
    EXPECT_NE(std::string::npos, text.find("\n\n`help COMMAND` tells more of one.\n"));
}

TEST(Json, ReplacesWhatIsNoUtf8)
{
    const TestDocument document("<n name='n' type='t'/>");
    document.opened->findNodeFromPath("Top.n")->setName("a\xC3");
    EXPECT_EQ("[{\"name\":\"a\xEF\xBF\xBD\",\"type\":\"n\",\"compound\":false}]\n",
              document.run("ls --json"));
}

TEST(Console, TellsFailureAndQuit)
{
    const TestDocument document(kElements);
    std::ostringstream out;
    shading::Session session = sessionOn(*document.opened);
    shading::Console shell(session, out, out);
    EXPECT_FALSE(shell.run("ls")); // Not in the table yet.
    shell.add(shading::viewCommands());
    EXPECT_TRUE(shell.run("ls"));
    EXPECT_FALSE(shell.run("ls Top.no"));
    EXPECT_FALSE(shell.run(std::string("ls\0Top", 6)));
    EXPECT_NE(std::string::npos, out.str().find("error: ls: a byte of value 0 follows\n"));
    EXPECT_FALSE(shell.hasQuit());
    EXPECT_TRUE(shell.run("quit"));
    EXPECT_TRUE(shell.hasQuit());
}

TEST(Console, CheckTellsWhatASaveWouldRefuseAndWhatTheFormatLacks)
{
    const TestDocument document("<m name='M' type='material'/><n name='a' type='t'/><look "
                                "name='L'><materialassign name='x' "
                                "material='M'/><materialassign name='y' "
                                "material='N'/></look><nodegraph name='g'><nodegraph "
                                "name='h'/></nodegraph>");
    const std::string nested = "Top.g.h: note: a graph inside a graph: the format has them, but "
                               "its own library follows no "
                               "reference to one\n";
    EXPECT_EQ("Top.L.y: no material \"N\"\n" + nested, document.run("check"));
    const std::string gone =
        "Top.M: it is gone from there, and materialassign \"x\" still names it\n";
    EXPECT_EQ(gone + nested + "error: save: " + gone,
              document.run("delete Top.M\ncheck\nsave --dry-run F\nundo\nsave --dry-run F")
                  .substr(0, gone.size() * 2 + nested.size() + sizeof "error: save: " - 1));
    EXPECT_FALSE(std::filesystem::exists("F"));
}

TEST(Console, NotesAGraphInsideAGraphOnce)
{
    const TestDocument document("<nodegraph name='g'><n name='a' type='t'/><n name='b' "
                                "type='t'/></nodegraph>");
    EXPECT_EQ("note: Top.g.h: a graph inside a graph: the format has them, but its own library "
              "follows no reference to one\nTop.g.h\nTop.g.k\n",
              document.run("collapse Top.g h a\ncollapse Top.g k b"));
}

const struct {
    const char* line;
    const char* words; ///< Each in brackets; null: a problem.
} kLines[] = {
    {" a\tb ", "[a][b]"},      {"'a b'c \"\"", "[a bc][]"}, {"\"a\\\"b\" 'a\\b'", "[a\"b][a\\b]"},
    {"a\\ b#c #d", "[a b#c]"}, {"a \"b", nullptr},          {"a \\", nullptr},
};

TEST(CommandLine, SplitsIntoWords)
{
    for (const auto& c : kLines) {
        SCOPED_TRACE(c.line);
        std::vector<std::string> words;
        std::string problem;
        ASSERT_EQ(c.words != nullptr, shading::splitCommand(c.line, words, problem));
        EXPECT_EQ(c.words == nullptr, !problem.empty());
        std::string text;
        for (const std::string& word : words)
            text += "[" + word + "]";
        EXPECT_EQ(c.words ? c.words : text, text);
    }
}

TEST(Host, APortIsDisconnectedBeforeItGoes)
{
    const TestDocument document(kElements);
    const ZEL::AddRefWrapper<ZEL::Node> graph = document.opened->findNodeFromPath("Top.g");
    const ZEL::AddRefWrapper<ZEL::Compound> compound = graph->getAsCompound();
    const ZEL::AddRefWrapper<ZEL::Node> node = compound->nodes()["x"];
    EXPECT_EQ(0, compound->deleteCompoundPort(compound->innerInputs()["x"]));
    EXPECT_FALSE(node->inputs()["i"]->isConnected());
    EXPECT_TRUE(node->outputs().remove(node->outputs()["out"]));
    EXPECT_FALSE(compound->innerOutputs()["o"]->isConnected());
}

TEST(Host, AnInnerPortHasTheValueOfItsMirror)
{
    const TestDocument document(
        "<nodegraph name='g'><input name='x' type='t' value='7'/></nodegraph>");
    const ZEL::AddRefWrapper<ZEL::Node> graph = document.opened->findNodeFromPath("Top.g");
    const ZEL::AddRefWrapper<ZEL::Port> inner = graph->getAsCompound()->innerInputs()["x"];
    EXPECT_STREQ("7", inner->getPortDefaultValue());
    graph->inputs()["x"]->setPortDefaultValue("8");
    EXPECT_STREQ("8", inner->getPortDefaultValue());
}

TEST(Host, ANewCompoundIsOneOfTheHost)
{
    const TestDocument document("");
    const ZEL::AddRefWrapper<ZEL::Compound> top = document.opened->getRootNode()->getAsCompound();
    const ZEL::AddRefWrapper<ZEL::Compound> made = top->createNewCompound("made");
    EXPECT_EQ("made nodegraph compound\n", document.run("ls"));
    EXPECT_TRUE(dynamic_cast<shading::Node*>(made->getAsNode().get()));
    EXPECT_EQ(document.opened.get(), made->getAsNode()->getContainer());
    EXPECT_TRUE(made->createNewCompound("below"));
}

} // namespace
