#pragma once

#include "document/pointers.h"

#include <string>
#include <vector>

namespace shading {

class Session;

/// Gives those nodes of the compound places in layers along their connections, each once; all of
/// them where none is named. The upper left corner of their places stays where it is. False, with
/// what is wrong and why, when there is none or the layout fails; the problem of an edit that was
/// refused is that of the session's edits too.
bool arrange(Session& session,
             const CompoundPtr& compound,
             const std::vector<NodePtr>& named,
             std::string& subject,
             std::string& reason);

} // namespace shading
