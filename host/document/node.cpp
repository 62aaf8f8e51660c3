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
    Journal* const journal = journalOf(*this);
    if (!journal || journal->mayRenameNode(this, name))
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
    Journal* const journal = journalOf(*this);
    return !journal || journal->mayConnect(port, other);
}

bool Node::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                  const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    Journal* const journal = journalOf(*this);
    return !journal || journal->mayDisconnect(port, other);
}

bool Node::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    Journal* const journal = journalOf(*this);
    return !journal || journal->maySetType(port, type);
}

bool Node::onPortListPortAdded(const ZEL::PortList& list, const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    Journal* const journal = journalOf(*this);
    return !journal || journal->mayAddPort(listLike(list), port);
}

bool Node::onPortListPortRemoved(const ZEL::PortList& list,
                                 const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    Journal* const journal = journalOf(*this);
    return disconnect(port) && (!journal || journal->mayRemovePort(listLike(list), port));
}

bool Node::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    Journal* const journal = journalOf(*this);
    return !journal || journal->mayMovePort(listLike(list), from, to);
}

void Node::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    // The compounds of this host's nodes are of this host.
    const ZEL::AddRefWrapper<ZEL::Compound> compound = getAsCompound();
    if (compound)
        static_cast<Compound&>(*compound).followMove(list, from, to);
}

bool Node::onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* value)
{
    Journal* const journal = journalOf(*this);
    return !journal || journal->maySetValue(port, value);
}

bool Node::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    Journal* const journal = journalOf(*this);
    ZEL::PortList& list = port->getPortIOType() == ZEL::PortInput ? inputs() : outputs();
    return !journal || journal->mayRenamePort(list, port, name);
}

bool Node::isInDocument(const ZEL::Port& port)
{
    auto* const document = dynamic_cast<Document*>(getContainer());
    return document && document->origins().elementOf(port);
}

void Node::setDefinition(const ZEL::AddRefWrapper<Definition>& definition)
{
    Journal* const journal = journalOf(*this);
    if (journal && m_definition != definition)
        journal->setsDefinition(this, definition);
    m_definition = definition;
}

Journal* journalOf(ZEL::Node& node)
{
    auto* const document = dynamic_cast<Document*>(node.getContainer());
    return document ? &document->journal() : nullptr;
}

bool disconnect(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    port->removeAllConnections();
    return !port->isConnected();
}

} // namespace shading
