#include "zelFuzzHost.h"

#include "zelCallerRules.h"
#include "zelFuzzUniverse.h"

namespace zelFuzz {

namespace {

/// In the question about an addition: nobody holds the object but the argument of the call and the
/// library, so it stands in no list.
bool isNew(const ZEL::ReferenceCounted& object)
{
    return object.getRefCount() <= 2;
}

} // namespace

template <class Base>
Hosted<Base>::~Hosted()
{
    --live;
    if constexpr (std::is_same_v<Base, ZEL::Node>) {
        seen.compare(m_universe.moment, *this);
        m_universe.registrations.forget(*this);
        callerRules::forgetOwner(m_universe, this);
        callerRules::forgetParent(m_universe, this, {&this->inputs(), &this->outputs()});
    } else if constexpr (std::is_same_v<Base, ZEL::Compound>) {
        callerRules::forgetParent(m_universe, this, {&this->innerInputs(), &this->innerOutputs()});
    } else {
        callerRules::forgetParent(m_universe, this);
    }
}

template <class Base>
void Hosted<Base>::touchMirror(bool isMove)
{
    if (m_universe.mirrorDepth > 0 && !isMove)
        return;
    if constexpr (std::is_same_v<Base, ZEL::Compound>) {
        static_cast<FuzzCompound*>(this)->isMirrored = false;
    } else if constexpr (std::is_same_v<Base, ZEL::Node>) {
        if (const CompoundPtr compound = this->getAsCompound())
            static_cast<FuzzCompound*>(compound.get())->isMirrored = false;
    }
}

template <class Base>
bool Hosted<Base>::onPortAddConnection(const PortPtr& port, const PortPtr& /*other*/)
{
    return m_universe.ask(port.get());
}

template <class Base>
bool Hosted<Base>::onPortRemoveConnection(const PortPtr& port, const PortPtr& /*other*/)
{
    return m_universe.ask(port.get());
}

template <class Base>
bool Hosted<Base>::onPortSetDataType(const PortPtr& port, const TypePtr& /*type*/)
{
    touchMirror();
    return m_universe.ask(port.get());
}

template <class Base>
bool Hosted<Base>::onPortListPortAdded(const ZEL::PortList& list, const PortPtr& port)
{
    touchMirror();
    Universe& universe = m_universe;
    return universe.ask(port.get()) && (universe.scripted == &list || isNew(*port) ||
                                        !callerRules::standsElsewhere(universe, *port, &list));
}

template <class Base>
bool Hosted<Base>::onPortListPortRemoved(const ZEL::PortList& /*list*/, const PortPtr& port)
{
    touchMirror();
    Universe& universe = m_universe;
    if (!universe.ask(port.get()))
        return false;
    callerRules::disconnect(universe, *port);
    return true;
}

template <class Base>
bool Hosted<Base>::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    touchMirror(true);
    Universe& universe = m_universe;
    if (!universe.ask(nullptr))
        return false;
    callerRules::prepareMove(universe, list, from, to);
    return true;
}

template <class Base>
void Hosted<Base>::onPortListPortMoved(const ZEL::PortList& /*list*/, int /*from*/, int /*to*/)
{
    m_universe.ask(nullptr);
}

template <class Base>
const char* Hosted<Base>::onPortGetDefaultValue(const PortPtr& port)
{
    return m_universe.ask(port.get()) ? nullptr : "given";
}

template <class Base>
bool Hosted<Base>::onPortSetDefaultValue(const PortPtr& port, const char* /*value*/)
{
    return m_universe.ask(port.get());
}

template <class Base>
bool Hosted<Base>::onPortSetName(const PortPtr& port, const char* /*name*/)
{
    touchMirror();
    return m_universe.ask(port.get());
}

template <class Base>
ZEL::Namable Hosted<Base>::onGetParentFullPathName()
{
    if constexpr (std::is_abstract_v<Base>)
        return ZEL::Namable("listener");
    else
        return Base::onGetParentFullPathName();
}

template class Hosted<ZEL::PortNotification>;
template class Hosted<ZEL::Node>;
template class Hosted<ZEL::Compound>;

// Nodes of a crowd.

CrowdNode::CrowdNode(Universe& universe) : Hosted(universe, &universe)
{
    ++live;
}

TitledNode::TitledNode(Universe& universe) : Hosted(universe, &universe)
{
    ++live;
}

// FuzzCompound.

FuzzCompound::FuzzCompound(Universe& universe, const NodePtr& owner)
    : Hosted(universe, owner),
      isMirrored(universe.depth == 0 && owner &&
                 owner->inputs().size() + owner->outputs().size() == 0 &&
                 owner->inputs().getRefCount() == 1 && owner->outputs().getRefCount() == 1)
{
}

FuzzCompound::~FuzzCompound()
{
    seen.compare(m_universe.moment, *this);
    callerRules::forgetCompound(m_universe, this);
}

bool FuzzCompound::onNodeAdd(const NodePtr& node)
{
    Universe& universe = m_universe;
    const CompoundPtr self(this);
    return universe.ask(nullptr) &&
           (universe.scripted == &nodes() ||
            callerRules::mayAddNode(universe, *node, self.get(), isNew(*node)));
}

bool FuzzCompound::onNodeRemove(const NodePtr& node)
{
    Universe& universe = m_universe;
    if (!universe.ask(nullptr))
        return false;
    callerRules::prepareEnd(universe, *node);
    return true;
}

CompoundPtr FuzzCompound::createNewCompound(const char* name)
{
    Universe& universe = m_universe;
    const CompoundPtr self(this);
    const NodePtr node(new FuzzNode(universe, &universe));
    node->setName(name);
    const CompoundPtr made(new FuzzCompound(universe, node));
    return nodes().add(node) ? made : nullptr;
}

int FuzzCompound::createCompoundPort(ZEL::PortIOType ioType, const char* name, const TypePtr& type)
{
    Universe& universe = m_universe;
    const CompoundPtr self(this);
    const int troubles = universe.troubles;
    ++universe.mirrorDepth;
    const int index = Compound::createCompoundPort(ioType, name, type);
    --universe.mirrorDepth;
    setMirrored(isMirrored && troubles == universe.troubles);
    return index;
}

int FuzzCompound::deleteCompoundPort(PortPtr innerPort)
{
    Universe& universe = m_universe;
    const CompoundPtr self(this);
    const NodePtr owner = getAsNode();
    if (owner && innerPort) {
        const std::string name = innerPort->getName();
        for (ZEL::PortList* const list : {&owner->inputs(), &owner->outputs()})
            isMirrored = isMirrored && callerRules::countNamed(*list, name) <= 1;
    }
    const int troubles = universe.troubles;
    ++universe.mirrorDepth;
    const int index = Compound::deleteCompoundPort(innerPort);
    --universe.mirrorDepth;
    setMirrored(isMirrored && troubles == universe.troubles);
    return index;
}

void FuzzCompound::setMirrored(bool value)
{
    isMirrored = value;
    // One that its node has let go makes and deletes ports of the node all the same.
    const NodePtr owner = getAsNode();
    const CompoundPtr present = owner ? owner->getAsCompound() : nullptr;
    if (present && present != this)
        static_cast<FuzzCompound*>(present.get())->isMirrored = false;
}

// FuzzEditor: it may die in the callback.

FuzzEditor::~FuzzEditor()
{
    --live;
    m_universe.registrations.forget(*this);
}

void FuzzEditor::zel_onConnectionChange(ZEL::ECnxChangeType /*type*/,
                                        const PortPtr& first,
                                        const PortPtr& /*second*/)
{
    m_universe.ask(first.get());
}

void FuzzEditor::zel_onCompoundConnectionChange(ZEL::ECnxChangeType /*type*/,
                                                const PortPtr& first,
                                                const PortPtr& /*second*/)
{
    m_universe.ask(first.get());
}

void FuzzEditor::zel_onCompoundPortChange(ZEL::ECompoundPortChangeType /*type*/,
                                          const PortPtr& port)
{
    m_universe.ask(port.get());
}

void FuzzEditor::zel_onNodeChange(ZEL::ENodeChangeType /*type*/,
                                  const CompoundPtr& /*compound*/,
                                  const NodePtr& /*node*/)
{
    m_universe.registrations.hear(*this);
    m_universe.ask(nullptr);
}

} // namespace zelFuzz
