#include "zel/classes.h"

namespace zelpython {

const char* docOf(const char* /*className*/, const char* /*name*/)
{
    return "";
}

} // namespace zelpython
