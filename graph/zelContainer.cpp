#include "zelContainer.h"

#include "core/zelMadeEarly.h"
#include "core/zelNameIndex.h"
#include "core/zelSequence.h"
#include "core/zelText.h"
#include "zelCompound.h"
#include "zelNode.h"
#include "zelPlainAnswers.h"
#include "zelPortOrder.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace ZEL {

namespace {

/// The documents by UUID; owns none of them.
std::map<std::string, Container*>& knownContainers()
{
    static std::map<std::string, Container*> made;
    return made;
}
ZEL_MADE_EARLY(knownContainers);

/// Takes the names of a path one after the other: one more than it has dots.
class NameReader {
public:
    explicit NameReader(std::string_view path) : m_rest(path) {}

    /// False when there is no name left.
    bool next(std::string_view& name)
    {
        if (m_isDone)
            return false;
        const std::size_t dot = m_rest.find('.');
        name = m_rest.substr(0, dot);
        m_isDone = dot == std::string_view::npos;
        if (!m_isDone)
            m_rest.remove_prefix(dot + 1);
        return true;
    }

private:
    std::string_view m_rest;
    bool m_isDone = false;
};

/// The path without a dot at its end: that one adds no empty name.
std::string_view withoutLastDot(std::string_view path)
{
    if (!path.empty() && path.back() == '.')
        path.remove_suffix(1);
    return path;
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

/// Follows the names that a path is made of, without copying them. As long as the library itself
/// answers, nothing can change or die, and nothing is held but the node that the way began at. A
/// host's class is asked with the node and the compound held.
class PathWalker {
public:
    /// Goes from the root node down as the names say.
    PathWalker(Container& container, std::string_view path) : m_held(container.getRootNode())
    {
        NameReader names(path);
        std::string_view name;
        names.next(name);
        if (!m_held || !hasName(*m_held, name))
            return;
        m_node = m_held.get();
        while (m_node && names.next(name)) {
            if (!goUnasked(name))
                goAsking(name);
        }
    }

    /// Where the names lead to; null when there is no such node. Alive until the host is asked.
    Node* node() const { return m_node; }

    /// The node, held.
    const AddRefWrapper<Node>& holdNode()
    {
        m_held = m_node;
        return m_held;
    }

    /// A port of the node, by name; empty when the list has none.
    AddRefWrapper<Port> findPort(const PortList& ports, std::string_view name)
    {
        Sequence entries = ports.entries();
        const Sequence::Unasked found =
            ports.holdsReferences() ? entries.findUnasked(name) : entries.scanUnasked(name);
        if (found.isSure)
            return static_cast<Port*>(found.entry);
        holdNode();
        return ports.findNamed(name);
    }

private:
    /// Goes down by one name. False, and nothing happened, when the host has to be asked, or when
    /// nobody else holds what the way began at: then it goes as soon as it is left.
    bool goUnasked(std::string_view name)
    {
        if (m_held->getRefCount() == 1 || !hasPlainCompound(*m_node))
            return false;
        const Compound* const compound = m_node->m_ownedCompound.get();
        if (!compound) {
            m_node = nullptr;
            return true;
        }
        if (!hasPlainNodes(*compound))
            return false;
        const Sequence::Unasked found = compound->m_nodes->entries().findUnasked(name);
        if (found.isSure)
            m_node = static_cast<Node*>(found.entry);
        return found.isSure;
    }
    void goAsking(std::string_view name)
    {
        const AddRefWrapper<Compound> compound = holdNode()->getAsCompound();
        m_held = compound ? compound->nodes().findNamed(name) : nullptr;
        m_node = m_held.get();
    }

    AddRefWrapper<Node> m_held; ///< The node, or the one above it where the host was asked last.
    Node* m_node = nullptr;     ///< Not owned. Null: the names lead nowhere.
};

Container::Container() = default;

Container::~Container() = default;

void Container::hostOperation() {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the published signature.
void Container::tokenizePath(std::string path, std::vector<std::string>& tokens)
{
    if (path.empty())
        return;
    NameReader names(withoutLastDot(path));
    for (std::string_view name; names.next(name);)
        tokens.emplace_back(name);
}

AddRefWrapper<Node> Container::findNodeFromPath(const char* path)
{
    return path && *path ? PathWalker(*this, withoutLastDot(path)).node() : nullptr;
}

AddRefWrapper<Port>
Container::findPortFromPath(const char* path, PortIOType ioType, ESearchMode mode)
{
    const std::string_view names = withoutLastDot(path ? path : "");
    const std::size_t lastDot = names.rfind('.');
    if (lastDot == std::string_view::npos)
        return nullptr;
    PathWalker way(*this, names.substr(0, lastDot));
    Node* const node = way.node();
    if (!node)
        return nullptr;
    const std::string_view name = names.substr(lastDot + 1);
    AddRefWrapper<Port> port =
        way.findPort(ioType == PortInput ? node->inputs() : node->outputs(), name);
    if (port || mode != eSearchNodeAndInner)
        return port;
    // The inner lists are crossed: a port of the direction asked for stands in the other one.
    if (const AddRefWrapper<Compound> compound = way.holdNode()->getAsCompound())
        port = way.findPort(
            ioType == PortInput ? compound->innerOutputs() : compound->innerInputs(), name);
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
    if (uuid)
        knownContainers()[uuid] = container;
}

Container* Container::getFromUUID(const char* uuid)
{
    const auto place = knownContainers().find(orEmpty(uuid));
    return !uuid || place == knownContainers().end() ? nullptr : place->second;
}

} // namespace ZEL
