#include "saving/referenceWriter.h"

#include "document/document.h"
#include "document/origins.h"
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

/// A reference that says no output means this one.
bool isDefaultOutput(const DraftNetwork& network, ZEL::Node& node, ZEL::Port& source)
{
    if (node.isCompound())
        return node.outputs()[0].get() == &source;
    const Piece* const item = network.itemOf(node);
    if (!item || attributeOf(*item, "type") != kMultiOutput)
        return std::string(source.getName()) == kDefaultOutput;
    for (const Piece& child : ElementsIn(*item)) {
        const std::string name = attributeOf(child, "name");
        if (kindOf(child) == ElementKind::Output)
            return (name.empty() ? node.outputs()[0] : node.outputs()[name.c_str()]) == &source;
    }
    return false;
}

} // namespace

bool isStale(DraftNetwork& network, const Piece& element, ZEL::Port& port)
{
    if (!hasReference(element))
        return false;
    const Origins& origins = network.document().origins();
    const Piece* const read = origins.elementOf(port);
    return !network.draft().isRead(element) || (read && origins.wasConnected(*read));
}

bool means(const DraftNetwork& network, const Piece& element, ZEL::Port& source)
{
    const std::string interface = attributeOf(element, "interfacename");
    if (source.isCompoundInternalPort() || !interface.empty())
        return source.isCompoundInternalPort() && interface == source.getName();
    const std::string graph = attributeOf(element, "nodegraph");
    const ZEL::AddRefWrapper<ZEL::Node> node = source.getParentNode();
    if ((graph.empty() ? attributeOf(element, "nodename") : graph) != node->getName() ||
        (!graph.empty() && !node->isCompound()))
        return false;
    const std::string output = attributeOf(element, "output");
    return output.empty() ? isDefaultOutput(network, *node, source) : output == source.getName();
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
