#include "core/zelKeepAlive.h"
#include "core/zelSequence.h"
#include "zelPort.h"
#include "zelPortParent.h"

#include <algorithm>
#include <cstdio>

namespace ZEL {

namespace {

void* toEntry(Port* port)
{
    return static_cast<Namable*>(port);
}

Port* toPort(void* entry)
{
    return static_cast<Port*>(static_cast<Namable*>(entry));
}

} // namespace

AddRefWrapper<PortList> PortList::createNew()
{
    return new PortList;
}

PortList::PortList() = default;

PortList::PortList(const PortList& other)
    : ReferenceCounted(other),
      m_ioType(other.m_ioType),
      m_parent(other.m_parent),
      m_parentKinds(other.m_parentKinds),
      m_orphaned(other.m_orphaned)
{
    entries().assign(other.entries());
}

PortList& PortList::operator=(const PortList& other)
{
    if (this == &other)
        return *this;
    if (holdsReferences()) {
        for (int i = 0; i < size(); ++i)
            addSurplus(toPort(entries().at(i)), 1);
    }
    entries().assign(other.entries());
    m_ioType = other.m_ioType;
    m_parent = other.m_parent;
    m_parentKinds = other.m_parentKinds;
    m_orphaned = other.m_orphaned;
    return *this;
}

PortList::~PortList()
{
    Sequence ports = entries();
    ports.dropIndex();
    if (holdsReferences()) {
        for (int i = 0; i < ports.size(); ++i) {
            Port* const port = toPort(ports.at(i));
            if (m_orphaned && port->getRefCount() > 1 && port->m_parent == m_parent)
                port->setParent(nullptr, 0);
            releasePlace(port);
        }
    }
    if (SequenceExtras* const rare = ports.findExtras()) {
        for (const auto& [entry, surplus] : rare->balance) {
            for (int i = 0; i < surplus; ++i)
                toPort(entry)->release();
        }
    }
    ports.clear();
}

void PortList::setParent(PortNotification* parent)
{
    setParent(parent, findParentKinds(parent));
}

void PortList::setParent(PortNotification* parent, ParentKinds kinds)
{
    m_parent = parent;
    m_parentKinds = kinds;
    m_orphaned = false;
    if (!parent)
        entries().dropIndex(); // Without a parent the entries may die in the list.
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
    return entries().size();
}

AddRefWrapper<Port> PortList::operator[](int index) const
{
    return entryAt(index);
}

AddRefWrapper<Port> PortList::operator[](const char* name) const
{
    return name ? findNamed(name) : nullptr;
}

ListIterator<const PortList> PortList::end() const
{
    return {this, entries().size()};
}

int PortList::findPort(const AddRefWrapper<Port>& port)
{
    return port ? entries().indexOf(toEntry(port.get())) : -1;
}

bool PortList::add(const AddRefWrapper<Port>& port)
{
    if (!port)
        return false;
    if (!m_parent) {
        append(port.get());
        return true;
    }
    const KeepAlive self(this);
    const AddRefWrapper<Port> held(port.get());
    // Contract: set before the question, and not taken back when the answer is false.
    held->setParent(m_parent, m_parentKinds);
    PortNotification* const parent = m_parent;
    const bool agreed = parent->onPortListPortAdded(*this, held);
    // The parent died while it was asked, and the port was in no list that could tell it.
    if (m_orphaned && held->m_parent == parent)
        held->setParent(nullptr, 0);
    if (agreed)
        append(held.get());
    return agreed;
}

void PortList::append(Port* port)
{
    if (holdsReferences())
        port->addRef();
    entries().append(toEntry(port));
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
    while (m_parent && entries().contains(toEntry(held.get()))) {
        found = true;
        if (!m_parent->onPortListPortRemoved(*this, held))
            return false;
        if (entries().eraseFirst(toEntry(held.get())) && holdsReferences())
            releasePlace(held.get());
    }
    if (!m_parent) {
        const int erased = entries().eraseEvery(toEntry(held.get()));
        for (int i = 0; i < erased && holdsReferences(); ++i)
            releasePlace(held.get());
        found = found || erased > 0;
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
    Sequence ports = entries();
    void* const moved = ports.at(from);
    if (to < from) {
        ports.eraseAt(from);
        ports.insertAt(to, moved);
    } else {
        repeatForward(from, to);
    }
    if (m_parent)
        m_parent->onPortListPortMoved(*this, from, to);
    return true;
}

void PortList::repeatForward(int from, int to)
{
    // Contract: the entry behind the moved port is erased, not the moved port's old place. One
    // place further on that entry is the inserted copy itself, and the list ends as it began.
    Sequence ports = entries();
    void* const moved = ports.at(from);
    ports.insertAt(to, moved);
    void* const dropped = ports.at(from + 1);
    ports.eraseAt(from + 1);
    if (holdsReferences()) {
        addSurplus(toPort(moved), -1);
        addSurplus(toPort(dropped), 1);
    }
}

void PortList::onPortDeleted(Port* port)
{
    entries().eraseEvery(toEntry(port));
}

void PortList::onParentNodeDeleted()
{
    for (int i = 0; i < size(); ++i)
        toPort(entries().at(i))->onParentNodeDeleted();
}

Sequence PortList::entries() const
{
    return Sequence(m_entries);
}

/// The entry as it stands, alive or not; null when the index is out of range.
Port* PortList::entryAt(int index) const
{
    const Sequence ports = entries();
    return index < 0 || index >= ports.size() ? nullptr : toPort(ports.at(index));
}

AddRefWrapper<Port> PortList::findNamed(std::string_view name) const
{
    // Only references guarantee that an entry lives as long as an index may know it.
    Sequence ports = entries();
    Namable* const found = holdsReferences() ? ports.findNamed(name) : ports.scanNames(name);
    return static_cast<Port*>(found);
}

bool PortList::holdsReferences() const
{
    return m_parent || m_orphaned;
}

void PortList::addSurplus(Port* port, int change)
{
    auto& balance = entries().extras().balance;
    const auto place = std::find_if(balance.begin(), balance.end(), [port](const auto& entry) {
        return entry.first == toEntry(port);
    });
    if (place == balance.end())
        balance.emplace_back(toEntry(port), change);
    else if ((place->second += change) == 0)
        balance.erase(place);
}

void PortList::releasePlace(Port* port)
{
    if (SequenceExtras* const rare = entries().findExtras()) {
        for (const auto& [entry, surplus] : rare->balance) {
            if (entry == toEntry(port) && surplus < 0) {
                addSurplus(port, 1);
                return;
            }
        }
    }
    port->release();
}

void PortList::onParentDied(PortNotification* parent)
{
    if (m_parent == parent) {
        m_orphaned = true;
        // A list that dies with its parent orphans its ports when it releases them.
        if (getRefCount() == 1)
            return;
        m_parent = nullptr;
        m_parentKinds = 0;
    }
    const Sequence ports = entries();
    for (int i = 0; i < ports.size(); ++i) {
        Port* const port = toPort(ports.at(i));
        if (port->m_parent == parent)
            port->setParent(nullptr, 0);
    }
}

} // namespace ZEL
