#pragma once

#include "shell/shell.h"

namespace shading {

/// The command that writes a picture of a network and changes nothing.
const std::vector<Command>& drawCommands();

} // namespace shading
