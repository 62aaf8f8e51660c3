#include "document/rules.h"

#include "document/names.h"
#include "format/format.h"

#include <algorithm>

namespace shading {

namespace {

template <class List>
bool isAmbiguousIn(List& list, const std::string& name)
{
    int count = 0;
    for (const auto& entry : list)
        count += entry->getName() == name ? 1 : 0;
    return count > 1;
}

} // namespace

CompoundPtr levelOf(ZEL::Port& port)
{
    CompoundPtr inner = port.getParentCompound();
    const NodePtr node = port.getParentNode();
    if (inner || !node)
        return inner;
    return node->getParentCompound();
}

bool isInScope(ZEL::Port& sender, ZEL::Port& receiver)
{
    const CompoundPtr level = levelOf(sender);
    if (!level || level == levelOf(receiver))
        return static_cast<bool>(level);
    const NodePtr node = sender.getParentNode();
    const bool isGraphOutput = !sender.isCompoundInternalPort() && node->isCompound();
    return isGraphOutput && !level->getAsNode()->getParentCompound() && levelOf(receiver);
}

std::string connectionProblem(ZEL::Port& sender, ZEL::Port& receiver, bool anyType)
{
    if (!anyType && !isInScope(sender, receiver))
        return pathOf(receiver) + " is not in the compound of " + pathOf(sender);
    if (receiver.isConnected())
        return pathOf(receiver) + " has a source: " + pathOf(*receiver.connectedTo()[0]);
    const std::string type = typeNameOf(sender);
    if (anyType)
        return "";
    if (type != typeNameOf(receiver))
        return pathOf(sender) + " is " + type + ", " + pathOf(receiver) + " is " +
               typeNameOf(receiver);
    if (type == kNoType || type == kMultiOutput)
        return "the format connects no ports of type " + type;
    return "";
}

std::string nameProblem(const std::string& name)
{
    if (name.empty())
        return "a name cannot be empty";
    if (name.find('.') != std::string::npos)
        return "no path reaches a name with a \".\" in it";
    return "";
}

bool isNameTaken(ZEL::Compound& compound, const std::string& name)
{
    const char* const text = name.c_str();
    return compound.innerInputs()[text] || compound.innerOutputs()[text] || compound.nodes()[text];
}

std::string newNameProblem(ZEL::Compound& compound, const std::string& name)
{
    const std::string problem = nameProblem(name);
    return problem.empty() && isNameTaken(compound, name) ? "the name is taken" : problem;
}

std::string uniqueName(ZEL::Compound& compound, const std::string& name)
{
    std::string unique = name;
    for (int number = 2; isNameTaken(compound, unique); ++number)
        unique = name + std::to_string(number);
    return unique;
}

bool isAmbiguous(ZEL::NodeList& list, const char* name)
{
    return isAmbiguousIn(list, name);
}

bool isAmbiguous(ZEL::PortList& list, const char* name)
{
    return isAmbiguousIn(list, name);
}

} // namespace shading
