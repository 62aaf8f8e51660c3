#include "zel/removal.h"

#include "zel/listProtocol.h"
#include "zel/sever.h"

namespace zelpython {

void afterRemoval(ZEL::NodeList& list, ZEL::Node& node)
{
    if (placeOf(list, node) >= 0)
        return;
    sever(node);
    const auto compound = list.getParentCompound();
    if (compound && node.getParentCompound() == compound)
        node.setParentCompound(nullptr);
}

} // namespace zelpython
