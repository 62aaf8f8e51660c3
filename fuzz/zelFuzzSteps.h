#pragma once

#include "zelFuzzUniverse.h"

namespace zelFuzz {

struct Step {
    const char* name; ///< For the trace that ZEL_FUZZ_TRACE in the environment asks for.
    void (*run)(Universe&);
};

/// Makes the step that the next byte names.
void makeStep(Universe& universe);

/// The steps, by theme. A step keeps the rules of callerRules; where it calls an object it holds no
/// wrapper of it, so that a question may be the end of the object.
extern const std::vector<Step> kGraphSteps;
extern const std::vector<Step> kHostSteps;
extern const std::vector<Step> kCommandSteps;
extern const std::vector<Step> kValueSteps;

// What the next byte chooses from all that is there; null when there is none.
ZEL::Port* pickPort(Universe& universe);
ZEL::Node* pickNode(Universe& universe);
ZEL::Compound* pickCompound(Universe& universe);
ZEL::PortList* pickList(Universe& universe);
TypePtr pickType(Universe& universe);
template <class Array>
auto& pickSlot(Universe& universe, Array& slots)
{
    return slots.at(
        static_cast<std::size_t>(universe.input.number(static_cast<int>(slots.size()))));
}

/// Room for another one, so that an input stays fast.
bool hasRoom(Universe& universe);

// Empties a place of the host; what goes with it is disconnected before.
void letGo(Universe& universe, PortPtr& port);
void letGo(Universe& universe, NodePtr& node);
void letGo(Universe& universe, CompoundPtr& compound);

} // namespace zelFuzz
