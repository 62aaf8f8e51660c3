#pragma once

#include "window/gestures/desk.h"
#include "window/workspace/nodeCatalogue.h"

namespace shading {

class PickPopup;

/// Makes a node as the user wishes, in one edit: at the place, and connected by its first port that
/// fits. It is selected. False when that was refused, and nothing was made.
bool createNode(Desk& desk, const NodeCatalogue::Entry& entry, const NodeWish& wish);

/// Shows a search for a node to be made. Owned by the widget around the canvas; goes by itself, and
/// before the desk.
PickPopup* searchNode(Desk& desk, const NodeWish& wish);

/// What was made last, the last first: names of entries. Kept in the settings.
std::vector<QString> recentNodes();
void noteRecentNode(const QString& name);

} // namespace shading
