#include "zelFuzzCensus.h"

namespace zelFuzz {

void Census::addNode(ZEL::Node* node)
{
    if (!nodes.add(node))
        return;
    addList(&node->inputs());
    addList(&node->outputs());
    if (ZEL::Compound* const compound = node->getAsCompound().get())
        addCompound(compound);
}

void Census::addCompound(ZEL::Compound* compound)
{
    if (!compounds.add(compound))
        return;
    addList(&compound->innerInputs());
    addList(&compound->innerOutputs());
    if (!nodeLists.add(&compound->nodes()))
        return;
    for (ZEL::Node* const node : compound->nodes())
        addNode(node);
}

void Census::addList(ZEL::PortList* list)
{
    if (!lists.add(list))
        return;
    for (ZEL::Port* const port : *list)
        addPort(port);
}

} // namespace zelFuzz
