#include "saving/referenceWriter.h"

#include "document/document.h"
#include "document/origins.h"
#include "format/format.h"
#include "saving/draftNetwork.h"

#include <map>

namespace shading {

namespace {

/// The attributes that name the port.
std::map<std::string, std::string> referenceTo(DraftNetwork& network, ZEL::Port& source)
{
    if (source.isCompoundInternalPort())
        return {{"interfacename", source.getName()}};
    const ZEL::AddRefWrapper<ZEL::Node> node = source.getParentNode();
    if (node->isCompound())
        return {{"nodegraph", node->getName()}, {"output", source.getName()}};
    std::map<std::string, std::string> result = {{"nodename", node->getName()}};
    const Piece* const item = network.itemOf(*node);
    const Attribute* const type = item ? item->attribute("type") : nullptr;
    if (std::string(source.getName()) != kDefaultOutput || (type && type->value == kMultiOutput))
        result["output"] = source.getName();
    return result;
}

} // namespace

bool isStale(DraftNetwork& network, const Piece& element, ZEL::Port& port)
{
    const Origins& origins = network.document().origins();
    return hasReference(element) &&
           (!network.draft().isRead(element) || origins.wasConnected(origins.elementOf(port)));
}

bool mayMean(const Piece& element, ZEL::Port& source)
{
    bool isPlain = true;
    const auto value = [&](const char* name) {
        const Attribute* const attribute = element.attribute(name);
        isPlain = isPlain && (!attribute || attribute->isPlain());
        return attribute ? attribute->value : std::string_view();
    };
    const std::string_view interface = value("interfacename");
    const std::string_view output = value("output");
    const std::string_view graph = value("nodegraph");
    const std::string_view node = graph.empty() ? value("nodename") : graph;
    if (!isPlain)
        return true;
    if (source.isCompoundInternalPort() || !interface.empty())
        return source.isCompoundInternalPort() && interface == source.getName();
    return node == source.getParentNode()->getName() &&
           (output.empty() || output == source.getName());
}

bool writeReference(DraftNetwork& network,
                    Piece& element,
                    const ZEL::AddRefWrapper<ZEL::Port>& source)
{
    std::map<std::string, std::string> wanted;
    if (source)
        wanted = referenceTo(network, *source);
    bool hasChanged = false;
    for (const char* const name : kReferences) {
        const auto found = wanted.find(name);
        const bool isChange = found == wanted.end()
                                  ? network.draft().removeAttribute(element, name)
                                  : network.draft().setAttribute(element, name, found->second);
        hasChanged = hasChanged || isChange;
    }
    return hasChanged;
}

} // namespace shading
