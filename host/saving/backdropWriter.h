#pragma once

namespace shading {

class DraftNetwork;

/// Writes which backdrops there are now, what they are called and which nodes they contain; what
/// their other attributes say is written with those of the rest. Called when the nodes have their
/// places and the network is written by its names of now. Private to the host's library.
///
/// A name that a `contains` had of a node or port follows that, and goes where it left; one that
/// nothing beside the backdrop had stays.
void writeBackdrops(DraftNetwork& network);

} // namespace shading
