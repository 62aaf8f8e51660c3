#include "document/node.h"
#include "testLibrary.h"
#include "views/libraryReport.h"

#include <gtest/gtest.h>

namespace {

const char* const kDefinitions =
    "<nodedef name='ND_k_c' node='k' nodegroup='ks'><input name='i' type='c' value='0'/>"
    "<output name='out' type='c'/></nodedef>"
    "<nodedef name='ND_k_f' node='k' nodegroup='ks'><output name='out' type='float'/></nodedef>"
    "<nodedef name='ND_v_1' node='v' version='1'><output name='out' type='float'/></nodedef>"
    "<nodedef name='ND_v_2' node='v' version='2' isdefaultversion='true'>"
    "<output name='out' type='c'/></nodedef>";

const struct {
    const char* commands;
    const char* output;
} kLibraryCommands[] = {
    {"types", "c\nfloat\nt\n"},
    {"library", "Definitions 0\n  ks 2\n  other 2\n"},
    {"library ks", "ks 2\n  k ND_k_c (i c) -> (out c)\n  k ND_k_f () -> (out float)\n"},
    {"library no", "error: library: no: no such library\n"},
    {"runtimes", "no runtimes\n"},
    {"create k n", "Top.n ND_k_f\n"},
    {"create v n", "Top.n ND_v_2\n"},
    {"create ND_k_c n Top.g\nports Top.g.n\nls Top.g",
     "Top.g.n ND_k_c\ninput i c \"0\"\noutput out c \"\"\nx x\nn k\n"},
    {"create k n --type c", "Top.n ND_k_c\n"},
    {"create --type float ND_k_f n", "Top.n ND_k_f\n"},
    {"create v n --type float", "Top.n ND_v_1\n"},
    {"create k n --type t", "error: create: k: no definition of it makes t\n"},
    {"create k n --type", "error: create: --type: needs a data type\n"},
    {"create v n\nattribute Top.n version 3",
     "Top.n ND_v_2\nerror: attribute: Top.n: version: no definition that fits it has that "
     "version\n"},
    {"create nodegraph h Top.g\nls Top.g.h\nls Top.g\nundo\nhistory",
     "note: Top.g.h: a graph inside a graph: the format has them, but its own library follows no "
     "reference to one\nTop.g.h nodegraph\nx x\nh nodegraph compound\nundo: Create h\n1 undone: "
     "Create h\n"},
    {"create nodegraph x Top.g", "error: create: Top.g.x: the name is taken\n"},
    {"create nodegraph h --type c",
     "error: create: nodegraph: it makes what is inside, and no type of its own\n"},
    {"create k n\ncreate k m\nundo\nls\nredo\nls",
     "Top.n ND_k_f\nTop.m ND_k_f\nundo: Create m\ng nodegraph compound\nn k\n"
     "redo: Create m\ng nodegraph compound\nn k\nm k\n"},
    {"create k n\nrebuild\nundo", "Top.n ND_k_f\nundo: Create n\n"},
    {"create no n", "error: create: no: no definition of that name or node type\n"},
    {"create k g", "error: create: Top.g: the name is taken\n"},
    {"create k a.b", "error: create: Top: no path reaches a name with a \".\" in it\n"},
    {"create k ''", "error: create: Top: a name cannot be empty\n"},
    {"create k n Top.no", "error: create: Top.no: no such node\n"},
    {"create k n Top.g.x", "error: create: Top.g.x: not a compound\n"},
    {"rebuild", ""},
};

TEST(LibraryCommands, PrintAndMakeWhatTheyAreAskedFor)
{
    for (const auto& c : kLibraryCommands) {
        SCOPED_TRACE(c.commands);
        ZEL::Runtime runtime;
        ASSERT_EQ("", readInto(runtime, kDefinitions));
        const auto document =
            openWith(&runtime, "<nodegraph name='g'><x name='x' type='t'/></nodegraph>");
        EXPECT_EQ(c.output, runIn(*document, c.commands));
    }
}

TEST(LibraryCommands, AVersionMayGiveANodeAnotherDefinition)
{
    ZEL::Runtime runtime;
    ASSERT_EQ("", readInto(runtime, "<nodedef name='ND_w_1' node='w' version='1'><input name='i' "
                                    "type='c' value='1'/><output name='out' type='c'/></nodedef>"
                                    "<nodedef name='ND_w_2' node='w' version='2' "
                                    "isdefaultversion='true'><input name='j' type='c' value='2'/>"
                                    "<output name='out' type='c'/></nodedef>"));
    const auto document = openWith(&runtime, "<w name='n' type='c'/>");
    EXPECT_EQ("input i c \"1\"\noutput out c \"\"\nundo: Set version of n to \"1\"\n"
              "input j c \"2\"\noutput out c \"\"\n",
              runIn(*document, "attribute Top.n version 1\nports Top.n\nundo\nports Top.n"));
}

TEST(LibraryCommands, ARebuildIsUndoneAndRedone)
{
    ZEL::Runtime runtime;
    const auto document = openWith(&runtime, "<k name='n' type='c'><input name='i' type='c' "
                                             "value='1'/></k>");
    ASSERT_EQ("", readInto(runtime, "<nodedef name='ND_k_c' node='k' nodegroup='ks'>"
                                    "<input name='j' type='c' value='2'/>"
                                    "<input name='i' type='c' value='0'/>"
                                    "<output name='out' type='c'/></nodedef>"));
    const char* const before = "input i c \"1\"\noutput out c \"\"\n";
    const char* const after = "input j c \"2\"\ninput i c \"1\"\noutput out c \"\"\n";
    EXPECT_EQ(std::string(before) + after + "undo: Rebuild\nredo: Rebuild\n" + after +
                  "undo: Rebuild\n" + before,
              runIn(*document, "ports Top.n\nrebuild\nports Top.n\nundo\nredo\nports Top.n\n"
                               "undo\nports Top.n"));
    const ZEL::AddRefWrapper<ZEL::Node> node = document->findNodeFromPath("Top.n");
    EXPECT_FALSE(static_cast<shading::Node&>(*node).definition());
}

TEST(LibraryCommands, RuntimesStandByIndexAsTheRegistryCountsThem)
{
    static ZEL::Runtime a;
    static ZEL::Runtime b;
    a.setName("A");
    b.setName("B");
    ZEL::Host host;
    ZEL::selfRegisterPlugin(
        [](ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info) {
            registrar.registerRuntime(info, &b);
            registrar.registerRuntime(info, &a);
        },
        nullptr);
    EXPECT_EQ("index 0 A\nindex 1 A\nname A\nname B in use\n", shading::runtimesText(host, b));
}

} // namespace
