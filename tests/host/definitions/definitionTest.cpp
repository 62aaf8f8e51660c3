#include "document/node.h"
#include "testLibrary.h"

#include <gtest/gtest.h>

namespace {

const char* const kDefinitions =
    "<nodedef name='ND_m_f' node='m'><input name='p' type='f' value='1'/><input name='q' type='f' "
    "value='2'/><output name='out' type='f'/></nodedef>"
    "<nodedef name='ND_m_c' node='m'><input name='p' type='c' value='1,1'/><input name='q' "
    "type='c'/><output name='out' type='c'/></nodedef>"
    "<nodedef name='ND_m_cf' node='m'><input name='p' type='c'/><input name='q' type='f' "
    "value='7'/><output name='out' type='c'/></nodedef>"
    "<nodedef name='ND_s_c' node='s'><input name='in' type='c'/><output name='r' type='f'/>"
    "<output name='g' type='f'/></nodedef>"
    "<nodedef name='ND_s_v' node='s'><input name='in' type='v'/><output name='x' type='f'/>"
    "<output name='y' type='f'/></nodedef>"
    "<nodedef name='ND_w_1' node='w' version='1'><input name='old' type='f'/>"
    "<output name='out' type='f'/></nodedef>"
    "<nodedef name='ND_w_2' node='w' version='2' isdefaultversion='true'><input name='new' "
    "type='f'/><output name='out' type='f'/></nodedef>"
    "<nodedef name='ND_n' node='n'><output name='named' type='f'/></nodedef>";

const struct {
    const char* name;
    const char* elements; ///< The node in question is `n`.
    const char* ports;
} kCases[] = {
    {"nothing given: all of the definition, with its values", "<m name='n' type='f'/>",
     "input p f \"1\"\ninput q f \"2\"\noutput out f \"\"\n"},
    {"definition order, then what the document adds; its values stay",
     "<m name='n' type='f'><input name='z' type='t' value='5'/><input name='q' type='f' "
     "value='9'/><output name='more' type='t'/></m>",
     "input p f \"1\"\ninput q f \"9\"\ninput z t \"5\"\noutput out f \"\"\noutput more t \"\"\n"},
    {"told apart by the type of the output", "<m name='n' type='c'/>",
     "input p c \"1,1\"\ninput q c \"\"\noutput out c \"\"\n"},
    {"told apart by the type of an input",
     "<m name='n' type='c'><input name='q' type='f' nodename='m'/></m><k name='m' type='f'/>",
     "input p c \"\"\ninput q f \"7\" <- Top.m.out\noutput out c \"\"\n"},
    {"no definition fits: what the document says",
     "<m name='n' type='c'><input name='p' type='f'/></m>", "input p f \"\"\noutput out c \"\"\n"},
    {"several outputs, told apart by an input",
     "<s name='n' type='multioutput'><input name='in' type='v'/></s>",
     "input in v \"\"\noutput x f \"\"\noutput y f \"\"\n"},
    {"several outputs, told apart by the outputs that are referred to",
     "<s name='n' type='multioutput'/><k name='m' type='f'><input name='i' type='f' nodename='n' "
     "output='y'/></k>",
     "input in v \"\"\noutput x f \"\"\noutput y f \"\" -> Top.m.i\n"},
    {"a reference without an output still means the first that the document lists",
     "<s name='n' type='multioutput'><output name='g' type='f'/></s><k name='m' type='f'>"
     "<input name='i' type='f' nodename='n'/></k>",
     "input in c \"\"\noutput r f \"\"\noutput g f \"\" -> Top.m.i\n"},
    {"the default version", "<w name='n' type='f'/>", "input new f \"\"\noutput out f \"\"\n"},
    {"the version asked for", "<w name='n' type='f' version='1'/>",
     "input old f \"\"\noutput out f \"\"\n"},
    {"a version that is not there", "<w name='n' type='f' version='3'/>", "output out f \"\"\n"},
    {"the definition asked for", "<w name='n' type='f' nodedef='ND_w_1'/>",
     "input old f \"\"\noutput out f \"\"\n"},
    {"a single output of another name comes before the document's", "<n name='n' type='f'/>",
     "output named f \"\"\noutput out f \"\"\n"},
};

TEST(Definition, GivesANodeItsPorts)
{
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        ZEL::Runtime runtime;
        ASSERT_EQ("", readInto(runtime, kDefinitions));
        const auto document = openWith(&runtime, c.elements);
        EXPECT_EQ(c.ports, runIn(*document, "ports Top.n"));
    }
}

TEST(Definition, IsNoneWithoutAnOutput)
{
    ZEL::Runtime runtime;
    shading::DefinitionRecord record;
    record.name = "ND_b";
    record.inputs = {{"i", "f", ""}};
    ZEL::AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew("foreign");
    library->addNode(shading::Definition::createNew("b", record));
    runtime.setNodeLibrary(library);
    const auto document = openWith(&runtime, "<b name='n' type='f'/>");
    EXPECT_EQ("output out f \"\"\n", runIn(*document, "ports Top.n"));
    EXPECT_FALSE(document->definitions().named("ND_b"));
    EXPECT_NE("", runIn(*document, "create ND_b x"));
}

TEST(Definition, TellsWhatStandsInTheDocument)
{
    ZEL::Runtime runtime;
    readInto(runtime, kDefinitions);
    const auto document = openWith(&runtime, "<m name='n' type='f'><input name='q' type='f'/></m>");
    const ZEL::AddRefWrapper<ZEL::Node> found = document->findNodeFromPath("Top.n");
    auto& node = static_cast<shading::Node&>(*found);
    EXPECT_FALSE(node.isInDocument(*found->inputs()["p"]));
    EXPECT_TRUE(node.isInDocument(*found->inputs()["q"]));
    EXPECT_EQ("ND_m_f", node.definition()->record().name);
}

/// Another version of `m` in place of all that the runtime had.
void replaceLibrary(ZEL::Runtime& runtime)
{
    ZEL::AddRefWrapper<ZEL::NodeLibrary> none;
    runtime.setNodeLibrary(none);
    readInto(runtime, "<nodedef name='ND_m_f' node='m'><input name='fresh' type='t' value='3'/>"
                      "<input name='q' type='c' value='8,8'/><output name='extra' type='t'/>"
                      "<output name='out' type='f'/></nodedef>");
}

TEST(Rebuild, BringsNodesUpToChangedDefinitionsAndKeepsTheRest)
{
    ZEL::Runtime runtime;
    readInto(runtime, kDefinitions);
    const auto document = openWith(
        &runtime,
        "<nodegraph name='g'><m name='a' type='f'/><m name='b' type='f'><input name='q' type='f' "
        "value='9'/><input name='p' type='f' nodename='a'/></m></nodegraph>");
    EXPECT_EQ("input p f \"1\"\ninput q f \"2\"\noutput out f \"\" -> Top.g.b.p\n",
              runIn(*document, "ports Top.g.a"));
    replaceLibrary(runtime);
    runtime.forceRebuildCompounds();
    EXPECT_EQ("input fresh t \"3\"\ninput q c \"8,8\"\noutput extra t \"\"\n"
              "output out f \"\" -> Top.g.b.p\n",
              runIn(*document, "ports Top.g.a"));
    EXPECT_EQ("input fresh t \"3\"\ninput q f \"9\"\ninput p f \"1\" <- Top.g.a.out\n"
              "output extra t \"\"\noutput out f \"\"\n",
              runIn(*document, "ports Top.g.b"));
}

TEST(Rebuild, KeepsAValueThatWasSet)
{
    ZEL::Runtime runtime;
    readInto(runtime, kDefinitions);
    const auto document = openWith(&runtime, "<m name='a' type='f'/>");
    document->findNodeFromPath("Top.a")->inputs()["q"]->setPortDefaultValue("4");
    replaceLibrary(runtime);
    runtime.forceRebuildCompounds();
    EXPECT_EQ("input fresh t \"3\"\ninput q c \"4\"\noutput extra t \"\"\noutput out f \"\"\n",
              runIn(*document, "ports Top.a"));
}

} // namespace
