#include "document/rules.h"

#include "document/backdrops.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "document/names.h"
#include "document/node.h"
#include "document/origins.h"
#include "document/reservedNames.h"
#include "format/nodeDefs.h"

#include <algorithm>

namespace shading {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isNameChar(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

template <class List>
bool isAmbiguousIn(List& list, const std::string& name)
{
    int count = 0;
    for (const auto& entry : list)
        count += entry->getName() == name ? 1 : 0;
    return count > 1;
}

/// The graph has the input itself, or would when it is written, and no `nodedef` has it instead.
bool isChildOf(ZEL::Node& graph, const PortPtr& inner)
{
    if (!tieOf(graph))
        return true;
    const PortPtr outer = graph.getAsCompound()->getReversePort(inner);
    auto& document = static_cast<Document&>(*graph.getContainer());
    const Piece* const element = outer ? document.origins().elementOf(*outer) : nullptr;
    return element && element->parent->text != "nodedef";
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

bool mayLeadStraight(ZEL::Port& receiver)
{
    if (!receiver.isCompoundInternalPort())
        return true;
    const PortPtr outer = receiver.getParentCompound()->getReversePort(&receiver);
    const NodePtr node = receiver.getParentNode();
    auto* const document = dynamic_cast<Document*>(node->getContainer());
    const Piece* const element =
        outer && document ? document->origins().elementOf(*outer) : nullptr;
    return element && says(*element, "interfacename");
}

std::string fitProblem(ZEL::Port& sender, ZEL::Port& receiver)
{
    if (!isInScope(sender, receiver))
        return pathOf(receiver) + " is not in the compound of " + pathOf(sender);
    const std::string type = typeNameOf(sender);
    const NodePtr graph = receiver.isCompoundInternalPort() ? nullptr : receiver.getParentNode();
    if (graph && graph->isCompound() && tieOf(*graph))
        return "a graph that implements a nodedef has no sources: nodes of its type have them";
    if (sender.isCompoundInternalPort() && !mayLeadStraight(receiver))
        return "the format leads no input of a graph straight to an output";
    if (receiver.isCompoundInternalPort() && levelOf(sender) != levelOf(receiver) &&
        sender.getParentNode()->outputs()[0].get() != &sender)
        return pathOf(receiver) + " can have the first output of that graph only";
    if (type != typeNameOf(receiver))
        return pathOf(sender) + " is " + type + ", " + pathOf(receiver) + " is " +
               typeNameOf(receiver);
    if (type == kNoType || type == kMultiOutput)
        return "the format connects no ports of type " + type;
    return "";
}

std::string connectionProblem(ZEL::Port& sender, ZEL::Port& receiver, bool anyType)
{
    const std::string problem = anyType || (receiver.isConnected() && isInScope(sender, receiver))
                                    ? ""
                                    : fitProblem(sender, receiver);
    if (problem.empty() && receiver.isConnected())
        return pathOf(receiver) + " has a source: " + pathOf(*receiver.connectedTo()[0]);
    return problem;
}

std::string hiddenSourceProblem(ZEL::Port& port)
{
    const PortPtr inner = port.getParentNode()->getAsCompound()->getReversePort(&port);
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    const std::string source = inner ? hiddenSourceOf(isInput ? port : *inner) : "";
    const bool isHandedOn = !source.empty() && (isInput ? *inner : port).isConnected();
    return isHandedOn ? pathOf(port) + " hands on " + source + ", which the network does not show"
                      : "";
}

const char* const kNameIsTaken = "the name is taken";

bool isReachable(const std::string& name)
{
    return !name.empty() && name.find('.') == std::string::npos;
}

std::string nameProblem(const std::string& name)
{
    if (name.empty())
        return "a name cannot be empty";
    if (!isReachable(name))
        return "no path reaches a name with a \".\" in it";
    const bool isGood = !isDigit(name.front()) && std::all_of(name.begin(), name.end(), isNameChar);
    return isGood ? "" : "a name has letters, digits and _, and begins with no digit";
}

std::string takenProblem(ZEL::Compound& compound, const std::string& name)
{
    const char* const text = name.c_str();
    const NodePtr owner = compound.getAsNode();
    const PortPtr input = compound.innerInputs()[text];
    if (compound.innerOutputs()[text] || compound.nodes()[text] ||
        (input && isChildOf(*owner, input)))
        return kNameIsTaken;
    const auto* const node = dynamic_cast<const Node*>(owner.get());
    auto* const document = dynamic_cast<Document*>(owner->getContainer());
    if (document && document->backdrops().named(compound, name))
        return "the name is taken: backdrop \"" + name + "\" has it";
    if (!node || !node->element() || !document)
        return "";
    const std::string holder = document->reservedNames().holderOf(*node->element(), name);
    return holder.empty() ? "" : "the name is taken: " + holder;
}

std::string newNameProblem(ZEL::Compound& compound, const std::string& name)
{
    const std::string problem = nameProblem(name);
    return problem.empty() ? takenProblem(compound, name) : problem;
}

std::string newPortNameProblem(ZEL::Compound& compound, const std::string& name)
{
    std::string problem = newNameProblem(compound, name);
    const Tie* const tie = tieOf(*compound.getAsNode());
    if (!problem.empty() || !tie)
        return problem;
    bool isTaken = static_cast<bool>(compound.innerInputs()[name.c_str()]);
    for (const char* const kind : {"token", "parameter"})
        isTaken = isTaken || (tie->nodeDef && childNamed(*tie->nodeDef, kind, name));
    return isTaken ? kNameIsTaken : "";
}

std::string uniqueName(ZEL::Compound& compound, const std::string& name, ZEL::Compound* other)
{
    std::string stem = name;
    std::replace_if(
        stem.begin(), stem.end(), [](char c) { return !isNameChar(c); }, '_');
    if (stem.empty() || isDigit(stem.front()))
        stem.insert(0, "_");
    const auto isTaken = [&](const std::string& wanted) {
        return !takenProblem(compound, wanted).empty() ||
               (other && !takenProblem(*other, wanted).empty());
    };
    const auto numbered = [&](int number) { return stem + std::to_string(number); };
    if (!isTaken(stem))
        return stem;
    // Many ports get one name in one edit: the first free number is looked for in growing strides.
    int taken = 1;
    int free = 2;
    for (int stride = 1; isTaken(numbered(free)); stride *= 2) {
        taken = free;
        free += stride;
    }
    while (free - taken > 1) {
        const int middle = taken + (free - taken) / 2;
        (isTaken(numbered(middle)) ? taken : free) = middle;
    }
    return numbered(free);
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
