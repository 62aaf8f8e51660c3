#include "zelContainer.h"

#include "zelCompound.h"
#include "zelNode.h"
#include "zelPortOrder.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace ZEL {

namespace {

/// The documents by UUID; owns none of them. Made when the library is loaded.
std::map<std::string, Container*> g_knownContainers;

/// The names in the path; none when it is null.
std::vector<std::string> namesInPath(const char* path)
{
    std::vector<std::string> names;
    if (path)
        Container::tokenizePath(path, names);
    return names;
}

/// The node that the first count names lead to, from the root node down; empty when there is none.
AddRefWrapper<Node>
findNode(Container& container, const std::vector<std::string>& names, std::size_t count)
{
    AddRefWrapper<Node> node = container.getRootNode();
    if (!node || names[0] != node->getName())
        return nullptr;
    for (std::size_t i = 1; node && i < count; ++i) {
        const AddRefWrapper<Compound> compound = node->getAsCompound();
        node = compound ? compound->nodes()[names[i].c_str()] : nullptr;
    }
    return node;
}

/// The output that the path names, or else the input.
AddRefWrapper<Port> findConnectionEnd(Container& container, const char* path)
{
    AddRefWrapper<Port> port = container.findPortFromPath(path, PortOutput, Container::eSearchNode);
    return port ? port : container.findPortFromPath(path, PortInput, Container::eSearchNode);
}

/// True when the port's node owns the compound that the other port's node lies in.
bool isSeenFromInside(const AddRefWrapper<Port>& port, const AddRefWrapper<Port>& other)
{
    const AddRefWrapper<Node> node = port->getParentNode();
    const AddRefWrapper<Node> otherNode = other->getParentNode();
    if (!node || !otherNode)
        return false;
    const AddRefWrapper<Compound> compound = node->getAsCompound();
    return compound && compound == otherNode->getParentCompound();
}

} // namespace

Container::Container() = default;

Container::~Container() = default;

void Container::hostOperation() {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the published signature.
void Container::tokenizePath(std::string path, std::vector<std::string>& tokens)
{
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('.', begin), path.size());
        tokens.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
}

AddRefWrapper<Node> Container::findNodeFromPath(const char* path)
{
    const std::vector<std::string> names = namesInPath(path);
    return names.empty() ? nullptr : findNode(*this, names, names.size());
}

AddRefWrapper<Port>
Container::findPortFromPath(const char* path, PortIOType ioType, ESearchMode mode)
{
    const std::vector<std::string> names = namesInPath(path);
    if (names.size() < 2)
        return nullptr;
    const AddRefWrapper<Node> node = findNode(*this, names, names.size() - 1);
    if (!node)
        return nullptr;
    const char* const name = names.back().c_str();
    AddRefWrapper<Port> port = (ioType == PortInput ? node->inputs() : node->outputs())[name];
    if (port || mode != eSearchNodeAndInner)
        return port;
    // The inner lists are crossed: a port of the direction asked for stands in the other one.
    const AddRefWrapper<Compound> compound = node->getAsCompound();
    if (compound)
        port = (ioType == PortInput ? compound->innerOutputs() : compound->innerInputs())[name];
    return port;
}

bool Container::findPortsForConnection(const char* pathA,
                                       const char* pathB,
                                       AddRefWrapper<Port>* outPort,
                                       AddRefWrapper<Port>* inPort)
{
    AddRefWrapper<Port> a = findConnectionEnd(*this, pathA);
    if (!a)
        return false;
    AddRefWrapper<Port> b = findConnectionEnd(*this, pathB);
    if (!b)
        return false;
    if (a->getPortIOType() == b->getPortIOType()) {
        // One of the two must be a compound node's port that is meant from inside.
        if (isSeenFromInside(a, b)) {
            a = reverseThisExternalPort(a);
        } else if (isSeenFromInside(b, a)) {
            b = reverseThisExternalPort(b);
        } else {
            std::printf("bad set of ports in findPortsForConnection: %s and %s\n", pathA, pathB);
            return false;
        }
    }
    // Contract: an end without a mirror is empty, and the result is true all the same.
    SwapPortsForOutputInput(a, b);
    *outPort = a;
    *inPort = b;
    return true;
}

AddRefWrapper<Port> Container::reverseThisExternalPort(const AddRefWrapper<Port>& port)
{
    const AddRefWrapper<Node> node = port ? port->getParentNode() : nullptr;
    const AddRefWrapper<Compound> compound = node ? node->getAsCompound() : nullptr;
    return compound ? compound->getReversePort(port) : nullptr;
}

void Container::registerWithUUID(const char* uuid, Container* container)
{
    g_knownContainers[uuid] = container;
}

Container* Container::getFromUUID(const char* uuid)
{
    const auto place = g_knownContainers.find(uuid);
    return place == g_knownContainers.end() ? nullptr : place->second;
}

} // namespace ZEL
