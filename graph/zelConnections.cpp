// How ports connect and disconnect.

#include "core/zelSequence.h"
#include "zelPort.h"
#include "zelPortEntry.h"

#include <cstdio>

namespace ZEL {

namespace {

/// True for a port that only ever receives: an input that is no inner port of a compound.
bool isPlainInput(Port& port)
{
    return port.getPortIOType() == PortInput && !port.isCompoundInternalPort();
}

/// The end that sends in a connection to be made; null when neither can. Asks no more about parents
/// than it must: they lie elsewhere in memory.
Port* findSendingEnd(Port* called, Port* other)
{
    if (isPlainInput(*called))
        return isPlainInput(*other) ? nullptr : other;
    if (!other->isCompoundInternalPort())
        return called;
    if (!called->isCompoundInternalPort())
        return other;
    if (called->getPortIOType() == other->getPortIOType())
        return nullptr;
    return called->getPortIOType() == PortOutput ? called : other;
}

} // namespace

PortList& Port::connectedTo()
{
    return m_connections;
}

bool Port::isConnected()
{
    return m_connections.size() > 0;
}

bool Port::addConnection(const AddRefWrapper<Port>& other)
{
    if (!other)
        return false;
    Port* const sendingEnd = findSendingEnd(this, other.get());
    if (!sendingEnd)
        return false;
    // Held over the question: the listener may drop every other reference.
    const AddRefWrapper<Port> sender(sendingEnd);
    const AddRefWrapper<Port> receiver(sendingEnd == this ? other.get() : this);
    if (sender->isParentAsked() && !sender->m_parent->onPortAddConnection(sender, receiver))
        return false;
    // The listener dropped one of them for good: it would die connected.
    if (sender->getRefCount() == 1 || receiver->getRefCount() == 1)
        return false;
    // Or the compound of the sending one: neither could take the connection off.
    if (isPlainInput(*sender) && isPlainInput(*receiver))
        return false;
    const std::uint32_t placeOfReceiver = sender->m_connections.addConnected(*receiver);
    const std::uint32_t placeOfSender = receiver->m_connections.addConnected(*sender);
    sender->m_connections.notePlace(placeOfSender);
    receiver->m_connections.notePlace(placeOfReceiver);
    return true;
}

bool Port::removeConnection(const AddRefWrapper<Port>& other)
{
    return other && disconnect(AddRefWrapper<Port>(this), AddRefWrapper<Port>(other.get()));
}

/// The first port is the called one. Both are held by the caller's own wrappers.
bool Port::disconnect(const AddRefWrapper<Port>& port, const AddRefWrapper<Port>& other)
{
    // Contract: only the called port decides who is asked; an output keeps the role before an inner
    // port.
    if (isPlainInput(*port))
        return !isPlainInput(*other) && disconnect(other, port);
    if (port->isParentAsked() && !port->m_parent->onPortRemoveConnection(port, other))
        return false;
    PortList& connections = port->m_connections;
    PortList& farConnections = other->m_connections;
    if (!standOnce(*port, *other))
        return connections.removeEvery(other) && farConnections.removeEvery(port);
    return connections.removeOnly(*other) && farConnections.removeOnly(*port);
}

/// True when the two are known to stand in each other's connections once at most.
bool Port::standOnce(Port& port, Port& other)
{
    // What only connecting and disconnecting have changed has the pair equally often at both ends.
    const PortList& a = port.m_connections;
    const PortList& b = other.m_connections;
    return &port != &other && a.m_isRecord != 0 && b.m_isRecord != 0 &&
           (b.isKnownOnce(port) || a.isKnownOnce(other));
}

void Port::removeAllConnections()
{
    const AddRefWrapper<Port> self(this);
    for (int i = m_connections.size() - 1; i >= 0; --i) {
        // A place is gone when its port stood twice and went with its twin, or a listener took it.
        if (i < m_connections.size())
            disconnect(self, m_connections[i]);
    }
}

void Port::removeFromConnectedList(Port* port)
{
    m_connections.onPortDeleted(port);
}

void Port::onParentNodeDeleted()
{
    for (int i = 0; i < m_connections.size();) {
        const AddRefWrapper<Port> other = m_connections[i];
        if (standOnce(*this, *other))
            other->m_connections.eraseOnly(*this);
        else
            other->m_connections.forget(this);
        // A port that is connected to itself has just left its own list: the next one moved up.
        if (other != this)
            ++i;
    }
    // What this end keeps the others do not know: connected again, the two are uneven.
    if (isConnected())
        m_connections.endRecord();
}

// The list's side.

/// Appends a connected port; returns its slot.
std::uint32_t PortList::addConnected(Port& port)
{
    if (!parent())
        return entries().append(toEntry(&port));
    add(&port);
    return 0;
}

/// Notes where the port whose record this is stands in the list of the one connected last.
void PortList::notePlace(std::uint32_t place)
{
    if (m_isRecord != 0)
        m_place = place;
}

/// Something else than connecting and disconnecting changes the list.
void PortList::endRecord()
{
    if (m_isRecord == 0)
        return;
    m_isRecord = 0;
    m_parent = nullptr;
}

/// True when the list is short and the port stands in it once.
bool PortList::isKnownOnce(Port& port) const
{
    return entries().isKnownOnce(toEntry(&port));
}

/// Erases a port that stands here once at most. This list and the port's are records.
bool PortList::eraseOnly(Port& port)
{
    return entries().eraseOnly(toEntry(&port), port.m_connections.m_place);
}

bool PortList::removeOnly(Port& port)
{
    const bool found = eraseOnly(port);
    if (!found)
        reportMissing(port);
    return found;
}

void PortList::reportMissing(Port& port)
{
    std::printf("ZEL::did not find a connection to remove to %s\n",
                port.getFullPathName().getName());
}

} // namespace ZEL
