#include "saving/saveCheck.h"

#include "base/utf8.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "document/node.h"
#include "document/origins.h"
#include "document/rules.h"
#include "format/piece.h"

#include <cstring>
#include <unordered_map>

namespace shading {

namespace {

bool isNameCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == ':' || byte >= 0x80U;
}

/// Why the format has no such name; empty when it has.
std::string savedNameProblem(const std::string& name)
{
    if (!isReachable(name))
        return nameProblem(name);
    if (!isXmlText(name))
        return "its name has characters that XML cannot hold";
    bool isGood = name[0] < '0' || name[0] > '9';
    for (const char c : name)
        isGood = isGood && isNameCharacter(c);
    return isGood ? "" : "a name has letters, digits and _, and begins with no digit";
}

class SaveCheck {
public:
    explicit SaveCheck(DraftNetwork& network) : m_network(network) {}

    std::vector<SaveProblem> run()
    {
        const NodePtr root = m_network.document().getRootNode();
        checkPorts(*root);
        checkInside(*root);
        return m_problems;
    }

private:
    void add(const std::string& path, const std::string& reason)
    {
        m_problems.push_back({path, reason});
    }

    void checkNode(ZEL::Node& node)
    {
        m_network.progress().step();
        const std::string type = node.getNodeTypeName();
        const Piece* const element = elementOf(node);
        const std::string problem = savedNameProblem(node.getName());
        if (!problem.empty() && !hasReadName(element, node.getName()))
            add(pathOf(node), problem);
        const ElementKind wanted = node.isCompound() ? ElementKind::Graph : ElementKind::Node;
        if ((!element || type != element->text) && !savedNameProblem(type).empty())
            add(pathOf(node), "its node type \"" + type + "\" is no name for an element");
        else if (kindOf(type) != wanted)
            add(pathOf(node), "its node type \"" + type + "\" means something else in the format");
        checkPorts(node);
        checkInside(node);
    }

    void checkInside(ZEL::Node& node)
    {
        const CompoundPtr compound = node.getAsCompound();
        if (!compound)
            return;
        std::unordered_map<std::string, int> names;
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list)
                checkDouble(*port, ++names[port->getName()] > 1);
            if (list == &node.inputs() &&
                tieOf(node)) // These stand in the definition that it implements.
                names.clear();
        }
        names.reserve(static_cast<std::size_t>(compound->nodes().size()));
        for (const NodePtr& inner : compound->nodes()) {
            m_network.progress().step();
            if (++names[inner->getName()] > 1 && !hasReadName(elementOf(*inner), inner->getName()))
                add(pathOf(*inner), "a sibling has the same name");
        }
        for (; !names.empty(); names.erase(names.begin()))
            m_network.progress().step();
        for (ZEL::Port* const port : compound->innerOutputs())
            checkSource(*port);
        checkMirrors(*compound);
        for (const NodePtr& inner : compound->nodes())
            checkNode(*inner);
    }

    void checkPorts(ZEL::Node& node)
    {
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list)
                checkDouble(*port, !node.isCompound() && (*list)[port->getName()].get() != port);
            for (ZEL::Port* const port : *list)
                checkPort(*port);
        }
        for (ZEL::Port* const port : node.inputs())
            checkSource(*port);
    }

    void checkDouble(ZEL::Port& port, bool isDouble)
    {
        if (isDouble && !isAsRead(port))
            add(pathOf(port), "a sibling has the same name");
    }

    void checkPort(ZEL::Port& port)
    {
        const std::string problem = savedNameProblem(port.getName());
        if (!problem.empty() && !isAsRead(port))
            add(pathOf(port), problem);
        if (!isXmlText(port.getPortDefaultValue()))
            add(pathOf(port), "its value has characters that XML cannot hold");
        if (!isXmlText(typeNameOf(port)))
            add(pathOf(port), "its type has characters that XML cannot hold");
    }

    /// The ports of a compound are one element with the inner ones.
    void checkMirrors(ZEL::Compound& compound)
    {
        const NodePtr node = compound.getAsNode();
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            for (ZEL::Port* const port : *list) {
                const PortPtr mirror = compound.getReversePort(port);
                if (!mirror || std::strcmp(mirror->getName(), port->getName()) != 0 ||
                    typeNameOf(*mirror) != typeNameOf(*port))
                    add(pathOf(*port), "its inner port is another one");
            }
        }
    }

    void checkSource(ZEL::Port& receiver)
    {
        ZEL::PortList& sources = receiver.connectedTo();
        if (sources.size() > 1)
            add(pathOf(receiver),
                "it has several sources: " + pathOf(*sources[0]) + ", " + pathOf(*sources[1]));
        const PortPtr source = sources[0];
        if (!source || sources.size() > 1)
            return;
        if (!isInScope(*source, receiver))
            add(pathOf(receiver), "its source " + pathOf(*source) + " is in another compound");
        else if (source->isCompoundInternalPort() && !mayLeadStraight(receiver))
            add(pathOf(receiver), "it is fed straight by the compound's input " + pathOf(*source));
        else
            checkSight(*source, receiver);
    }

    /// A name means the first that has it, and a graph here before one of the document.
    void checkSight(ZEL::Port& source, ZEL::Port& receiver)
    {
        const NodePtr node = source.getParentNode();
        const bool isInner = source.isCompoundInternalPort();
        ZEL::PortList& list = isInner ? source.getParentCompound()->innerInputs() : node->outputs();
        bool isHidden = list[source.getName()].get() != &source;
        if (!isInner) {
            const ZEL::Node* const found = firstNamed(*levelOf(receiver), *node);
            isHidden = isHidden || (found && found != node.get());
        }
        if (isHidden)
            add(pathOf(receiver),
                "its source " + pathOf(source) + " is hidden by an earlier one of its name");
    }

    /// The node of the compound that its name means; for a graph, the first graph of that name.
    static ZEL::Node* firstNamed(ZEL::Compound& compound, ZEL::Node& like)
    {
        const NodePtr first = compound.nodes()[like.getName()];
        if (!first || !like.isCompound() || first->isCompound())
            return first.get();
        for (const NodePtr& node : compound.nodes()) {
            if (node->isCompound() && std::strcmp(node->getName(), like.getName()) == 0)
                return node.get();
        }
        return nullptr;
    }

    static bool hasReadName(const Piece* element, const std::string& name)
    {
        const std::string read = element ? attributeOf(*element, "name") : "";
        if (!element || !read.empty())
            return element && read == name;
        // The name was made up: that of the element, with a number behind it.
        const std::string_view made = element->text;
        return name.compare(0, made.size(), made) == 0 &&
               name.find_first_not_of("0123456789", made.size()) == std::string::npos;
    }

    static const Piece* elementOf(ZEL::Node& node)
    {
        const auto* const own = dynamic_cast<const Node*>(&node);
        return own ? own->element() : nullptr;
    }

    /// Not renamed; a port without an element is as its definition has it.
    bool isAsRead(ZEL::Port& port)
    {
        const Piece* const element = m_network.document().origins().elementOf(port);
        if (element)
            return hasReadName(element, port.getName());
        const NodePtr node = port.getParentNode();
        const auto* const own = dynamic_cast<const Node*>(node.get());
        return own && own->definition();
    }

    DraftNetwork& m_network;
    std::vector<SaveProblem> m_problems;
};

} // namespace

std::vector<SaveProblem> checkSavable(DraftNetwork& network)
{
    return SaveCheck(network).run();
}

} // namespace shading
