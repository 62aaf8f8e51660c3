// The one source of these tests that knows the folder of the build: in another folder it alone is
// compiled anew, the others come from the compiler's cache.
#include "paths.h"

namespace paths {

const char* const kDocuments = SHADING_EXAMPLES "/documents";
const char* const kExamples = SHADING_EXAMPLES;
const char* const kNoPlugin = NO_PLUGIN;
const char* const kOtherPlugin = OTHER_PLUGIN;
const char* const kShadingPlugin = SHADING_PLUGIN;
const char* const kZelsh = ZELSH;

} // namespace paths
