#include "saving/save.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// Opens a document of those elements, runs the commands, one a line, and saves. Gives the
/// elements, or each problem on a line; what the first command that is refused says.
std::string savedElements(const std::string& elements, const std::string& commands)
{
    const TestDocument test(elements);
    const std::string said = test.edit(commands);
    if (said.find("error: ") != std::string::npos)
        return said;
    std::string result;
    std::vector<shading::SaveProblem> problems;
    if (shading::saveToBytes(*test.opened, result, problems)) {
        const std::size_t begin = result.find('>') + 1;
        return result.substr(begin, result.rfind('<') - begin);
    }
    for (const shading::SaveProblem& problem : problems)
        result += problem.path + ": " + problem.reason + "\n";
    return result;
}

struct NamesCase {
    const char* name;
    std::string elements;
    const char* commands;
    std::string expected; ///< The elements after it, or the problems.
};

void check(const std::vector<NamesCase>& cases)
{
    for (const NamesCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.expected, savedElements(c.elements, c.commands));
        if (c.expected.compare(0, 7, "error: ") == 0)
            continue;
        std::string undone = c.commands;
        undone += "\nundo " + std::to_string(std::count(undone.begin(), undone.end(), '\n') + 1);
        EXPECT_EQ(c.elements, savedElements(c.elements, undone));
    }
}

/// A material of the old kind, bound to a graph `g` with the output `o`, and to outputs `out` and
/// `a` of the document.
std::string
material(const std::string& g, const std::string& o, const std::string& out, const std::string& a)
{
    return "<nodegraph name='" + g + "'><output name='" + o + "' type='t'/></nodegraph><n name='" +
           a + "' type='t'/><output name='" + out +
           "' type='t'/><material name='m'><shaderref name='a' node='a'><bindinput name='a' "
           "nodegraph='" +
           g + "' output='" + o + "'/><bindinput name='i' nodename='" + a +
           "'/><bindinput name='j' "
           "output='" +
           out +
           "'/><bindtoken name='g' value='g'/></shaderref></material>"
           "<x:note nodename='a'/>";
}

/// A graph with the input `x` and another that is not declared, which old parameters name.
std::string parameters(const std::string& x, const std::string& declared, const std::string& y)
{
    return "<nodegraph name='g'><input name='" + x + "' type='t'/>" + declared +
           "<n name='a' type='t'><input name='i' type='t' interfacename='" + y +
           "'/><parameter name='p' interfacename='" + x + "'/><token name='q' interfacename='" + y +
           "'/><parameter name='r' interfacename='no'/></n></nodegraph>";
}

TEST(SaveNames, OutsideTheNetworkFollow)
{
    check({
        {"bindings of a material", material("g", "o", "out", "a"),
         "rename Top.g h\nport rename Top.h o p\nrename Top.a b\nport rename Top out end",
         material("h", "p", "end", "b")},
        {"names that were exchanged", material("g", "o", "out", "a"),
         "rename Top.g t\nrename Top.a g\nrename Top.t a", material("a", "o", "out", "g")},
        {"parameters", parameters("x", "", "y"), "port rename Top.g x v\nport rename Top.g y w",
         parameters("v", "<input name='w' type='t'/>", "w")},
        {"in a graph: a node there, else one of the document",
         "<n name='a' type='t'/><n name='b' type='t'/><nodegraph name='g'><n name='a' type='t'/>"
         "<look><materialassign material='a'/><x nodename='a'/><x "
         "nodename='b'/></look></nodegraph>",
         "rename Top.a c\nrename Top.g.a d\nrename Top.b e",
         "<n name='c' type='t'/><n name='e' type='t'/><nodegraph name='g'><n name='d' type='t'/>"
         "<look><materialassign material='c'/><x nodename='d'/><x nodename='e'/></look>"
         "</nodegraph>"},
        {"frames hold ports too",
         "<nodegraph name='g'><input name='x' type='t'/><output name='o' type='t'/><backdrop "
         "contains='x,o'/></nodegraph>",
         "port rename Top.g x y\nport delete Top.g o",
         "<nodegraph name='g'><input name='y' type='t'/><backdrop contains='y'/></nodegraph>"},
    });
}

TEST(SaveNames, OutsideTheNetworkOfWhatIsGoneAreRefused)
{
    const std::string elements = material("g", "o", "out", "a");
    check({
        {"a graph", elements, "delete Top.g",
         "Top.g: it is gone from there, and bindinput \"a\" still names it\n"},
        {"a node in another graph", elements, "collapse Top h a",
         "Top.a: it is gone from there, and bindinput \"i\" still names it\n"},
        {"outputs", elements, "rename Top.g h\nport delete Top.h o\nport delete Top out",
         "Top.h.o: it is gone from there, and bindinput \"a\" still names it\n"
         "Top.out: it is gone from there, and bindinput \"j\" still names it\n"},
        {"an input", parameters("x", "", "y"), "port delete Top.g x",
         "Top.g.x: it is gone from there, and parameter \"p\" still names it\n"},
        {"inputs of the graph where the node was", parameters("x", "", "y"), "collapse Top.g s a",
         "Top.g.x: parameter \"p\" names it and is not in that graph any more\n"
         "Top.g.y: token \"q\" names it and is not in that graph any more\n"
         "Top.g.no: parameter \"r\" names it and is not in that graph any more\n"},
        {"inputs of a graph that is no more", parameters("x", "", "y"), "expand Top.g",
         "Top.g.x: it is gone from there, and parameter \"p\" still names it\n"
         "Top.g.y: it is gone from there, and token \"q\" still names it\n"
         "Top.g.no: it is gone from there, and parameter \"r\" still names it\n"},
    });
}

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

TEST(SaveNames, TheInputsOfAGraphAreThoseOfItsDefinition)
{
    const std::string x = port("input", "x");
    const std::string y = port("input", "y");
    const std::string o = port("output", "o");
    const std::string rest = port("input", "rest");
    check({
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

TEST(SaveNames, AGraphThatLeavesItsDefinitionIsRefused)
{
    const std::string x = port("input", "x");
    const std::string o = port("output", "o");
    const std::string start = ": its graph implements nodedef \"D\", which ";
    const std::string stays = "error: port: Top.g.x" + start;
    const char* const rename = "port rename Top.g x y";
    check({
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
        {"another port has the name there", definition(x + o + port("token", "y"), o), rename,
         "error: port: Top.g.x: Top.g.y: the name is taken\n"},
        {"a source", definition(x + o, o, "<n name='n' type='t'/>"), "connect Top.n.out Top.g.x",
         "error: connect: Top.n.out: a graph that implements a nodedef has no sources: nodes of "
         "its "
         "type have them\n"},
        {"in another graph", definition(x + o, o), "collapse Top h g",
         "error: collapse: Top: a graph that implements a nodedef must stay at the top\n"},
    });
}

TEST(SaveNames, ADefinitionThatIsElsewhereStays)
{
    const std::string o = port("output", "o");
    const std::string start = ": its graph implements nodedef \"x:D\", which is in another file\n";
    const std::string elements =
        "<nodegraph name='g' nodedef='x:D'>" + user("x") + o + "</nodegraph>";
    check({
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

} // namespace
