#pragma once

#include "document/pointers.h"

#include <vector>

namespace shading {

class Progress;

/// Lets networks go node by node. The last reference to a node would take all that is in it along
/// at once, which lasts where there are many.
class Release {
public:
    /// Holds the node and all below it from now on.
    void add(const NodePtr& node, Progress& progress);
    /// Lets go of them, those around before those inside.
    void run(Progress& progress);

private:
    std::vector<NodePtr> m_nodes;
};

} // namespace shading
