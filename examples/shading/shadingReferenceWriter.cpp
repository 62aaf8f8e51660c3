#include "shadingReferenceWriter.h"

#include "shadingContainer.h"
#include "shadingDraftNetwork.h"
#include "shadingFormat.h"
#include "shadingOrigins.h"

#include <map>

namespace shading {

namespace {

const char* const kReferences[] = {"nodename", "nodegraph", "interfacename", "output"};

/// The attributes that name the port.
std::map<std::string, std::string> referenceTo(DraftNetwork& network, ZEL::Port& source)
{
    if (source.isCompoundInternalPort())
        return {{"interfacename", source.getName()}};
    const ZEL::AddRefWrapper<ZEL::Node> node = source.getParentNode();
    if (node->isCompound())
        return {{"nodegraph", node->getName()}, {"output", source.getName()}};
    std::map<std::string, std::string> result = {{"nodename", node->getName()}};
    const DraftItem* const item = network.itemOf(*node);
    const DraftAttribute* const type = item ? item->attribute("type") : nullptr;
    if (std::string(source.getName()) != kDefaultOutput || (type && type->value == kMultiOutput))
        result["output"] = source.getName();
    return result;
}

bool hasReference(const DraftItem& element)
{
    for (const char* const name : kReferences) {
        const DraftAttribute* const attribute = element.attribute(name);
        if (attribute && !attribute->value.empty())
            return true;
    }
    return false;
}

} // namespace

bool isStale(DraftNetwork& network, const DraftItem& element, ZEL::Port& port)
{
    const Origins& origins = network.container().origins();
    return hasReference(element) &&
           (!element.isFromText || origins.wasConnected(origins.elementOf(port)));
}

bool mayMean(pugi::xml_node element, ZEL::Port& source)
{
    const std::string interface = attributeOf(element, "interfacename");
    if (source.isCompoundInternalPort() || !interface.empty())
        return source.isCompoundInternalPort() && interface == source.getName();
    const std::string graph = attributeOf(element, "nodegraph");
    const std::string output = attributeOf(element, "output");
    const std::string name = graph.empty() ? attributeOf(element, "nodename") : graph;
    return name == source.getParentNode()->getName() &&
           (output.empty() || output == source.getName());
}

bool writeReference(DraftNetwork& network,
                    DraftItem& element,
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
