#pragma once

/// Everything, for hosts and plugins.

#include "zelCommands.h"
#include "zelCompound.h"
#include "zelContainer.h"
#include "zelCore.h"
#include "zelEditor.h"
#include "zelExport.h"
#include "zelNode.h"
#include "zelNodeLibrary.h"
#include "zelPlugin.h"
#include "zelPort.h"
#include "zelRuntime.h"
