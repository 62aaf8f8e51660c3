#pragma once

#include "zelPort.h"

namespace ZEL {

/// What the dynamic type of the parent is; 0 for null and for any other kind of listener.
ParentKinds findParentKinds(PortNotification* parent);

} // namespace ZEL
