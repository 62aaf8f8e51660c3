#include "saving/save.h"
#include "shell/shell.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

/// Opens a document of those elements, runs the commands, one a line, and saves. Gives the
/// elements, or each problem on a line.
std::string savedElements(const std::string& elements, const std::string& commands)
{
    const TestDocument test(elements);
    std::ostringstream out;
    shading::Session session = sessionOn(*test.opened);
    shading::Shell shell(session, out, out);
    shell.add(shading::editCommands());
    std::istringstream lines(commands);
    for (std::string line; std::getline(lines, line);)
        EXPECT_TRUE(shell.run(line)) << out.str();
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

TEST(SaveNames, ADefinitionForOneGraphFollows)
{
    const std::string x = port("input", "x");
    const std::string y = port("input", "y");
    const std::string o = port("output", "o");
    const std::string rest = port("input", "rest");
    check({
        {"both kinds of ports", definition(x + port("output", "o", " defaultinput='x'"), x + o),
         "port rename Top.g x y\nport rename Top.g o p",
         definition(y + port("output", "p", " defaultinput='y'"), y + port("output", "p"))},
        {"an input that the graph does not declare", definition(x + rest + o, user("x") + o),
         "port rename Top.g x y", definition(y + rest + o, y + user("y") + o)},
        {"an exchange with an input that the graph did not use",
         definition(x + rest + o, user("x") + o), "port rename Top.g x rest",
         definition(x + rest + o, rest + user("rest") + o)},
        {"tied from outside",
         "<nodedef name='D' node='d'>" + x + o + "</nodedef><nodegraph name='g'>" + x + o +
             "</nodegraph><implementation nodedef='D' nodegraph='g'/>",
         "port rename Top.g x y\nrename Top.g h",
         "<nodedef name='D' node='d'>" + y + o + "</nodedef><nodegraph name='h'>" + y + o +
             "</nodegraph><implementation nodedef='D' nodegraph='h'/>"},
        {"an input less", definition(x + o, x + o), "port delete Top.g x", definition(x + o, o)},
        {"the graph did not agree before", definition(x + o, x + rest + o),
         "port rename Top.g x y\nport delete Top.g o", definition(x + o, y + rest)},
    });
}

TEST(SaveNames, AGraphThatLeavesItsDefinitionIsRefused)
{
    const std::string x = port("input", "x");
    const std::string o = port("output", "o");
    const std::string start = "its graph implements nodedef \"D\", which ";
    const std::string stays = "Top.g.y: " + start + "calls it \"x\" and must stay as it is\n";
    const char* const rename = "port rename Top.g x y";
    check({
        {"an input more", definition(x + o, x + o), "port add Top.g input y t",
         "Top.g.y: " + start + "has no such input of type t\n"},
        {"an output less", definition(x + o, x + o), "port delete Top.g o",
         "Top.g.o: " + start + "has that output; it is gone\n"},
        {"another type", definition(x + o, x + o, "<n name='n' type='s'/>"),
         "port delete Top.g o\nport add Top.g output o s",
         "Top.g.o: " + start + "has no such output of type s\n"},
        {"a node of it", definition(x + o, x + o, "<d name='n' type='t'/>"), rename, stays},
        {"another graph", definition(x + o, x + o, "<nodegraph name='h' nodedef='D'/>"), rename,
         stays},
        {"an heir", definition(x + o, x + o, "<nodedef name='E' node='e' inherit='D'/>"), rename,
         stays},
        {"an old material", definition(x + o, x + o, "<material><shaderref node='d'/></material>"),
         rename, stays},
        {"the definition inherits the port",
         "<nodedef name='E' node='e'>" + x + "</nodedef><nodedef name='D' node='d' inherit='E'>" +
             o + "</nodedef><nodegraph name='g' nodedef='D'>" + x + o + "</nodegraph>",
         rename, stays},
        {"another port has the name there", definition(x + o + port("token", "y"), x + o), rename,
         stays},
        {"another port has the name here", definition(x + o, x + o),
         "port rename Top.g x y\nport add Top.g input x t", stays},
        {"in another graph", definition(x + o, x + o), "collapse Top h g",
         "Top.h.g: it implements nodedef \"D\", and the document itself has it no more\n"},
    });
}

} // namespace
