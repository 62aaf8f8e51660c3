#include "document/document.h"
#include "document/names.h"
#include "draw/zelPicture.h"
#include "saving/save.h"
#include "testDocument.h"

#include <gtest/gtest.h>

namespace {

const char* const kHidden =
    "<x:noise name='foo' type='t'/>\n"
    "<n name='a' type='t'><input name='i' type='t' nodename='foo' value='1'/></n>\n"
    "<nodegraph name='g'><input name='x' type='t' nodename='foo'/><n name='b' type='t'>"
    "<input name='i' type='t' interfacename='x'/></n>\n"
    "<n name='c' type='t'><input name='i' type='t' nodename='y:in'/></n>"
    "<output name='o' type='t' nodename='y:in'/></nodegraph>\n"
    "<n name='d' type='t'><input name='i' type='t' nodegraph='g'/></n>\n"
    "<n name='e' type='t'><input name='i' type='t' nodename='no'/></n>";

std::string savedText(const TestDocument& test)
{
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(shading::saveToBytes(*test.opened, bytes, problems));
    const std::size_t begin = bytes.find('>') + 1;
    return bytes.substr(begin, bytes.rfind('<') - begin);
}

TEST(HiddenSource, IsToldOfAndShown)
{
    const TestDocument test(kHidden);
    EXPECT_EQ(
        "t.mtlx:2: warning: Top.a.i: the network does not show its source (foo): x:noise\n"
        "t.mtlx:3: warning: Top.g.x: the network does not show its source (foo): x:noise\n"
        "t.mtlx:4: warning: Top.g.c.i: the network does not show its source (y:in): a name of "
        "another name space\n"
        "t.mtlx:4: warning: Top.g.o: the network does not show its source (y:in): a name of "
        "another name space\n"
        "t.mtlx:6: warning: Top.e.i: no node \"no\" in Top\n",
        test.messages);
    EXPECT_EQ("(foo) -> Top.a.i\n(foo) -> Top.g.x\n(y:in) -> Top.g.c.i\n(y:in) -> Top.g.o\n"
              "Top.g.o -> Top.d.i\nTop.g.x -> Top.g.b.i\n",
              test.edit("connections"));
    EXPECT_EQ("input i t \"1\" <- (foo)\noutput out t \"\"\n", test.edit("ports Top.a"));
    zelDraw::PictureOptions options;
    options.hiddenSource = shading::hiddenSourceOf;
    const shading::NodePtr root = test.opened->getRootNode();
    const zelDraw::PictureBox picture = zelDraw::makePicture(*root->getAsCompound(), options);
    EXPECT_EQ("(foo)", picture.boxes.back().name);
    EXPECT_EQ(zelDraw::PictureBox::Kind::Stub, picture.boxes.back().kind);
    EXPECT_EQ("Top.g.x", picture.connections[1].targetPath);
}

TEST(HiddenSource, OfAnIncludedFileIsToldOf)
{
    const TestDocument test("<xi:include href='other.mtlx'/>\n<n name='a' type='t'><input name='i' "
                            "type='t' nodegraph='G' output='o'/></n>");
    EXPECT_EQ(
        "t.mtlx:2: warning: Top.a.i: the network does not show its source (G.o): it may be in "
        "an included file\n",
        test.messages);
    // A graph of the document is named from everywhere.
    EXPECT_EQ("Top.h\n", test.edit("collapse Top h a"));
    EXPECT_EQ("(G.o) -> Top.h.a.i\n", test.edit("connections"));
    EXPECT_EQ("<xi:include href='other.mtlx'/>\n<nodegraph name='h'>\n  <n name='a' "
              "type='t'><input name='i' type='t' nodegraph='G' output='o'/></n>\n</nodegraph>",
              savedText(test));
    EXPECT_EQ("error: rename: Top.G: the name is taken: input \"i\" refers to it\n",
              test.edit("rename Top.h G"));
}

TEST(HiddenSource, IsNeitherLostNorAnotherOne)
{
    const char* const left = ", which the network does not show and which stays behind\n";
    const char* const stays = ", which the network does not show\n";
    const struct {
        const char* command;
        std::string refusal;
    } cases[] = {
        {"collapse Top h a", std::string("collapse: Top: a.i reads from (foo)") + left},
        {"collapse Top h g d", std::string("collapse: Top: g.x reads from (foo)") + left},
        {"collapse Top.g h c", std::string("collapse: Top.g: c.i reads from (y:in)") + left},
        {"expand Top.g", std::string("expand: Top.g: Top.g.x hands on (foo)") + stays},
        {"port delete Top.g x", std::string("port: Top.g.x: Top.g.x hands on (foo)") + stays},
        {"port delete Top.g o", std::string("port: Top.g.o: Top.g.o hands on (y:in)") + stays},
        {"rename Top.d foo", "rename: Top.foo: the name is taken: x:noise \"foo\" has it\n"},
        {"port rename Top.g x no", ""},
    };
    const TestDocument test(kHidden);
    for (const auto& c : cases)
        EXPECT_EQ(c.refusal.empty() ? "" : "error: " + c.refusal, test.edit(c.command));
}

TEST(HiddenSource, StaysBehindAValueAndUnderAnotherSource)
{
    const TestDocument test(kHidden);
    EXPECT_EQ("", test.edit("set Top.a.i 2\nset Top.a.i 1"));
    EXPECT_EQ(kHidden, savedText(test));
    EXPECT_EQ("", test.edit("set Top.a.i 2\nrename Top.g h"));
    std::string after = kHidden;
    after.replace(after.find(" value='1'"), 10, "");
    after.replace(after.find("'g'"), 3, "'h'");
    after.replace(after.find("'g'"), 3, "'h'");
    EXPECT_EQ(after, savedText(test));
    EXPECT_EQ("", test.edit("connect Top.d.out Top.a.i"));
    EXPECT_EQ("input i t \"2\" <- Top.d.out\noutput out t \"\"\n", test.edit("ports Top.a"));
    EXPECT_EQ("", test.edit("disconnect-all Top.a.i"));
    EXPECT_EQ(after, savedText(test));
}

} // namespace
