#include "document/node.h"
#include "edits/edits.h"
#include "randomEdits.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

using shading::Change;
using Group = shading::History::Group;

/// Three nodes and a graph, with edits, and what an observer was told.
struct Edited {
    std::string text() const { return networkText(*document.opened); }
    std::string history()
    {
        std::string lines;
        for (const shading::EditName& name : edits.history().names()) {
            lines += name.title + ":";
            for (const std::string& line : name.lines)
                lines += " [" + line + "]";
            lines += "\n";
        }
        return lines;
    }
    bool undo() { return edits.history().undo(title, problem); }
    bool redo() { return edits.history().redo(title, problem); }

    TestDocument document{
        "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t'/></n>"
        "<n name='c' type='t'/><nodegraph name='g'><input name='x' type='t'/>"
        "<n name='d' type='t'><input name='i' type='t' interfacename='x'/></n>"
        "</nodegraph>"};
    shading::Edits edits{*document.opened};
    std::string title;
    std::string problem;
};

TEST(Group, IsOneEditWithTheNamesOfAll)
{
    Edited net;
    const std::string before = net.text();
    {
        Group group(net.edits.history(), {"Tidy up", {}});
        EXPECT_TRUE(net.edits.renameNode("Top.a", "e"));
        {
            Group inner(net.edits.history(), {"", {}});
            EXPECT_TRUE(net.edits.deleteNode("Top.b"));
            EXPECT_TRUE(inner.finish(true, net.problem));
        }
        // A refused edit takes back its own, not what was done before it.
        EXPECT_FALSE(net.edits.renameNode("Top.c", "e"));
        const auto fail = [&] {
            net.document.opened->findNodeFromPath("Top.c")->setName("f");
            return "no";
        };
        EXPECT_FALSE(net.edits.run({"Fail", {}}, "Top", fail));
        EXPECT_FALSE(net.undo());
        EXPECT_EQ("an edit is open", net.problem);
        EXPECT_TRUE(group.finish(true, net.problem));
    }
    EXPECT_EQ("Tidy up: [rename Top.a e] [delete Top.b]\n", net.history());
    const std::string after = net.text();
    EXPECT_TRUE(net.undo());
    EXPECT_EQ(before, net.text());
    EXPECT_TRUE(net.redo());
    EXPECT_EQ(after, net.text());
}

TEST(Group, SaysInACommentWhatNoLineOfItDoes)
{
    Edited net;
    {
        Group group(net.edits.history(), {"Both", {}});
        const auto rename = [&] {
            net.document.opened->findNodeFromPath("Top.a")->setName("e");
            return "";
        };
        EXPECT_TRUE(net.edits.run({"By hand", {}}, "Top.a", rename));
        EXPECT_TRUE(net.edits.renameNode("Top.b", "f"));
        EXPECT_TRUE(group.finish(true, net.problem));
    }
    EXPECT_EQ("Both: [# By hand] [rename Top.b f]\n", net.history());
}

TEST(Group, WhatIsGivenUpInsideComesBackToItsPlace)
{
    Edited net;
    Group group(net.edits.history(), {"Outer", {}});
    EXPECT_TRUE(net.edits.deleteNode("Top.a"));
    EXPECT_TRUE(net.edits.deleteNode("Top.b"));
    const std::string before = net.text();
    {
        const Group inner(net.edits.history(), {"Inner", {}});
        EXPECT_TRUE(net.edits.deleteNode("Top.c"));
    }
    EXPECT_EQ(before, net.text());
}

TEST(Group, AnEditInsideAnotherJoinsIt)
{
    Edited net;
    const std::string before = net.text();
    const auto both = [&] {
        net.document.opened->findNodeFromPath("Top.a")->setName("e");
        return net.edits.renameNode("Top.b", "f") ? "" : "refused";
    };
    EXPECT_TRUE(net.edits.run({"Both", {}}, "Top", both));
    EXPECT_EQ(1, net.edits.history().undoCount());
    EXPECT_TRUE(net.undo());
    EXPECT_EQ(before, net.text());
}

TEST(Group, AnExceptionTakesEverythingBackAndLeavesTheHistoryInOrder)
{
    Edited net;
    const std::string before = net.text();
    const auto fail = [&]() -> std::string {
        Group inner(net.edits.history(), {"Inner", {}});
        net.edits.renameNode("Top.a", "e");
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(net.edits.run({"Outer", {}}, "Top", fail), std::runtime_error);
    EXPECT_EQ(before, net.text());
    EXPECT_FALSE(net.edits.history().isOpen());
    EXPECT_EQ(0, net.edits.history().undoCount());
    EXPECT_TRUE(net.edits.renameNode("Top.a", "f"));
    EXPECT_TRUE(net.undo());
    EXPECT_EQ(before, net.text());
}

TEST(Edits, ADocumentHasThemOnce)
{
    const TestDocument document("<n name='a' type='t'/>");
    {
        shading::Edits edits(*document.opened);
        EXPECT_THROW(shading::Edits second(*document.opened), std::logic_error);
        EXPECT_TRUE(edits.renameNode("Top.a", "b"));
        EXPECT_EQ(1, edits.history().undoCount());
    }
    shading::Edits next(*document.opened);
    EXPECT_TRUE(next.renameNode("Top.b", "c"));
}

/// Makes an edit of its own at the first callback.
class Editing : public ZEL::HostEditor {
public:
    Editing(ZEL::Node& node, std::function<void()> edit) : m_edit(std::move(edit))
    {
        node.registerEditor(this);
    }
    void zel_onConnectionChange(ZEL::ECnxChangeType type,
                                const ZEL::AddRefWrapper<ZEL::Port>& /*first*/,
                                const ZEL::AddRefWrapper<ZEL::Port>& /*second*/) override
    {
        if (type == ZEL::eCnxAdded && m_edit)
            std::exchange(m_edit, nullptr)();
    }

private:
    std::function<void()> m_edit;
};

TEST(Edits, AnEditMadeInACallbackIsOneOfItsOwn)
{
    Edited net;
    const std::string before = net.text();
    std::string told;
    const auto handle = net.edits.history().observe([&](const Change& change) {
        told += change.name.title + "\n";
        if (change.kind == Change::Kind::Done && change.name.title == "Rename c to e")
            net.edits.renameNode("Top.b", "f");
    });
    const Editing editing(*net.document.opened->getRootNode(),
                          [&] { net.edits.renameNode("Top.c", "e"); });
    EXPECT_TRUE(net.edits.connect("Top.a.out", "Top.b.i"));
    // Each is told when the one before it is told to the end.
    EXPECT_EQ("Connect a.out to b.i\nRename c to e\nRename b to f\n", told);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(net.undo()) << net.problem;
    EXPECT_EQ(before, net.text());
}

std::string namesOf(const std::vector<shading::NodePtr>& nodes)
{
    std::string names;
    for (const shading::NodePtr& node : nodes)
        names += std::string(names.empty() ? "" : " ") + node->getName();
    return names;
}

std::string textOf(const Change& change)
{
    static const char* const kinds[] = {"done", "gone on", "undone", "redone", "outside"};
    std::string text = std::string(kinds[static_cast<int>(change.kind)]) + " " + change.name.title +
                       ": +" + namesOf(change.added) + " -" + namesOf(change.removed) + " ~" +
                       namesOf(change.changed) + " in";
    for (const shading::CompoundPtr& compound : change.compounds)
        text += std::string(" ") + compound->getName();
    return text + "\n";
}

TEST(Edits, ObserversAreToldWhatChangedAfterDoUndoAndRedo)
{
    Edited net;
    std::string told;
    auto handle =
        net.edits.history().observe([&](const Change& change) { told += textOf(change); });
    const auto next = [&] { return std::exchange(told, ""); };
    EXPECT_TRUE(net.edits.connect("Top.a.out", "Top.g.x"));
    EXPECT_EQ("done Connect a.out to g.x: + - ~a g in Top\n", next());
    EXPECT_FALSE(net.edits.renameNode("Top.a", "b")); // Nothing changed, nobody is told.
    EXPECT_TRUE(net.edits.run({"Nothing", {}}, "Top", [] { return ""; }));
    EXPECT_EQ("", next());
    EXPECT_TRUE(net.edits.deletePort("Top.g", "x"));
    EXPECT_EQ("done Delete input x of g: + - ~g d a in g Top\n", next());
    EXPECT_TRUE(net.undo());
    EXPECT_EQ("undone Delete input x of g: + - ~g a d in Top g\n", next());
    std::string path;
    EXPECT_TRUE(net.edits.collapse("Top", "q", {"b", "c"}, path));
    EXPECT_EQ("done Collapse 2 nodes into q: +q - ~b c in Top q\n", next());
    EXPECT_TRUE(net.undo());
    EXPECT_EQ("undone Collapse 2 nodes into q: + -q ~c b in q Top\n", next());
    EXPECT_TRUE(net.redo());
    EXPECT_EQ("redone Collapse 2 nodes into q: +q - ~b c in Top q\n", next());
    EXPECT_TRUE(net.edits.deleteNode("Top.q.b"));
    EXPECT_EQ("done Delete b: + -b ~ in q\n", next());
    // Past the history: the history goes, and not without a word.
    net.document.opened->findNodeFromPath("Top.a")->setName("z");
    EXPECT_EQ(0, net.edits.history().undoCount());
    EXPECT_EQ("outside : + - ~ in\n", next());
    handle.reset();
    EXPECT_TRUE(net.edits.renameNode("Top.z", "y"));
    EXPECT_EQ("", told);
}

TEST(Edits, ObjectsThatShareAPathAreEditedEachByItself)
{
    const TestDocument document("<n name='a' type='t'/><n name='a' type='t'/>"
                                "<n name='b' type='t'><input name='i' type='t'/></n>"
                                "<nodegraph name='g'/><nodegraph name='g'/>");
    shading::Edits edits(*document.opened);
    ZEL::NodeList& nodes = document.opened->getRootNode()->getAsCompound()->nodes();
    const shading::NodePtr first = nodes[0];
    const shading::NodePtr second = nodes[1];
    EXPECT_TRUE(edits.connect(second->outputs()[0], nodes[2]->inputs()[0]));
    EXPECT_EQ(nodes[2]->inputs()[0]->connectedTo()[0], second->outputs()[0]);
    // No line of the shell leads there.
    EXPECT_EQ("# Connect a.out to b.i", edits.history().names().back().lines.front());
    EXPECT_TRUE(edits.renameNode(second, "c"));
    EXPECT_EQ("a", std::string(first->getName()));
    EXPECT_TRUE(edits.deleteNode(first));
    EXPECT_FALSE(edits.deleteNode(first)); // It is in no compound any more.
    EXPECT_EQ("no such node", edits.problem().reason);
    EXPECT_FALSE(edits.addPort(nodes[3]->getAsCompound(), ZEL::PortInput, "i", "t"));
    EXPECT_EQ("several nodes have this path: rename one first", edits.problem().reason);
    const TestDocument other("<n name='a' type='t'/>");
    EXPECT_FALSE(edits.renameNode(other.opened->findNodeFromPath("Top.a"), "x"));
    EXPECT_FALSE(edits.renameNode(shading::NodePtr(), "x"));
    EXPECT_FALSE(edits.disconnectAll(shading::PortPtr()));
    std::vector<std::string> titles;
    EXPECT_TRUE(edits.undo(3, titles));
    EXPECT_EQ("Delete a", titles.front());
}

} // namespace
