#include "zelFuzzKin.h"

#include "zelCallerRules.h"
#include "zelFuzzPort.h"
#include "zelFuzzUniverse.h"

namespace zelFuzz {

SideListener::SideListener(Universe& universe)
    : Hosted(universe),
      list(ZEL::PortList::createNew()),
      single(new FuzzPort(universe, "single", ZEL::PortOutput))
{
    const Agreement agreement(universe);
    list->setParent(this);
    list->addPort("early", nullptr);
    list->setPortIOType(ZEL::PortOutput);
    list->addPort("early", nullptr);
    single->setParent(this);
    universe.sides.push_back(this);
}

SideListener::~SideListener() = default;

void SideListener::close()
{
    callerRules::forgetParent(m_universe, this);
    std::vector<SideListener*>& sides = m_universe.sides;
    sides.erase(std::find(sides.begin(), sides.end(), this));
    single = nullptr;
    list = nullptr;
}

FuzzBoth::FuzzBoth(Universe& universe)
    : FuzzNode(universe, &universe),
      FuzzCompound(universe, nullptr)
{
    // It lives as long as the node: wrappers of the compound come and go.
    static_cast<ZEL::Compound*>(this)->addRef();
}

FuzzBoth::~FuzzBoth()
{
    callerRules::forgetParent(FuzzNode::m_universe, static_cast<ZEL::Node*>(this));
    callerRules::forgetParent(FuzzNode::m_universe, static_cast<ZEL::Compound*>(this));
}

} // namespace zelFuzz
