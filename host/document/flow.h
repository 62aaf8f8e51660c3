#pragma once

#include "zel.h"

#include <unordered_set>
#include <vector>

namespace shading {

// Where what flows through a network comes from, across the borders of compounds.

/// The ports that receive what the sender makes of it: the inputs of its node; for a port of a
/// compound the other side of it. Their sources are the senders before it.
std::vector<ZEL::Port*> receiversBehind(ZEL::Port& sender);

/// True when what the sender gives comes from the receiver, on any way: connected, they would be a
/// cycle.
bool comesFrom(ZEL::Port& sender, ZEL::Port& receiver);

/// All receivers that it comes from: to ask about many at once.
std::unordered_set<const ZEL::Port*> receiversBefore(ZEL::Port& sender);
/// All senders that give what comes from the receiver: connected to it, each would be a cycle.
std::unordered_set<const ZEL::Port*> sendersAfter(ZEL::Port& receiver);

/// A sender among those that gets what it gives, on any way; null when there is none. Together they
/// are walked through once.
ZEL::Port* feedingItself(const std::vector<ZEL::Port*>& senders);

} // namespace shading
