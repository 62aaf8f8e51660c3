#include "views/records.h"

#include "document/names.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

void addPaths(ZEL::Port* port, std::vector<std::string>& paths)
{
    if (!port)
        return;
    for (ZEL::Port* const other : port->connectedTo())
        paths.push_back(pathOf(*other));
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

/// Calls with each port that sends inside the compound and below. Every connection stands there: at
/// an output, or at an inner input.
template <class Action>
void forEachSender(ZEL::Compound& compound, const Action& action)
{
    for (ZEL::Port* const port : compound.innerInputs())
        action(*port);
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        for (ZEL::Port* const port : node->outputs())
            action(*port);
        if (node->isCompound())
            forEachSender(*node->getAsCompound(), action);
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

} // namespace

std::vector<NodeRecord> nodeRecords(ZEL::Compound& compound)
{
    std::vector<NodeRecord> records;
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes())
        records.push_back({node->getName(), node->getNodeTypeName(), node->isCompound()});
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

std::string lineOf(const ConnectionRecord& record)
{
    return record.source + " -> " + record.target;
}

std::vector<ConnectionRecord> connectionRecords(ZEL::Compound& compound)
{
    std::vector<std::pair<std::string, ConnectionRecord>> sorted;
    forEachSender(compound, [&](ZEL::Port& source) {
        for (ZEL::Port* const target : source.connectedTo()) {
            ConnectionRecord record{pathOf(source), pathOf(*target)};
            std::string line = lineOf(record);
            sorted.emplace_back(std::move(line), std::move(record));
        }
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
    forEachSender(compound, [&](ZEL::Port& source) {
        statistics.connections += source.connectedTo().size();
    });
    return statistics;
}

} // namespace shading
