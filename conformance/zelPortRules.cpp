// The questions about ports: an answer of false changes nothing, an answer of true no more than
// what was asked.
#include "zelConformanceScene.h"

#include <gtest/gtest.h>

namespace ZEL::Conformance {

namespace {

struct Ends {
    int atFirst;  ///< How often the first port lists the second.
    int atSecond; ///< And the second the first.
};

Ends endsOf(const PortPtr& first, const PortPtr& second)
{
    return {entriesOf(*first, *second), entriesOf(*second, *first)};
}

std::string endsText(const PortPtr& first, const PortPtr& second)
{
    const Ends ends = endsOf(first, second);
    return pathOf(first) + " has " + std::to_string(ends.atFirst) + " entries of the pair, " +
           pathOf(second) + " has " + std::to_string(ends.atSecond);
}

std::string change(const std::string& before, const std::string& after)
{
    return "\n" + before + "became\n" + after;
}

/// Connects and checks that both ends agree with the answer.
bool tryConnection(Scene& scene, const PortPtr& from, const PortPtr& to)
{
    const Ends before = endsOf(from, to);
    const std::string text = scene.text();
    const bool isConnected = from->addConnection(to);
    const Ends after = endsOf(from, to);
    const std::string call = "addConnection of " + pathOf(from) + " and " + pathOf(to);
    // One more, or fewer where the listener disconnected the input first; at both ends alike.
    const bool isMade = after.atFirst == after.atSecond && after.atFirst >= 1 &&
                        after.atFirst <= before.atFirst + 1;
    if (isConnected && !isMade)
        ADD_FAILURE() << call << " answered true, but " << endsText(from, to)
                      << ": the library makes the entries, the listener only answers";
    if (!isConnected && scene.text() != text)
        ADD_FAILURE() << call
                      << " was refused, but the network is another: onPortAddConnection changes "
                         "nothing when it answers false"
                      << change(text, scene.text());
    return isConnected;
}

void tryDisconnection(Scene& scene, const PortPtr& from, const PortPtr& to)
{
    const std::string text = scene.text();
    const bool isDisconnected = to->removeConnection(from);
    const Ends after = endsOf(from, to);
    const std::string call = "removeConnection of " + pathOf(from) + " and " + pathOf(to);
    if (isDisconnected && after.atFirst + after.atSecond > 0)
        ADD_FAILURE() << call << " answered true, but " << endsText(from, to);
    if (!isDisconnected && scene.text() != text)
        ADD_FAILURE() << call
                      << " was refused, but the network is another: onPortRemoveConnection changes "
                         "nothing when it answers false"
                      << change(text, scene.text());
}

/// Empty when the host refused it, as it may.
PortPtr addPortOfSecondType(Scene& scene, Node& node, PortIOType ioType)
{
    const std::string name = scene.name(ioType == PortInput ? "in3" : "out3");
    const PortPtr port = scene.host.addPort(node, ioType, name.c_str(), scene.type(1));
    PortList& list = ioType == PortInput ? node.inputs() : node.outputs();
    return list.findPort(port) >= 0 ? port : nullptr;
}

void bothEndsKnowOfAConnection(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1 out2");
    const NodePtr b = scene.addNode(*scene.top, "beta", "in1 in2", "");
    if (!a || !b)
        return;
    const PortPtr out = scene.output(*a, "out1");
    const PortPtr in = scene.input(*b, "in1");
    if (!tryConnection(scene, out, in)) {
        scene.connect(out, in);
        return;
    }
    tryConnection(scene, out, in);                      // The same pair again.
    tryConnection(scene, scene.output(*a, "out2"), in); // The input has a source.
    tryConnection(scene, in, scene.input(*b, "in2"));   // Two inputs.
    if (const PortPtr stranger = addPortOfSecondType(scene, *a, PortOutput))
        tryConnection(scene, stranger, in); // A refusal leaves the sources that there are.
    tryDisconnection(scene, out, in);
    // Two types: agreed to or refused, as the host likes.
    if (const PortPtr other = addPortOfSecondType(scene, *b, PortInput)) {
        tryConnection(scene, out, scene.input(*b, "in2"));
        tryConnection(scene, out, other);
    }
}

/// Takes the port out, or not, and looks for dead pointers at the other end.
void expectDisconnected(bool isTakenOut, const PortPtr& port, const PortPtr& other, const char* how)
{
    const int left = entriesOf(*other, *port);
    if (isTakenOut && left > 0) {
        ADD_FAILURE() << pathOf(other) << " still lists " << port->getName()
                      << ", which was taken out: as soon as that port dies this is a dead pointer. "
                      << "Disconnect a port " << how;
        other->removeFromConnectedList(port.get());
    }
    if (!isTakenOut && left != entriesOf(*port, *other))
        ADD_FAILURE() << "the removal of a port was refused, but " << endsText(port, other);
}

void portIsDisconnectedBeforeItGoes(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1 out2");
    const NodePtr b = scene.addNode(*scene.top, "beta", "in1 in2", "");
    if (!a || !b)
        return;
    const char* const how = "in onPortListPortRemoved of its node";
    const PortPtr in = scene.input(*b, "in1");
    if (!scene.connect(scene.output(*a, "out1"), in))
        return;
    expectDisconnected(b->inputs().remove(in), in, scene.output(*a, "out1"), how);
    const PortPtr out = scene.output(*a, "out2");
    if (!scene.connect(out, scene.input(*b, "in2")))
        return;
    expectDisconnected(a->outputs().remove(out), out, scene.input(*b, "in2"), how);
}

void compoundPortIsDisconnectedBeforeItGoes(Scene& scene)
{
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    if (!sub || !sub->getAsNode())
        return;
    scene.addCompoundPort(*sub, PortInput, "in1");
    const NodePtr outside = scene.addNode(*scene.top, "alpha", "", "out1");
    const NodePtr inside = scene.addNode(*sub, "beta", "in1", "");
    const PortPtr inner = sub->innerInputs()[0];
    const PortPtr outer = sub->getAsNode()->inputs()[0];
    if (!outside || !inside || !inner || !outer)
        return;
    const PortPtr source = scene.output(*outside, "out1");
    const PortPtr target = scene.input(*inside, "in1");
    if (!scene.connect(source, outer) || !scene.connect(inner, target))
        return;
    const bool isTakenOut = sub->deleteCompoundPort(inner) >= 0;
    expectDisconnected(isTakenOut, inner, target, "in onPortListPortRemoved of the compound");
    const bool isOuterTakenOut = sub->getAsNode()->inputs().findPort(outer) < 0;
    expectDisconnected(isOuterTakenOut, outer, source, "in onPortListPortRemoved of its node");
    if (isTakenOut != isOuterTakenOut)
        ADD_FAILURE() << "deleteCompoundPort took out the " << (isTakenOut ? "inner" : "outer")
                      << " port " << inner->getName() << ", but the other one was refused: the "
                      << "ports mirror each other by position";
}

void portsAreFoundByTheirNames(Scene& scene)
{
    const NodePtr node = scene.addNode(*scene.top, "alpha", "in1 in2", "");
    if (!node)
        return;
    const PortPtr port = scene.input(*node, "in1");
    const std::string before = port->getName();
    const std::string wanted = scene.name("in3");
    port->setName(wanted.c_str());
    const std::string after = port->getName();
    if (after != wanted && after != before)
        ADD_FAILURE() << "a port " << inQuotes(before) << " that was to be called "
                      << inQuotes(wanted) << " is called " << inQuotes(after)
                      << ": a rename is agreed to or refused";
    if (node->inputs()[after.c_str()] != port)
        ADD_FAILURE() << "the inputs do not find the port under its name " << inQuotes(after);
}

void portValuesAreAgreedToOrRefused(Scene& scene)
{
    const NodePtr node = scene.addNode(*scene.top, "alpha", "in1", "");
    if (!node)
        return;
    const PortPtr port = scene.input(*node, "in1");
    const TypePtr before = port->getDataType();
    const TypePtr wanted = scene.type(1);
    const bool isSet = port->setDataType(wanted);
    if (port->getDataType() != (isSet ? wanted : before))
        ADD_FAILURE() << "setDataType answered " << (isSet ? "true" : "false")
                      << ", but the port has " << (isSet ? "not the new" : "another") << " type";
    const auto valueOf = [&port] {
        const char* const value = port->getPortDefaultValue();
        return std::string(value ? value : "");
    };
    const std::string old = valueOf();
    const std::string again = valueOf();
    if (old != again)
        ADD_FAILURE() << "the default value of a port is " << inQuotes(old) << ", then "
                      << inQuotes(again) << ", although nobody set it";
    port->setPortDefaultValue("0.25");
    if (valueOf() != "0.25" && valueOf() != old)
        ADD_FAILURE() << "a port with the default value " << inQuotes(old)
                      << " that was to get \"0.25\" has " << inQuotes(valueOf());
}

} // namespace

const std::vector<Rule>& portRules()
{
    static const std::vector<Rule> rules = {
        {"BothEndsKnowOfAConnection", &bothEndsKnowOfAConnection, true},
        {"PortIsDisconnectedBeforeItGoes", &portIsDisconnectedBeforeItGoes, true},
        {"CompoundPortIsDisconnectedBeforeItGoes", &compoundPortIsDisconnectedBeforeItGoes, true},
        {"PortsAreFoundByTheirNames", &portsAreFoundByTheirNames, true},
        {"PortValuesAreAgreedToOrRefused", &portValuesAreAgreedToOrRefused, true},
    };
    return rules;
}

} // namespace ZEL::Conformance
