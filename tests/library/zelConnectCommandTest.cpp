#include "zelTestEditing.h"

#include <memory>

namespace ZEL {
namespace {

constexpr const char* kNotConnected = "ZEL::did not find a connection to remove to Top.C.In\n";

/// The connections when the nodes of these letters feed C.In.
std::string from(const std::string& sources)
{
    std::string result;
    for (const char source : sources)
        result += std::string("Top.") + source + ".Out > Top.C.In\n";
    return result;
}

/// Top: A>Out, B>Out, D>Out, C<In, connected A.Out > C.In.
struct ConnectNetwork : TestNetwork {
    ConnectNetwork()
    {
        for (const char* source : {"A", "B", "D"})
            addNode("Top", source, "", "Out");
        addNode("Top", "C", "In");
        connect("Top.A.Out", "Top.C.In");
    }
    /// Disconnects A.Out from C.In, or connects another output to it.
    bool edit(ConnectCommand& command, const std::string& output)
    {
        AddRefWrapper<Port> out = port(output.c_str());
        AddRefWrapper<Port> in = port("Top.C.In");
        return output == "Top.A.Out" ? command.disconnect(this, out, in)
                                     : command.connect(this, out, in);
    }
};

TEST(ConnectCommand, TakesTheInputFirstTooAndReplacesItsSources)
{
    ConnectNetwork net;
    net.connect("Top.B.Out", "Top.C.In");
    const std::string before = wholeText(net);
    AddRefWrapper<Port> a = net.port("Top.C.In");
    AddRefWrapper<Port> b = net.port("Top.D.Out");
    ConnectCommand command;
    EXPECT_TRUE(command.connect(&net, a, b));
    EXPECT_EQ("Top.D.Out Top.C.In", pathOf(a) + " " + pathOf(b)) << "exchanged";
    EXPECT_EQ("B: disconnect Out In; A: disconnect Out In; D: connect Out In",
              net.questions.take());
    EXPECT_TRUE(command.undo(&net));
    EXPECT_EQ("D: disconnect Out In; A: connect Out In; B: connect Out In", net.questions.take());
    // A listener that empties the caller's variables does no harm.
    net.questions.during = [&] { a = b = nullptr; };
    EXPECT_TRUE(command.connect(&net, a, b));
    EXPECT_EQ(from("D"), net.text());
    expectUndoAndRedo(command, net, before);
}

TEST(ConnectCommand, ARefusedStepIsLeftOutAndTheOthersAreDone)
{
    const struct {
        const char* output;
        const char* refused;
        bool result;
        const char* after;
        const char* refusedInUndo;
        const char* printedByUndo;
        const char* undone;
    } cases[] = {
        {"Top.B.Out", "A: disconnect", true, "AB", "", "", "AA"}, // Connected once more.
        {"Top.B.Out", "B: connect", false, "", "", kNotConnected, "A"},
        {"Top.B.Out", "", true, "B", "B: disconnect", "", "AB"},
        {"Top.B.Out", "", true, "B", "A: connect", "", ""},
        {"Top.A.Out", "A: disconnect", false, "A", "", "", "AA"},
        {"Top.A.Out", "", true, "", "A: connect", "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.output) + row.refused + row.refusedInUndo);
        ConnectNetwork net;
        ConnectCommand command;
        net.questions.refused = row.refused;
        EXPECT_EQ(row.result, net.edit(command, row.output));
        EXPECT_EQ(from(row.after), net.text());
        net.questions.refused = row.refusedInUndo;
        EXPECT_EQ(row.printedByUndo, printed([&] { EXPECT_TRUE(command.undo(&net)); }));
        EXPECT_EQ(from(row.undone), net.text());
    }
}

TEST(ConnectCommand, WithoutContainerPortOrEditNothingChanges)
{
    ConnectNetwork net;
    const std::string before = wholeText(net);
    ConnectCommand command;
    AddRefWrapper<Port> none;
    AddRefWrapper<Port> in = net.port("Top.C.In");
    AddRefWrapper<Port> out = net.port("Top.A.Out");
    EXPECT_FALSE(command.undo(&net) || command.redo(&net) || command.resolvePorts(out, in));
    EXPECT_TRUE(net.edit(command, "Top.B.Out"));
    // The record and the container of the last edit stay through every failure.
    EXPECT_FALSE(command.connect(&net, none, out) || command.connect(&net, in, none));
    EXPECT_FALSE(command.connect(nullptr, in, out) || command.undo(nullptr) ||
                 command.redo(nullptr));
    EXPECT_EQ("Top.C.In", pathOf(in));
    EXPECT_TRUE(command.resolvePorts(out, in));
    EXPECT_EQ("Top.B.Out", pathOf(out));
    expectUndoAndRedo(command, net, before);
}

TEST(ConnectCommand, DisconnectAllIsNotUndone)
{
    ConnectNetwork net;
    AddRefWrapper<Port> in = net.port("Top.C.In");
    ConnectCommand command;
    net.connect("Top.B.Out", "Top.C.In");
    net.questions.refused = "A: disconnect";
    EXPECT_TRUE(command.disconnectAll(&net, in));
    EXPECT_EQ(from("A"), net.text());
    net.questions.refused = "";
    EXPECT_TRUE(command.disconnectAll(&net, in));
    const char* const line = "bad set of ports in findPortsForConnection: Top.C.In and Top.C.In\n";
    EXPECT_EQ(line, printed([&] { EXPECT_FALSE(command.undo(&net)); }));
    EXPECT_EQ(line, printed([&] { EXPECT_FALSE(command.redo(&net)); }));
    EXPECT_EQ("", net.text());
}

TEST(ConnectCommand, ConnectKeepsTheModeOfAnEarlierEdit)
{
    ConnectNetwork net;
    const std::string before = wholeText(net);
    AddRefWrapper<Port> in = net.port("Top.C.In");
    AddRefWrapper<Port> out = net.port("Top.A.Out");
    AddRefWrapper<Port> other = net.port("Top.B.Out");
    ConnectCommand command;
    EXPECT_TRUE(command.disconnect(&net, in, out));
    expectUndoAndRedo(command, net, before);
    EXPECT_EQ(kNotConnected, printed([&] { EXPECT_FALSE(command.connect(&net, out, in)); }));
    EXPECT_TRUE(command.undo(&net));

    // One that disconnects all empties the second port, exchanges nothing, and can undo that.
    in = net.port("Top.C.In");
    EXPECT_TRUE(command.disconnectAll(&net, other) && command.connect(&net, in, other));
    EXPECT_EQ(before, wholeText(net));
    EXPECT_TRUE(command.connect(&net, other, in));
    EXPECT_EQ("", net.text());
    expectUndoAndRedo(command, net, before);
}

TEST(ConnectCommand, RedoAnswersAsTheEditAndDisconnectSetsTheModeAlsoInVain)
{
    ConnectNetwork net;
    ConnectCommand command;
    EXPECT_TRUE(net.edit(command, "Top.B.Out") && command.undo(&net));
    net.questions.refused = "B: connect";
    EXPECT_FALSE(command.redo(&net));
    net.questions.refused = "";
    EXPECT_TRUE(net.edit(command, "Top.B.Out"));
    AddRefWrapper<Port> out = net.port("Top.B.Out");
    AddRefWrapper<Port> in = net.port("Top.C.In");
    EXPECT_FALSE(command.disconnect(nullptr, out, in));
    EXPECT_TRUE(command.connect(&net, out, in));
    EXPECT_EQ("", net.text());
}

TEST(ConnectCommand, OutlivesTheDocumentAndActsOnWhatBearsThePathsNow)
{
    const int alive = Live::count;
    ConnectCommand command;
    EXPECT_TRUE(std::make_unique<ConnectNetwork>()->edit(command, "Top.D.Out"));
    EXPECT_EQ(alive, Live::count);
    EXPECT_FALSE(command.undo(nullptr));
    ConnectNetwork net;
    net.connect("Top.B.Out", "Top.C.In");
    EXPECT_TRUE(command.redo(&net));
    EXPECT_EQ(from("D"), net.text());

    // An end is gone: nothing happens. It is back: undo reaches it, and passes over the lost A.
    net.compound()->removeNode("C");
    EXPECT_FALSE(command.undo(&net) || command.redo(&net));
    net.addNode("Top", "C", "In");
    net.connect("Top.D.Out", "Top.C.In");
    net.compound()->removeNode("A");
    EXPECT_TRUE(command.undo(&net));
    EXPECT_EQ(from("B"), net.text());

    // Redo records anew: the next undo brings back what the input had at the redo.
    net.compound()->removeNode("B");
    net.addNode("Top", "A", "", "Out");
    net.connect("Top.A.Out", "Top.C.In");
    EXPECT_TRUE(command.redo(&net) && command.undo(&net));
    EXPECT_EQ(from("A"), net.text());

    // Of two nodes of one name the first is meant, whichever was connected.
    AddRefWrapper<Port> out = net.addNode("Top", "D", "", "Out")->outputs()[0];
    AddRefWrapper<Port> in = net.port("Top.C.In");
    EXPECT_TRUE(command.connect(&net, out, in));
    EXPECT_EQ(kNotConnected, printed([&] { EXPECT_TRUE(command.undo(&net)); }));
    EXPECT_EQ(from("AD"), net.text());
}

TEST(ConnectCommand, FindsMostInnerPortsOfTheCompoundAround)
{
    TestNetwork net;
    net.addCompound("Top", "Sub", "In", "Out");
    net.addNode("Top.Sub", "N", "In", "Out");
    const std::string unconnected = wholeText(net);
    ConnectCommand command;
    AddRefWrapper<Port> a = net.port("Top.Sub.N.Out");
    AddRefWrapper<Port> b = net.inner("Top.Sub.Out");
    EXPECT_TRUE(command.connect(&net, a, b));
    expectUndoAndRedo(command, net, unconnected);
    EXPECT_TRUE(command.undo(&net));

    // A replaced inner input is no output of the compound node: undo passes it over.
    EXPECT_TRUE(command.connect(&net, a = net.inner("Top.Sub.In"), b = net.port("Top.Sub.N.In")));
    EXPECT_TRUE(command.connect(&net, a = net.port("Top.Sub.N.Out"), b));
    EXPECT_TRUE(command.undo(&net));
    EXPECT_EQ("", net.text());

    // A pass-through has the paths of the compound node's own two ports: undo does not find it.
    EXPECT_TRUE(command.connect(&net, a = net.inner("Top.Sub.In"), b = net.inner("Top.Sub.Out")));
    EXPECT_EQ("ZEL::did not find a connection to remove to Top.Sub.In\n",
              printed([&] { EXPECT_TRUE(command.undo(&net)); }));
    EXPECT_EQ("Top.Sub.In > Top.Sub.Out\n", net.text());

    // A compound node's port without a mirror is an end without a port.
    const AddRefWrapper<Node> sub = net.findNodeFromPath("Top.Sub");
    for (const char* path : {"Top.Sub.N.In", "Top.Sub.N.Out"}) {
        b = net.port(path);
        a = (b->getPortIOType() == PortInput ? sub->inputs() : sub->outputs())
                .addPort("L", nullptr);
        command.connect(&net, b, a);
        EXPECT_FALSE(command.undo(&net) || command.redo(&net));
        EXPECT_TRUE(command.resolvePorts(a, b));
        EXPECT_NE(!a, !b);
    }
}

} // namespace
} // namespace ZEL
