#pragma once

/// Everything, for hosts and plugins.

#include "zelCompound.h"
#include "zelContainer.h"
#include "zelCore.h"
#include "zelEditor.h"
#include "zelExport.h"
#include "zelNode.h"
#include "zelPort.h"
