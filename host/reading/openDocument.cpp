#include "reading/openDocument.h"

#include "base/progress.h"
#include "format/xml.h"
#include "reading/reader.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

const char* const kNewText =
    "<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n</materialx>\n";

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
    Progress progress(options.progress);
    document->setRootNode(readNetwork(*document, document->xml(), found, progress));
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
    auto xml = std::make_unique<XmlSource>();
    Message none; // Nothing is wrong with it.
    xml->loadText(path, kNewText, none);
    auto document = std::make_unique<Document>(std::move(xml), options.runtime);
    std::vector<Message> ignored;
    Progress progress(options.progress);
    document->setRootNode(readNetwork(*document, document->xml(), ignored, progress));
    document->makeKnown();
    return document;
}

std::unique_ptr<Document> openText(const std::string& text, const Document& other, Message& error)
{
    auto xml = std::make_unique<XmlSource>();
    if (!xml->loadText("the saved document", text, error))
        return nullptr;
    auto document = std::make_unique<Document>(std::move(xml), other);
    std::vector<Message> ignored;
    Progress untold({});
    document->setRootNode(readNetwork(*document, document->xml(), ignored, untold));
    return document;
}

} // namespace shading
