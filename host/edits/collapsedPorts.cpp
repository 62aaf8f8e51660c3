#include "edits/collapsedPorts.h"

#include "document/names.h"
#include "document/pointers.h"
#include "document/rules.h"
#include "format/format.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace shading {

namespace {

/// What renderers take: a node that makes it may stand at the end, with nothing behind it.
constexpr std::array<const char*, 5> kEndTypes = {"material", "surfaceshader", "displacementshader",
                                                  "volumeshader", "lightshader"};

/// A port of the compound from both sides.
struct Pair {
    PortPtr receiver; ///< The end that a source feeds.
    PortPtr sender;   ///< The end that feeds the others.
};

/// Gives to the one what the other feeds.
void moveTargets(const PortPtr& from, const PortPtr& to)
{
    std::vector<PortPtr> targets;
    for (ZEL::Port* const target : from->connectedTo())
        targets.emplace_back(target);
    for (const PortPtr& target : targets)
        from->removeConnection(target);
    for (const PortPtr& target : targets)
        to->addConnection(target);
}

/// Leaves one port for each source; the first of them stays.
void mergePorts(ZEL::Compound& compound, ZEL::PortList& innerPorts)
{
    const bool isInput = &innerPorts == &compound.innerInputs();
    std::unordered_map<const ZEL::Port*, Pair> firsts;
    std::vector<PortPtr> merged;
    for (ZEL::Port* const inner : innerPorts) {
        const PortPtr outer = compound.getReversePort(inner);
        const Pair pair = isInput ? Pair{outer, inner} : Pair{inner, outer};
        const PortPtr source = pair.receiver->connectedTo()[0];
        if (!source)
            continue;
        const Pair& first = firsts.try_emplace(source.get(), pair).first->second;
        if (first.sender == pair.sender || typeNameOf(*first.sender) != typeNameOf(*pair.sender))
            continue;
        moveTargets(pair.sender, first.sender);
        merged.emplace_back(inner);
    }
    std::for_each(merged.rbegin(), merged.rend(),
                  [&](const PortPtr& inner) { compound.deleteCompoundPort(inner); });
}

void keepEnds(ZEL::Compound& compound)
{
    for (const NodePtr& node : compound.nodes()) {
        for (ZEL::Port* const output : node->outputs()) {
            const std::string type = typeNameOf(*output);
            if (output->isConnected() ||
                std::find(kEndTypes.begin(), kEndTypes.end(), type) == kEndTypes.end())
                continue;
            const int index = compound.createCompoundPort(ZEL::PortOutput, output->getName(),
                                                          output->getDataType());
            if (const PortPtr inner = compound.innerOutputs()[index])
                inner->addConnection(output);
        }
    }
}

/// An input has the value of the first port that it feeds: it counts when the source goes.
void takeValues(ZEL::Compound& compound)
{
    for (ZEL::Port* const inner : compound.innerInputs()) {
        const PortPtr target = inner->connectedTo()[0];
        if (target && *target->getPortDefaultValue() != '\0')
            inner->setPortDefaultValue(target->getPortDefaultValue());
    }
}

void renamePortsLikeNodes(ZEL::Compound& compound)
{
    for (ZEL::PortList* const list : {&compound.innerInputs(), &compound.innerOutputs()}) {
        for (ZEL::Port* const port : *list) {
            if (!compound.nodes()[port->getName()])
                continue;
            const std::string name = uniqueName(compound, port->getName());
            const PortPtr mirror = compound.getReversePort(port);
            port->setName(name.c_str());
            mirror->setName(name.c_str());
        }
    }
}

} // namespace

void finishCollapsedPorts(ZEL::Compound& compound)
{
    mergePorts(compound, compound.innerInputs());
    mergePorts(compound, compound.innerOutputs());
    takeValues(compound);
    keepEnds(compound);
    renamePortsLikeNodes(compound);
}

} // namespace shading
