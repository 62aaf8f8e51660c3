#include "document/node.h"

#include "document/compound.h"
#include "document/document.h"
#include "document/journal.h"
#include "document/origins.h"

#include <cstring>

namespace shading {

ZEL::AddRefWrapper<Node> Node::createNew(ZEL::Container* container, const char* name)
{
    ZEL::AddRefWrapper<Node> node(new Node(container));
    node->setName(name);
    return node;
}

Node::Node(ZEL::Container* container) : ZEL::Node(container) {}

void Node::setName(const char* name)
{
    if (!name || std::strcmp(name, getName()) == 0)
        return;
    if (journalOf(this).mayRenameNode(this, name))
        ZEL::Node::setName(name);
}

/// The list that the library shows to its listener as one that cannot be changed.
ZEL::PortList& Node::listLike(const ZEL::PortList& list)
{
    return &list == &inputs() ? inputs() : outputs();
}

bool Node::onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                               const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return journalOf(this).mayConnect(port, other);
}

bool Node::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                  const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return journalOf(this).mayDisconnect(port, other);
}

bool Node::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    return journalOf(this).maySetType(port, type);
}

bool Node::onPortListPortAdded(const ZEL::PortList& list, const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return journalOf(this).mayAddPort(listLike(list), port);
}

bool Node::onPortListPortRemoved(const ZEL::PortList& list,
                                 const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return disconnect(port) && journalOf(this).mayRemovePort(listLike(list), port);
}

bool Node::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    return journalOf(this).mayMovePort(listLike(list), from, to);
}

void Node::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = getAsCompound();
    if (auto* const own = dynamic_cast<Compound*>(compound.get()))
        own->followMove(list, from, to);
}

bool Node::onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* value)
{
    return journalOf(this).maySetValue(port, value);
}

bool Node::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    ZEL::PortList& list = port->getPortIOType() == ZEL::PortInput ? inputs() : outputs();
    return journalOf(this).mayRenamePort(list, port, name);
}

bool Node::isInDocument(const ZEL::Port& port)
{
    auto* const document = dynamic_cast<Document*>(getContainer());
    return document && document->origins().elementOf(port);
}

void Node::setDefinition(const ZEL::AddRefWrapper<Definition>& definition)
{
    if (m_definition != definition)
        journalOf(this).setsDefinition(this, definition);
    m_definition = definition;
}

Journal& journalOf(ZEL::Node* node)
{
    static Journal idle; // Never begins an edit, so it agrees to all.
    auto* const document = dynamic_cast<Document*>(node ? node->getContainer() : nullptr);
    return document ? document->journal() : idle;
}

bool disconnect(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    port->removeAllConnections();
    return !port->isConnected();
}

} // namespace shading
