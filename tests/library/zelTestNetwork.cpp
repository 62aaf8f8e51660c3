#include "zelTestNetwork.h"

#include <numeric>
#include <set>
#include <sstream>

namespace ZEL {

namespace {

using Lines = std::multiset<std::string>;

/// The connections of the sending ports in the list.
void addLines(PortList& list, Lines& lines)
{
    for (Port* port : list) {
        for (Port* other : port->connectedTo())
            lines.insert(port->getFullPathName().getName() +
                         (" > " + std::string(other->getFullPathName().getName()) + "\n"));
    }
}

void addLines(Compound& compound, Lines& lines)
{
    addLines(compound.innerInputs(), lines);
    for (NodeArg node : compound.nodes()) {
        addLines(node->outputs(), lines);
        if (node->isCompound())
            addLines(*node->getAsCompound(), lines);
    }
}

/// Calls add(name, type) for every name in the text.
template <class Add>
void forEachName(const char* text, Add add)
{
    std::istringstream stream(text);
    for (std::string name; stream >> name;)
        add(name.c_str(), PortDataType::createNew("Float"));
}

void addPorts(PortList& list, const char* text)
{
    forEachName(text, [&](const char* name, TypeArg type) { list.addPort(name, type); });
}

void addPorts(Compound& made, const char* inputs, const char* outputs)
{
    forEachName(inputs, [&](const char* name, TypeArg type) {
        made.createCompoundPort(PortInput, name, type);
    });
    forEachName(outputs, [&](const char* name, TypeArg type) {
        made.createCompoundPort(PortOutput, name, type);
    });
}

} // namespace

bool Questions::ask(const std::string& question)
{
    log += (log.empty() ? "" : "; ") + question;
    if (const std::function<void()> action = std::exchange(during, nullptr))
        action();
    return refused.empty() || question.find(refused) == std::string::npos;
}

std::string names(const PortList& list)
{
    std::string result;
    for (const Port* port : list)
        result += (result.empty() ? "" : " ") + std::string(port->getName());
    return result;
}

std::string pathOf(NodeArg node)
{
    return node ? node->getFullPathName().getName() : "-";
}

std::string pathOf(PortArg port)
{
    const char* const mark = port && port->isCompoundInternalPort() ? " inner" : "";
    return (port ? port->getFullPathName().getName() : "-") + std::string(mark);
}

std::string text(Compound& compound)
{
    Lines lines;
    addLines(compound, lines);
    return std::accumulate(lines.begin(), lines.end(), std::string());
}

void TestNode::onThisNodeDeleted()
{
    ask("forget", "me");
    Node::onThisNodeDeleted();
}

AddRefWrapper<Compound> TestCompound::createNewCompound(const char* name)
{
    const AddRefWrapper<Node> node(new TestNode(m_questions, getAsNode()->getContainer()));
    node->setName(name);
    return nodes().add(node) ? new TestCompound(m_questions, node) : nullptr;
}

TestNetwork::TestNetwork(const char* inputs, const char* outputs)
    : root(new TestNode(questions, this))
{
    root->setName("Top");
    addPorts(*new TestCompound(questions, root), inputs, outputs);
    questions.take();
}

AddRefWrapper<Node>
TestNetwork::addNode(const char* path, const char* name, const char* inputs, const char* outputs)
{
    AddRefWrapper<Node> node(new TestNode(questions, this));
    node->setName(name);
    addPorts(node->inputs(), inputs);
    addPorts(node->outputs(), outputs);
    EXPECT_TRUE(compound(path)->nodes().add(node));
    questions.take();
    return node;
}

AddRefWrapper<Compound> TestNetwork::addCompound(const char* path,
                                                 const char* name,
                                                 const char* inputs,
                                                 const char* outputs)
{
    AddRefWrapper<Compound> made = compound(path)->createNewCompound(name);
    addPorts(*made, inputs, outputs);
    questions.take();
    return made;
}

void TestNetwork::connect(const char* pathA, const char* pathB)
{
    AddRefWrapper<Port> out;
    AddRefWrapper<Port> in;
    EXPECT_TRUE(findPortsForConnection(pathA, pathB, &out, &in) && in->addConnection(out));
    questions.take();
}

AddRefWrapper<Compound> TestNetwork::compound(const char* path)
{
    return findNodeFromPath(path)->getAsCompound();
}

AddRefWrapper<Port> TestNetwork::port(const char* path)
{
    const AddRefWrapper<Port> out = findPortFromPath(path, PortOutput, eSearchNode);
    return out ? out : findPortFromPath(path, PortInput, eSearchNode);
}

} // namespace ZEL
