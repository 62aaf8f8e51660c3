#include "shadingShell.h"

#include "shadingCommandLine.h"
#include "shadingNode.h"
#include "shadingTestDocument.h"

#include <gtest/gtest.h>

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
    {"ls Top Top", "error: ls: 2 arguments: usage: ls [PATH]\n"},
    {"ports", "error: ports: 0 arguments: usage: ports PATH\n"},
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
    {"LS", "error: LS: no such command; help lists them\n"},
    {"ls 'Top", "error: ls 'Top: no closing '\n"},
    {"help quit", "quit\n    Ends the session; so does the end of the input.\n"},
    {"help no", "error: help: no: no such command\n"},
};

TEST(Shell, PrintsWhatACommandAsksFor)
{
    const TestDocument document(kElements);
    for (const auto& c : kCommands) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(c.output, document.run(c.line));
    }
}

TEST(Shell, TellsFailureAndQuit)
{
    const TestDocument document(kElements);
    std::ostringstream out;
    shading::Shell shell(*document.container, out, out);
    EXPECT_FALSE(shell.run("ls")); // Not in the table yet.
    shell.add(shading::viewCommands());
    EXPECT_TRUE(shell.run("ls"));
    EXPECT_FALSE(shell.run("ls Top.no"));
    EXPECT_FALSE(shell.hasQuit());
    EXPECT_TRUE(shell.run("quit"));
    EXPECT_TRUE(shell.hasQuit());
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
    const ZEL::AddRefWrapper<ZEL::Node> graph = document.container->findNodeFromPath("Top.g");
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
    const ZEL::AddRefWrapper<ZEL::Node> graph = document.container->findNodeFromPath("Top.g");
    const ZEL::AddRefWrapper<ZEL::Port> inner = graph->getAsCompound()->innerInputs()["x"];
    EXPECT_STREQ("7", inner->getPortDefaultValue());
    graph->inputs()["x"]->setPortDefaultValue("8");
    EXPECT_STREQ("8", inner->getPortDefaultValue());
}

TEST(Host, ANewCompoundIsOneOfTheHost)
{
    const TestDocument document("");
    const ZEL::AddRefWrapper<ZEL::Compound> top =
        document.container->getRootNode()->getAsCompound();
    const ZEL::AddRefWrapper<ZEL::Compound> made = top->createNewCompound("made");
    EXPECT_EQ("made nodegraph compound\n", document.run("ls"));
    EXPECT_TRUE(dynamic_cast<shading::Node*>(made->getAsNode().get()));
    EXPECT_EQ(document.container.get(), made->getAsNode()->getContainer());
    EXPECT_TRUE(made->createNewCompound("below"));
}

} // namespace
