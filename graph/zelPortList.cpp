#include "core/zelKeepAlive.h"
#include "zelPort.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace ZEL {

AddRefWrapper<PortList> PortList::createNew()
{
    return new PortList;
}

PortList::PortList() = default;

PortList::PortList(const PortList& other)
    : ReferenceCounted(other),
      m_ports(other.m_ports),
      m_parent(other.m_parent),
      m_ioType(other.m_ioType),
      m_orphaned(other.m_orphaned)
{
}

PortList& PortList::operator=(const PortList& other)
{
    if (this == &other)
        return *this;
    if (holdsReferences()) {
        for (Port* port : m_ports)
            addSurplus(port, 1);
    }
    m_ports = other.m_ports;
    m_parent = other.m_parent;
    m_ioType = other.m_ioType;
    m_orphaned = other.m_orphaned;
    return *this;
}

PortList::~PortList()
{
    if (holdsReferences()) {
        for (Port* port : m_ports)
            releasePlace(port);
    }
    for (const Balance& balance : m_balance) {
        for (int i = 0; i < balance.surplus; ++i)
            balance.port->release();
    }
}

void PortList::setParent(PortNotification* parent)
{
    m_parent = parent;
    m_orphaned = false;
}

PortNotification* PortList::getParent()
{
    return m_parent;
}

void PortList::setPortIOType(PortIOType type)
{
    m_ioType = type;
}

int PortList::size()
{
    return static_cast<int>(m_ports.size());
}

AddRefWrapper<Port> PortList::operator[](int index) const
{
    if (index < 0 || index >= static_cast<int>(m_ports.size()))
        return nullptr;
    return m_ports[index];
}

AddRefWrapper<Port> PortList::operator[](const char* name) const
{
    if (!name)
        return nullptr;
    const auto place = std::find_if(m_ports.begin(), m_ports.end(), [name](const Port* port) {
        return std::strcmp(port->getName(), name) == 0;
    });
    return place == m_ports.end() ? nullptr : *place;
}

int PortList::findPort(const AddRefWrapper<Port>& port)
{
    const auto place = std::find(m_ports.begin(), m_ports.end(), port.get());
    return place == m_ports.end() ? -1 : static_cast<int>(place - m_ports.begin());
}

bool PortList::add(const AddRefWrapper<Port>& port)
{
    if (!port)
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Port> held(port.get());
    if (m_parent) {
        // Contract: set before the question, and not taken back when the answer is false.
        held->setParent(m_parent);
        if (!m_parent->onPortListPortAdded(*this, held))
            return false;
    }
    if (holdsReferences())
        held->addRef();
    m_ports.push_back(held.get());
    return true;
}

AddRefWrapper<Port> PortList::addPort(const char* name, const AddRefWrapper<PortDataType>& type)
{
    AddRefWrapper<Port> port = Port::createNew(name, m_ioType);
    port->setDataType(type);
    add(port);
    return port;
}

bool PortList::remove(const AddRefWrapper<Port>& port)
{
    if (!port)
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Port> held(port.get());
    bool found = false;
    // Looked for again after each question: the listener may have changed the list.
    while (findPort(held) >= 0) {
        found = true;
        if (m_parent && !m_parent->onPortListPortRemoved(*this, held))
            return false;
        const int index = findPort(held);
        if (index < 0)
            break;
        m_ports.erase(m_ports.begin() + index);
        if (holdsReferences())
            releasePlace(held.get());
    }
    if (!found)
        std::printf("ZEL::did not find a connection to remove to %s\n",
                    held->getFullPathName().getName());
    return found;
}

bool PortList::movePort(int from, int to)
{
    if (from < 0 || from > size() || to < 0 || to > size())
        return false;
    if (from == to)
        return true;
    if (from == size())
        return false;
    const KeepAlive self(this);
    if (m_parent && !m_parent->onPortListPortMove(*this, from, to))
        return false;
    // Tested again: the listener may have changed the list.
    if (from >= size() || to > size())
        return false;
    const auto begin = m_ports.begin();
    if (to < from)
        std::rotate(begin + to, begin + from, begin + from + 1);
    else
        repeatForward(from, to);
    if (m_parent)
        m_parent->onPortListPortMoved(*this, from, to);
    return true;
}

void PortList::repeatForward(int from, int to)
{
    // Contract: the entry behind the moved port is erased, not the moved port's old place. One
    // place further on that entry is the inserted copy itself, and the list ends as it began.
    Port* const moved = m_ports[from];
    m_ports.insert(m_ports.begin() + to, moved);
    Port* const dropped = m_ports[from + 1];
    m_ports.erase(m_ports.begin() + from + 1);
    if (holdsReferences()) {
        addSurplus(moved, -1);
        addSurplus(dropped, 1);
    }
}

void PortList::onPortDeleted(Port* port)
{
    m_ports.erase(std::remove(m_ports.begin(), m_ports.end(), port), m_ports.end());
}

void PortList::onParentNodeDeleted()
{
    for (int i = 0; i < size(); ++i)
        m_ports[i]->onParentNodeDeleted();
}

bool PortList::holdsReferences() const
{
    return m_parent || m_orphaned;
}

void PortList::addSurplus(Port* port, int change)
{
    const auto place =
        std::find_if(m_balance.begin(), m_balance.end(),
                     [port](const Balance& balance) { return balance.port == port; });
    if (place == m_balance.end())
        m_balance.push_back({port, change});
    else if ((place->surplus += change) == 0)
        m_balance.erase(place);
}

void PortList::releasePlace(Port* port)
{
    const bool hasReference =
        std::none_of(m_balance.begin(), m_balance.end(), [port](const Balance& balance) {
            return balance.port == port && balance.surplus < 0;
        });
    if (hasReference)
        port->release();
    else
        addSurplus(port, 1);
}

void PortList::onParentDied(PortNotification* parent)
{
    if (m_parent == parent) {
        m_parent = nullptr;
        m_orphaned = true;
    }
    for (Port* port : m_ports) {
        if (port->getParent() == parent)
            port->setParent(nullptr);
    }
}

} // namespace ZEL
