#include "document/graphInterface.h"

#include "document/document.h"
#include "document/names.h"
#include "document/node.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <vector>

namespace shading {

namespace {

constexpr std::size_t kManyUsers = 3;

/// Who else knows the `nodedef` of a graph: nodes of its type, other graphs and what is no part of
/// the network.
class Users {
public:
    Users(ZEL::Node& graph, const Tie& tie, Document& document)
        : m_graph(graph),
          m_tie(tie),
          m_nodeType(attributeOf(*tie.nodeDef, "node")),
          m_graphName(attributeOf(*static_cast<Node&>(graph).element(), "name"))
    {
        addNodes(*document.getRootNode()->getAsCompound());
        addElements(document.xml().documentElement());
    }

    /// "Top.a and Top.b"; empty without any.
    std::string text() const
    {
        std::string text;
        for (std::size_t i = 0; i < m_users.size() && i < kManyUsers; ++i) {
            const bool isLast = i + 1 == m_users.size();
            text += (i == 0 ? "" : isLast ? " and " : ", ") + m_users[i];
        }
        if (m_users.size() > kManyUsers)
            text += " and " + std::to_string(m_users.size() - kManyUsers) + " more";
        return text;
    }

private:
    void addNodes(ZEL::Compound& compound)
    {
        for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
            const Tie* const other = tieOf(*node);
            const auto* const own = dynamic_cast<const Node*>(node.get());
            const Piece* const element = own ? own->element() : nullptr;
            const bool isNamed = (other && other->name == m_tie.name) ||
                                 (element && attributeOf(*element, "nodedef") == m_tie.name);
            const bool isOfType = !node->isCompound() && node->getNodeTypeName() == m_nodeType;
            if (node.get() != &m_graph && (isNamed || isOfType))
                m_users.push_back(pathOf(*node));
            if (node->isCompound())
                addNodes(*node->getAsCompound());
        }
    }

    void addElements(const Piece& parent)
    {
        for (const Piece& element : ElementsIn(parent)) {
            const bool isTie = &element == m_tie.element;
            if (kindOf(element) == ElementKind::Other &&
                (isTie ? element.first != nullptr : names(element)))
                m_users.push_back(std::string(element.text) + " \"" + attributeOf(element, "name") +
                                  "\"");
            addElements(element);
        }
    }

    bool names(const Piece& element) const
    {
        if (element.text == "nodedef")
            return attributeOf(element, "inherit") == m_tie.name;
        return attributeOf(element, "nodedef") == m_tie.name ||
               (!m_nodeType.empty() && attributeOf(element, "node") == m_nodeType) ||
               (element.text == "implementation" &&
                attributeOf(element, "nodegraph") == m_graphName);
    }

    ZEL::Node& m_graph;
    const Tie& m_tie;
    const std::string m_nodeType;
    const std::string m_graphName; ///< As the document has it.
    std::vector<std::string> m_users;
};

Document* documentOf(ZEL::Node& node)
{
    return dynamic_cast<Document*>(node.getContainer());
}

/// The `nodedef` has no element of its own for the port.
std::string inheritanceProblem(const NodeDefs& nodeDefs,
                               const Piece& nodeDef,
                               bool isOutput,
                               const std::string& name)
{
    const char* const kind = isOutput ? "output" : "input";
    const bool isOwn = childNamed(nodeDef, kind, name) != nullptr;
    const std::vector<const Piece*> line = nodeDefs.lineOf(nodeDef);
    for (const Piece* const base : line) {
        if (base != &nodeDef && childNamed(*base, kind, name))
            return "inherits it from \"" + attributeOf(*base, "name") + "\"";
    }
    const std::string base = attributeOf(*line.front(), "inherit");
    if (!isOwn && !base.empty())
        return "may inherit it from \"" + base + "\"";
    // Before version 1.38 a definition had its type itself.
    const bool isOld = isOutput && name == kDefaultOutput && nodeDef.attribute("type");
    return !isOwn && isOld ? "has it by its type" : "";
}

} // namespace

const char* const kStaysAtTheTop = "a graph that implements a nodedef must stay at the top";

const Tie* tieOf(ZEL::Node& node)
{
    const auto* const own = dynamic_cast<const Node*>(&node);
    const Document* const document = documentOf(node);
    return own && own->element() && document ? document->nodeDefs().tieOf(*own->element())
                                             : nullptr;
}

std::string interfaceProblem(ZEL::Node& node,
                             ZEL::PortIOType ioType,
                             const std::string& readName,
                             bool isRemoval)
{
    const Tie* const tie = tieOf(node);
    if (!tie)
        return "";
    const std::string start = "its graph implements nodedef \"" + tie->name + "\", which ";
    if (!tie->nodeDef)
        return start + "is in another file";
    const bool isOutput = ioType == ZEL::PortOutput;
    if (isOutput && readName.empty())
        return start + "has no such output";
    Document& document = *documentOf(node);
    const std::string problem =
        readName.empty()
            ? ""
            : inheritanceProblem(document.nodeDefs(), *tie->nodeDef, isOutput, readName);
    if (!problem.empty())
        return start + problem;
    const bool isKnown =
        readName.empty() || childNamed(*tie->nodeDef, isOutput ? "output" : "input", readName);
    if (!isKnown)
        return ""; // The two did not agree.
    if (isOutput && isRemoval)
        return start + "has that output";
    const std::string users = Users(node, *tie, document).text();
    return users.empty() ? "" : start + "has other users: " + users;
}

} // namespace shading
