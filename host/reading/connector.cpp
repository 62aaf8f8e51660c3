#include "reading/connector.h"

#include "base/progress.h"
#include "document/document.h"
#include "document/names.h"
#include "document/origins.h"
#include "document/rules.h"
#include "format/xml.h"
#include "reading/networkBuilder.h"

namespace shading {

namespace {

class Connector {
public:
    Connector(Document& document,
              std::vector<Message>& warnings,
              const Scope& outermost,
              Progress& progress)
        : m_xml(document.xml()),
          m_origins(document.origins()),
          m_warnings(warnings),
          m_document(outermost)
    {
        for (const Piece& element : ElementsIn(m_xml.documentElement())) {
            if (progress.isDue())
                progress.tell();
            const std::string_view name = element.text.substr(element.text.find(':') + 1);
            m_hasIncludes = m_hasIncludes || name == "include";
        }
    }

    void connect(const Reference& reference)
    {
        std::string problem;
        const PortPtr source = findSource(reference, problem);
        if (source && !reference.target->addConnection(source))
            problem = "refused a connection from " + pathOf(*source);
        const std::string hidden = source ? "" : hiddenSource(reference);
        if (!hidden.empty()) {
            const std::string name = nameOf(*reference.element);
            m_origins.setHiddenSource(reference.target, name);
            problem = "the network does not show its source (" + name + "): " + hidden;
        }
        if (!problem.empty())
            warn(reference, problem);
        else if (source)
            m_origins.setConnected(*reference.element);
    }

private:
    /// Empty, with the problem, when the reference names nothing.
    PortPtr findSource(const Reference& reference, std::string& problem)
    {
        const std::string interface = attributeOf(*reference.element, "interfacename");
        const std::string graph = attributeOf(*reference.element, "nodegraph");
        const std::string node = attributeOf(*reference.element, "nodename");
        if (int(!interface.empty()) + int(!graph.empty()) + int(!node.empty()) > 1)
            warn(reference, "several sources: interfacename is preferred to nodegraph, "
                            "nodegraph to nodename");
        if (!reference.scope) {
            problem = "an input of the document cannot have a source";
            return nullptr;
        }
        if (namesOutputOnly(*reference.element))
            return documentOutput(reference, attributeOf(*reference.element, "output"), problem);
        if (!interface.empty())
            return interfacePort(reference, interface);
        if (!graph.empty())
            return graphOutput(reference, graph, problem);
        return nodeOutput(reference, node, problem);
    }

    /// What the source is that the network does not show; empty for a reference to nothing.
    std::string hiddenSource(const Reference& reference)
    {
        const Piece& element = *reference.element;
        const std::string graph = attributeOf(element, "nodegraph");
        const std::string name = graph.empty() ? attributeOf(element, "nodename") : graph;
        const bool isFound =
            !name.empty() && reference.scope &&
            (graph.empty() ? reference.scope->nodes : reference.scope->graphs).count(name) > 0;
        if (isFound || !reference.scope)
            return "";
        if (namesOutputOnly(*reference.element)) {
            const std::string output = attributeOf(element, "output");
            return m_document.compound->innerOutputs()[output.c_str()] ? "it is not seen from here"
                                                                       : "";
        }
        for (const Scope* const scope : {reference.scope, &m_document}) {
            for (const Piece& child : ElementsIn(elementOf(*scope))) {
                if (isForeign(child.text) && attributeOf(child, "name") == name)
                    return std::string(child.text);
            }
        }
        if (isForeign(name))
            return "a name of another name space";
        return m_hasIncludes ? "it may be in an included file" : "";
    }

    static bool isForeign(std::string_view name)
    {
        return name.find(':') != std::string_view::npos;
    }

    static std::string nameOf(const Piece& reference)
    {
        std::string name;
        for (const char* const attribute : {"nodegraph", "nodename", "output"}) {
            const std::string part = attributeOf(reference, attribute);
            name += (name.empty() || part.empty() ? "" : ".") + part;
        }
        return name;
    }

    static const Piece& elementOf(const Scope& scope)
    {
        // The nodes of a document are this host's and have elements when they are read.
        return *static_cast<Node&>(*scope.compound->getAsNode()).element();
    }

    /// What feeds the output of the document.
    PortPtr
    documentOutput(const Reference& reference, const std::string& name, std::string& problem)
    {
        const PortPtr output = m_document.compound->innerOutputs()[name.c_str()];
        PortPtr source = output ? output->connectedTo()[0] : nullptr;
        const bool isSeen =
            reference.scope == &m_document || (source && isInScope(*source, *reference.target));
        if (!output)
            problem = "no output \"" + name + "\" in " + pathTo(m_document);
        else if (!source)
            problem = pathOf(*output) + " has no source";
        else if (!isSeen)
            problem = "its source " + pathOf(*source) + " is in another compound";
        return problem.empty() ? source : nullptr;
    }

    /// The inner input of that name, made when the graph does not declare it.
    PortPtr interfacePort(const Reference& reference, const std::string& name)
    {
        ZEL::Compound& compound = *reference.scope->compound;
        PortPtr present = compound.innerInputs()[name.c_str()];
        if (present)
            return present;
        const int index = compound.createCompoundPort(ZEL::PortInput, name.c_str(),
                                                      reference.target->getDataType());
        m_origins.setImplied(compound.getAsNode()->inputs()[index]);
        return compound.innerInputs()[index];
    }

    PortPtr graphOutput(const Reference& reference, const std::string& name, std::string& problem)
    {
        for (const Scope* const scope : {reference.scope, &m_document}) {
            const auto found = scope->graphs.find(name);
            if (found != scope->graphs.end())
                return outputOf(reference, found->second, problem);
        }
        problem = "no nodegraph \"" + name + "\" in " + pathTo(*reference.scope);
        if (reference.scope != &m_document)
            problem += " or " + pathTo(m_document);
        return nullptr;
    }

    static PortPtr
    nodeOutput(const Reference& reference, const std::string& name, std::string& problem)
    {
        const auto found = reference.scope->nodes.find(name);
        if (found != reference.scope->nodes.end())
            return outputOf(reference, found->second, problem);
        problem = "no node \"" + name + "\" in " + pathTo(*reference.scope);
        return nullptr;
    }

    /// The output that the reference names, or means by naming none: the first of a graph or of a
    /// list of outputs, else `out`. A plain node gets an output that it does not have.
    static PortPtr
    outputOf(const Reference& reference, const HostNodePtr& node, std::string& problem)
    {
        const Piece& element = *node->element();
        const std::string path = pathOf(*node);
        const bool isMultiOutput = attributeOf(element, "type") == kMultiOutput;
        const Piece* const listed = isMultiOutput ? firstOutput(element) : nullptr;
        std::string name = attributeOf(*reference.element, "output");
        // The first that the document lists, also where the definition has another one before it.
        if (name.empty() && isMultiOutput)
            name = listed ? attributeOf(*listed, "name") : "";
        if (name.empty() && (node->isCompound() || (isMultiOutput && listed))) {
            PortPtr first = node->outputs()[0];
            if (!first)
                problem = path + " has no output";
            return first;
        }
        if (name.empty() && isMultiOutput) {
            problem = "does not say which output of " + path;
            return nullptr;
        }
        if (name.empty())
            name = kDefaultOutput;
        PortPtr present = node->outputs()[name.c_str()];
        if (present)
            return present;
        if (!node->isCompound())
            return node->outputs().addPort(name.c_str(), reference.target->getDataType());
        problem = path + " has no output \"" + name + "\"";
        return nullptr;
    }

    static const Piece* firstOutput(const Piece& element)
    {
        for (const Piece& child : ElementsIn(element)) {
            if (kindOf(child) == ElementKind::Output)
                return &child;
        }
        return nullptr;
    }

    static std::string pathTo(const Scope& scope) { return pathOf(*scope.compound->getAsNode()); }

    void warn(const Reference& reference, const std::string& text)
    {
        const std::string path = pathOf(*reference.target);
        m_warnings.push_back(m_xml.warningAt(*reference.element, path + ": " + text));
    }

    const XmlSource& m_xml;
    Origins& m_origins;
    std::vector<Message>& m_warnings;
    const Scope& m_document;
    bool m_hasIncludes = false;
};

} // namespace

void connectNetwork(Document& document,
                    const UnconnectedNetwork& network,
                    std::vector<Message>& warnings,
                    Progress& progress)
{
    Connector connector(document, warnings, network.scopes.front(), progress);
    // What names an output of the document has the source of that, which is known then.
    std::vector<const Reference*> byOutput;
    for (const Reference& reference : network.references) {
        if (namesOutputOnly(*reference.element))
            byOutput.push_back(&reference);
        else
            connector.connect(reference);
        progress.step();
    }
    for (const Reference* const reference : byOutput) {
        connector.connect(*reference);
        progress.step();
    }
}

} // namespace shading
