#pragma once

namespace shading {

class DraftNetwork;

/// Gives every node of the network its element, at the place where the network has it: elements of
/// nodes and ports that are gone go, those of moved nodes move, and new ones get a name and a type.
/// What else an element says is left as it was read. Private to the host's library.
void projectNodes(DraftNetwork& network);

} // namespace shading
