#include "shadingReport.h"

#include <algorithm>
#include <vector>

namespace shading {

namespace {

std::string pathOf(ZEL::Port& port)
{
    return port.getFullPathName().getName();
}

/// The text in double quotes, on one line.
std::string quoted(const char* text)
{
    std::string result = "\"";
    for (const char* c = text; *c != '\0'; ++c) {
        if (*c == '"' || *c == '\\')
            result += '\\';
        if (*c == '\n')
            result += "\\n";
        else
            result += *c;
    }
    return result + "\"";
}

/// " ARROW PATH, PATH", nothing when there is no port or no connection.
std::string connectionsOf(ZEL::Port* port, const char* arrow)
{
    std::string result;
    if (!port)
        return result;
    for (ZEL::Port* const other : port->connectedTo())
        result += (result.empty() ? std::string(" ") + arrow + " " : ", ") + pathOf(*other);
    return result;
}

std::string portText(ZEL::Port& port, ZEL::Compound* compound)
{
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    const ZEL::AddRefWrapper<ZEL::PortDataType> type = port.getDataType();
    const ZEL::AddRefWrapper<ZEL::Port> inner =
        compound ? compound->getReversePort(&port) : nullptr;
    std::string result = isInput ? "input " : "output ";
    result += port.getName();
    result += type ? std::string(" ") + type->getName() : std::string(" none");
    result += " " + quoted(port.getPortDefaultValue());
    result += connectionsOf(isInput ? &port : inner.get(), "<-");
    result += connectionsOf(isInput ? inner.get() : &port, "->");
    return result + "\n";
}

void addConnections(ZEL::PortList& sources, std::vector<std::string>& lines)
{
    for (ZEL::Port* const source : sources) {
        for (ZEL::Port* const target : source->connectedTo())
            lines.push_back(pathOf(*source) + " -> " + pathOf(*target) + "\n");
    }
}

/// Every connection stands at its sending end: an output, or an inner input.
void addConnections(ZEL::Compound& compound, std::vector<std::string>& lines)
{
    addConnections(compound.innerInputs(), lines);
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        addConnections(node->outputs(), lines);
        if (node->isCompound())
            addConnections(*node->getAsCompound(), lines);
    }
}

} // namespace

std::string nodesText(ZEL::Compound& compound)
{
    std::string result;
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        result += std::string(node->getName()) + " " + node->getNodeTypeName();
        result += node->isCompound() ? " compound\n" : "\n";
    }
    return result;
}

std::string portsText(ZEL::Node& node)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
    std::string result;
    for (ZEL::Port* const port : node.inputs())
        result += portText(*port, compound.get());
    for (ZEL::Port* const port : node.outputs())
        result += portText(*port, compound.get());
    return result;
}

std::string connectionsText(ZEL::Compound& compound)
{
    std::vector<std::string> lines;
    addConnections(compound, lines);
    std::sort(lines.begin(), lines.end());
    std::string result;
    for (const std::string& line : lines)
        result += line;
    return result;
}

std::string findText(ZEL::Container& container, const std::string& path)
{
    std::string result;
    const ZEL::AddRefWrapper<ZEL::Node> node = container.findNodeFromPath(path.c_str());
    if (node)
        result += node->isCompound() ? "compound\n" : "node\n";
    if (container.findPortFromPath(path.c_str(), ZEL::PortInput, ZEL::Container::eSearchNode))
        result += "input\n";
    if (container.findPortFromPath(path.c_str(), ZEL::PortOutput, ZEL::Container::eSearchNode))
        result += "output\n";
    return result.empty() ? "nothing\n" : result;
}

} // namespace shading
