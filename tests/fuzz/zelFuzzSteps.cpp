#include "zelFuzzSteps.h"

#include "zelCallerRules.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <list>

namespace zelFuzz {

namespace {

constexpr std::size_t kMaxNodes = 24;
constexpr std::size_t kMaxCompounds = 8;

std::vector<Step> allSteps()
{
    std::vector<Step> steps;
    for (const std::vector<Step>* const some :
         {&kGraphSteps, &kHostSteps, &kCommandSteps, &kValueSteps, &kKinSteps, &kCrowdSteps,
          &kListSteps, &kConnectionSteps, &kEditorSteps})
        steps.insert(steps.end(), some->begin(), some->end());
    return steps;
}

template <class T>
T* pick(Universe& universe, const Counted<T>& objects)
{
    if (objects.all().empty())
        return nullptr;
    return objects.all()[static_cast<std::size_t>(
        universe.input.place(static_cast<int>(objects.all().size())))];
}

/// True when nobody holds the object but the caller, and the library for the moment.
template <class T>
bool isLoose(const Universe& universe, T& object, Counted<T> Census::*known)
{
    if (object.getRefCount() == 1)
        return true;
    bool isCounted = universe.depth == 0; // Else a question may hold it.
    if constexpr (std::is_same_v<T, ZEL::Port>)
        isCounted = isCounted && !object.isPortHidden(); // Nor by a forward move.
    return !isCounted && !(universe.census().*known).has(&object);
}

/// What lives on has lost what dies.
template <class T>
void drop(Universe& universe, ZEL::AddRefWrapper<T>& object)
{
    object = nullptr;
    ++universe.moment;
}

} // namespace

void makeStep(Universe& universe)
{
    static const std::vector<Step> steps = allSteps();
    const int number = universe.input.number(static_cast<int>(steps.size()));
    const Step& step = steps[static_cast<std::size_t>(number)];
    static const bool isTraced = std::getenv("ZEL_FUZZ_TRACE") != nullptr;
    if (isTraced)
        std::fprintf(stderr, "%*s%s\n", 2 * universe.depth, "", step.name);
    ++universe.moment;
    step.run(universe);
    callerRules::forgetFormerCompounds(universe);
    ++universe.moment;
}

ZEL::Port* pickPort(Universe& universe)
{
    if (universe.asked && universe.input.number(3) == 0)
        return universe.asked;
    return pick(universe, universe.census().ports);
}

ZEL::Node* pickNode(Universe& universe)
{
    return pick(universe, universe.census().nodes);
}

ZEL::Compound* pickCompound(Universe& universe)
{
    return pick(universe, universe.census().compounds);
}

ZEL::PortList* pickList(Universe& universe)
{
    return pick(universe, universe.census().lists);
}

TypePtr pickType(Universe& universe)
{
    const int number = universe.input.number(4);
    if (number == 3)
        return ZEL::PortDataType::createNew("own");
    return universe.runtime.getPortDataType(number);
}

bool hasRoom(Universe& universe)
{
    const Census census = universe.census();
    const std::size_t crowd =
        static_cast<std::size_t>(CrowdNode::live) + static_cast<std::size_t>(TitledNode::live);
    return census.nodes.all().size() < kMaxNodes + crowd &&
           census.compounds.all().size() < kMaxCompounds;
}

bool prepareCompound(Universe& universe, ZEL::Node* node)
{
    if (!node || universe.collapsing > 0 || !hasRoom(universe) ||
        !callerRules::mayReplaceCompound(universe, *node))
        return false;
    if (const CompoundPtr former = node->getAsCompound())
        callerRules::prepareEnd(universe, *former);
    return true;
}

HeldList::HeldList(Universe& universe, ZEL::PortList* list) : m_universe(universe), m_list(list)
{
    universe.heldLists.push_back(list);
}

HeldList::~HeldList()
{
    std::vector<ZEL::PortList*>& known = m_universe.heldLists;
    known.erase(std::find(known.begin(), known.end(), m_list.get()));
    if (isOwned())
        return;
    for (ZEL::Port* const port : *m_list)
        callerRules::disconnect(m_universe, *port);
}

void letGo(Universe& universe, PortPtr& port)
{
    PortPtr gone = std::exchange(port, nullptr);
    if (gone && isLoose(universe, *gone, &Census::ports))
        callerRules::disconnect(universe, *gone);
    drop(universe, gone);
}

void letGo(Universe& universe, NodePtr& node)
{
    NodePtr gone = std::exchange(node, nullptr);
    if (gone && isLoose(universe, *gone, &Census::nodes))
        callerRules::prepareEnd(universe, *gone);
    drop(universe, gone);
}

void letGo(Universe& universe, CompoundPtr& compound)
{
    CompoundPtr gone = std::exchange(compound, nullptr);
    if (gone && isLoose(universe, *gone, &Census::compounds))
        callerRules::prepareEnd(universe, *gone);
    drop(universe, gone);
}

void letGo(Universe& universe, std::unique_ptr<CollapseSlot>& slot)
{
    if (!slot)
        return;
    const Held<ZEL::Compound> parent(universe, slot->parent);
    std::list<Held<ZEL::Node>> nodes;
    for (const auto& entry : slot->nodes)
        nodes.emplace_back(universe, entry.second);
    slot = nullptr;
}

void letGo(Universe& universe, std::unique_ptr<ModifySlot>& slot)
{
    const Held<ZEL::Compound> compound(universe, slot ? slot->compound : nullptr);
    slot = nullptr;
}

} // namespace zelFuzz
