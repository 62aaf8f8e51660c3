#include "zelFuzzCensus.h"

#include "zelFuzzInput.h"
#include "zelFuzzKin.h"

namespace zelFuzz {

void Census::addNode(ZEL::Node* node)
{
    if (!nodes.add(node))
        return;
    addList(&node->inputs());
    addList(&node->outputs());
    addSide(static_cast<FuzzNode*>(node)->side);
    if (ZEL::Compound* const compound = node->getAsCompound().get())
        addCompound(compound);
}

void Census::addCompound(ZEL::Compound* compound)
{
    if (!compounds.add(compound))
        return;
    addList(&compound->innerInputs());
    addList(&compound->innerOutputs());
    addSide(static_cast<FuzzCompound*>(compound)->side);
    if (!nodeLists.add(&compound->nodes()))
        return;
    for (ZEL::Node* const node : compound->nodes())
        addNode(node);
}

void Census::addList(ZEL::PortList* list)
{
    if (!lists.add(list))
        return;
    for (ZEL::Port* const port : *list) {
        expect(port != nullptr, "a list with an entry that is none");
        addPort(port);
    }
}

void Census::addSide(SideListener* side)
{
    if (!side)
        return;
    addList(side->list.get());
    addPort(side->single.get());
}

} // namespace zelFuzz
