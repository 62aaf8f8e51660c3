#include "edits/desk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

namespace {

const char* const kSource = "  <n name=\"s\" type=\"float\"/>\n";
/// Fed from outside, with what the network does not show, and a graph.
const char* const kCopied =
    "  <n name=\"a\" type=\"float\" doc=\"&lt;1&gt;\" xpos=\"1\" ypos=\"1\">\n"
    "    <input name=\"i\" type=\"float\" nodename=\"s\"/>\n"
    "    <input name=\"c\" type=\"color3\" value=\"1, 0, 0\" colorspace=\"acescg\"/>\n"
    "  </n>\n"
    "  <nodegraph name=\"g\">\n"
    "    <input name=\"x\" type=\"float\" nodename=\"a\" uiname=\"x\"/>\n"
    "    <input name=\"y\" type=\"float\" value=\"2\"/>\n"
    "    <nodegraph name=\"h\">\n"
    "      <input name=\"x\" type=\"float\" interfacename=\"x\"/>\n"
    "      <n name=\"n\" type=\"float\">\n"
    "        <input name=\"i\" type=\"float\" interfacename=\"x\"/>\n"
    "      </n>\n"
    "      <output name=\"o\" type=\"float\" nodename=\"n\"/>\n"
    "    </nodegraph>\n"
    "    <output name=\"o\" type=\"float\" nodegraph=\"h\" output=\"o\"/>\n"
    "  </nodegraph>\n";

/// The elements with other names and places.
std::string renamed(std::string text, const std::vector<std::pair<std::string, std::string>>& names)
{
    for (const auto& [before, after] : names) {
        for (std::size_t at = text.find(before); at != std::string::npos;
             at = text.find(before, at + after.size()))
            text.replace(at, before.size(), after);
    }
    return text;
}

/// As a network tells itself: all but the order of attributes.
std::string networkOf(const std::string& elements)
{
    return shading::networkText(*Desk(elements).document->getRootNode());
}

TEST(Paste, DuplicatesNodesWithAllThatTheyAre)
{
    const std::string before = std::string(kSource) + kCopied;
    Desk desk(before);
    EXPECT_EQ("Top.a2\n" + nestedNote("Top.g2") + "Top.g2\n", desk.run("duplicate Top.a Top.g"));
    const std::string copy = renamed(kCopied, {{"\"a\"", "\"a2\""}, {"\"g\"", "\"g2\""}});
    EXPECT_EQ(networkOf(before + copy), networkOf(desk.saved()));
    EXPECT_EQ("doc \"<1>\"\nxpos \"1.5\"\nypos \"1.5\"\n", desk.run("attribute Top.a2"));
    EXPECT_EQ("acescg\n", desk.run("attribute Top.a2.c colorspace"));
    EXPECT_EQ("uiname \"x\"\n", desk.run("attribute Top.g2.x"));
    const std::string lines = desk.run("history --commands");
    EXPECT_EQ("duplicate Top.a Top.g\n", lines);
    const std::string after = desk.saved();
    desk.run("undo");
    EXPECT_EQ(before, desk.saved());
    desk.run("redo");
    EXPECT_EQ(after, desk.saved());
}

TEST(Paste, TakesATextIntoAnotherDocument)
{
    Desk desk(std::string(kSource) + kCopied, " colorspace=\"lin_rec709\"");
    const std::string text = desk.run("copy Top.a Top.g");
    Desk other("  <nodegraph name=\"k\" colorspace=\"acescg\">\n"
               "    <n name=\"s\" type=\"color3\"/>\n"
               "  </nodegraph>\n");
    const std::string empty = other.saved();
    EXPECT_EQ("Top.k.a\n" + nestedNote("Top.k.g") + "Top.k.g\n",
              other.run("paste Top.k '" + text.substr(0, text.size() - 1) + "'"));
    // The source of that name has another type.
    EXPECT_EQ(
        "input i float \"\"\ninput c color3 \"1, 0, 0\"\noutput out float \"\" -> Top.k.g.x\n",
        other.run("ports Top.k.a"));
    EXPECT_EQ("lin_rec709\n", other.run("attribute Top.k.g colorspace"));
    const std::string lines = other.run("history --commands");
    const std::string after = other.saved();
    other.run("undo");
    EXPECT_EQ(empty, other.saved());
    EXPECT_EQ("Top.k.a\nTop.k.g\n", other.run(lines));
    EXPECT_EQ(after, other.saved());
}

TEST(Paste, KeepsTheTypeOfANodeWithSeveralOutputs)
{
    // By its type it has an output of its own beside the one that is named.
    const std::string before =
        "  <n name=\"a\" type=\"float\"/>\n"
        "  <n name=\"b\" type=\"float\">\n"
        "    <input name=\"i\" type=\"float\" nodename=\"a\" output=\"o\"/>\n"
        "  </n>\n";
    Desk desk(before);
    EXPECT_EQ("Top.a2\nTop.b2\n", desk.run("duplicate Top.a Top.b"));
    EXPECT_EQ("output out float \"\"\noutput o float \"\" -> Top.b2.i\n", desk.run("ports Top.a2"));
    EXPECT_EQ(before +
                  "  <n name=\"a2\" type=\"float\">\n    <output name=\"o\" type=\"float\"/>\n"
                  "  </n>\n  <n name=\"b2\" type=\"float\">\n"
                  "    <input name=\"i\" type=\"float\" nodename=\"a2\" output=\"o\"/>\n  </n>\n",
              desk.saved());
}

TEST(Paste, ConnectsWhatTheTextLacksByItsName)
{
    Desk desk("  <nodegraph name=\"g\">\n"
              "    <input name=\"x\" type=\"float\"/>\n"
              "    <n name=\"s\" type=\"float\"/>\n"
              "  </nodegraph>\n");
    desk.run(
        "paste Top.g '<materialx><n name=\"a\" type=\"float\"><input name=\"i\" type=\"float\" "
        "nodename=\"s\"/><input name=\"j\" type=\"float\" interfacename=\"x\"/><input name=\"k\" "
        "type=\"float\" nodename=\"none\"/></n></materialx>'");
    EXPECT_EQ("Top.g.s.out -> Top.g.a.i\nTop.g.x -> Top.g.a.j\n", desk.run("connections"));
    // Straight into a graph from one of the document: there only, and whatever comes first.
    const std::string across =
        "'<materialx><nodegraph name=\"p\"><n name=\"n\" type=\"float\"><input name=\"i\" "
        "type=\"float\" nodegraph=\"q\"/></n></nodegraph><nodegraph name=\"q\"><output name=\"o\" "
        "type=\"float\"/></nodegraph></materialx>'";
    EXPECT_EQ("Top.p\nTop.q\n", desk.run("paste " + across));
    EXPECT_EQ("input i float \"\" <- Top.q.o\noutput out float \"\"\n", desk.run("ports Top.p.n"));
    EXPECT_EQ("error: paste: Top.g: Top.g.p.n.i is not in the compound of Top.g.q.o\n",
              desk.run("paste Top.g " + across));
}

TEST(Paste, IsRefusedWithItsReasonAndChangesNothing)
{
    const std::pair<const char*, const char*> cases[] = {
        {"copy Top", "copy: Top: the document itself is no node to be copied"},
        {"copy Top.a Top.g.h", "copy: Top.g.h: it is in another compound than the first"},
        {"copy Top.a Top.a", "copy: Top.a: it is named twice"},
        {"copy Top.none", "copy: Top.none: no such node"},
        {"duplicate Top.i", "duplicate: Top.i: it implements a nodedef, which only one graph does"},
        {"paste", "paste: text: nothing was copied"},
        {"paste Top.a x", "paste: Top.a: not a compound"},
        {"paste Top x", "paste: text: not XML: text outside the document element"},
        {"paste Top '<materialx/>'", "paste: text: no node is in it"},
        {"paste Top '<materialx><look name=\"L\"/></materialx>'",
         "paste: text: look \"L\": it is no part of a network"},
        {"paste Top '<materialx><input name=\"x\" type=\"float\"/></materialx>'",
         "paste: text: input \"x\": it is a port of a document, not of a node"},
        {"paste Top '<materialx><nodegraph name=\"q\" nodedef=\"ND\"/></materialx>'",
         "paste: text: nodegraph \"q\": it implements a nodedef, which only one graph does"},
        {"paste Top '<materialx><n name=\"1a\" type=\"float\"/></materialx>'",
         "paste: text: n \"1a\": a name has letters, digits and _, and begins with no digit"},
        {"paste Top '<materialx><n name=\"q\"/><n name=\"q\"/></materialx>'",
         "paste: text: n \"q\": the name is taken"},
        {"paste Top '<materialx><n name=\"q\"><input name=\"i\" type=\"float\" "
         "value=\"b\"/></n></materialx>'",
         "paste: text: input \"i\": \"b\" is no float"},
        {"paste Top '<materialx><n name=\"q\" type=\"float\"><input name=\"i\" type=\"float\" "
         "nodename=\"q\"/></n></materialx>'",
         "paste: Top: Top.q.out would feed itself"},
        {"paste Top '<materialx><n name=\"q\" type=\"t\"/><n name=\"r\" type=\"t\"><input "
         "name=\"i\" "
         "type=\"float\" nodename=\"q\"/></n></materialx>'",
         "paste: Top: Top.q.out is t, Top.r.i is float"},
    };
    for (const auto& [line, error] : cases) {
        SCOPED_TRACE(line);
        const std::string before =
            std::string(kSource) + kCopied + "  <nodegraph name=\"i\" nodedef=\"N:D\"/>\n";
        Desk desk(before);
        EXPECT_EQ("error: " + std::string(error) + "\n", desk.run(line));
        EXPECT_TRUE(desk.session->isSaved());
        EXPECT_EQ(before, desk.saved());
    }
}

/// A chain of nodes: with places in a row to the right, or without any.
std::string chainText(int count, bool hasPlaces)
{
    std::string elements;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        elements += "  <n name=\"c" + number + "\" type=\"float\"" +
                    (hasPlaces ? " xpos=\"" + number + ".5\" ypos=\"-1\"" : "") + ">\n";
        if (i > 0)
            elements += "    <input name=\"i\" type=\"float\" nodename=\"c" +
                        std::to_string(i - 1) + "\"/>\n";
        elements += "  </n>\n";
    }
    return elements;
}

std::string placeOf(Desk& desk, const std::string& path)
{
    std::string place = desk.run("attribute " + path + " xpos\nattribute " + path + " ypos");
    std::replace(place.begin(), place.end(), '\n', ' ');
    return place;
}

/// The paths that the command prints.
std::vector<std::string> pathsOf(Desk& desk, const std::string& command)
{
    std::istringstream out(desk.run(command));
    return {std::istream_iterator<std::string>(out), {}};
}

TEST(PasteOptions, GiveAPlaceAndKeepTheArrangement)
{
    const std::string before = "  <nodegraph name=\"g\"/>\n" + chainText(45, true);
    Desk desk(before);
    std::string all = "copy";
    for (int i = 0; i < 45; ++i)
        all += " Top.c" + std::to_string(i);
    desk.run(all);
    std::vector<std::string> made = pathsOf(desk, "paste Top --at 10,2");
    ASSERT_EQ(45U, made.size());
    EXPECT_EQ("10 2 ", placeOf(desk, made.front()));
    EXPECT_EQ("54 2 ", placeOf(desk, made.back()));
    desk.run("paste Top.g --middle 0,0.25");
    EXPECT_EQ("-22 0.25 ", placeOf(desk, "Top.g.c0"));
    EXPECT_EQ("22 0.25 ", placeOf(desk, "Top.g.c44"));
    const std::string after = desk.saved();
    const std::string lines = desk.run("history --commands");
    desk.run("undo 2");
    EXPECT_EQ(before, desk.saved());
    desk.run(lines);
    EXPECT_EQ(after, desk.saved());
    // Beside what has one of the places, again and again.
    desk.run("undo 2\nmove Top.c0 -9 -9");
    made = pathsOf(desk, "paste");
    EXPECT_EQ("1 -0.5 ", placeOf(desk, made.front()));
    EXPECT_EQ("45 -0.5 ", placeOf(desk, made.back()));
    EXPECT_EQ("1.5 0 ", placeOf(desk, pathsOf(desk, "paste").front()));
}

TEST(PasteOptions, LayOutWhatHasNoPlaces)
{
    std::string text = "paste Top '<materialx>" + chainText(3, false) +
                       "<n name=\"s\" type=\"float\"/></materialx>'";
    text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
    Desk desk("");
    desk.run(text);
    EXPECT_EQ("", desk.run("attribute Top.c0"));
    desk.run("undo\n" + text + " --at 2,3");
    EXPECT_EQ("2 3 ", placeOf(desk, "Top.c0"));
    EXPECT_EQ("4 3 ", placeOf(desk, "Top.c2"));
    EXPECT_EQ("2 4 ", placeOf(desk, "Top.s"));
    // Below what is there.
    const std::vector<std::string> made = pathsOf(desk, text);
    ASSERT_EQ(4U, made.size());
    EXPECT_EQ("2 5 ", placeOf(desk, made[0]));
    EXPECT_EQ("4 5 ", placeOf(desk, made[2]));
    EXPECT_EQ("2 6 ", placeOf(desk, made[3]));
}

TEST(PasteOptions, KeepInnerConnectionsOnly)
{
    const std::string before = std::string(kSource) + kCopied;
    Desk desk(before);
    desk.run("duplicate Top.a Top.g --inner");
    EXPECT_EQ("input x float \"\" <- Top.a2.out -> Top.g2.h.x\n",
              desk.run("ports Top.g2").substr(0, 45));
    EXPECT_EQ("input i float \"\"\n", desk.run("ports Top.a2").substr(0, 17));
    EXPECT_EQ("duplicate Top.a Top.g --inner\n", desk.run("history --commands"));
    const std::string after = desk.saved();
    desk.run("undo");
    EXPECT_EQ(before, desk.saved());
    desk.run("copy Top.a Top.g\npaste --inner");
    EXPECT_EQ(networkOf(after), networkOf(desk.saved()));
    EXPECT_EQ("error: paste: 1: not a place: X,Y\nerror: paste: 1,x: not a place: X,Y\n"
              "error: paste: --middle: --at says where already\n",
              desk.run("paste --at 1\npaste --middle 1,x\npaste --at 1,1 --middle 1,1"));
}

} // namespace
