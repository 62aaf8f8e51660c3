#include "document/portHints.h"

#include "definitions/pluginModule.h"
#include "paths.h"
#include "testLibrary.h"

#include <gtest/gtest.h>

namespace {

/// All that is said, one after the other.
std::string textOf(const shading::PortHints& hints)
{
    std::string text = hints.isAdvanced ? "advanced " : "";
    for (const std::string* const part :
         {&hints.label, &hints.help, &hints.folder, &hints.min, &hints.max, &hints.softMin,
          &hints.softMax, &hints.step, &hints.unit, &hints.unitType})
        text += part->empty() ? "" : "[" + *part + "]";
    EXPECT_EQ(hints.labels.size(), hints.values.size());
    for (std::size_t i = 0; i < hints.labels.size(); ++i)
        text += " " + hints.labels[i] + "=" + hints.values[i];
    return text;
}

std::string hintsAt(shading::Document& document, const std::string& path)
{
    const shading::PortPtr port =
        document.findPortFromPath(path.c_str(), ZEL::PortInput, ZEL::Container::eSearchNode);
    return port ? textOf(shading::hintsOf(document, *port)) : "no port";
}

const char* const kLibrary =
    "<nodedef name='ND_m' node='m'>"
    "<input name='all' type='float' value='1' uiname='All' doc='Says &lt;all&gt;' "
    "uifolder='A/B' uiadvanced='true' uimin='0' uimax='9' uisoftmin='1' uisoftmax='2' uistep='0.5' "
    "unit='degree' unittype='angle'/>"
    "<input name='mode' type='string' enum='one,  two words'/>"
    "<input name='axis' type='integer' enum='X, Y' enumvalues='0,1'/>"
    "<input name='luma' type='color3' enum='p, q' enumvalues='1,2,3, 4,5,6'/>"
    "<input name='odd' type='integer' enum='X, Y' enumvalues='0,1,2' uimin='a' uimax='3'/>"
    "<input name='names' type='integer' enum='X, Y'/>"
    "<input name='none' type='float'/><output name='out' type='float'/></nodedef>"
    "<nodedef name='ND_k' node='k' inherit='ND_m'><input name='none' type='float' uimax='4'/>"
    "</nodedef>";

TEST(PortHints, AreThoseOfTheDefinition)
{
    ZEL::Runtime runtime;
    EXPECT_EQ("", readInto(runtime, kLibrary));
    const auto document = openWith(&runtime, "<m name='a' type='float'/><k name='b' type='float'/>"
                                             "<u name='c' type='float'><input name='i' "
                                             "type='float'/></u>");
    EXPECT_EQ("advanced [All][Says <all>][A/B][0][9][1][2][0.5][degree][angle]",
              hintsAt(*document, "Top.a.all"));
    EXPECT_EQ(" one=one two words=two words", hintsAt(*document, "Top.a.mode"));
    EXPECT_EQ(" X=0 Y=1", hintsAt(*document, "Top.a.axis"));
    EXPECT_EQ(" p=1, 2, 3 q=4, 5, 6", hintsAt(*document, "Top.a.luma"));
    // What is wrong is no help.
    EXPECT_EQ("[3]", hintsAt(*document, "Top.a.odd"));
    EXPECT_EQ("", hintsAt(*document, "Top.a.names"));
    EXPECT_EQ("", hintsAt(*document, "Top.a.none"));
    EXPECT_EQ("[4]", hintsAt(*document, "Top.b.none"));
    EXPECT_EQ(" X=0 Y=1", hintsAt(*document, "Top.b.axis"));
    EXPECT_EQ("", hintsAt(*document, "Top.c.i"));
}

TEST(PortHints, OfTheDocumentGoBeforeThem)
{
    ZEL::Runtime runtime;
    EXPECT_EQ("", readInto(runtime, kLibrary));
    const auto document = openWith(
        &runtime, "<m name='a' type='float'><input name='all' type='float' uimax='5' uiname='Own'/>"
                  "<input name='axis' type='integer' enum='Z' enumvalues='2'/></m>"
                  "<nodedef name='ND_g' node='g'><input name='x' type='float' uimin='-1'/>"
                  "<output name='o' type='float'/></nodedef>"
                  "<nodegraph name='g' nodedef='ND_g'><output name='o' type='float'/></nodegraph>"
                  "<nodegraph name='h'><input name='y' type='float' uifolder='F'/></nodegraph>");
    EXPECT_EQ("advanced [Own][Says <all>][A/B][0][5][1][2][0.5][degree][angle]",
              hintsAt(*document, "Top.a.all"));
    EXPECT_EQ(" Z=2", hintsAt(*document, "Top.a.axis"));
    EXPECT_EQ("[-1]", hintsAt(*document, "Top.g.x"));
    EXPECT_EQ("[F]", hintsAt(*document, "Top.h.y"));
    const shading::NodePtr graph = document->findNodeFromPath("Top.h");
    const shading::PortPtr inner = graph->getAsCompound()->innerInputs()[0];
    EXPECT_EQ("[F]", textOf(shading::hintsOf(*document, *inner)));
    // As edits left it.
    EXPECT_EQ("", runIn(*document, "attribute Top.h.y uifolder G\nattribute Top.a.all uiname ''"));
    EXPECT_EQ("[G]", textOf(shading::hintsOf(*document, *inner)));
    EXPECT_EQ("[All]", hintsAt(*document, "Top.a.all").substr(9, 5));
}

TEST(PortHints, DoNotTellDefinitionsApart)
{
    ZEL::Runtime runtime;
    EXPECT_EQ("", readInto(runtime, "<nodedef name='ND_p' node='p'><input name='i' type='float'/>"
                                    "<output name='out' type='float'/></nodedef>"));
    EXPECT_EQ("", readInto(runtime, "<nodedef name='ND_p' node='p'><input name='i' type='float' "
                                    "uimin='0'/><output name='out' type='float'/></nodedef>"));
}

TEST(PortHints, AreInTheSamplePlugin)
{
    shading::PluginModule plugin;
    std::string problem;
    ASSERT_TRUE(plugin.load(paths::kShadingPlugin, problem));
    const auto document = openWith(plugin.runtime(), "");
    runIn(*document, "create standard_surface s\ncreate image i\ncreate mix m Top --type color3");
    EXPECT_EQ("[Base Color][Base][0, 0, 0][1, 1, 1]", hintsAt(*document, "Top.s.base_color"));
    EXPECT_EQ("[Filter Type] closest=closest linear=linear cubic=cubic",
              hintsAt(*document, "Top.i.filtertype"));
    EXPECT_EQ("", hintsAt(*document, "Top.m.fg"));
}

} // namespace
