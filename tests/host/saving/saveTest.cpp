#include "saving/save.h"

#include "console/console.h"
#include "reading/definitionReader.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

/// Opens a file of those bytes, runs the commands, one a line, and saves. Gives the bytes, or each
/// problem on a line. The definitions are those in the other text.
std::string saved(const std::string& bytes,
                  const std::string& commands = "",
                  const std::string& definitions = "")
{
    ZEL::Runtime runtime;
    std::vector<shading::Message> messages;
    if (!definitions.empty()) {
        const TestFile library(definitions);
        EXPECT_TRUE(shading::readDefinitions(library.path(), runtime, messages));
    }
    const TestFile file(bytes);
    shading::OpenOptions options;
    options.runtime = &runtime;
    const auto document = shading::openDocument(file.path(), options, messages);
    if (!document)
        return shading::messageText(messages.back());
    std::ostringstream out;
    shading::Session session = sessionOn(*document);
    shading::Console shell(session, out, out);
    for (const auto* const table :
         {&shading::viewCommands(), &shading::editCommands(), &shading::libraryCommands()})
        shell.add(*table);
    std::istringstream lines(commands);
    for (std::string line; std::getline(lines, line);)
        EXPECT_TRUE(shell.run(line)) << out.str();
    std::string result;
    std::vector<shading::SaveProblem> problems;
    if (shading::saveToBytes(*document, result, problems))
        return result;
    for (const shading::SaveProblem& problem : problems)
        result += problem.path + ": " + problem.reason + "\n";
    return result;
}

std::string document(const std::string& elements)
{
    return "<materialx version=\"1.39\">" + elements + "</materialx>\n";
}

/// The text of ASCII characters in an encoding of two or four bytes a character.
std::string widened(const std::string& text, std::size_t before, std::size_t behind)
{
    std::string result;
    for (const char c : text)
        result += std::string(before, '\0') + c + std::string(behind, '\0');
    return result;
}

TEST(Save, WhatWasNotEditedHasTheSameBytes)
{
    const std::string body = "<materialx><n name='n' type='t'/></materialx>";
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"line ends", "<materialx>\r\n\t<n name='a'\r\n  type='t' />\r<b/>\r\n</materialx>\r\n"},
        {"spelling of tags", "<materialx\n a = \"1\" b='2'  ><n  name = 'x'\ttype=\"t\"></n ><m/>"
                             "<m  /><m></m></materialx  >"},
        {"quotes and entities", "<materialx><n name='a' type='t'><input name='i' type='string' "
                                "value='&lt;\"&#x41;&apos;&unknown; > \t\n'/></n></materialx>"},
        {"all that XML has", "<?xml version='1.0'?>\n<!DOCTYPE materialx [<!ENTITY e '>]'>"
                             "<!-- > ' --><?p ' > ?>]>\n<!-- <n> --><materialx>\n text <![CDATA[<n>"
                             "]]><?pi <a> ?> &amp; </materialx>\n<!-- end -->\n\n"},
        {"no names, doubled names, no types", "<materialx><add/><add/><add><input/><input/>"
                                              "<output/></add><n name='a'/><n name='a' type='t'/>"
                                              "<nodegraph/><output/><n name='x.y-z'/></materialx>"},
        {"references to nothing and to too much",
         "<materialx><nodegraph name='g'><n name='a' type='t'><input name='i' type='t' "
         "nodename='no'/><input name='j' type='t' nodegraph='no' output='o'/><input name='k' "
         "output='o'/><input name='l' type='t' interfacename='u' nodename='a' value='3'/></n>"
         "<output name='o' type='t' nodename='a' output='more'/><output name='p' "
         "interfacename='v'/></nodegraph><input name='i' type='t' nodename='g'/></materialx>"},
        {"byte order mark", "\xEF\xBB\xBF" + body},
        {"one byte a character",
         "<?xml version='1.0' encoding='latin1'?><materialx><!-- \xE4 --></materialx>"},
        {"two bytes a character", "\xFF\xFE" + widened(body, 0, 1)},
        {"two bytes, no mark", widened(body, 1, 0)},
        {"four bytes a character", std::string("\0\0\xFE\xFF", 4) + widened(body, 3, 0)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.bytes, saved(c.bytes));
    }
}

struct SaveCase {
    const char* name;
    const char* elements;
    const char* commands;
    const char* expected; ///< The elements after it.
};

const SaveCase kSaves[] = {
    {"rename: references and looks follow, the rest stays",
     "\n <n name='a' type='t'/> <!-- a -->\n <n name='b' type='t'>\n  <input  name='i' type='t' "
     "nodename = 'a' />\n </n>\n <look name='l'><materialassign name='m' material='a'/></look>\n",
     "rename Top.a z",
     "\n <n name='z' type='t'/> <!-- a -->\n <n name='b' type='t'>\n  <input  name='i' type='t' "
     "nodename = 'z' />\n </n>\n <look name='l'><materialassign name='m' material='z'/></look>\n"},
    {"disconnect: nothing is left, not even of what would mean nothing",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' nodename='a' "
     "output='out'/><input name='j' type='t' nodename='no'/></n>",
     "delete Top.a", "<n name='b' type='t'><input name='j' type='t' nodename='no'/></n>"},
    {"connect: the value is not written, the element is made where there is none",
     "<n name='a' type='multioutput'><output name='x' type='t'/></n><n name='b' type='t'><input "
     "name='i' type='t' value='7'/></n><output name='o' type='t'/>",
     "connect Top.a.x Top.b.i\nconnect Top.b.out Top.o",
     "<n name='a' type='multioutput'><output name='x' type='t'/></n><n name='b' type='t'><input "
     "name='i' type='t' nodename='a' output='x'/></n><output name='o' type='t' nodename='b'/>"},
    {"disconnect: the value is there again",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' value='7'/></n>",
     "connect Top.a.out Top.b.i\nset Top.b.i 8\ndisconnect-all Top.b.i",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' value='8'/></n>"},
    {"a value and a source in one element: an edit leaves one",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' value='7' "
     "nodename='a'/><input name='j' type='t' value='7' nodename='a'/><input name='k' type='t' "
     "value='7' nodename='a'/></n>",
     "set Top.b.i 8\ndisconnect-all Top.b.j",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' nodename='a'/><input "
     "name='j' type='t' value='7'/><input name='k' type='t' value='7' nodename='a'/></n>"},
    {"a value in place of a reference to nothing",
     "<n name='b' type='t'><input name='i' type='t' nodename='no'/></n>", "set Top.b.i 8",
     "<n name='b' type='t'><input name='i' type='t' value='8'/></n>"},
    {"the comment behind what goes keeps its line",
     "\n <n name='a' type='t'/> <!-- a -->\n <n name='b' type='t'>\n  <input name='i' type='t' "
     "nodename='a'/> <!-- i -->\n </n>\n",
     "delete Top.a", "\n <!-- a -->\n <n name='b' type='t'>\n  <!-- i -->\n </n>\n"},
    {"what else an input says stays",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' nodename='a' "
     "colorspace='c'/><input name='j' type='t' value='1'/><input name='k' type='t'/></n>",
     "delete Top.a\nset Top.b.j ''",
     "<n name='b' type='t'><input name='i' type='t' colorspace='c'/><input name='k' "
     "type='t'/></n>"},
    {"port delete: what the port fed gets its value",
     "<nodegraph name='g'><input name='x' type='t' value='5'/><n name='a' type='t'><input name='i' "
     "type='t' interfacename='x'/></n><nodegraph name='h'><input name='y' type='t' "
     "interfacename='x'/></nodegraph></nodegraph>",
     "port delete Top.g x",
     "<nodegraph name='g'><n name='a' type='t'><input name='i' type='t' value='5'/></n><nodegraph "
     "name='h'><input name='y' type='t' value='5'/></nodegraph></nodegraph>"},
    {"several outputs: no name would mean the first",
     "<n name='a' type='multioutput'><output name='x' type='t'/><output name='out' type='t'/></n>"
     "<n name='b' type='t'><input name='i' type='t'/></n>",
     "connect Top.a.out Top.b.i",
     "<n name='a' type='multioutput'><output name='x' type='t'/><output name='out' type='t'/></n>"
     "<n name='b' type='t'><input name='i' type='t' nodename='a' output='out'/></n>"},
    {"an output that only a reference named is written when the reference goes",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='s' nodename='a' "
     "output='x'/></n>",
     "disconnect Top.a.x Top.b.i",
     "<n name='a' type='t'><output name='x' type='s'/></n><n name='b' type='t'/>"},
    {"collapse: a graph with its interface, indented like the rest",
     "\n  <n name='a' type='t' />\n\n  <n name='b' type='t'>\n    <!-- in -->\n    <input name='i' "
     "type='t' nodename='a' />\n  </n>\n  <output name='o' type='t' nodename='b' />\n",
     "collapse Top g b",
     "\n  <n name='a' type='t' />\n  <nodegraph name='g'>\n    <input name='i' type='t' "
     "nodename='a' />\n    <n name='b' type='t'>\n      <!-- in -->\n      <input name='i' "
     "type='t' interfacename='i' />\n    </n>\n    <output name='out' type='t' nodename='b' />\n  "
     "</nodegraph>\n  <output name='o' type='t' nodename='g' />\n"},
    {"collapse: an output that references made stays one",
     "<n name='a' type='multioutput'/><n name='b' type='t'><input name='i' type='t' nodename='a' "
     "output='x'/></n>",
     "collapse Top g a",
     "<n name='b' type='t'><input name='i' type='t' nodegraph='g'/></n><nodegraph "
     "name='g'><n name='a' type='multioutput'><output name='x' type='t'/></n><output name='x' "
     "type='t' nodename='a' output='x'/></nodegraph>"},
    {"collapse and expand: the nodes stand where they stood",
     "\n  <n name='a' type='t' /> <!-- a -->\n\n  <!-- c -->\n  <n name='b' type='t'>\n    <input "
     "name='i' type='t' nodename='a' />\n  </n>\n  <n name='d' type='t' />\n",
     "collapse Top g a b\nexpand Top.g",
     "\n  <n name='a' type='t' /> <!-- a -->\n\n  <!-- c -->\n  <n name='b' type='t'>\n    <input "
     "name='i' type='t' nodename='a' />\n  </n>\n  <n name='d' type='t' />\n"},
    {"expand: what is no node moves up, inherited attributes go along",
     "\n  <nodegraph name='g' colorspace='c'>\n    <input name='x' type='t' value='5'/>\n    "
     "<!-- about -->\n    <n name='a' type='t'>\n      <input name='i' type='t' "
     "interfacename='x'/>\n    </n>\n    <backdrop name='d' contains='a, b'/>\n    <n name='b' "
     "type='t' colorspace='own'/>\n  </nodegraph>\n",
     "expand Top.g",
     "\n  <!-- about -->\n  <n name='a' type='t' colorspace='c'>\n    <input name='i' type='t' "
     "value='5'/>\n  </n>\n  <n name='b' type='t' colorspace='own'/>\n  <backdrop name='d' "
     "contains='a, b'/>\n"},
    {"expand: what says how a value is taken goes along, also without one",
     "<nodegraph name='g'><input name='x' type='t' value='5' colorspace='c' unit='u' "
     "unittype='v' fileprefix='f'/><input name='y' type='t' defaultgeomprop='P'/><n name='a' "
     "type='t'><input name='i' type='t' interfacename='x'/><input name='j' type='t' colorspace='e' "
     "interfacename='x'/><input name='k' type='t' interfacename='y'/></n></nodegraph>",
     "expand Top.g",
     "<n name='a' type='t'><input name='i' type='t' value='5' colorspace='c' fileprefix='f' "
     "unit='u' unittype='v'/><input name='j' type='t' colorspace='e' value='5' fileprefix='f' "
     "unit='u' unittype='v'/><input name='k' type='t' defaultgeomprop='P'/></n>"},
    {"comments go with their nodes, and no blank line stays",
     "\n  <n name='a' type='t' />\n\n  <!-- graph -->\n\n  <nodegraph name='g'>\n\n    <!-- one "
     "-->\n"
     "    <!-- two -->\n    <n name='b' type='t' /> <!-- b -->\n\n    <!-- of none -->\n\n    <n "
     "name='c' type='t' />\n\n  </nodegraph>\n",
     "expand Top.g",
     "\n  <n name='a' type='t' />\n  <!-- one -->\n  <!-- two -->\n  <n name='b' type='t' /> <!-- "
     "b "
     "-->\n  <n name='c' type='t' />\n\n  <!-- graph -->\n  <!-- of none -->\n"},
    {"a frame has the graph that was made around its nodes",
     "<n name='a' type='t'/><n name='b' type='t'/><backdrop contains='a b,no, a'/>",
     "rename Top.b c\ncollapse Top g a",
     "<n name='c' type='t'/><nodegraph name='g'><n name='a' type='t'/></nodegraph><backdrop "
     "contains='g c,no'/>"},
    {"a frame lets go of what is deleted", "<n name='a' type='t'/><backdrop contains='a,b'/>",
     "delete Top.a", "<backdrop contains='b'/>"},
    {"ports of a graph",
     "<nodegraph name='g'><input name='x' type='t' uiname='X'/><n name='a' type='t'><input "
     "name='i' type='t' interfacename='x'/></n><output name='o' type='t' nodename='a'/>"
     "</nodegraph><n name='b' type='t'><input name='i' type='t' nodegraph='g'/></n>",
     "port rename Top.g x y\nport delete Top.g o\nport add Top.g output p t\nport add Top.g input "
     "z t\nconnect Top.g.a.out Top.g.p",
     "<nodegraph name='g'><input name='y' type='t' uiname='X'/><input name='z' type='t'/><n "
     "name='a' type='t'><input name='i' type='t' interfacename='y'/></n><output name='p' type='t' "
     "nodename='a'/></nodegraph><n name='b' type='t'/>"},
    {"an interface that is not declared stays so",
     "<nodegraph name='g'><n name='a' type='t'><input name='i' type='t' interfacename='x'/></n>"
     "</nodegraph>",
     "rename Top.g h",
     "<nodegraph name='h'><n name='a' type='t'><input name='i' type='t' interfacename='x'/></n>"
     "</nodegraph>"},
    {"a variant names what it named",
     "<n name='a' type='t'/><nodegraph name='g'><output name='o' type='t'/></nodegraph><variantset>"
     "<variant><input name='i' nodegraph='g' output='o'/><input name='j' nodename='a'/><input "
     "name='k' nodename='o'/></variant></variantset>",
     "rename Top.a b\nrename Top.g h\nport rename Top.h o p",
     "<n name='b' type='t'/><nodegraph name='h'><output name='p' type='t'/></nodegraph><variantset>"
     "<variant><input name='i' nodegraph='h' output='p'/><input name='j' nodename='b'/><input "
     "name='k' nodename='o'/></variant></variantset>"},
    {"an interface that gets another name is declared",
     "<nodegraph name='g'><n name='a' type='t'><input name='i' type='t' interfacename='x'/></n>"
     "</nodegraph>",
     "port rename Top.g x y",
     "<nodegraph name='g'><input name='y' type='t'/><n name='a' type='t'><input name='i' type='t' "
     "interfacename='y'/></n></nodegraph>"},
    {"an interface that an edit made is declared, also when nothing feeds it",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' nodename='a'/></n>",
     "collapse Top g b\ndisconnect Top.a.out Top.g.i",
     "<n name='a' type='t'/><nodegraph name='g'><input name='i' type='t'/><n name='b' type='t'>"
     "<input name='i' type='t' interfacename='i'/></n></nodegraph>"},
    {"an interface that is not used any more is declared",
     "<nodegraph name='g'><n name='a' type='t'><input name='i' type='t' interfacename='x'/></n>"
     "</nodegraph>",
     "disconnect Top.g.x Top.g.a.i",
     "<nodegraph name='g'><input name='x' type='t'/><n name='a' type='t'/></nodegraph>"},
    {"names that were made up are written when they would change", "<add type='t'/><add type='t'/>",
     "delete Top.add", "<add name='add2' type='t'/>"},
    {"the graph of the document from inside another one",
     "<nodegraph name='g'><output name='o' type='t'/></nodegraph><nodegraph name='h'><n name='a' "
     "type='t'><input name='i' type='t'/></n></nodegraph>",
     "connect Top.g.o Top.h.a.i",
     "<nodegraph name='g'><output name='o' type='t'/></nodegraph><nodegraph name='h'><n name='a' "
     "type='t'><input name='i' type='t' nodegraph='g'/></n></nodegraph>"},
    {"a collapsed node's value counts when the source of the graph goes",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' value='5'/></n>",
     "connect Top.a.out Top.b.i\ncollapse Top g b\ndelete Top.a",
     "<nodegraph name='g'><input name='i' type='t' value='5'/><n name='b' type='t'><input name='i' "
     "type='t' interfacename='i'/></n></nodegraph>"},
    {"a straight connection that the document had",
     "<nodegraph name='g'><input name='x' type='t'/><output name='o' type='t' interfacename='x'/>"
     "</nodegraph>",
     "port rename Top.g x y",
     "<nodegraph name='g'><input name='y' type='t'/><output name='o' type='t' interfacename='y'/>"
     "</nodegraph>"},
};

TEST(Save, WritesWhatEachEditChanged)
{
    for (const SaveCase& c : kSaves) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(document(c.expected), saved(document(c.elements), c.commands));
        std::string undone = c.commands;
        undone += "\nundo " + std::to_string(std::count(undone.begin(), undone.end(), '\n') + 1);
        EXPECT_EQ(document(c.elements), saved(document(c.elements), undone));
    }
}

TEST(Save, DefinitionsGiveWhatIsNotWritten)
{
    const std::string definitions = document(
        "<nodedef name='ND_a' node='a'><input name='i' type='t' value='1'/><output name='out' "
        "type='t' value='9'/></nodedef><nodedef name='ND_b' node='a'><input name='i' "
        "type='t'/><input "
        "name='j' type='t'/><output name='out' type='t'/></nodedef><nodedef name='ND_m' node='m'>"
        "<output name='x' type='t'/><output name='y' type='t'/></nodedef>");
    const char* const commands = "create ND_a one\ncreate ND_b two\ncreate m many\n"
                                 "connect Top.many.y Top.two.j";
    EXPECT_EQ(document("\n  <a name=\"one\" type=\"t\" />\n  <a name=\"two\" type=\"t\" nodedef="
                       "\"ND_b\">\n    <input name=\"j\" type=\"t\" nodename=\"many\" output="
                       "\"y\" />\n  </a>\n  <m name=\"many\" type=\"multioutput\" />\n"),
              saved(document(""), commands, definitions));
}

TEST(Save, AnInputWithoutASourceHasWhatItsDefinitionGives)
{
    const std::string definitions = document(
        "<nodedef name='ND_a' node='a'><input name='i' type='t' value='1'/><input name='j' "
        "type='t'/><output name='out' type='t'/></nodedef>");
    const std::string elements =
        "<n name='n' type='t'/><a name='a' type='t'><input name='i' type='t' nodename='n'/></a><a "
        "name='b' type='t'><input name='i' type='t' nodename='n' uiname='I'/><input name='j' "
        "type='t' nodename='n'/></a><a name='c' type='t'><input name='i' type='t' value='2'/></a>"
        "<a name='d' type='t'><input name='i' type='t'/></a>";
    const std::string after =
        "<a name='a' type='t'/><a name='b' type='t'><input name='i' type='t' uiname='I' "
        "value='1'/></a><a name='c' type='t'><input name='i' type='t' value='1'/></a>"
        "<a name='d' type='t'><input name='i' type='t'/></a>";
    EXPECT_EQ(document(after),
              saved(document(elements), "delete Top.n\nset Top.c.i ''", definitions));
    EXPECT_EQ(document(elements),
              saved(document(elements), "delete Top.n\nset Top.c.i ''\nundo 2", definitions));
    EXPECT_EQ(
        document("\n  <a name=\"a\" type=\"t\" />\n  <a name=\"b\" type=\"t\">\n    <input "
                 "name=\"i\" type=\"t\" nodename=\"a\" />\n  </a>\n"),
        saved(document(""), "create a a\ncreate a b\nconnect Top.a.out Top.b.i", definitions));
}

TEST(Save, KeepsEncodingAndLineEnd)
{
    const std::string head = "<?xml version='1.0' encoding='latin1'?>\r\n<materialx>\r\n  "
                             "<n name='n' type='t'><input name='i' type='string'";
    EXPECT_EQ(head + " value='\xE4&#322;'/></n>\r\n  <nodegraph name='g'>\r\n    <n name='m' "
                     "type='t'/>\r\n  </nodegraph>\r\n</materialx>",
              saved(head + "/></n>\r\n  <n name='m' type='t'/>\r\n</materialx>",
                    "set Top.n.i \xC3\xA4\xC5\x82\ncollapse Top g m"));
}

TEST(Save, ValuesAndTypesComeBackInOrder)
{
    const TestDocument test("<n name='a' type='t'><input name='i' type='t'/><input name='j' "
                            "type='t' value='1'/></n>");
    const shading::NodePtr node = test.opened->findNodeFromPath("Top.a");
    node->inputs()[0]->setPortDefaultValue("<&\"'\n>");
    node->inputs()[1]->setPortDefaultValue("2");
    node->outputs()[0]->setDataType(test.opened->dataType("s"));
    node->inputs().addPort("k", nullptr)->setPortDefaultValue("3");
    node->inputs().addPort("silent", nullptr);
    node->inputs().movePort(1, 0);
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(shading::saveToBytes(*test.opened, bytes, problems));
        EXPECT_EQ(document("<n name='a' type='s'><input name='j' type='t' value='2'/><input "
                           "name='i' type='t' value='&lt;&amp;\"&apos;&#10;>'/><input name='k' "
                           "type='none' value='3'/></n>"),
                  bytes);
    }
}

} // namespace
