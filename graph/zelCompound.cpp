#include "zelCompound.h"

#include "core/zelKeepAlive.h"
#include "zelLostPort.h"
#include "zelNode.h"

namespace ZEL {

namespace {

/// The port of one list that stands where port stands in the other; empty when it is in neither.
AddRefWrapper<Port> FindInLists(const AddRefWrapper<Port>& port, PortList& a, PortList& b)
{
    const int placeInA = a.findPort(port);
    if (placeInA >= 0)
        return b[placeInA];
    const int placeInB = b.findPort(port);
    return placeInB >= 0 ? a[placeInB] : nullptr;
}

/// Takes the inner port out of its list and the first port of that name out of the owner's list.
/// Returns the index that the inner port had, -1 when it is not in the list or refused.
int deleteFromLists(const AddRefWrapper<Port>& innerPort,
                    const std::string& name,
                    PortList& inner,
                    PortList& outer)
{
    const int index = inner.findPort(innerPort);
    if (index < 0 || !inner.remove(innerPort))
        return -1;
    if (const AddRefWrapper<Port> outerPort = outer[name.c_str()])
        outer.remove(outerPort);
    return index;
}

} // namespace

AddRefWrapper<Compound> Compound::createNew(const AddRefWrapper<Node>& owner, const char* name)
{
    AddRefWrapper<Compound> compound(new Compound(owner));
    if (name)
        compound->setName(name);
    return compound;
}

Compound::Compound(const AddRefWrapper<Node>& owner)
    : m_innerInputs(PortList::createNew()),
      m_innerOutputs(PortList::createNew()),
      m_nodes(NodeList::createNew()),
      m_owner(owner.get())
{
    m_innerInputs->setParent(this, ParentKind::Compound);
    m_innerInputs->setPortIOType(PortOutput);
    m_innerOutputs->setParent(this, ParentKind::Compound);
    m_innerOutputs->setPortIOType(PortInput);
    m_nodes->setParentCompound(this);
    if (owner)
        owner->setOwnedCompound(this);
}

Compound::~Compound()
{
    m_nodes->onCompoundDied(this);
    m_innerOutputs->onParentDied(this);
    m_innerInputs->onParentDied(this);
}

NodeList& Compound::nodes()
{
    return *m_nodes;
}

PortList& Compound::innerInputs()
{
    return *m_innerInputs;
}

PortList& Compound::innerOutputs()
{
    return *m_innerOutputs;
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): every member takes itself.
Compound& Compound::operator=(const Compound& other)
{
    Namable::operator=(other);
    // The old lists are released last: other may lie inside.
    const AddRefWrapper<PortList> oldInputs(m_innerInputs);
    const AddRefWrapper<PortList> oldOutputs(m_innerOutputs);
    const AddRefWrapper<NodeList> oldNodes(m_nodes);
    m_innerInputs = other.m_innerInputs;
    m_innerOutputs = other.m_innerOutputs;
    m_nodes = other.m_nodes;
    m_owner = other.m_owner;
    return *this;
}

bool Compound::onPortAddConnection(const AddRefWrapper<Port>& /*port*/,
                                   const AddRefWrapper<Port>& /*other*/)
{
    return true;
}

bool Compound::onPortRemoveConnection(const AddRefWrapper<Port>& /*port*/,
                                      const AddRefWrapper<Port>& /*other*/)
{
    return true;
}

bool Compound::onPortSetDataType(const AddRefWrapper<Port>& /*port*/,
                                 const AddRefWrapper<PortDataType>& /*type*/)
{
    return true;
}

bool Compound::onPortListPortAdded(const PortList& /*list*/, const AddRefWrapper<Port>& /*port*/)
{
    return true;
}

bool Compound::onPortListPortRemoved(const PortList& /*list*/, const AddRefWrapper<Port>& /*port*/)
{
    return true;
}

bool Compound::onPortListPortMove(const PortList& /*list*/, int /*from*/, int /*to*/)
{
    return true;
}

void Compound::onPortListPortMoved(const PortList& /*list*/, int /*from*/, int /*to*/) {}

const char* Compound::onPortGetDefaultValue(const AddRefWrapper<Port>& /*port*/)
{
    return nullptr;
}

bool Compound::onPortSetDefaultValue(const AddRefWrapper<Port>& /*port*/, const char* /*value*/)
{
    return true;
}

bool Compound::onPortSetName(const AddRefWrapper<Port>& /*port*/, const char* /*name*/)
{
    return true;
}

Namable Compound::onGetParentFullPathName()
{
    return m_owner ? m_owner->getFullPathName() : Namable();
}

bool Compound::onNodeAdd(const AddRefWrapper<Node>& /*node*/)
{
    return true;
}

bool Compound::onNodeRemove(const AddRefWrapper<Node>& /*node*/)
{
    return true;
}

AddRefWrapper<Node> Compound::createNodeFromPreset(const char* /*preset*/)
{
    return nullptr;
}

AddRefWrapper<Compound> Compound::createNewCompound(const char* /*name*/)
{
    return nullptr;
}

bool Compound::saveAs(const char* /*name*/)
{
    return false;
}

int Compound::createCompoundPort(PortIOType ioType,
                                 const char* name,
                                 const AddRefWrapper<PortDataType>& type)
{
    const AddRefWrapper<Node> owner = getAsNode();
    if (!owner)
        return -1;
    const KeepAlive self(this);
    const std::string portName(name ? name : ""); // A listener may change the text of the argument.
    const AddRefWrapper<PortDataType> portType(type.get());
    PortList& outer = ioType == PortInput ? owner->inputs() : owner->outputs();
    PortList& inner = ioType == PortInput ? innerInputs() : innerOutputs();
    // A refused port is returned all the same, but does not stand in the list: at the end, unless a
    // listener has changed that.
    const AddRefWrapper<Port> added = outer.addPort(portName.c_str(), portType);
    if (outer.entryAt(outer.size() - 1) != added.get() && outer.findPort(added) < 0)
        return -1;
    const int index = inner.size();
    inner.addPort(portName.c_str(), portType);
    return index;
}

int Compound::deleteCompoundPort(AddRefWrapper<Port> innerPort)
{
    const AddRefWrapper<Node> owner = getAsNode();
    if (!owner || !innerPort)
        return -1;
    const KeepAlive self(this);
    const std::string name(innerPort->getName());
    const int index = deleteFromLists(innerPort, name, innerInputs(), owner->inputs());
    return index >= 0 ? index : deleteFromLists(innerPort, name, innerOutputs(), owner->outputs());
}

int Compound::createLinkedPort(const char* /*name*/,
                               const char* /*target*/,
                               const AddRefWrapper<PortDataType>& /*type*/)
{
    return 0;
}

const char* Compound::getSpecializedCompoundTypeName()
{
    return "Compound";
}

const char* Compound::getName() const
{
    return m_owner ? m_owner->getName() : "";
}

void Compound::setName(const char* name)
{
    if (m_owner)
        m_owner->setName(name);
}

AddRefWrapper<Node> Compound::getAsNode() const
{
    return m_owner;
}

AddRefWrapper<Port> Compound::getReversePort(const AddRefWrapper<Port>& port)
{
    const AddRefWrapper<Node> owner = getAsNode();
    if (!owner || !port)
        return nullptr;
    // The directions are crossed: the output side is an output outside and an input inside.
    const bool isOutputSide =
        (port->getPortIOType() == PortOutput) != port->isCompoundInternalPort();
    return isOutputSide ? FindInLists(port, owner->outputs(), innerOutputs())
                        : FindInLists(port, owner->inputs(), innerInputs());
}

StatusStr Compound::makeConnection(AddRefWrapper<Node> from,
                                   const char* outName,
                                   AddRefWrapper<Node> to,
                                   const char* inName)
{
    static const char* const kMissingPort = "Can't find port %s on %s in makeConnection";
    if (!from)
        return "Missing first node in makeConnection";
    if (!to)
        return "Missing second node in makeConnection";
    PortList& sources = from == m_owner ? innerInputs() : from->outputs();
    const AddRefWrapper<Port> source = sources[outName];
    if (!source)
        return {kMissingPort, outName, from->getName()};
    PortList& targets = to == m_owner ? innerOutputs() : to->inputs();
    const AddRefWrapper<Port> target = targets[inName];
    if (!target)
        return {kMissingPort, inName, to->getName()};
    if (target->addConnection(source))
        forgetLostPort(target, source);
    return {};
}

AddRefWrapper<Node> Compound::removeNode(const char* name)
{
    const KeepAlive self(this);
    const AddRefWrapper<Node> node = nodes()[name];
    return node && nodes().remove(node) ? node : nullptr;
}

void Compound::recurse_parent_first(void (*callback)(Node*, void*), void* data)
{
    if (m_owner)
        m_owner->recurse_parent_first(callback, data);
}

Node* Compound::owner() const
{
    return m_owner;
}

void Compound::onOwnerDied(Node* owner)
{
    if (m_owner == owner)
        m_owner = nullptr;
}

} // namespace ZEL
