#include "zelRuntime.h"
#include "zelTestEditing.h"

#include <memory>

namespace ZEL {
namespace {

/// Top.Sub < A B > Z holds N < X > Out and P < X; inside, A feeds both X, and N feeds Z.
struct PortNetwork : TestNetwork {
    PortNetwork()
    {
        runtime = &types;
        types.createPortDataType("Color");
        addCompound("Top", "Sub", "A B", "Z");
        addNode("Top.Sub", "N", "X", "Out");
        addNode("Top.Sub", "P", "X");
        connect("Top.Sub.A", "Top.Sub.N.X");
        connect("Top.Sub.A", "Top.Sub.P.X");
        connect("Top.Sub.N.Out", "Top.Sub.Z");
    }
    AddRefWrapper<Compound> sub() { return compound("Top.Sub"); }
    /// The line of Sub behind its name.
    std::string subText()
    {
        const std::string whole = wholeText(*this);
        return whole.substr(11, whole.find('\n', 11) - 11);
    }
    std::string innerNames()
    {
        return names(sub()->innerInputs()) + " / " + names(sub()->innerOutputs());
    }
    Runtime types;
};

struct Modify : ModifyCompoundPortCommand {
    explicit Modify(TestNetwork& net) { EXPECT_TRUE(setParentCompound(&net, "Top.Sub")); }
};

TEST(ModifyCompoundPortCommand, RenamesCreatesDeletesAndUndoesTheGroupsBackwards)
{
    PortNetwork net;
    Modify command(net);
    EXPECT_TRUE(command.deletePort("B") && command.createPort(PortOutput, "New", "Color"));
    EXPECT_TRUE(command.createPort(PortInput, "C", "Color") && command.renamePort("A", "Wide"));
    // A request that a listener adds meanwhile is carried out in its turn.
    net.questions.during = [&] { EXPECT_TRUE(command.renamePort("Z", "Y")); };
    const std::string before = wholeText(net);
    EXPECT_TRUE(command.doit());
    EXPECT_EQ("Sub{}: name A Wide; Sub: name A Wide; Sub{}: name Z Y; Sub: name Z Y; "
              "Sub: add New to Y; Sub{}: add New to Y; Sub: add C to Wide B; "
              "Sub{}: add C to Wide B; Sub{}: remove B from Wide B C; Sub: remove B from Wide B C",
              net.questions.take());
    EXPECT_EQ(" < Wide C:Color > Y New:Color {< Wide=Top.Sub.N.X,Top.Sub.P.X C:Color"
              " {> Y=Top.Sub.N.Out New:Color",
              net.subText());
    expectUndoAndRedo(command, net, before);
    net.questions.take();
    command.undo(nullptr);
    EXPECT_EQ("Sub: add B to Wide C; Sub{}: add B to Wide C; Sub{}: move 2 1 in Wide C B; "
              "Sub{}: moved 2 1 in Wide B C; "
              "Sub{}: remove New from Y New; Sub: remove New from Y New; "
              "Sub{}: remove C from Wide B C; Sub: remove C from Wide C B; "
              "Sub{}: name Wide A; Sub: name Wide A; Sub{}: name Y Z; Sub: name Y Z",
              net.questions.take());
}

TEST(ModifyCompoundPortCommand, UndoBringsDeletedPortsBackWithTheirInnerConnections)
{
    PortNetwork net;
    net.addNode("Top.Sub", "Sub", "Z"); // Called like the compound node: gets no connection.
    net.inner("Top.Sub.A")->addConnection(net.inner("Top.Sub.Z"));
    net.inner("Top.Sub.A")->setDataType(net.types.getPortDataType(0));
    Modify command(net);
    EXPECT_TRUE(command.deletePort("A") && command.deletePort("Z") && command.doit());
    EXPECT_EQ(" < B {< B", net.subText());
    // Last connection first; not the one straight through; outside, A is the last now.
    command.undo(&net);
    EXPECT_EQ(" < B A:Color > Z {< A:Color=Top.Sub.P.X,Top.Sub.N.X B {> Z=Top.Sub.N.Out",
              net.subText());
    command.redo(&net);
    net.sub()->removeNode("N");
    net.sub()->nodes()["P"]->inputs()[0]->setName("Other");
    net.addNode("Top.Sub", "N", "X");
    command.undo(&net);
    EXPECT_EQ(" < B A:Color > Z {< A:Color=Top.Sub.N.X B {> Z", net.subText());

    // Each port goes to the place of its own deletion, counted in the list as it was then.
    Modify both(net);
    EXPECT_TRUE(both.deletePort("A") && both.deletePort("B") && both.doit());
    both.undo(&net);
    EXPECT_EQ("B A / Z", net.innerNames());
    // Without its compound the command touches nothing.
    both.redo(&net);
    EXPECT_FALSE(both.setParentCompound(&net, "Top.Sub.N"));
    both.undo(&net);
    EXPECT_EQ(" / Z", net.innerNames());
}

TEST(ModifyCompoundPortCommand, TheMirrorGetsTheReceivedNameAndAtUndoTheRequestedOne)
{
    PortNetwork net;
    const auto adjust = [&net](const char* refused, const char* name) {
        net.questions.during = [=, &net] {
            net.sub()->innerInputs()[1]->setName(name);
            net.questions.refused = refused;
        };
    };
    const auto bothNames = [&net] {
        return names(net.sub()->getAsNode()->inputs()) + " / " + names(net.sub()->innerInputs());
    };
    Modify command(net);
    EXPECT_TRUE(command.renamePort("B", "New"));
    adjust("Sub{}: name B New", "New1");
    EXPECT_TRUE(command.doit());
    EXPECT_EQ("A New1 / A New1", bothNames());
    adjust("Sub{}: name New1 B", "B1");
    command.undo(&net);
    EXPECT_EQ("A B / A B1", bothNames());
    net.questions.refused = "";
    // The name that the port got back is the old one from now on.
    command.redo(&net);
    EXPECT_EQ("A New / A New", bothNames());
    command.undo(&net);
    EXPECT_EQ("A B1 / A B1", bothNames());
}

TEST(ModifyCompoundPortCommand, APortWithoutAMirrorIsNotRenamed)
{
    PortNetwork net;
    net.sub()->innerInputs().addPort("Lone", nullptr);
    Modify command(net);
    EXPECT_TRUE(command.renamePort("Lone", "New") && command.renamePort("B", "Wide"));
    command.doit();
    EXPECT_EQ("A Wide Lone / Z", net.innerNames());
    PortList& outer = net.sub()->getAsNode()->inputs();
    outer.remove(outer[1]);
    command.undo(&net);
    EXPECT_EQ("A Wide Lone / Z", net.innerNames());
}

TEST(ModifyCompoundPortCommand, ARefusedStepIsLeftOutAndTheOthersAreDone)
{
    const std::string undone = " < B A > Z {< A=Top.Sub.P.X,Top.Sub.N.X B {> Z";
    const struct {
        const char* refused; ///< While Z is renamed to Y, C is created and A is deleted.
        const char* after;
        std::string undone;
    } cases[] = {
        {"Sub{}: name Z", " < B C:Color > Z {< B C:Color {> Z", undone},
        {"Sub: name Z", " < B C:Color > Z {< B C:Color {> Y", undone},
        {"Sub: add C", " < B > Y {< B {> Y", undone},
        {"Sub{}: add C", " < B C:Color > Y {< B {> Y",
         " < B C:Color A > Z {< A=Top.Sub.P.X,Top.Sub.N.X B {> Z"},
        // Disconnected, but not deleted: undo makes nothing again.
        {"Sub{}: remove A", " < A B C:Color > Y {< A B C:Color {> Y", " < A B > Z {< A B {> Z"},
        {"Sub: remove A", " < A B C:Color > Y {< B C:Color {> Y",
         " < A B A > Z {< A=Top.Sub.P.X,Top.Sub.N.X B {> Z"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.refused);
        PortNetwork net;
        Modify command(net);
        EXPECT_TRUE(command.deletePort("A") && command.createPort(PortInput, "C", "Color"));
        EXPECT_TRUE(command.renamePort("Z", "Y"));
        net.questions.refused = row.refused;
        EXPECT_TRUE(command.doit());
        EXPECT_EQ(row.after + std::string("=Top.Sub.N.Out"), net.subText());
        net.questions.refused = "";
        command.undo(&net);
        EXPECT_EQ(row.undone + "=Top.Sub.N.Out", net.subText());
    }

    // A creation refused at redo leaves the name of the last one: undo deletes a port of that name.
    PortNetwork net;
    Modify command(net);
    EXPECT_TRUE(command.createPort(PortInput, "C", "Color") && command.doit());
    net.questions.refused = "Sub: add C";
    command.redo(&net);
    command.undo(&net);
    EXPECT_EQ("A B / Z", net.innerNames());
    // Refused inside, it has no name: undo leaves the port of that name alone.
    net.questions.refused = "";
    EXPECT_TRUE(command.doit());
    net.questions.refused = "Sub{}: add C";
    command.redo(&net);
    command.undo(&net);
    EXPECT_EQ("A B C / Z", net.innerNames());
}

TEST(ModifyCompoundPortCommand, WithoutCompoundTypeOrPortNothingIsRecorded)
{
    PortNetwork net;
    net.sub()->innerOutputs().addPort("A", nullptr); // The input of that name wins.
    const std::string before = wholeText(net);
    ModifyCompoundPortCommand command;
    const auto expectTaken = [&](bool taken) {
        EXPECT_EQ(taken, command.createPort(PortInput, "C", "Color"));
        EXPECT_EQ(taken, command.renamePort("A", "Wide"));
        EXPECT_EQ(taken, command.deletePort("B"));
    };
    EXPECT_TRUE(command.setParentCompound(&net, "Missing"));
    expectTaken(false);
    EXPECT_TRUE(command.setParentCompound(&net, "Top.Sub"));
    EXPECT_FALSE(command.setParentCompound(&net, "Top.Sub.N"));
    expectTaken(false);
    EXPECT_TRUE(command.setParentCompound(&net, "Top.Sub"));
    EXPECT_TRUE(command.setParentCompound(&net, "Missing"));
    EXPECT_FALSE(command.renamePort("Missing", "X") || command.deletePort("Missing"));
    EXPECT_FALSE(command.createPort(PortInput, "C", "Unknown"));
    EXPECT_EQ(1, net.types.getNumberOfPortDataTypes());
    net.runtime = nullptr;
    EXPECT_FALSE(command.createPort(PortInput, "C", "Color"));
    EXPECT_TRUE(command.doit());
    EXPECT_EQ(before, wholeText(net));

    // Requests whose compound was cleared once: the rename and the deletion have failed for good.
    net.runtime = &net.types;
    expectTaken(true);
    EXPECT_FALSE(command.setParentCompound(&net, "Top.Sub.N"));
    EXPECT_TRUE(command.doit());
    command.undo(&net);
    EXPECT_TRUE(command.setParentCompound(&net, "Top.Sub"));
    EXPECT_EQ(before, wholeText(net));
    command.redo(&net);
    EXPECT_EQ("Wide C / Z A", net.innerNames());
    command.undo(&net);
    EXPECT_EQ("Wide / Z A", net.innerNames());
}

TEST(ModifyCompoundPortCommand, OutlivesTheDocument)
{
    const int alive = Live::count;
    for (const bool undone : {false, true}) {
        auto net = std::make_unique<PortNetwork>();
        Modify command(*net);
        EXPECT_TRUE(command.deletePort("B") && command.createPort(PortInput, "C", "Color"));
        EXPECT_TRUE(command.renamePort("Z", "Y") && command.doit());
        if (undone)
            command.undo(nullptr);
        const AddRefWrapper<Compound> sub = net->sub();
        net.reset();
        EXPECT_EQ(alive + 3, Live::count) << "the compound and its two nodes";
        command.undo(nullptr);
        command.redo(nullptr);
        EXPECT_EQ(undone ? "A B" : "A C", names(sub->innerInputs()));
    }
    EXPECT_EQ(alive, Live::count);
}

} // namespace
} // namespace ZEL
