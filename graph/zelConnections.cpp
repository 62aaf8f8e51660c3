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

/// What the two ends of a connection do with their lists. A list is a record as long as nothing but
/// connecting and disconnecting has changed it: a pair then stands equally often at both ends.
class ConnectionRecord {
public:
    /// Appends each port to the other's connections, the sender's first.
    static void connect(Port& sender, Port& receiver)
    {
        PortList& senders = sender.m_connections;
        PortList& receivers = receiver.m_connections;
        const std::uint32_t slotOfReceiver = append(senders, receiver);
        const std::uint32_t slotOfSender = append(receivers, sender);
        noteSlot(senders, slotOfSender);
        noteSlot(receivers, slotOfReceiver);
    }

    /// Asks, then takes all places of the pair off both ends. The first port is the called one.
    /// Both are held by the caller's own wrappers.
    static bool disconnect(const AddRefWrapper<Port>& port, const AddRefWrapper<Port>& other)
    {
        // Contract: only the called port decides who is asked; an output keeps the role before an
        // inner port.
        if (isPlainInput(*port))
            return !isPlainInput(*other) && disconnect(other, port);
        if (port->isParentAsked() && !port->m_parent->onPortRemoveConnection(port, other))
            return false;
        if (standOnce(*port, *other))
            return removeOnly(*port, *other) && removeOnly(*other, *port);
        return port->m_connections.removeEvery(other) && other->m_connections.removeEvery(port);
    }

    /// Makes the other port forget this one. Nobody is asked.
    static void forget(Port& port, Port& other)
    {
        if (standOnce(port, other))
            eraseOnly(other, port);
        else
            other.m_connections.forget(&port);
    }

private:
    /// Returns the slot.
    static std::uint32_t append(PortList& list, Port& port)
    {
        if (!list.parent())
            return list.entries().append(toEntry(&port));
        list.add(&port);
        return 0;
    }
    static void noteSlot(PortList& list, std::uint32_t slot)
    {
        if (list.m_isRecord != 0)
            list.m_slot = slot;
    }
    /// True when the two are known to stand in each other's connections once at most.
    static bool standOnce(Port& port, Port& other)
    {
        const PortList& a = port.m_connections;
        const PortList& b = other.m_connections;
        return &port != &other && a.m_isRecord != 0 && b.m_isRecord != 0 &&
               (b.entries().isKnownOnce(toEntry(&port)) ||
                a.entries().isKnownOnce(toEntry(&other)));
    }
    /// Takes the other port out of the port's connections, where it stands once at most.
    static bool eraseOnly(Port& port, Port& other)
    {
        return port.m_connections.entries().eraseOnly(toEntry(&other), other.m_connections.m_slot);
    }
    static bool removeOnly(Port& port, Port& other)
    {
        const bool found = eraseOnly(port, other);
        if (!found)
            PortList::reportMissing(other);
        return found;
    }
};

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
    ConnectionRecord::connect(*sender, *receiver);
    return true;
}

bool Port::removeConnection(const AddRefWrapper<Port>& other)
{
    return other && ConnectionRecord::disconnect(AddRefWrapper<Port>(this),
                                                 AddRefWrapper<Port>(other.get()));
}

void Port::removeAllConnections()
{
    const AddRefWrapper<Port> self(this);
    for (int i = m_connections.size() - 1; i >= 0; --i) {
        // A place is gone when its port stood twice and went with its twin, or a listener took it.
        if (i < m_connections.size())
            ConnectionRecord::disconnect(self, m_connections[i]);
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
        ConnectionRecord::forget(*this, *other);
        // A port that is connected to itself has just left its own list: the next one moved up.
        if (other != this)
            ++i;
    }
    // What this end keeps the others do not know: connected again, the two are uneven.
    if (isConnected())
        m_connections.endRecord();
}

/// Something else than connecting and disconnecting changes the list.
void PortList::endRecord()
{
    if (m_isRecord == 0)
        return;
    m_isRecord = 0;
    m_parent = nullptr;
}

void PortList::reportMissing(Port& port)
{
    std::printf("ZEL::did not find a connection to remove to %s\n",
                port.getFullPathName().getName());
}

} // namespace ZEL
