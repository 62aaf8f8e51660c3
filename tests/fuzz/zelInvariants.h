#pragma once

#include "zelFuzzCensus.h"

#include <string>

namespace zelFuzz {

class Universe;

/// Ends the program unless, in all that the host holds:
/// - both ends of every connection know each other as often, and both are among what is held,
/// - every node, compound, list and port has exactly the references of its holders,
/// - long lists answer by name, by identity and by index as a plain walk over them does,
/// - every port names the node and the compound that the class of its parent makes it belong to,
/// - the inner ports of every compound that only the library touched mirror those of its node,
/// - every link upward can be followed.
void checkInvariants(const Universe& universe);

/// All nodes below the root with their ports, in order, and their connections, sorted: what an edit
/// changes.
std::string networkText(Universe& universe);

} // namespace zelFuzz
