#include "document/node.h"
#include "document/pointers.h"
#include "saving/elementsCase.h"
#include "saving/save.h"
#include "testDocument.h"

#include <gtest/gtest.h>

namespace {

/// A definition, and behind it a graph `g` that implements it.
std::string
definition(const std::string& ports, const std::string& graphPorts, const char* more = "")
{
    return "<nodedef name='D' node='d'>" + ports + "</nodedef><nodegraph name='g' nodedef='D'>" +
           graphPorts + "</nodegraph>" + more;
}

std::string port(const char* kind, const std::string& name, const char* more = "")
{
    return std::string("<") + kind + " name='" + name + "' type='t'" + more + "/>";
}

std::string user(const std::string& interface)
{
    return "<n name='n' type='t'><input name='i' type='t' interfacename='" + interface + "'/></n>";
}

/// A graph as the format has it: with a node that is called like an input of its definition.
std::string mixing(const std::string& b, const std::string& more = "")
{
    return "<nodedef name='ND_m' node='m'><input name='a' type='float' value='1'/><input name='" +
           b + "' type='float'" + more +
           "/><input name='mix' type='float'/><output name='out' "
           "type='float'/></nodedef><nodegraph "
           "name='NG_m' nodedef='ND_m'><mix name='mix' type='float'><input name='fg' type='float' "
           "interfacename='a'/><input name='bg' type='float' interfacename='" +
           b +
           "'/><input name='mix' type='float' interfacename='mix'/></mix><output name='out' "
           "type='float' nodename='mix'/></nodegraph>";
}

TEST(Declarations, TheInputsOfAGraphAreThoseOfItsDefinition)
{
    const std::string x = port("input", "x");
    const std::string y = port("input", "y");
    const std::string o = port("output", "o");
    const std::string rest = port("input", "rest");
    checkElements({
        {"a name", mixing("b"), "port rename Top.NG_m b bb", mixing("bb")},
        {"a value", mixing("b"), "set Top.NG_m.b 0.5", mixing("b", " value='0.5'")},
        {"a graph inside, and back", mixing("b"), "collapse Top.NG_m s mix\nexpand Top.NG_m.s",
         mixing("b")},
        {"a node that is gone", definition(x + o, user("x") + o), "delete Top.g.n",
         definition(x + o, o)},
        {"a node without its source", definition(x + o, user("x") + o),
         "disconnect Top.g.x Top.g.n.i\nset Top.g.n.i 3",
         definition(x + o, "<n name='n' type='t'><input name='i' type='t' value='3'/></n>" + o)},
        {"an input more, in its place", definition(x + o, user("x") + o),
         "port add Top.g input y t", definition(x + y + o, user("x") + o)},
        {"an input less", definition(x + port("output", "o", " defaultinput='x'"), o),
         "port delete Top.g x", definition(port("output", "o"), o)},
        {"both kinds of ports", definition(x + port("output", "o", " defaultinput='x'"), x + o),
         "port rename Top.g x y\nport rename Top.g o p",
         definition(y + port("output", "p", " defaultinput='y'"), y + port("output", "p"))},
        {"a value of one that both have", definition(x + o, x + o), "set Top.g.x 3",
         definition(port("input", "x", " value='3'") + o, port("input", "x", " value='3'") + o)},
        {"no types",
         "<nodedef name='D' node='d'><input name='x'/></nodedef><d name='n'/><nodegraph "
         "name='g' nodedef='D'><output name='o'/></nodegraph>",
         "rename Top.g h",
         "<nodedef name='D' node='d'><input name='x'/></nodedef><d name='n'/><nodegraph name='h' "
         "nodedef='D'><output name='o'/></nodegraph>"},
        {"tied from outside",
         "<nodedef name='D' node='d'>" + x + o + "</nodedef><nodegraph name='g'>" + x + o +
             "</nodegraph><implementation nodedef='D' nodegraph='g'/>",
         "port rename Top.g x y\nrename Top.g h",
         "<nodedef name='D' node='d'>" + y + o + "</nodedef><nodegraph name='h'>" + y + o +
             "</nodegraph><implementation nodedef='D' nodegraph='h'/>"},
        {"one that both have", definition(x + o, x + o), "port delete Top.g x", definition(o, o)},
        {"one that the definition has not", definition(x + o, x + rest + o),
         "port rename Top.g rest y", definition(x + o, x + y + o)},
        {"a parameter that names it",
         definition(x + o, "<n name='n' type='t'><parameter name='p' interfacename='x'/></n>" + o),
         "port rename Top.g x y",
         definition(y + o, "<n name='n' type='t'><parameter name='p' interfacename='y'/></n>" + o)},
        {"a definition of two graphs, untouched",
         definition(x + o, user("x") + o, "<nodegraph name='h' nodedef='D'/>"),
         "rename Top.g.n m\nrename Top.g.m n",
         definition(x + o, user("x") + o, "<nodegraph name='h' nodedef='D'/>")},
    });
}

TEST(Declarations, AGraphThatLeavesItsDefinitionIsRefused)
{
    const std::string x = port("input", "x");
    const std::string o = port("output", "o");
    const std::string start = ": its graph implements nodedef \"D\", which ";
    const std::string stays = "error: port: Top.g.x" + start;
    const char* const rename = "port rename Top.g x y";
    checkElements({
        {"an output more", definition(x + o, o), "port add Top.g output p t",
         "error: port: Top.g" + start + "has no such output\n"},
        {"an output less", definition(x + o, o), "port delete Top.g o",
         "error: port: Top.g.o" + start + "has that output\n"},
        {"a node of it", definition(x + o, o, "<d name='n' type='t'/>"), rename,
         stays + "has other users: Top.n\n"},
        {"nodes of it",
         definition(x + o, o,
                    "<d name='a'/><d name='b'/><n name='c' nodedef='D'/><nodegraph name='h'>"
                    "<d name='d'/></nodegraph><d name='e'/>"),
         "set Top.g.x 1",
         "error: set: Top.g.x" + start + "has other users: Top.a, Top.b, Top.c and 2 more\n"},
        {"another graph", definition(x + o, o, "<nodegraph name='h' nodedef='D'/>"),
         "port delete Top.g x", stays + "has other users: Top.h\n"},
        {"an heir", definition(x + o, o, "<nodedef name='E' node='e' inherit='D'/>"), rename,
         stays + "has other users: nodedef \"E\"\n"},
        {"an old material",
         definition(x + o, o, "<material><shaderref name='s' node='d'/></material>"), rename,
         stays + "has other users: shaderref \"s\"\n"},
        {"the definition inherits the port",
         "<nodedef name='E' node='e'>" + x + "</nodedef><nodedef name='D' node='d' inherit='E'>" +
             o + "</nodedef><nodegraph name='g' nodedef='D'>" + o + "</nodegraph>",
         rename, stays + "inherits it from \"E\"\n"},
        {"the definition inherits from another file",
         "<nodedef name='D' node='d' inherit='E'>" + o +
             "</nodedef><nodegraph name='g' "
             "nodedef='D'>" +
             user("x") + o + "</nodegraph>",
         rename, stays + "may inherit it from \"E\"\n"},
        {"an old definition has a type",
         "<nodedef name='D' node='d' type='t'>" + x + "</nodedef><nodegraph name='g' nodedef='D'>" +
             port("output", "out") + "</nodegraph>",
         "port rename Top.g out x2", "error: port: Top.g.out" + start + "has it by its type\n"},
        {"another port has the name there", definition(x + o + port("token", "y"), o), rename,
         "error: port: Top.g.x: Top.g.y: the name is taken\n"},
        {"a source", definition(x + o, o, "<n name='n' type='t'/>"), "connect Top.n.out Top.g.x",
         "error: connect: Top.n.out: a graph that implements a nodedef has no sources: nodes of "
         "its "
         "type have them\n"},
        {"the name of an input that the graph has itself", definition(x + o, x + user("x") + o),
         "rename Top.g.n x", "error: rename: Top.g.x: the name is taken\n"},
        {"in another graph", definition(x + o, o), "collapse Top h g",
         "error: collapse: Top: a graph that implements a nodedef must stay at the top\n"},
    });
}

TEST(Declarations, ADefinitionThatIsElsewhereStays)
{
    const std::string o = port("output", "o");
    const std::string start = ": its graph implements nodedef \"x:D\", which is in another file\n";
    const std::string elements =
        "<nodegraph name='g' nodedef='x:D'>" + user("x") + o + "</nodegraph>";
    checkElements({
        {"a name", elements, "port rename Top.g x y", "error: port: Top.g.x" + start},
        {"an output", elements, "port rename Top.g o p", "error: port: Top.g.o" + start},
        {"a port less", elements, "port delete Top.g x", "error: port: Top.g.x" + start},
        {"a port more", elements, "port add Top.g input y t", "error: port: Top.g" + start},
        {"a value", elements, "set Top.g.x 1", "error: set: Top.g.x" + start},
        {"by an implementation",
         "<nodegraph name='g'>" + o + "</nodegraph><implementation nodedef='x:D' nodegraph='g'/>",
         "port rename Top.g o p", "error: port: Top.g.o" + start},
        {"an input that nothing names any more", elements, "delete Top.g.n",
         "<nodegraph name='g' nodedef='x:D'>" + o + "</nodegraph>"},
        {"in another order",
         "<nodegraph name='g' nodedef='x:D'>" + user("x") +
             "<n name='m' type='t'><input name='i' type='t' interfacename='y'/><input name='j' "
             "type='t' interfacename='x'/></n>" +
             o + "</nodegraph>",
         "delete Top.g.n",
         "<nodegraph name='g' nodedef='x:D'>"
         "<n name='m' type='t'><input name='i' type='t' interfacename='y'/><input name='j' "
         "type='t' interfacename='x'/></n>" +
             o + "</nodegraph>"},
    });
}

/// What no command makes; so the library's own calls do.
TEST(Declarations, AreAskedAgainAtTheSave)
{
    const std::string o = port("output", "o");
    const std::string x = port("input", "x");
    const TestDocument test(definition(x + o, user("x") + o));
    EXPECT_EQ("", test.edit("port rename Top.g x y"));
    const auto node = shading::Node::createNew(test.opened.get(), "late");
    node->setNodeTypeName("d");
    test.opened->getRootNode()->getAsCompound()->nodes().add(node);
    const shading::NodePtr graph = test.opened->findNodeFromPath("Top.g");
    const shading::CompoundPtr inside = graph->getAsCompound();
    inside->deleteCompoundPort(inside->innerOutputs()[0]);
    graph->inputs()[0]->addConnection(node->outputs().addPort("out", nullptr));
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    EXPECT_FALSE(shading::saveToBytes(*test.opened, bytes, problems));
    std::string text;
    for (const shading::SaveProblem& problem : problems)
        text += problem.path + ": " + problem.reason + "\n";
    const std::string start = ": its graph implements nodedef \"D\", which ";
    EXPECT_EQ("Top.g.y: a graph that implements a nodedef has no sources\nTop.g.y" + start +
                  "has other users: Top.late\nTop.g.o" + start + "has that output\n",
              text);
}

} // namespace
