#include "zelConformanceScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace ZEL::Conformance {

namespace {

std::vector<std::string> wordsOf(const char* text)
{
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::string portText(Port& port)
{
    const TypePtr type = port.getDataType();
    std::vector<std::string> others;
    for (Port* const other : port.connectedTo())
        others.push_back(pathOf(other));
    std::sort(others.begin(), others.end());
    std::string result = std::string(port.getName()) + ":" + (type ? type->getName() : "-");
    for (const std::string& other : others)
        result += (&other == others.data() ? "=" : ",") + other;
    return result;
}

std::string listText(const char* mark, PortList& list)
{
    std::string result(mark);
    for (Port* const port : list)
        result += " " + portText(*port);
    return result;
}

std::string nodeText(Node& node)
{
    std::string result =
        pathOf(node) + listText(" <", node.inputs()) + listText(" >", node.outputs());
    const CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return result + "\n";
    result += listText(" {<", compound->innerInputs());
    result += listText(" {>", compound->innerOutputs()) + "\n";
    for (const NodePtr& inside : compound->nodes())
        result += nodeText(*inside);
    return result;
}

} // namespace

Scene::Scene(ConformanceHost& theHost) : host(theHost), document(theHost.makeDocument())
{
    root = document ? document->getRootNode() : nullptr;
    top = root ? root->getAsCompound() : nullptr;
}

NodePtr Scene::addNode(Compound& where, const char* word, const char* inputs, const char* outputs)
{
    NodePtr node = host.makeNode(*document, name(word).c_str());
    if (!node) {
        ADD_FAILURE() << "makeNode made no node " << inQuotes(name(word));
        return nullptr;
    }
    for (const PortIOType ioType : {PortInput, PortOutput}) {
        PortList& list = ioType == PortInput ? node->inputs() : node->outputs();
        for (const std::string& portWord : wordsOf(ioType == PortInput ? inputs : outputs)) {
            const std::string portName = name(portWord.c_str());
            const PortPtr port = host.addPort(*node, ioType, portName.c_str(), type(0));
            if (port && list.findPort(port) >= 0)
                continue;
            ADD_FAILURE() << "the host refused the port " << inQuotes(portName) << " of type "
                          << inQuotes(host.dataTypeName(0))
                          << ": let dataTypeName, nameOf and addPort give the kit what it accepts";
            return nullptr;
        }
    }
    if (where.nodes().add(node))
        return node;
    ADD_FAILURE() << "the host refused the node " << inQuotes(name(word))
                  << ": let makeNode and nameOf give the kit what it accepts";
    return nullptr;
}

CompoundPtr Scene::addCompound(Compound& where, const char* word)
{
    CompoundPtr made = where.createNewCompound(name(word).c_str());
    isWithoutCompounds = isWithoutCompounds || !made;
    return made;
}

int Scene::addCompoundPort(Compound& compound, PortIOType ioType, const char* word)
{
    return compound.createCompoundPort(ioType, name(word).c_str(), type(0));
}

PortPtr Scene::input(Node& node, const char* word)
{
    return node.inputs()[name(word).c_str()];
}

PortPtr Scene::output(Node& node, const char* word)
{
    return node.outputs()[name(word).c_str()];
}

bool Scene::connect(const PortPtr& from, const PortPtr& to)
{
    if (from && to && to->addConnection(from))
        return true;
    ADD_FAILURE() << "the host refused to connect " << pathOf(from) << " with " << pathOf(to)
                  << ", a free input of the same type " << inQuotes(host.dataTypeName(0))
                  << ": let dataTypeName(0) give the kit a type whose ports it connects";
    return false;
}

TypePtr Scene::type(int number)
{
    return host.makeDataType(*document, host.dataTypeName(number));
}

std::string Scene::text()
{
    return root ? nodeText(*root) : "";
}

std::string pathOf(const PortPtr& port)
{
    if (!port)
        return "nothing";
    return port->getFullPathName().getName() +
           std::string(port->isCompoundInternalPort() ? " (inner)" : "");
}

std::string pathOf(Node& node)
{
    return node.getFullPathName().getName();
}

std::string inQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

int entriesOf(Port& port, const Port& other)
{
    int count = 0;
    for (const Port* const entry : port.connectedTo())
        count += entry == &other ? 1 : 0;
    return count;
}

} // namespace ZEL::Conformance
