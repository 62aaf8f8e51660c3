#pragma once

#include "zelNode.h"

/// What the host takes from the plugin besides its runtime: a node with the ports In and Out, put
/// into the wrapper. The function is found by this name.
extern "C" __attribute__((visibility("default"))) void
createPluginNode(ZEL::Container* container, const char* name, ZEL::AddRefWrapper<ZEL::Node>* made);
