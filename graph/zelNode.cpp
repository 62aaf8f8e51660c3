#include "zelNode.h"

#include "core/zelKeepAlive.h"
#include "core/zelNameIndex.h"
#include "core/zelText.h"
#include "zelCompound.h"
#include "zelPortListPair.h"

#include <utility>

namespace ZEL {

void GPFN_Callback(Node* node, void* data)
{
    auto* const path = static_cast<std::string*>(data);
    path->append(".").append(node->getName());
}

AddRefWrapper<Node> Node::createNew(Container* container, const char* name)
{
    AddRefWrapper<Node> node(new Node(container));
    if (name)
        node->setName(name);
    return node;
}

Node::Node(Container* container) : m_lists(PortListPair::createNew()), m_container(container)
{
    inputs().setParent(this, ParentKind::Node);
    outputs().setParent(this, ParentKind::Node);
    outputs().setPortIOType(PortOutput);
}

Node::~Node()
{
    // What dies inside still finds this node. What lives on, because others hold it, loses it.
    if (Compound* const compound = m_ownedCompound.get()) {
        if (compound->getRefCount() > 1)
            compound->onOwnerDied(this);
        else
            m_ownedCompound.detach()->release();
    }
    outputs().onParentDied(this);
    inputs().onParentDied(this);
    m_ownedCompound = nullptr;     // One that was held by what has just died still finds the lists.
    PortList& lastList = inputs(); // It holds the pair while the outputs go.
    outputs().release();
    lastList.release();
}

bool Node::isCompound()
{
    return static_cast<bool>(m_ownedCompound);
}

AddRefWrapper<Compound> Node::getAsCompound()
{
    return m_ownedCompound;
}

Namable Node::getFullPathName()
{
    std::string path;
    appendFullPath(path, 1);
    return Namable(std::move(path));
}

const char* Node::getNodeTypeName() const
{
    return m_nodeTypeName.c_str();
}

void Node::setNodeTypeName(const char* name)
{
    // Copied before the old text is freed: name may point into it.
    std::string copy(orEmpty(name));
    m_nodeTypeName.swap(copy);
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): every member takes itself.
Node& Node::operator=(const Node& other)
{
    // Released last: other may lie inside the compound that is replaced.
    const AddRefWrapper<Compound> replacedCompound(m_ownedCompound);
    Namable::operator=(other);
    other.m_lists->addRef();
    std::exchange(m_lists, other.m_lists)->release();
    m_parentCompound = other.m_parentCompound;
    m_ownedCompound = other.m_ownedCompound;
    m_container = other.m_container;
    m_nodeTypeName = other.m_nodeTypeName;
    return *this;
}

void Node::onThisNodeDeleted()
{
    inputs().onParentNodeDeleted();
    outputs().onParentNodeDeleted();
}

bool Node::onPortAddConnection(const AddRefWrapper<Port>& /*port*/,
                               const AddRefWrapper<Port>& /*other*/)
{
    return true;
}

bool Node::onPortRemoveConnection(const AddRefWrapper<Port>& /*port*/,
                                  const AddRefWrapper<Port>& /*other*/)
{
    return true;
}

bool Node::onPortSetDataType(const AddRefWrapper<Port>& /*port*/,
                             const AddRefWrapper<PortDataType>& /*type*/)
{
    return true;
}

bool Node::onPortListPortAdded(const PortList& /*list*/, const AddRefWrapper<Port>& /*port*/)
{
    return true;
}

bool Node::onPortListPortRemoved(const PortList& /*list*/, const AddRefWrapper<Port>& /*port*/)
{
    return true;
}

bool Node::onPortListPortMove(const PortList& /*list*/, int /*from*/, int /*to*/)
{
    return true;
}

void Node::onPortListPortMoved(const PortList& /*list*/, int /*from*/, int /*to*/) {}

const char* Node::onPortGetDefaultValue(const AddRefWrapper<Port>& /*port*/)
{
    return nullptr;
}

bool Node::onPortSetDefaultValue(const AddRefWrapper<Port>& /*port*/, const char* /*value*/)
{
    return true;
}

bool Node::onPortSetName(const AddRefWrapper<Port>& /*port*/, const char* /*name*/)
{
    return true;
}

Namable Node::onGetParentFullPathName()
{
    return getFullPathName();
}

PortList& Node::inputs()
{
    return m_lists->inputs();
}

PortList& Node::outputs()
{
    return m_lists->outputs();
}

AddRefWrapper<Compound> Node::getParentCompound()
{
    return m_parentCompound;
}

void Node::setParentCompound(Compound* compound)
{
    m_parentCompound = compound;
}

void Node::setOwnedCompound(Compound* compound)
{
    m_ownedCompound = compound;
}

Container* Node::getContainer()
{
    return m_container;
}

/// Appends the names from the outermost ancestor down to this node; so many names follow it.
void Node::appendFullPath(std::string& path, std::size_t following)
{
    // A short path fits into the string itself; a longer one gets its room at once.
    constexpr std::size_t kFewNames = 3;
    constexpr std::size_t kUsualNameLength = 12;
    if (Node* const owner = m_parentCompound ? m_parentCompound->owner() : nullptr) {
        owner->appendFullPath(path, following + 1);
        path += '.';
    } else if (following >= kFewNames) {
        path.reserve((following + 1) * kUsualNameLength);
    }
    NameIndex::appendName(*this, path);
}

void Node::recurse_parent_first(void (*callback)(Node*, void*), void* data)
{
    const KeepAlive self(this); // The callback for an ancestor may drop this one.
    if (m_parentCompound)
        m_parentCompound->recurse_parent_first(callback, data);
    callback(this, data);
}

} // namespace ZEL
