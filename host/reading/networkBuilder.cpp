#include "reading/networkBuilder.h"

#include "base/progress.h"
#include "document/compound.h"
#include "document/document.h"
#include "document/names.h"
#include "document/origins.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <unordered_set>

namespace shading {

namespace {

/// The names of the children of one element. A child without a name is called like its element, or
/// with the first number from 2 behind that which makes it unique.
class SiblingNames {
public:
    /// The node is the one that the children's nodes and ports get into.
    SiblingNames(const Piece& parent, ZEL::Node& node) : m_parent(parent), m_path(pathOf(node)) {}

    std::string of(const Piece& child)
    {
        const std::string name = attributeOf(child, "name");
        return name.empty() ? makeUp(std::string(child.text)) : name;
    }
    std::string pathTo(const std::string& name) const { return m_path + "." + name; }
    /// True for a name the first time only.
    bool use(const std::string& name) { return m_used.insert(name).second; }
    /// Forgets them one by one.
    void release(Progress& progress)
    {
        for (std::unordered_set<std::string>* const names : {&m_used, &m_taken}) {
            while (!names->empty()) {
                names->erase(names->begin());
                if (progress.isDue())
                    progress.tell();
            }
        }
    }

private:
    std::string makeUp(const std::string& stem)
    {
        if (m_taken.empty()) {
            for (const Piece& sibling : ElementsIn(m_parent))
                m_taken.insert(attributeOf(sibling, "name"));
        }
        int& number = m_numbers[stem];
        std::string name;
        do {
            name = ++number == 1 ? stem : stem + std::to_string(number);
        } while (!m_taken.insert(name).second);
        return name;
    }

    const Piece& m_parent;
    std::string m_path;
    std::unordered_set<std::string> m_used;
    std::unordered_set<std::string> m_taken;        ///< Empty until a name is missing.
    std::unordered_map<std::string, int> m_numbers; ///< The last number tried, by stem.
};

class NetworkBuilder {
public:
    NetworkBuilder(Document& document,
                   UnconnectedNetwork& network,
                   std::vector<Message>& warnings,
                   Progress& progress)
        : m_document(document),
          m_xml(document.xml()),
          m_warnings(warnings),
          m_network(network),
          m_progress(progress)
    {
    }

    void build()
    {
        const Piece& element = m_xml.documentElement();
        m_progress.begin(250, 550, m_xml.text().size());
        m_network.root = Node::createNew(&m_document, "Top");
        m_network.root->setNodeTypeName(std::string(element.text).c_str());
        m_network.root->setElement(&element);
        Scope& scope = m_network.scopes.emplace_back();
        scope.compound = Compound::createNew(m_network.root);
        fillCompound(element, scope, nullptr);
    }

private:
    void fillCompound(const Piece& element, Scope& scope, const Scope* outer)
    {
        SiblingNames names(element, *scope.compound->getAsNode());
        for (const Piece& child : ElementsIn(element)) {
            if (m_progress.isDue())
                m_progress.tell(m_xml.offsetOf(child));
            switch (kindOf(child)) {
            case ElementKind::Input:
            case ElementKind::Output:
                addCompoundPort(child, names, scope, outer);
                break;
            case ElementKind::Graph:
                addGraph(child, names, scope);
                break;
            case ElementKind::Node:
                addPlainNode(child, names, scope);
                break;
            case ElementKind::Other:
                break;
            }
        }
        names.release(m_progress);
    }

    void
    addCompoundPort(const Piece& element, SiblingNames& names, Scope& scope, const Scope* outer)
    {
        const std::string name = takeName(element, names);
        const bool isInput = kindOf(element) == ElementKind::Input;
        const NodePtr owner = scope.compound->getAsNode();
        const int index =
            scope.compound->createCompoundPort(isInput ? ZEL::PortInput : ZEL::PortOutput,
                                               name.c_str(), typeOf(element, names.pathTo(name)));
        ZEL::PortList& outerPorts = isInput ? owner->inputs() : owner->outputs();
        m_document.origins().setPort(outerPorts[index], &element);
        outerPorts[index]->setPortDefaultValue(attributeOf(element, "value").c_str());
        // An input of a graph is fed from outside it, an output from inside.
        if (isInput)
            addReference(element, outerPorts[index], outer);
        else
            addReference(element, scope.compound->innerOutputs()[index], &scope);
    }

    /// The inputs of the `nodedef` that a graph implements, but for those that it has itself.
    void addDeclaredInputs(const Piece& graph, Scope& scope)
    {
        const Tie* const tie = m_document.nodeDefs().tieOf(graph);
        if (!tie)
            return;
        const NodePtr owner = scope.compound->getAsNode();
        for (const Piece* const element : m_document.nodeDefs().inputsOf(*tie)) {
            const std::string name = attributeOf(*element, "name");
            if (childNamed(graph, "input", name))
                continue;
            const int index = scope.compound->createCompoundPort(
                ZEL::PortInput, name.c_str(), typeOf(*element, pathOf(*owner) + "." + name));
            m_document.origins().setPort(owner->inputs()[index], element);
            owner->inputs()[index]->setPortDefaultValue(attributeOf(*element, "value").c_str());
        }
    }

    void addGraph(const Piece& element, SiblingNames& names, Scope& scope)
    {
        const std::string name = takeName(element, names);
        const CompoundPtr compound = scope.compound->createNewCompound(name.c_str());
        // The compounds of this host make nodes of this host.
        const HostNodePtr node(static_cast<Node*>(compound->getAsNode().get()));
        node->setElement(&element);
        scope.nodes.emplace(name, node);
        scope.graphs.emplace(name, node);

        Scope& inner = m_network.scopes.emplace_back();
        inner.compound = compound;
        addDeclaredInputs(element, inner);
        fillCompound(element, inner, &scope);
    }

    void addPlainNode(const Piece& element, SiblingNames& names, Scope& scope)
    {
        const std::string name = takeName(element, names);
        const HostNodePtr node = Node::createNew(&m_document, name.c_str());
        node->setNodeTypeName(std::string(element.text).c_str());
        node->setElement(&element);
        scope.compound->nodes().add(node);
        scope.nodes.emplace(name, node);

        const std::string type = attributeOf(element, "type");
        if (type.empty())
            warn(element, names.pathTo(name), "no type: it has no output of its own");
        else if (type != kMultiOutput)
            node->outputs().addPort(kDefaultOutput, m_document.dataType(type));

        SiblingNames portNames(element, *node);
        for (const Piece& child : ElementsIn(element)) {
            const ElementKind kind = kindOf(child);
            if (kind == ElementKind::Input)
                addInput(child, portNames, *node, scope);
            else if (kind == ElementKind::Output)
                addOutput(child, portNames, *node);
        }
    }

    void addInput(const Piece& element, SiblingNames& names, Node& node, const Scope& scope)
    {
        const std::string name = takeName(element, names);
        const PortPtr port =
            node.inputs().addPort(name.c_str(), typeOf(element, names.pathTo(name)));
        m_document.origins().setPort(port, &element);
        port->setPortDefaultValue(attributeOf(element, "value").c_str());
        addReference(element, port, &scope);
    }

    /// A node may list its outputs; the one that it has by its type is not made again.
    void addOutput(const Piece& element, SiblingNames& names, Node& node)
    {
        const std::string name = takeName(element, names);
        const std::string path = names.pathTo(name);
        const Piece* const first = childNamed(*element.parent, "output", name);
        PortPtr port = &element == first ? node.outputs()[name.c_str()] : PortPtr();
        if (!port)
            port = node.outputs().addPort(name.c_str(), typeOf(element, path));
        m_document.origins().setPort(port, &element);
        if (hasReference(element))
            warn(element, path, "an output of a plain node has no source");
    }

    TypePtr typeOf(const Piece& element, const std::string& path)
    {
        const std::string type = attributeOf(element, "type");
        if (type.empty())
            warn(element, path, std::string("no type: taken as \"") + kNoType + "\"");
        return m_document.dataType(type.empty() ? kNoType : type);
    }

    /// The name of the node or port that the element becomes; warns of one that causes trouble.
    std::string takeName(const Piece& element, SiblingNames& names)
    {
        std::string name = names.of(element);
        const std::string path = names.pathTo(name);
        if (attributeOf(element, "name").empty())
            warn(element, path, "no name in the document: this one was made up");
        if (!names.use(name))
            warn(element, path,
                 "the name of an earlier sibling: paths and references may mean that");
        if (name.find('.') != std::string::npos)
            warn(element, path, "no path reaches a name with a \".\" in it");
        return name;
    }

    void addReference(const Piece& element, const PortPtr& target, const Scope* scope)
    {
        if (hasReference(element))
            m_network.references.push_back({&element, target, scope});
    }

    void warn(const Piece& element, const std::string& path, const std::string& text)
    {
        m_warnings.push_back(m_xml.warningAt(element, path + ": " + text));
    }

    Document& m_document;
    const XmlSource& m_xml;
    std::vector<Message>& m_warnings;
    UnconnectedNetwork& m_network;
    Progress& m_progress;
};

} // namespace

void buildNetwork(Document& document,
                  UnconnectedNetwork& network,
                  std::vector<Message>& warnings,
                  Progress& progress)
{
    NetworkBuilder(document, network, warnings, progress).build();
}

} // namespace shading
