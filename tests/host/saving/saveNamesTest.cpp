#include "saving/elementsCase.h"

#include <gtest/gtest.h>

namespace {

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
    checkElements({
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
    checkElements({
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

} // namespace
