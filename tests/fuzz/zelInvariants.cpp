#include "zelInvariants.h"

#include "zelFuzzUniverse.h"
#include "zelListModel.h"

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
    Counted<ZEL::Port> others;
    for (ZEL::Port* const other : port.connectedTo())
        others.add(other);
    for (ZEL::Port* const other : others.all()) {
        if (!census.ports.has(other) && __asan_describe_address)
            __asan_describe_address(other);
        expect(census.ports.has(other),
               [&] { return pathOf(port) + ": connected to a port that is gone"; });
        const auto textOfPair = [&](const char* text) {
            return pathOf(port) + " and " + pathOf(*other) + text;
        };
        expect(!isPlainInput(port) || !isPlainInput(*other),
               [&] { return textOfPair(": connected, and neither can send"); });
        expect(others.count(other) == countIn(other->connectedTo(), &port),
               [&] { return textOfPair(": one does not know the other as often"); });
    }
}

/// Who a port says it belongs to, against what the class of its parent says.
class ParentCheck {
public:
    void check(ZEL::Port& port)
    {
        if (port.getParent() != m_parent) {
            m_parent = port.getParent();
            m_compound = dynamic_cast<ZEL::Compound*>(m_parent);
            auto* const node = dynamic_cast<ZEL::Node*>(m_parent);
            m_node = node || !m_compound ? node : m_compound->getAsNode().get();
        }
        expect(port.getParentNode() == m_node && port.getParentCompound() == m_compound &&
                   port.isCompoundInternalPort() == (m_compound != nullptr),
               [&] { return pathOf(port) + ": another node or compound than its parent's class"; });
    }

private:
    ZEL::PortNotification* m_parent = nullptr; ///< Of the port before: ports stand in groups.
    ZEL::Compound* m_compound = nullptr;
    ZEL::Node* m_node = nullptr;
};

/// Single answers of a long list against a walk over it, at a few places.
template <class List, class Entry>
void checkLong(List& list, int salt, Entry* stranger)
{
    constexpr int kShort = 32;
    if (list.size() <= kShort)
        return;
    const ListModel<List, Entry> model(list);
    model.checkSize();
    model.checkAt(-1);
    model.checkAt(model.size());
    int last = 0;
    for (; list[last]; ++last)
        ;
    expect(last == model.size(), "a list ends at another place than a walk by index");
    for (int i = 0; i < 3; ++i, salt = (salt * 7 + 5) & 0xffff) {
        const int place = salt % model.size();
        Entry* const entry = model.entries[static_cast<std::size_t>(place)];
        model.checkAt(place);
        model.checkName(entry->getName());
        if constexpr (std::is_same_v<Entry, ZEL::Port>) {
            expect(list.findPort(entry) == model.placeOf(entry), "findPort finds another place");
            expect(list.findPort(stranger) < 0, "findPort finds a stranger");
        }
    }
    model.checkName("no such name");
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
        expect(object->getRefCount() == objects.count(object), [&] {
            return std::string(kind) + ": " + std::to_string(object->getRefCount()) +
                   " references, held " + std::to_string(objects.count(object)) + " times";
        });
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
    ZEL::Port* const stranger = universe.stranger.get();
    ParentCheck parents;
    for (ZEL::Port* const port : census.ports.all()) {
        checkConnections(census, *port);
        checkLong(port->connectedTo(), universe.moment, stranger);
        parents.check(*port);
    }
    for (ZEL::PortList* const list : census.lists.all())
        checkLong(*list, universe.moment, stranger);
    for (ZEL::NodeList* const list : census.nodeLists.all())
        checkLong(*list, universe.moment, universe.root.get());
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
