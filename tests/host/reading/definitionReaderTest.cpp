#include "testLibrary.h"
#include "views/libraryReport.h"

#include <gtest/gtest.h>

namespace {

std::string libraryAfter(const std::string& elements, std::string& messages)
{
    ZEL::Runtime runtime;
    messages = readInto(runtime, elements);
    const std::string types = shading::typesText(runtime);
    return types + shading::libraryText(*runtime.getNodeLibrary(), true);
}

TEST(DefinitionReader, FillsTheTreeAndTheTypes)
{
    std::string messages;
    EXPECT_EQ("t\nu\n"
              "Definitions 0\n"
              "  math 2\n"
              "    a ND_a (i u) -> (out t, more t)\n"
              "    b ND_b () -> (out t)\n"
              "  other 1\n"
              "    c ND_c (x u) -> (out u)\n",
              libraryAfter("<typedef name='t'/>"
                           "<nodedef name='ND_b' node='b' nodegroup='math' type='t'/>"
                           "<nodedef name='ND_a' node='a' nodegroup='math'><input name='i' "
                           "type='u'/><output name='out' type='t'/><output name='more' type='t'/>"
                           "</nodedef><nodedef name='ND_c' node='c'><input name='x' type='u'/>"
                           "<output name='out' type='u'/></nodedef>",
                           messages));
    EXPECT_EQ("", messages);
}

TEST(DefinitionReader, InheritsPortsInPlace)
{
    std::string messages;
    EXPECT_NE(std::string::npos,
              libraryAfter("<nodedef name='ND_2' node='n' inherit='ND_1'><input name='q' type='v'/>"
                           "<input name='i' type='u'/></nodedef><nodedef name='ND_1' node='n'>"
                           "<input name='i' type='t'/><input name='p' type='t'/>"
                           "<output name='o' type='t'/></nodedef>",
                           messages)
                  .find("n ND_2 (i u, p t, q v) -> (o t)\n"));
    EXPECT_EQ("", messages);
}

const struct {
    const char* elements;
    const char* message;
} kMessages[] = {
    {"\n<typedef/>", "d.mtlx:2: warning: typedef without a name: left out\n"},
    {"<nodedef name='d'/>",
     "d.mtlx:1: warning: nodedef \"d\" without a name or a node: left out\n"},
    {"<nodedef node='d'/>", "d.mtlx:1: warning: nodedef \"\" without a name or a node: left out\n"},
    {"<nodedef name='d' node='n'/>", "d.mtlx:1: warning: nodedef \"d\": no output: left out\n"},
    {"<nodedef name='d' node='n' inherit='e'/>\n<nodedef name='e' node='n'><input name='i' "
     "type='t'/></nodedef>",
     "d.mtlx:1: warning: nodedef \"d\": no output: left out\n"
     "d.mtlx:2: warning: nodedef \"e\": no output: left out\n"},
    {"<nodedef name='d' node='n' type='t'/>\n<nodedef name='d' node='n' type='t'/>",
     "d.mtlx:2: warning: nodedef \"d\": the name of an earlier one: left out\n"},
    {"<nodedef name='d' node='n' inherit='e'/>",
     "d.mtlx:1: warning: nodedef \"d\": inherits \"e\", which is not known: left out\n"},
    {"<nodedef name='d' node='n' inherit='d'/>",
     "d.mtlx:1: warning: nodedef \"d\": inherits itself: left out\n"},
    {"<nodedef name='d' node='n'><input name='i'/></nodedef>",
     "d.mtlx:1: warning: nodedef \"d\": input \"i\" without a name or a type: left out\n"},
    {"<nodedef name='ND_k' node='k' type='t'/>", ""},
    {"<nodedef name='ND_k' node='k' type='u'/>",
     "d.mtlx:1: warning: nodedef \"ND_k\": the runtime has another one of that name: left out\n"},
    {"<nodedef name='d' node='n' inherit='ND_k'/>", ""},
};

TEST(DefinitionReader, SaysWhatItLeavesOut)
{
    for (const auto& c : kMessages) {
        SCOPED_TRACE(c.elements);
        ZEL::Runtime runtime;
        ASSERT_EQ("", readInto(runtime, "<nodedef name='ND_k' node='k' type='t'/>"));
        EXPECT_EQ(c.message, readInto(runtime, c.elements));
        EXPECT_EQ(1, shading::DefinitionIndex(runtime).ofNodeType("k").size());
    }
}

TEST(DefinitionReader, LeavesTheRuntimeAloneWhenTheDocumentIsBad)
{
    ZEL::Runtime runtime;
    const TestFile file("<materialx><typedef name='t'/>", "d.mtlx");
    std::vector<shading::Message> messages;
    EXPECT_FALSE(shading::readDefinitions(file.path(), runtime, messages));
    ASSERT_EQ(1U, messages.size());
    EXPECT_TRUE(messages[0].isError);
    EXPECT_EQ(0, runtime.getNumberOfPortDataTypes());
    EXPECT_FALSE(runtime.getNodeLibrary());
}

} // namespace
