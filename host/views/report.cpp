#include "views/report.h"

#include "document/names.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

/// " ARROW PATH, PATH", nothing when there is no path.
std::string pathsText(const std::vector<std::string>& paths, const char* arrow)
{
    std::string result;
    for (const std::string& path : paths)
        result += (result.empty() ? std::string(" ") + arrow + " " : ", ") + path;
    return result;
}

NodeRecord recordOf(ZEL::Node& node)
{
    return {node.getName(), node.getNodeTypeName(), node.isCompound()};
}

void addPaths(ZEL::Port* port, std::vector<std::string>& paths)
{
    if (!port)
        return;
    for (ZEL::Port* const other : port->connectedTo())
        paths.push_back(pathOf(*other));
    const std::string hidden = hiddenSourceOf(*port);
    if (!hidden.empty())
        paths.push_back(hidden);
}

PortRecord recordOf(ZEL::Port& port, ZEL::Compound* compound)
{
    PortRecord record;
    const ZEL::AddRefWrapper<ZEL::Port> inner =
        compound ? compound->getReversePort(&port) : nullptr;
    record.isInput = port.getPortIOType() == ZEL::PortInput;
    record.name = port.getName();
    record.type = typeNameOf(port);
    record.value = port.getPortDefaultValue();
    addPaths(record.isInput ? &port : inner.get(), record.sources);
    addPaths(record.isInput ? inner.get() : &port, record.targets);
    std::sort(record.targets.begin(), record.targets.end());
    return record;
}

/// Calls with each port that sends inside the compound and below, at an output or at an inner
/// input, or with each that receives. Every connection stands at both.
template <class Action>
void forEachEnd(ZEL::Compound& compound, bool isSender, const Action& action)
{
    for (ZEL::Port* const port : isSender ? compound.innerInputs() : compound.innerOutputs())
        action(*port);
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        for (ZEL::Port* const port : isSender ? node->outputs() : node->inputs())
            action(*port);
        if (node->isCompound())
            forEachEnd(*node->getAsCompound(), isSender, action);
    }
}

void countNodes(ZEL::Compound& compound, int level, Statistics& statistics)
{
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        ++statistics.nodes;
        statistics.ports += node->inputs().size() + node->outputs().size();
        statistics.depth = std::max(statistics.depth, level);
        if (!node->isCompound())
            continue;
        ++statistics.compounds;
        countNodes(*node->getAsCompound(), level + 1, statistics);
    }
}

void addTree(ZEL::Node& node, std::string& indent, std::string& text)
{
    text += indent + lineOf(recordOf(node)) + "\n";
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
            textOf(portRecords(node));
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

std::vector<NodeRecord> nodeRecords(ZEL::Compound& compound)
{
    std::vector<NodeRecord> records;
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes())
        records.push_back(recordOf(*node));
    return records;
}

std::vector<PortRecord> portRecords(ZEL::Node& node)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
    std::vector<PortRecord> records;
    for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (ZEL::Port* const port : *list)
            records.push_back(recordOf(*port, compound.get()));
    }
    return records;
}

std::vector<ConnectionRecord> connectionRecords(ZEL::Compound& compound)
{
    std::vector<std::pair<std::string, ConnectionRecord>> sorted;
    const auto add = [&](ConnectionRecord record) {
        std::string line = lineOf(record);
        sorted.emplace_back(std::move(line), std::move(record));
    };
    forEachEnd(compound, true, [&](ZEL::Port& source) {
        for (ZEL::Port* const target : source.connectedTo())
            add({pathOf(source), pathOf(*target)});
    });
    forEachEnd(compound, false, [&](ZEL::Port& target) {
        const std::string hidden = hiddenSourceOf(target);
        if (!hidden.empty())
            add({hidden, pathOf(target)});
    });
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<ConnectionRecord> records;
    records.reserve(sorted.size());
    for (auto& [line, record] : sorted)
        records.push_back(std::move(record));
    return records;
}

Statistics statisticsOf(ZEL::Compound& compound)
{
    Statistics statistics;
    countNodes(compound, 1, statistics);
    forEachEnd(compound, true,
               [&](ZEL::Port& source) { statistics.connections += source.connectedTo().size(); });
    return statistics;
}

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

std::string lineOf(const NodeRecord& record)
{
    return record.name + " " + record.type + (record.isCompound ? " compound" : "");
}

std::string lineOf(const PortRecord& record)
{
    return (record.isInput ? "input " : "output ") + record.name + " " + record.type + " " +
           quoted(record.value) + pathsText(record.sources, "<-") + pathsText(record.targets, "->");
}

std::string lineOf(const ConnectionRecord& record)
{
    return record.source + " -> " + record.target;
}

std::string lineOf(const FindingRecord& record)
{
    return record.path + ": " + record.reason;
}

std::string treeText(ZEL::Node& node)
{
    std::string result;
    std::string indent;
    addTree(node, indent, result);
    return result;
}

std::string networkText(ZEL::Node& root)
{
    std::string text = textOf(connectionRecords(*root.getAsCompound()));
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
