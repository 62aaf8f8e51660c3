#include "zelInvariants.h"

#include "zelFuzzUniverse.h"

#include <set>

/// Of the address sanitizer, null without it: prints who made what lies there, and who freed it.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): the sanitizer's name.
extern "C" void __asan_describe_address(void* address) __attribute__((weak));

namespace zelFuzz {

namespace {

std::string pathOf(ZEL::Port& port)
{
    return port.getFullPathName().getName() +
           std::string(port.isCompoundInternalPort() ? " inner" : "");
}

bool isPlainInput(ZEL::Port& port)
{
    return port.getPortIOType() == ZEL::PortInput && !port.isCompoundInternalPort();
}

void checkConnections(const Census& census, ZEL::Port& port)
{
    for (ZEL::Port* const other : port.connectedTo()) {
        if (!census.ports.has(other) && __asan_describe_address)
            __asan_describe_address(other);
        expect(census.ports.has(other), pathOf(port) + ": connected to a port that is gone");
        expect(!isPlainInput(port) || !isPlainInput(*other),
               pathOf(port) + ": connected to " + pathOf(*other) + ", and neither can send");
        expect(countIn(port.connectedTo(), other) == countIn(other->connectedTo(), &port),
               pathOf(port) + ": " + pathOf(*other) + " does not know it as often");
    }
}

template <class T>
void checkCounts(const Counted<T>& objects, const char* kind)
{
    for (T* const object : objects.all()) {
        // A forward move leaves the places and references of a port uneven.
        if constexpr (std::is_same_v<T, ZEL::Port>) {
            if (object->isPortHidden())
                continue;
        }
        expect(object->getRefCount() == objects.count(object),
               std::string(kind) + ": " + std::to_string(object->getRefCount()) +
                   " references, held " + std::to_string(objects.count(object)) + " times");
    }
}

std::string typeOf(ZEL::Port& port)
{
    const TypePtr type = port.getDataType();
    return type ? type->getName() : "-";
}

void checkMirror(ZEL::PortList& outer, ZEL::PortList& inner)
{
    expect(outer.size() == inner.size(), "a compound whose inner ports are more or fewer");
    for (int i = 0; i < outer.size(); ++i) {
        expect(std::string(outer[i]->getName()) == inner[i]->getName(),
               pathOf(*outer[i]) + ": its inner port is called otherwise");
        expect(typeOf(*outer[i]) == typeOf(*inner[i]),
               pathOf(*outer[i]) + ": its inner port has another type");
    }
}

void checkMirrors(ZEL::Compound& compound)
{
    const NodePtr owner = compound.getAsNode();
    if (!owner || owner->getAsCompound() != &compound ||
        !static_cast<FuzzCompound&>(compound).isMirrored)
        return;
    // Nodes that share lists by assignment may have a compound each.
    for (ZEL::PortList* const list : {&owner->inputs(), &owner->outputs()}) {
        if (list->getRefCount() > 1 || list->getParent() != owner.get())
            return;
    }
    checkMirror(owner->inputs(), compound.innerInputs());
    checkMirror(owner->outputs(), compound.innerOutputs());
}

void addText(ZEL::PortList& list, std::string& text, std::multiset<std::string>& lines)
{
    text += "|";
    for (ZEL::Port* const port : list) {
        text += std::string(" ") + port->getName() + ":" + typeOf(*port);
        for (ZEL::Port* const other : port->connectedTo())
            lines.insert(pathOf(*port) + " - " + pathOf(*other) + "\n");
    }
}

void addText(ZEL::Node& node, std::string& text, std::multiset<std::string>& lines)
{
    text += node.getFullPathName().getName();
    addText(node.inputs(), text, lines);
    addText(node.outputs(), text, lines);
    const CompoundPtr compound = node.getAsCompound();
    if (compound) {
        addText(compound->innerInputs(), text, lines);
        addText(compound->innerOutputs(), text, lines);
    }
    text += "\n";
    for (int i = 0; compound && i < compound->nodes().size(); ++i)
        addText(*compound->nodes()[i], text, lines);
}

} // namespace

void checkInvariants(const Universe& universe)
{
    const Census census = universe.census();
    checkCounts(census.nodes, "a node");
    checkCounts(census.compounds, "a compound");
    checkCounts(census.lists, "a list of ports");
    checkCounts(census.nodeLists, "a list of nodes");
    checkCounts(census.ports, "a port");
    for (ZEL::Port* const port : census.ports.all()) {
        checkConnections(census, *port);
        port->getParentNode();
        port->getParentCompound();
    }
    for (ZEL::Compound* const compound : census.compounds.all())
        checkMirrors(*compound);
    for (ZEL::Node* const node : census.nodes.all())
        node->getFullPathName();
}

std::string networkText(Universe& universe)
{
    std::string text;
    std::multiset<std::string> lines;
    addText(*universe.root, text, lines);
    for (const std::string& line : lines)
        text += line;
    return text;
}

} // namespace zelFuzz
