#pragma once

#include "zelNode.h"

/// What the host takes from the plugin besides its runtime: a node with the ports In and Out. The
/// function is found by this name.
extern "C" __attribute__((visibility("default"))) ZEL::AddRefWrapper<ZEL::Node>
createPluginNode(ZEL::Container* container, const char* name);
