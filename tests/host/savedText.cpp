#include "savedText.h"

#include "document/graphInterface.h"
#include "document/names.h"
#include "document/pointers.h"
#include "format/nodeDefs.h"

#include <algorithm>
#include <vector>

using shading::pathOf;
using shading::typeNameOf;

namespace {

/// " NAME TYPE VALUE <- SOURCE", where nothing counts behind a source.
std::string savedText(ZEL::Port& port, ZEL::Port& receiver)
{
    const shading::PortPtr source = receiver.connectedTo()[0];
    const std::string hidden = shading::hiddenSourceOf(receiver);
    return port.getName() + (" " + typeNameOf(port)) + " " +
           (source           ? "<- " + pathOf(*source)
            : hidden.empty() ? port.getPortDefaultValue()
                             : hidden) +
           "\n";
}

void addSaved(ZEL::Node& node, std::string& text)
{
    text += pathOf(node) + " " + node.getNodeTypeName() + "\n";
    const shading::CompoundPtr compound = node.getAsCompound();
    const shading::Tie* const tie = shading::tieOf(node);
    const bool isElsewhere = tie && !tie->nodeDef;
    std::vector<std::string> inputs;
    for (ZEL::Port* const port : node.inputs()) {
        const bool isSaid = port->isConnected() || *port->getPortDefaultValue() != '\0' ||
                            !shading::hiddenSourceOf(*port).empty();
        if (isSaid || (compound && !isElsewhere))
            inputs.push_back("input " + savedText(*port, *port));
    }
    if (tie)
        std::sort(inputs.begin(), inputs.end());
    for (const std::string& input : inputs)
        text += input;
    for (ZEL::Port* const port : node.outputs()) {
        const shading::PortPtr inner = compound ? compound->getReversePort(port) : nullptr;
        text +=
            inner ? savedText(*port, *inner) : port->getName() + (" " + typeNameOf(*port)) + "\n";
    }
    std::vector<std::string> nodes;
    for (int i = 0; compound && i < compound->nodes().size(); ++i)
        addSaved(*compound->nodes()[i], nodes.emplace_back());
    std::sort(nodes.begin(), nodes.end());
    for (const std::string& inner : nodes)
        text += inner;
}

} // namespace

std::string savedText(shading::Document& document)
{
    std::string text;
    addSaved(*document.getRootNode(), text);
    return text;
}
