#include "reading/openDocument.h"

#include "base/progress.h"
#include "document/definedNode.h"
#include "format/xml.h"
#include "reading/connector.h"
#include "reading/networkBuilder.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

const char* const kNewText =
    "<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n</materialx>\n";

/// The outputs that references name, by the node that they mean.
NamedOutputs namedOutputs(const UnconnectedNetwork& network, Progress& progress)
{
    NamedOutputs result;
    for (const Reference& reference : network.references) {
        progress.step();
        const std::string output = attributeOf(*reference.element, "output");
        if (!reference.scope || output.empty())
            continue;
        const auto node = reference.scope->nodes.find(attributeOf(*reference.element, "nodename"));
        if (node != reference.scope->nodes.end())
            result[node->second.get()].push_back(output);
    }
    return result;
}

/// What is read of a document. In the end, whole or not, it is the document's, and the tables go
/// one by one.
class ReadNetwork {
public:
    ReadNetwork(Document& document, Progress::Tell tell)
        : m_document(document),
          m_tell(std::move(tell))
    {
    }
    ReadNetwork(const ReadNetwork&) = delete;
    ReadNetwork& operator=(const ReadNetwork&) = delete;
    ~ReadNetwork()
    {
        Progress progress(m_tell);
        m_document.setRootNode(network.root);
        for (Scope& scope : network.scopes) {
            release(scope.nodes, progress);
            release(scope.graphs, progress);
        }
        for (; !network.references.empty(); network.references.pop_back())
            progress.step();
    }

    UnconnectedNetwork network;

private:
    static void release(std::unordered_map<std::string, HostNodePtr>& nodes, Progress& progress)
    {
        while (!nodes.empty()) {
            nodes.erase(nodes.begin());
            progress.step();
        }
    }

    Document& m_document;
    Progress::Tell m_tell;
};

/// Gives the document its network. What does not resolve is left out and is a warning. Throws
/// Cancelled; then it has a part of it, and perhaps not its root.
void readNetwork(Document& document, std::vector<Message>& warnings, Progress& progress)
{
    ReadNetwork read(document, withoutCancel(progress.within(980, 1000)));
    UnconnectedNetwork& network = read.network;
    buildNetwork(document, network, warnings, progress);
    std::size_t nodeCount = 0;
    for (const Scope& scope : network.scopes)
        nodeCount += scope.nodes.size();
    progress.begin(550, 600, network.references.size());
    const NamedOutputs outputs = namedOutputs(network, progress);
    progress.begin(600, 850, nodeCount);
    defineNodes(document, *network.root->getAsCompound(), outputs, &progress);
    progress.begin(850, 980, network.references.size());
    connectNetwork(document, network, warnings, progress);
}

/// Of that text and that, a runtime or another document, which gives it its runtime; null and the
/// error when it is none.
template <class Source>
PassingDocument readText(const std::string& path,
                         const std::string& text,
                         const Source& source,
                         Message& error,
                         const Progress::Tell& tell)
{
    Progress progress(tell);
    auto xml = std::make_unique<XmlSource>();
    bool isRead = false;
    progress.await([&] { isRead = xml->loadText(path, text, error); });
    if (!isRead)
        return PassingDocument(nullptr, {tell});
    PassingDocument document(new Document(std::move(xml), source), {tell});
    std::vector<Message> ignored;
    readNetwork(*document, ignored, progress);
    return document;
}

Message cancelMessage(const std::string& path)
{
    Message message;
    message.file = path;
    message.isError = true;
    message.text = kCancelled;
    return message;
}

/// In the order of lines.
void sort(std::vector<Message>& messages)
{
    std::stable_sort(messages.begin(), messages.end(),
                     [](const Message& a, const Message& b) { return a.line < b.line; });
}

/// The same as openDocument. Throws Cancelled.
PassingDocument open(const std::string& path,
                     const OpenOptions& options,
                     std::vector<Message>& messages,
                     Progress& progress)
{
    auto xml = std::make_unique<XmlSource>();
    Message error;
    bool isRead = false;
    progress.await([&] { isRead = xml->load(path, error); });
    if (!isRead) {
        messages.push_back(error);
        return PassingDocument(nullptr, {options.progress});
    }
    PassingDocument document(new Document(std::move(xml), options.runtime), {options.progress});
    std::vector<Message> found;
    readNetwork(*document, found, progress);
    progress.await([&] { sort(found); });
    // The first edit would make them.
    if (options.progress)
        progress.await([&] { document->reservedNames(); });
    for (Message& message : found) {
        message.isError = options.isStrict;
        messages.push_back(message);
    }
    if (options.isStrict && !found.empty())
        document.reset();
    return document;
}

} // namespace

void TakeApart::operator()(Document* document) const
{
    const std::unique_ptr<Document> owned(document);
    if (!tell)
        return;
    Progress progress(withoutCancel(tell));
    progress.begin(1000, 1000, 0);
    document->takeApart(progress);
}

std::unique_ptr<Document>
openDocument(const std::string& path, const OpenOptions& options, std::vector<Message>& messages)
{
    Progress progress(options.progress);
    try {
        std::unique_ptr<Document> document(open(path, options, messages, progress).release());
        if (!document)
            return nullptr;
        document->files()[canonicalPath(path)] = document->xml().fileStamp();
        document->makeKnown();
        return document;
    } catch (const Cancelled&) {
        messages.push_back(cancelMessage(path));
        return nullptr;
    }
}

std::unique_ptr<Document> newDocument(const std::string& path, const OpenOptions& options)
{
    Message none; // Nothing is wrong with it.
    std::unique_ptr<Document> document(
        readText(path, kNewText, options.runtime, none, {}).release());
    document->makeKnown();
    return document;
}

PassingDocument
openText(const std::string& text, const Document& other, Message& error, const Progress::Tell& tell)
{
    return readText("the saved document", text, other, error, tell);
}

} // namespace shading
