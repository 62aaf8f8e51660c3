#pragma once

namespace shading {

class DraftNetwork;

/// Writes into the draft what reading it back is sure to ask for: the names of nodes and ports, the
/// values of ports that have an element, the references of all that receive, and the elements of
/// compounds' ports that need one. So most edits are read back once. What depends on how a
/// document is read, like the ports that a definition gives, is left to that. Private to the host's
/// library.
void writeAhead(DraftNetwork& network);

} // namespace shading
