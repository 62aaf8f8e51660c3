// The library's commands on the host's network: what they do, and that undo and redo give the same
// texts again.
#include "zelConformanceScene.h"

#include <gtest/gtest.h>

namespace ZEL::Conformance {

namespace {

/// Undoes and redoes twice over, from the network after the edit.
template <class Command>
void expectUndoAndRedo(Scene& scene, Command& command, const char* what, const std::string& before)
{
    const std::string after = scene.text();
    for (int i = 0; i < 2; ++i) {
        command.undo(scene.document.get());
        if (scene.text() != before) {
            ADD_FAILURE() << "undo of " << what << " left another network than before it\n"
                          << before << "became\n"
                          << scene.text();
            return;
        }
        command.redo(scene.document.get());
        if (scene.text() != after) {
            ADD_FAILURE() << "redo of " << what << " gave another network than the first time\n"
                          << after << "became\n"
                          << scene.text();
            return;
        }
    }
}

void connectCommandIsUndone(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1");
    const NodePtr b = scene.addNode(*scene.top, "beta", "", "out1");
    const NodePtr c = scene.addNode(*scene.top, "gamma", "in1", "");
    if (!a || !b || !c)
        return;
    PortPtr in = scene.input(*c, "in1");
    PortPtr first = scene.output(*a, "out1");
    PortPtr second = scene.output(*b, "out1");
    if (!scene.connect(first, in))
        return;
    const std::string before = scene.text();
    ConnectCommand connect;
    if (!connect.connect(scene.document.get(), second, in) || entriesOf(*in, *second) != 1 ||
        entriesOf(*in, *first) != 0) {
        ADD_FAILURE()
            << "ConnectCommand did not replace the source of an input: it disconnects the "
               "one there is and connects the new one\n"
            << before << "became\n"
            << scene.text();
        return;
    }
    expectUndoAndRedo(scene, connect, "a connection that replaced another", before);
    const std::string connected = scene.text();
    ConnectCommand disconnect;
    if (!disconnect.disconnect(scene.document.get(), second, in)) {
        ADD_FAILURE() << "ConnectCommand did not disconnect two ports";
        return;
    }
    expectUndoAndRedo(scene, disconnect, "a disconnection", connected);
}

/// The port of a plain node that feeds the port, through the borders of compounds; empty when none.
PortPtr sourceOf(PortPtr port)
{
    for (int i = 0; i < 100 && port; ++i) {
        if (port->connectedTo().size() == 0)
            return nullptr;
        PortPtr from = port->connectedTo()[0];
        const NodePtr node = from->getParentNode();
        const CompoundPtr compound = node ? node->getAsCompound() : nullptr;
        if (!compound)
            return from;
        port = compound->getReversePort(from);
    }
    return nullptr;
}

void collapseKeepsTheSources(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1");
    const NodePtr b = scene.addNode(*scene.top, "beta", "in1", "out1");
    const NodePtr c = scene.addNode(*scene.top, "gamma", "in1", "");
    if (!a || !b || !c)
        return;
    const PortPtr wanted[][2] = {{scene.input(*b, "in1"), scene.output(*a, "out1")},
                                 {scene.input(*c, "in1"), scene.output(*b, "out1")}};
    for (const auto& [to, from] : wanted) {
        if (!scene.connect(from, to))
            return;
    }
    CreateCompoundCommand command;
    command.setParentCompound(scene.document.get(), pathOf(*scene.root).c_str());
    command.setNewCompoundName(scene.name("sub").c_str());
    command.addNodeToMove(scene.name("beta").c_str());
    if (!command.doit()) {
        ADD_FAILURE() << "CreateCompoundCommand collapsed nothing: createNewCompound made no "
                         "compound";
        return;
    }
    const NodePtr made = scene.document->findNodeFromPath(command.getCreatedCompoundPath());
    if (!made || !made->getAsCompound()) {
        ADD_FAILURE() << "the path " << inQuotes(command.getCreatedCompoundPath())
                      << " of the compound that CreateCompoundCommand made leads to none";
        return;
    }
    if (b->getParentCompound() != made->getAsCompound())
        ADD_FAILURE() << "the node " << b->getName()
                      << " was to be collapsed, but does not lie in the new compound";
    for (const auto& [to, from] : wanted) {
        if (sourceOf(to) != from)
            ADD_FAILURE() << pathOf(to) << " was fed by " << pathOf(from)
                          << ", and after a collapse by " << pathOf(sourceOf(to))
                          << ": the new compound's inner and outer ports do not mirror each other, "
                             "or a connection was refused";
    }
}

void compoundPortCommandIsUndone(Scene& scene)
{
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    if (!sub || !sub->getAsNode())
        return;
    for (const char* const word : {"in1", "in2"})
        scene.addCompoundPort(*sub, PortInput, word);
    const NodePtr inside = scene.addNode(*sub, "alpha", "in1", "");
    if (!inside || sub->innerInputs().size() != 2 ||
        !scene.connect(sub->innerInputs()[1], scene.input(*inside, "in1")))
        return;
    const std::string before = scene.text();
    ModifyCompoundPortCommand command;
    command.setParentCompound(scene.document.get(), pathOf(*sub->getAsNode()).c_str());
    // Under the names that they got, which may be others than those asked for.
    const std::string first = sub->innerInputs()[0]->getName();
    const std::string second = sub->innerInputs()[1]->getName();
    const bool isKnown = command.renamePort(first.c_str(), scene.name("in4").c_str()) &&
                         command.deletePort(second.c_str());
    if (!isKnown) {
        ADD_FAILURE() << "ModifyCompoundPortCommand does not find the ports that "
                         "createCompoundPort made";
        return;
    }
    command.createPort(PortInput, scene.name("in3").c_str(), scene.host.dataTypeName(0));
    command.doit();
    if (scene.text() == before) {
        ADD_FAILURE() << "the host refused to rename, make and delete the ports of a compound";
        return;
    }
    expectUndoAndRedo(scene, command, "a change of compound ports", before);
}

} // namespace

const std::vector<Rule>& commandRules()
{
    static const std::vector<Rule> rules = {
        {"ConnectCommandIsUndone", &connectCommandIsUndone, true},
        {"CollapseKeepsTheSources", &collapseKeepsTheSources, true},
        {"CompoundPortCommandIsUndone", &compoundPortCommandIsUndone, true},
    };
    return rules;
}

} // namespace ZEL::Conformance
