#include "reading/openDocument.h"

#include "base/progress.h"
#include "document/definedNode.h"
#include "document/names.h"
#include "document/origins.h"
#include "document/rules.h"
#include "format/xml.h"
#include "reading/networkBuilder.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

const char* const kNewText =
    "<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n</materialx>\n";

/// The second pass over a document: connects what its references name.
///
/// A `nodename` means a sibling. A `nodegraph` means a sibling, or else a graph of the document
/// itself. An `interfacename` means an input of the graph around. An `output` without any of these
/// means an output of the document, and so what feeds that. No other border is crossed.
class Connector {
public:
    Connector(Document& document, std::vector<Message>& warnings, const Scope& outermost)
        : m_xml(document.xml()),
          m_origins(document.origins()),
          m_warnings(warnings),
          m_document(outermost)
    {
        for (const Piece& element : ElementsIn(m_xml.documentElement())) {
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

/// The outputs that references name, by the node that they mean.
NamedOutputs namedOutputs(const UnconnectedNetwork& network)
{
    NamedOutputs result;
    for (const Reference& reference : network.references) {
        const std::string output = attributeOf(*reference.element, "output");
        if (!reference.scope || output.empty())
            continue;
        const auto node = reference.scope->nodes.find(attributeOf(*reference.element, "nodename"));
        if (node != reference.scope->nodes.end())
            result[node->second.get()].push_back(output);
    }
    return result;
}

/// Gives the document its network. What does not resolve is left out and is a warning.
void readNetwork(Document& document, std::vector<Message>& warnings, const Progress::Tell& tell)
{
    Progress progress(tell);
    const UnconnectedNetwork network = buildNetwork(document, warnings, progress);
    std::size_t nodeCount = 0;
    for (const Scope& scope : network.scopes)
        nodeCount += scope.nodes.size();
    progress.begin(550, 850, nodeCount);
    defineNodes(document, *network.root->getAsCompound(), namedOutputs(network), &progress);
    progress.begin(850, 1000, network.references.size());
    Connector connector(document, warnings, network.scopes.front());
    // What names an output of the document has the source of that, which is known then.
    std::vector<const Reference*> byOutput;
    for (const Reference& reference : network.references) {
        if (namesOutputOnly(*reference.element)) {
            byOutput.push_back(&reference);
            continue;
        }
        connector.connect(reference);
        progress.step();
    }
    for (const Reference* const reference : byOutput)
        connector.connect(*reference);
    document.setRootNode(network.root);
}

/// Of that text and that, a runtime or another document, which gives it its runtime; null and the
/// error when it is none.
template <class Source>
std::unique_ptr<Document>
readText(const std::string& path, const std::string& text, const Source& source, Message& error)
{
    auto xml = std::make_unique<XmlSource>();
    if (!xml->loadText(path, text, error))
        return nullptr;
    auto document = std::make_unique<Document>(std::move(xml), source);
    std::vector<Message> ignored;
    readNetwork(*document, ignored, {});
    return document;
}

} // namespace

std::unique_ptr<Document>
openDocument(const std::string& path, const OpenOptions& options, std::vector<Message>& messages)
{
    auto xml = std::make_unique<XmlSource>();
    Message error;
    if (!xml->load(path, error)) {
        messages.push_back(error);
        return nullptr;
    }
    auto document = std::make_unique<Document>(std::move(xml), options.runtime);
    std::vector<Message> found;
    readNetwork(*document, found, options.progress);
    std::stable_sort(found.begin(), found.end(),
                     [](const Message& a, const Message& b) { return a.line < b.line; });
    for (Message& message : found) {
        message.isError = options.isStrict;
        messages.push_back(message);
    }
    if (options.isStrict && !found.empty())
        return nullptr;
    document->files()[canonicalPath(path)] = document->xml().fileStamp();
    document->makeKnown();
    return document;
}

std::unique_ptr<Document> newDocument(const std::string& path, const OpenOptions& options)
{
    Message none; // Nothing is wrong with it.
    std::unique_ptr<Document> document = readText(path, kNewText, options.runtime, none);
    document->makeKnown();
    return document;
}

std::unique_ptr<Document> openText(const std::string& text, const Document& other, Message& error)
{
    return readText("the saved document", text, other, error);
}

} // namespace shading
