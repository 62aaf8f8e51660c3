#pragma once

#include "../zelModule.h"
#include "zelNode.h"

/// What the host takes from the plugin besides its runtime: a node with the ports In and Out, put
/// into the wrapper. The function is found by this name.
extern "C" ZEL_TEST_EXPORT void
createPluginNode(ZEL::Container* container, const char* name, ZEL::AddRefWrapper<ZEL::Node>* made);
