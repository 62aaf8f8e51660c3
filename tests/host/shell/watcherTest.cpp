#include "shell/watcher.h"

#include "edits/edits.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

TEST(Watcher, PrintsWhatEachEditUndoAndRedoTells)
{
    const TestDocument document(
        "<n name='a' type='t'/><nodegraph name='g'><input name='x' type='t' nodename='a'/>"
        "<n name='b' type='t'><input name='i' type='t' interfacename='x'/></n></nodegraph>");
    std::ostringstream out;
    shading::Edits edits(*document.opened);
    std::string title;
    std::string problem;
    const shading::Watcher watcher(document.opened->getRootNode(), out);

    EXPECT_TRUE(edits.disconnect("Top.a.out", "Top.g.x"));
    EXPECT_TRUE(edits.history().undo(title, problem));
    EXPECT_EQ("connection removed: Top.a.out -> Top.g.x\nconnection added: Top.a.out -> Top.g.x\n",
              out.str());

    out.str("");
    EXPECT_TRUE(edits.deletePort("Top.g", "x"));
    // Those inside hear of the port, then those around that the box looks different.
    EXPECT_EQ("compound connection removed: Top.g.x -> Top.g.b.i\nport removed: input Top.g.x\n"
              "node changed: Top.g\nconnection removed: Top.a.out -> Top.g.x\n",
              out.str());

    out.str("");
    EXPECT_TRUE(edits.renameNode("Top.g", "h"));
    EXPECT_TRUE(edits.addPort("Top.h", ZEL::PortOutput, "o", "t"));
    EXPECT_TRUE(edits.renamePort("Top.h", "o", "p"));
    EXPECT_FALSE(edits.renameNode("Top.h", "a")); // Refused: nobody is told.
    EXPECT_EQ("node renamed: Top.h\nport added: output Top.h.o\nnode changed: Top.h\n"
              "port renamed: output Top.h.p\nnode changed: Top.h\n",
              out.str());
    EXPECT_TRUE(edits.history().undo(title, problem));
    EXPECT_TRUE(edits.history().undo(title, problem));

    // A compound that is new is watched as well.
    out.str("");
    std::string path;
    EXPECT_TRUE(edits.collapse("Top.h", "q", {"b"}, path));
    EXPECT_TRUE(edits.renameNode("Top.h.q.b", "c"));
    EXPECT_TRUE(edits.deleteNode("Top.h.q"));
    EXPECT_EQ("node added: Top.h.q\nnode removed: Top.h.b\nnode added: Top.h.q.b\n"
              "node renamed: Top.h.q.c\nnode removed: Top.h.q\n",
              out.str());
}

} // namespace
