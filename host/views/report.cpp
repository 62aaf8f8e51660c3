#include "views/report.h"

#include "document/names.h"

namespace shading {

namespace {

/// The text in double quotes, on one line.
std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (c == '\n')
            result += "\\n";
        else
            result += c;
    }
    return result + "\"";
}

/// " ARROW PATH, PATH", nothing when there is no path.
std::string pathsText(const std::vector<std::string>& paths, const char* arrow)
{
    std::string result;
    for (const std::string& path : paths)
        result += (result.empty() ? std::string(" ") + arrow + " " : ", ") + path;
    return result;
}

std::string nodeText(const NodeRecord& record)
{
    return record.name + " " + record.type + (record.isCompound ? " compound\n" : "\n");
}

void addTree(ZEL::Node& node, std::string& indent, std::string& text)
{
    text += indent + nodeText({node.getName(), node.getNodeTypeName(), node.isCompound()});
    if (!node.isCompound())
        return;
    indent += "  ";
    for (const ZEL::AddRefWrapper<ZEL::Node>& inner : node.getAsCompound()->nodes())
        addTree(*inner, indent, text);
    indent.resize(indent.size() - 2);
}

void addNetwork(ZEL::Node& node, std::string& text)
{
    text += node.getFullPathName().getName() + std::string(" ") + node.getNodeTypeName() + "\n" +
            shading::portsText(node);
    const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
    if (!compound)
        return;
    for (ZEL::PortList* const list : {&compound->innerInputs(), &compound->innerOutputs()}) {
        for (ZEL::Port* const port : *list)
            text += port->getName() + (" " + typeNameOf(*port)) + "\n";
    }
    for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
        addNetwork(*inner, text);
}

} // namespace

std::string nodesText(ZEL::Compound& compound)
{
    std::string result;
    for (const NodeRecord& record : nodeRecords(compound))
        result += nodeText(record);
    return result;
}

std::string treeText(ZEL::Node& node)
{
    std::string result;
    std::string indent;
    addTree(node, indent, result);
    return result;
}

std::string portsText(ZEL::Node& node)
{
    std::string result;
    for (const PortRecord& record : portRecords(node)) {
        result += record.isInput ? "input " : "output ";
        result += record.name + " " + record.type + " " + quoted(record.value);
        result += pathsText(record.sources, "<-") + pathsText(record.targets, "->") + "\n";
    }
    return result;
}

std::string connectionsText(ZEL::Compound& compound)
{
    std::string result;
    for (const ConnectionRecord& record : connectionRecords(compound))
        result += lineOf(record) + "\n";
    return result;
}

std::string networkText(ZEL::Node& root)
{
    std::string text = connectionsText(*root.getAsCompound());
    addNetwork(root, text);
    return text;
}

std::string statisticsText(const Statistics& statistics)
{
    const auto line = [](const char* name, int count) {
        return name + (" " + std::to_string(count)) + "\n";
    };
    return line("nodes", statistics.nodes) + line("compounds", statistics.compounds) +
           line("depth", statistics.depth) + line("ports", statistics.ports) +
           line("connections", statistics.connections);
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
