// The edits of attributes that the network does not show.

#include "base/utf8.h"
#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/definedNode.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "document/names.h"
#include "document/origins.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "format/value.h"
#include "format/xml.h"

#include <algorithm>
#include <unordered_map>

namespace shading {

namespace {

/// The attributes of nodes and ports that other edits, or none, change.
const struct {
    const char* name;
    const char* edit;
} kManaged[] = {
    {"name", "rename changes it"},
    {"type", "it is that of the definition, or of the port as it was added"},
    {"value", "set changes it"},
    {"node", "create makes a node of another type"},
    {"nodedef", "create makes a node of another definition"},
    {"nodename", "connect and disconnect change it"},
    {"nodegraph", "connect and disconnect change it"},
    {"output", "connect and disconnect change it"},
    {"interfacename", "connect and disconnect change it"},
    {"inherit", "no edit changes what a definition is"},
};

/// Of what a `nodedef` or an `implementation` says. Its ports are elements inside.
bool isOfDefinition(const Piece& element, const std::string& name)
{
    const bool isPort = element.text == "input" || element.text == "output";
    const Piece& whole = isPort && element.parent ? *element.parent : element;
    if (whole.text != "nodedef" && whole.text != "implementation")
        return false;
    return name != "value" && std::any_of(std::begin(kManaged), std::end(kManaged),
                                          [&](const auto& known) { return name == known.name; });
}

/// The attributes by which a look and the like name a node of the document.
bool isNodeName(const Piece& element, const std::string& name)
{
    return (name == "material" && element.text == "materialassign") || name == "nodegraph" ||
           name == "nodename";
}

/// The child that the network does not show, of that name. One without a name is called like its
/// element, with a number from 2 where several are.
const Piece* outsideChild(const Backdrops& backdrops,
                          const Piece& parent,
                          const std::string& name,
                          bool isNetwork)
{
    std::unordered_map<std::string_view, int> unnamed;
    const Piece* found = nullptr;
    for (const Piece& child : ElementsIn(parent)) {
        if (isNetwork && kindOf(child) != ElementKind::Other)
            continue;
        const BackdropPtr backdrop = backdrops.of(child);
        if (backdrop && !backdrop->name().empty())
            continue; // Found by the name that it has now.
        const std::string own = attributeOf(child, "name");
        if (own == name)
            return &child;
        const int number = own.empty() ? ++unnamed[child.text] : 0;
        const std::string made =
            std::string(child.text) + (number > 1 ? std::to_string(number) : "");
        if (own.empty() && made == name && !found)
            found = &child;
    }
    return found;
}

/// What an owner is called beside the network.
std::string nameOf(const AttributeOwner& owner)
{
    if (owner.port)
        return shortNameOf(*owner.port);
    if (!owner.element)
        return owner.node->getName();
    const std::string name = attributeOf(*owner.element, "name");
    return name.empty() ? std::string(owner.element->text) : name;
}

} // namespace

std::string Edits::attributeProblem(const AttributeOwner& owner, const std::string& name)
{
    if (owner.element) {
        const bool isBackdrop = owner.element->text == "backdrop";
        if (isBackdrop && (name == "name" || name == "contains"))
            return "backdrop changes it";
        if (name == "name")
            return "no edit renames what the network does not show";
        return isOfDefinition(*owner.element, name) ? "no edit changes what a definition is" : "";
    }
    const bool isPort = owner.port && owner.port->getParentNode()->isCompound();
    for (const auto& known : kManaged) {
        if (name == known.name)
            return isPort && name == "name" ? "port rename changes it" : known.edit;
    }
    return "";
}

bool Edits::findOwner(const std::string& path, AttributeOwner& owner)
{
    owner = {};
    owner.node = m_document.findNodeFromPath(path.c_str());
    for (const ZEL::PortIOType ioType : {ZEL::PortInput, ZEL::PortOutput}) {
        if (!owner.node && !owner.port)
            owner.port =
                m_document.findPortFromPath(path.c_str(), ioType, ZEL::Container::eSearchNode);
    }
    if (const BackdropPtr backdrop = backdropAt(path); !owner.node && !owner.port && backdrop)
        owner.element = &backdrop->element();
    const std::size_t dot = path.rfind('.');
    AttributeOwner around;
    if (!owner.node && !owner.port && !owner.element && dot != std::string::npos &&
        findOwner(path.substr(0, dot), around)) {
        const Piece* const parent = m_document.attributes().elementOf(around);
        owner.element = parent ? outsideChild(m_document.backdrops(), *parent, path.substr(dot + 1),
                                              !around.element)
                               : nullptr;
    }
    return owner.node || owner.port || owner.element || fail(path, "no such element");
}

bool Edits::getAttribute(const std::string& path, const std::string& name, std::string& value)
{
    AttributeOwner owner;
    if (!findOwner(path, owner))
        return false;
    std::string problem;
    if (!owner.element) // What the network shows is another view's.
        problem = attributeProblem(owner, name);
    value = m_document.attributes().get(owner, name);
    if (problem.empty() && value.empty())
        problem = "it has no such attribute";
    return problem.empty() || fail(path + ": " + name, problem);
}

/// The node that an element at the path means: of the graph around it, or else of the document.
NodePtr Edits::nodeNamed(const std::string& path, const std::string& name, bool isOfDocument)
{
    std::string around = path;
    NodePtr node = isOfDocument ? m_document.getRootNode() : nullptr;
    while (!node) {
        around.resize(around.rfind('.'));
        node = m_document.findNodeFromPath(around.c_str());
    }
    const CompoundPtr graph =
        node->isCompound() ? node->getAsCompound() : node->getParentCompound();
    NodePtr found = graph->nodes()[name.c_str()];
    return found ? found : m_document.getRootNode()->getAsCompound()->nodes()[name.c_str()];
}

bool Edits::setAttribute(const std::string& path, const std::string& name, const std::string& value)
{
    AttributeOwner owner;
    if (!findOwner(path, owner))
        return false;
    const std::string subject = path + ": " + name;
    Attributes& attributes = m_document.attributes();
    if (!nameProblem(name).empty() && attributes.get(owner, name).empty())
        return fail(subject, nameProblem(name));
    std::string problem = attributeProblem(owner, name);
    if (problem.empty() && !isXmlText(value))
        problem = "its value has characters that XML cannot hold";
    const bool isBackdrop = owner.element && owner.element->text == "backdrop";
    const bool isSize = isBackdrop && (name == "width" || name == "height");
    if (problem.empty() && (name == "xpos" || name == "ypos" || isSize))
        problem = valueProblem("float", value);
    if (problem.empty() && owner.port && !attributes.elementOf(owner)) {
        const NodePtr node = owner.port->getParentNode();
        if (!node->isCompound() && owner.port->getPortIOType() == ZEL::PortOutput)
            problem = "the format gives an output of a plain node no attributes";
        else if (tieOf(*node) && owner.port->getPortIOType() == ZEL::PortInput)
            problem = "the nodedef of its graph declares it: name it there";
        else if (m_document.origins().isImplied(*owner.port))
            problem = "the document does not declare this input";
    }
    AttributeValue after = {value, nullptr};
    if (problem.empty() && owner.element && isNodeName(*owner.element, name) && !value.empty()) {
        after.named = nodeNamed(path, value, name == "material");
        if (!after.named)
            problem = "it sees no node \"" + value + "\"";
    }
    if (problem.empty() && attributes.get(owner, name) == value)
        problem = value.empty() ? "it has no such attribute" : "it has that value";
    if (!problem.empty())
        return fail(subject, problem);
    const std::string what = name + " of " + nameOf(owner);
    const std::string title =
        value.empty() ? "Remove " + what : "Set " + what + " to " + shortValue(value);
    return run(named(title, {"attribute", path, name, value}), subject, [&]() -> std::string {
        attributes.set(owner, name, after);
        if (name != "version" || !owner.node || owner.node->isCompound())
            return "";
        Node& node = static_cast<Node&>(*owner.node);
        const DefinitionPtr former = node.definition();
        redefineNode(m_document, node);
        return former && !node.definition() ? "no definition that fits it has that version" : "";
    });
}

} // namespace shading
