#include "format/validator.h"

#include "format/xml.h"

#include <gtest/gtest.h>

namespace {

/// The faults of a document of those elements, one a line: rule, path, reason.
std::string faultsOf(const std::string& elements)
{
    shading::XmlSource xml;
    shading::Message error;
    EXPECT_TRUE(xml.loadText("", "<materialx version='1.39'>" + elements + "</materialx>", error))
        << shading::messageText(error);
    std::string text;
    for (const shading::FormatFault& fault : shading::formatFaults(xml.documentElement()))
        text +=
            std::string(shading::nameOf(fault.rule)) + " " + fault.path + ": " + fault.text + "\n";
    return text;
}

struct FormatCase {
    const char* name;
    const char* elements;
    const char* faults;
};

const FormatCase kFormatCases[] = {
    {"sound",
     "<n name='a' type='t'><input name='i' type='t' value='1'/></n><nodegraph name='g'><input "
     "name='x' type='t' nodename='a'/><n name='b' type='t'><input name='i' type='t' "
     "interfacename='x'/></n><output name='o' type='t' nodename='b'/></nodegraph><n name='c' "
     "type='t'><input name='i' type='t' nodegraph='g' output='o'/></n>",
     ""},
    {"Name",
     "<n name='1a' type='t'/><look name='two words'/><n name='\xC3\xB6' type='t'/><n "
     "name='ns:a' type='t'/>",
     "name Top.1a: the format has no such name\n"
     "name Top.two words: the format has no such name\n"
     "name Top.\xC3\xB6: the format has no such name\n"},
    {"Sibling",
     "<n name='a' type='t'/><look name='a'/><nodegraph name='g'><output name='a' "
     "type='t'/><token name='a'/></nodegraph>",
     "sibling Top.a: a sibling has the same name\nsibling Top.g.a: a sibling has the same name\n"},
    {"Binding",
     "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' value='1' nodename='a'/>"
     "<input name='j' type='t' value='' nodename='a'/></n><output name='o' type='t' value='1' "
     "nodename='a'/>",
     "binding Top.b.i: too many bindings\nbinding Top.b.j: too many bindings\n"},
    {"Interface",
     "<nodegraph name='g' nodedef='x:D'><input name='i' type='t' value='1'/></nodegraph>"
     "<nodegraph name='h'><input name='i' type='t' value='1'/></nodegraph>"
     "<nodegraph name='k'><input name='i' type='t' value='1'/></nodegraph>"
     "<implementation name='I' nodedef='D' nodegraph='k'/>",
     "interface Top.g.i: its graph has the inputs of its nodedef\n"
     "interface Top.k.i: its graph has the inputs of its nodedef\n"},
    {"Reference",
     "<n name='a' type='t'/><backdrop name='b' contains='a, c x:d'/><nodegraph name='g'><input "
     "name='x' type='t'/><output name='o' type='t'/><backdrop contains='x o,a'/></nodegraph>"
     "<nodegraph name='h' nodedef='D'><backdrop name='e' contains='i'/></nodegraph>",
     "reference Top.b: nothing beside it is called \"c\"\n"
     "reference Top.g.backdrop: nothing beside it is called \"a\"\n"},
    {"Empty",
     "<n name='a' type='t'><input name='i' type='t'/><input name='j' type='t' colorspace='c'/></n>"
     "<nodegraph name='g'><input name='x' type='t'/></nodegraph>",
     "empty Top.a.i: it says nothing\n"},
    {"Reference: nodes, graphs, inputs, outputs",
     "<nodegraph name='g'><n name='b' type='t'><input name='i' type='t' interfacename='x'/><input "
     "name='j' type='t' nodename='no'/></n><output name='o' type='t' nodename='b'/></nodegraph>"
     "<n name='c' type='t'><input name='i' type='t' nodegraph='h'/><input name='j' type='t' "
     "nodegraph='g' output='p'/><input name='k' type='t' output='q'/><input name='l' type='t' "
     "nodename='ns:other'/></n>",
     "reference Top.g.b.i: no input \"x\"\nreference Top.g.b.j: no node \"no\"\n"
     "reference Top.c.i: no nodegraph \"h\"\nreference Top.c.j: no output \"p\"\n"
     "reference Top.c.k: no output \"q\"\n"},
    {"Reference: what a nodedef gives",
     "<nodedef name='D'><input name='x' type='t'/></nodedef><nodegraph name='g' nodedef='D'>"
     "<n name='b' type='t'><input name='i' type='t' interfacename='x'/><input name='j' type='t' "
     "interfacename='y'/></n></nodegraph><nodegraph name='h' nodedef='elsewhere'><n name='b' "
     "type='t'><input name='i' type='t' interfacename='x'/></n></nodegraph>",
     "reference Top.g.b.j: no input \"y\"\n"},
    {"Reference: looks",
     "<m name='M' type='material'/><collection name='C'/><look name='L'><materialassign name='a' "
     "material='M' collection='C'/><materialassign name='b' material='N' collection='D'/></look>",
     "reference Top.L.b: no material \"N\"\nreference Top.L.b: no collection \"D\"\n"},
    {"Reference: what is included may have it",
     "<xi:include href='other.mtlx'/><n name='b' type='t'><input name='i' type='t' "
     "nodename='no'/></n>",
     ""},
    {"Type",
     "<n name='a' type='s'/><m name='m' type='multioutput'><output name='p' type='s'/></m>"
     "<n name='b' type='t'><input name='i' type='t' nodename='a'/><input name='j' type='t' "
     "nodename='m' output='p'/><input name='k' type='t' nodename='a' channels='xyz'/></n>",
     "type Top.b.i: it is t, its source is s\ntype Top.b.j: it is t, its source is s\n"},
    {"Cycle, through a graph",
     "<nodegraph name='g'><input name='x' type='t' nodename='b'/><n name='a' type='t'><input "
     "name='i' type='t' interfacename='x'/></n><output name='o' type='t' nodename='a'/>"
     "</nodegraph><n name='b' type='t'><input name='i' type='t' nodegraph='g'/></n>",
     "cycle Top.g.x: it depends on itself\n"},
};

TEST(Format, HasTheseRules)
{
    for (const FormatCase& c : kFormatCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.faults, faultsOf(c.elements));
    }
}

} // namespace
