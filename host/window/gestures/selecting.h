#pragma once

#include "document/pointers.h"

#include <Qt>
#include <vector>

namespace shading {

class Canvas;
class Workspace;

// What is selected.

/// The nodes alone; with Shift besides those that are selected; with Ctrl those of them that were
/// not selected, besides what else is.
void selectBy(Workspace& workspace,
              const std::vector<NodePtr>& nodes,
              Qt::KeyboardModifiers modifiers);
/// All nodes of the compound.
void selectAll(Workspace& workspace);
/// The nodes, and all of the compound that feed them, on any way, or are fed by them.
void selectStream(Workspace& workspace, const std::vector<NodePtr>& nodes, bool isUpstream);

enum class Direction { Left, Right, Up, Down };

/// The node that is nearest to that one in the direction; without a node that nearest to the middle
/// of what is seen. Empty when there is none.
NodePtr neighbour(const Canvas& canvas, const NodePtr& node, Direction direction);
/// Selects the neighbour of the node that was selected last, and shows it; besides what is selected
/// when it is added.
void selectNeighbour(Canvas& canvas, Workspace& workspace, Direction direction, bool isAdded);

} // namespace shading
