#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

namespace {

struct MappingCase {
    const char* name;
    const char* elements;
    const char* commands;
    const char* output;
    const char* messages;
};

const MappingCase kMappings[] = {
    {"a node: type name, inputs in order with values, out with its type",
     "<mix name='m' type='color3'><input name='fg' type='color3' value='1, 0, 0'/>"
     "<input name='a' type='float'/></mix>",
     "ls\nports Top.m",
     "m mix\ninput fg color3 \"1, 0, 0\"\ninput a float \"\"\noutput out color3 \"\"\n", ""},
    {"what is no part of the network makes no node",
     "<!-- c --><xi:include href='x'/><nodedef name='d'><input name='i' type='float'/></nodedef>"
     "<implementation name='i' nodedef='d'/><look name='l'/><typedef name='t'/><token name='k'/>"
     "<nodegraph name='g'><backdrop name='b'/><token name='k'/></nodegraph><mine name='n' "
     "type='t'/>",
     "ls\nls Top.g", "g nodegraph compound\nn mine\n", ""},
    {"nodename means a sibling, also one further down",
     "<a name='x' type='t'><input name='i' type='t' nodename='y'/></a><a name='y' type='t'/>",
     "connections", "Top.y.out -> Top.x.i\n", ""},
    {"a multioutput node has the outputs that are referred to, typed by the first that refers",
     "<s name='s' type='multioutput'/><a name='x' type='t'><input name='i' type='u' nodename='s' "
     "output='b'/>"
     "<input name='j' type='v' nodename='s' output='a'/><input name='k' type='w' nodename='s' "
     "output='b'/></a>",
     "ports Top.s", "output b u \"\" -> Top.x.i, Top.x.k\noutput a v \"\" -> Top.x.j\n", ""},
    {"listed outputs come first; a reference without output means the first of them",
     "<s name='s' type='multioutput'><output name='p' type='u'/><output name='q' type='v'/></s>"
     "<a name='x' type='t'><input name='i' type='u' nodename='s'/>"
     "<input name='j' type='w' nodename='s' output='r'/></a>",
     "ports Top.s", "output p u \"\" -> Top.x.i\noutput q v \"\"\noutput r w \"\" -> Top.x.j\n",
     ""},
    {"a node with a type has out and the others that are named",
     "<s name='s' type='t'><output name='out' type='t'/></s><a name='x' type='t'>"
     "<input name='i' type='u' nodename='s' output='alpha'/>"
     "<input name='j' type='t' nodename='s' output='out'/></a>",
     "ports Top.s", "output out t \"\" -> Top.x.j\noutput alpha u \"\" -> Top.x.i\n", ""},
    {"a graph: ports by declaration, first output by default, nodename works too",
     "<nodegraph name='g'><input name='i' type='t' value='7'/><n name='n' type='t'>"
     "<input name='a' type='t' interfacename='i'/></n><output name='o' type='t' nodename='n'/>"
     "<output name='p' type='t' nodename='n'/></nodegraph><a name='x' type='t'>"
     "<input name='i' type='t' nodegraph='g'/><input name='j' type='t' nodename='g' "
     "output='p'/></a>",
     "ports Top.g\nconnections",
     "input i t \"7\" -> Top.g.n.a\noutput o t \"\" <- Top.g.n.out -> Top.x.i\n"
     "output p t \"\" <- Top.g.n.out -> Top.x.j\n"
     "Top.g.i -> Top.g.n.a\nTop.g.n.out -> Top.g.o\nTop.g.n.out -> Top.g.p\n"
     "Top.g.o -> Top.x.i\nTop.g.p -> Top.x.j\n",
     ""},
    {"an interface that is not declared is made at first use with the type of the user",
     "<nodegraph name='g'><input name='z' type='t'/><n name='n' type='t'>"
     "<input name='a' type='u' interfacename='w'/><input name='b' type='v' "
     "interfacename='w'/></n></nodegraph>"
     "<n name='m' type='t'><input name='a' type='s' interfacename='top'/></n>",
     "ports Top.g\nports Top",
     "input z t \"\"\ninput w u \"\" -> Top.g.n.a, Top.g.n.b\ninput top s \"\" -> Top.m.a\n", ""},
    {"nested graphs: an interface is that of the graph around; a graph's input is fed from outside",
     "<nodegraph name='g'><input name='a' type='t'/><n name='n' type='t'/><nodegraph name='h'>"
     "<input name='a' type='t' interfacename='a'/><input name='b' type='t' nodename='n'/>"
     "<m name='m' type='t'><input name='i' type='t' interfacename='a'/></m>"
     "<output name='o' type='t' interfacename='b'/></nodegraph>"
     "<output name='o' type='t' nodegraph='h' output='o'/></nodegraph>",
     "connections",
     "Top.g.a -> Top.g.h.a\nTop.g.h.a -> Top.g.h.m.i\nTop.g.h.b -> Top.g.h.o\nTop.g.h.o -> "
     "Top.g.o\n"
     "Top.g.n.out -> Top.g.h.b\n",
     ""},
    {"a graph is looked up beside the node, then in the document",
     "<nodegraph name='k'><output name='o' type='t'/></nodegraph><nodegraph name='g'><n name='n' "
     "type='t'>"
     "<input name='i' type='t' nodegraph='k'/></n><n name='p' type='t'><input name='i' type='t' "
     "nodegraph='l'/></n>"
     "<nodegraph name='l'><output name='o' type='t'/></nodegraph></nodegraph>"
     "<nodegraph name='l'><output name='o' type='t'/></nodegraph>",
     "connections", "Top.g.l.o -> Top.g.p.i\nTop.k.o -> Top.g.n.i\n", ""},
    {"ports of the document are those of Top",
     "<input name='i' type='t' value='1'/><output name='o' type='t' nodename='n'/>"
     "<n name='n' type='t'><input name='a' type='t' interfacename='i'/></n>",
     "ports Top\nfind Top.i\nfind Top.o",
     "input i t \"1\" -> Top.n.a\noutput o t \"\" <- Top.n.out\ninput\noutput\n", ""},
    {"a reference that names nothing is left out, the rest opens",
     "\n<n name='n' type='t'><input name='a' type='t' nodename='no'/>\n<input name='b' type='t' "
     "nodename='m'/></n>"
     "\n<m name='m' type='t'><input name='a' type='t' nodegraph='n'/>\n<input name='b' type='t' "
     "output='o'/></m>"
     "\n<nodegraph name='g'><output name='o' type='t' nodegraph='no'/><q name='q' type='t'>"
     "<input name='a' type='t' nodename='n'/></q></nodegraph>"
     "\n<n name='p' type='multioutput'><input name='a' type='t' nodegraph='g' output='x'/></n>"
     "\n<n name='r' type='t'><input name='a' type='t' nodename='p'/></n><input name='i' type='t' "
     "nodename='n'/>",
     "connections", "Top.m.out -> Top.n.b\n",
     "t.mtlx:2: warning: Top.n.a: no node \"no\" in Top\n"
     "t.mtlx:4: warning: Top.m.a: no nodegraph \"n\" in Top\n"
     "t.mtlx:5: warning: Top.m.b: no output \"o\" in Top\n"
     "t.mtlx:6: warning: Top.g.o: no nodegraph \"no\" in Top.g or Top\n"
     "t.mtlx:6: warning: Top.g.q.a: no node \"n\" in Top.g\n"
     "t.mtlx:7: warning: Top.p.a: Top.g has no output \"x\"\n"
     "t.mtlx:8: warning: Top.r.a: does not say which output of Top.p\n"
     "t.mtlx:8: warning: Top.i: an input of the document cannot have a source\n"},
    {"names that cause trouble are kept and reported, missing ones made up",
     "\n<n name='n' type='t'/><n name='n' type='u'/>\n<n name='a.b' type='t'/>\n<n type='t'/><n "
     "name='' type='t'/>"
     "<n name='n2' type='t'/>\n<m name='m' type='t'><input type='t' nodename='n'/><input "
     "name='input2' type='t'/>"
     "<input name='input2' type='t'/></m>",
     "ls\nports Top.m",
     "n n\nn n\na.b n\nn3 n\nn4 n\nn2 n\nm m\n"
     "input input t \"\" <- Top.n.out\ninput input2 t \"\"\ninput input2 t \"\"\noutput out t "
     "\"\"\n",
     "t.mtlx:2: warning: Top.n: the name of an earlier sibling: paths and references may mean "
     "that\n"
     "t.mtlx:3: warning: Top.a.b: no path reaches a name with a \".\" in it\n"
     "t.mtlx:4: warning: Top.n3: no name in the document: this one was made up\n"
     "t.mtlx:4: warning: Top.n4: no name in the document: this one was made up\n"
     "t.mtlx:5: warning: Top.m.input: no name in the document: this one was made up\n"
     "t.mtlx:5: warning: Top.m.input2: the name of an earlier sibling: paths and references may "
     "mean that\n"},
    {"types that are missing, sources that are too many",
     "\n<n name='n'><input name='a'/></n>\n<m name='m' type='t'><input name='a' type='t' "
     "nodename='n' interfacename='i'/>"
     "<output name='o' type='t' nodename='n'/></m>\n<n name='z'/>",
     "ports Top.n\nports Top.m",
     "input a none \"\"\ninput a t \"\" <- Top.i\noutput out t \"\"\noutput o t \"\"\n",
     "t.mtlx:2: warning: Top.n: no type: it has no output of its own\n"
     "t.mtlx:2: warning: Top.n.a: no type: taken as \"none\"\n"
     "t.mtlx:3: warning: Top.m.o: an output of a plain node has no source\n"
     "t.mtlx:3: warning: Top.m.a: several sources: interfacename is preferred to nodegraph, "
     "nodegraph to nodename\n"
     "t.mtlx:4: warning: Top.z: no type: it has no output of its own\n"},
};

TEST(Reader, MapsDocuments)
{
    for (const MappingCase& c : kMappings) {
        SCOPED_TRACE(c.name);
        const TestDocument document(c.elements);
        EXPECT_EQ(c.messages, document.messages);
        ASSERT_TRUE(document.opened);
        EXPECT_EQ(c.output, document.run(c.commands));
    }
}

TEST(Reader, StrictMakesWarningsErrors)
{
    const char* const elements =
        "\n  <n name='n' type='t'><input name='a' type='t' nodename='no'/></n>";
    const TestDocument document(elements, true);
    EXPECT_EQ("t.mtlx:2:24: error: Top.n.a: no node \"no\" in Top\n", document.messages);
    EXPECT_FALSE(document.opened);
    EXPECT_TRUE(TestDocument("<n name='n' type='t'/>", true).opened);
}

TEST(Reader, ColumnsCountCharactersAlsoInLongLines)
{
    const char* const bad = "<n name='n' type='t'><input name='a' type='t' nodename='no'/></n>";
    std::string wide;
    for (int i = 0; i < 5000; ++i)
        wide += "\xC3\xA4";
    const TestDocument document("\n<!--" + wide + "\n" + wide + "-->" + bad, true);
    EXPECT_EQ("t.mtlx:3:5025: error: Top.n.a: no node \"no\" in Top\n", document.messages);
}

TEST(Reader, PortsOfOneTypeShareIt)
{
    const TestDocument document("<n name='n' type='t'><input name='a' type='t'/></n>");
    const ZEL::AddRefWrapper<ZEL::Node> node = document.opened->findNodeFromPath("Top.n");
    EXPECT_EQ(node->inputs()[0]->getDataType(), node->outputs()[0]->getDataType());
    EXPECT_EQ(document.opened->dataType("t"), node->outputs()[0]->getDataType());
}

const struct {
    const char* name;
    std::string text;
    const char* result;
} kFiles[] = {
    {"empty", "", "t.mtlx:1:1: error: not XML: no element\n"},
    {"no XML", "\n shader", "t.mtlx:2:2: error: not XML: text outside the document element\n"},
    {"another document", "<?xml version='1.0'?>\n <html/>",
     "t.mtlx:2:2: error: not a materialx document: the document element is \"html\"\n"},
    {"cut off", "<materialx>\n<a name='x",
     "t.mtlx:2:10: error: not XML: Error parsing element attribute, where the file ends\n"},
    {"swapped tags", "<materialx>\n<a></materialx></a>",
     "t.mtlx:2:6: error: not XML: Start-end tags mismatch\n"},
    {"two documents", "<materialx/>\n<materialx/>",
     "t.mtlx:2:1: error: not XML: a second document element\n"},
    {"a byte 0", std::string("<materialx/>\n\0", 14),
     "t.mtlx:2:1: error: not XML: a byte of value 0\n"},
    {"wrong bytes", "<materialx>\n\xC3\xA9 \xE9</materialx>",
     "t.mtlx:2:3: error: not XML: the bytes that follow are not UTF-8\n"},
    {"unknown encoding", "<?xml version='1.0' encoding='x-none'?><materialx/>",
     "t.mtlx:1:1: error: not XML: unknown encoding \"x-none\"\n"},
    {"byte order mark", "\xEF\xBB\xBF<materialx/>", "opened"},
    {"declared encoding", "<?xml version='1.0' encoding='ISO-8859-1'?><materialx a='\xE9'/>",
     "opened"},
    {"two bytes a character", std::string("\xFF\xFE<\0m\0a\0t\0e\0r\0i\0a\0l\0x\0/\0>\0", 26),
     "opened"},
};

TEST(XmlSource, SaysWhatIsWrongWithAFileAndWhere)
{
    for (const auto& c : kFiles) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.result, openText(c.text));
    }
}

TEST(XmlSource, RefusesDeepNestingWithoutExhaustingTheStack)
{
    std::string text;
    for (int i = 0; i < 100000; ++i)
        text += "<nodegraph name='g'>\n";
    const std::string start = "<materialx>\n" + text;
    for (int i = 0; i < 100000; ++i)
        text += "</nodegraph>";
    EXPECT_EQ("t.mtlx:513:1: error: nested deeper than 512 elements\n",
              openText("<materialx>\n" + text + "</materialx>"));
    EXPECT_NE("opened", openText(start));
}

TEST(XmlSource, NamesTheFileThatCannotBeRead)
{
    for (const char* const path : {"/nowhere/a.mtlx", "/"}) {
        std::vector<shading::Message> messages;
        EXPECT_FALSE(shading::openDocument(path, {}, messages));
        ASSERT_EQ(1U, messages.size());
        EXPECT_EQ(0U, shading::messageText(messages[0])
                          .find(std::string(path) + ":1:1: error: cannot be read: "));
    }
}

} // namespace
