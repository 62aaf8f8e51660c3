#pragma once

#include <QString>
#include <functional>

namespace shading {

class Workspace;

/// Runs an edit of the workspace. Gives the reason when it was refused; empty: it is done.
QString tryEdit(Workspace& workspace, const std::function<bool()>& run);

} // namespace shading
