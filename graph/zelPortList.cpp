#include "core/zelKeepAlive.h"
#include "core/zelSequence.h"
#include "zelDirection.h"
#include "zelPort.h"
#include "zelPortEntry.h"
#include "zelReleaseEach.h"

namespace ZEL {

namespace {

/// One pointer for each reference that a list holds: those of the places in their order, then those
/// without a place.
std::vector<Port*> referencesOf(const Sequence& ports, const ReferenceBalance& balance)
{
    std::vector<Port*> references;
    std::unordered_map<void*, int> bare; // Places that are passed over, for each entry.
    balance.forEach([&bare](void* entry, int uneven) {
        if (uneven < 0)
            bare[entry] = -uneven;
    });
    for (int i = 0; i < ports.size(); ++i) {
        void* const entry = ports.at(i);
        const auto place = bare.find(entry);
        if (place == bare.end() || place->second-- <= 0)
            references.push_back(toPort(entry));
    }
    balance.forEach([&references](void* entry, int uneven) {
        for (int i = 0; i < uneven; ++i)
            references.push_back(toPort(entry));
    });
    return references;
}

} // namespace

AddRefWrapper<PortList> PortList::createNew()
{
    return new PortList;
}

PortList::PortList()
    : m_ioType(PortInput),
      m_parentKind(0),
      m_orphaned(0),
      m_isRecord(0),
      m_parentIsPlainNode(0),
      m_parentAgrees(0),
      m_parent(nullptr)
{
}

PortList::PortList(const PortList& other)
    : ReferenceCounted(other),
      m_ioType(keepDirection(this, directionOf(&other, other.m_ioType))),
      m_parentKind(other.m_parentKind),
      m_orphaned(other.m_orphaned),
      m_isRecord(0),
      m_parentIsPlainNode(0),
      m_parentAgrees(0),
      m_parent(other.parent())
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
    setPortIOType(directionOf(&other, other.m_ioType));
    m_parentKind = other.m_parentKind;
    m_orphaned = other.m_orphaned;
    m_isRecord = 0;
    m_parentIsPlainNode = 0;
    m_parentAgrees = 0;
    m_parent = other.parent();
    return *this;
}

PortList::~PortList()
{
    forgetDirection(this, m_ioType);
    if (m_entries == 0)
        return;
    if (holdsReferences())
        releaseEntries(nullptr);
    else
        entries().clear();
}

/// Empties the list, then drops its references: a port that dies finds the list without it. The
/// parent that is dying, unless it is null, is taken off the ports that live on.
void PortList::releaseEntries(PortNotification* dyingParent)
{
    entries().dropIndex();
    std::uintptr_t data = 0;
    Sequence ports(data);
    ports.swap(entries());
    const auto orphan = [dyingParent](Port& port) {
        if (dyingParent && port.m_parent == dyingParent)
            port.setParent(nullptr);
    };
    const SequenceExtras* const rare = ports.findExtras();
    if (!rare || rare->balance.isEmpty()) {
        releaseEach(
            ports.size(), [&ports](int i) { return toPort(ports.at(i)); }, orphan);
    } else {
        const std::vector<Port*> references = referencesOf(ports, rare->balance);
        releaseEach(
            static_cast<int>(references.size()), [&references](int i) { return references[i]; },
            orphan);
    }
    ports.clear();
}

void PortList::setParent(PortNotification* parent)
{
    setParent(parent, ParentKind::Unknown);
}

void PortList::setParent(PortNotification* parent, ParentKind kind)
{
    m_isRecord = 0;
    m_parentIsPlainNode = 0;
    m_parentAgrees = 0;
    m_parent = parent;
    m_parentKind = static_cast<std::uint32_t>(kind);
    m_orphaned = 0;
    if (!parent)
        entries().dropIndex(); // Without a parent the entries may die in the list.
}

PortNotification* PortList::getParent()
{
    return parent();
}

void PortList::setPortIOType(PortIOType type)
{
    forgetDirection(this, m_ioType);
    m_ioType = keepDirection(this, type);
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
    endRecord();
    if (!m_parent) {
        append(port.get());
        return true;
    }
    const KeepAlive self(this);
    const AddRefWrapper<Port> held(port.get());
    // Contract: set before the question, and not taken back when the answer is false.
    giveParentTo(*held);
    PortNotification* const parent = m_parent;
    const bool agreed = parent->onPortListPortAdded(*this, held);
    // The parent died while it was asked, and the port was in no list that could tell it.
    if (m_orphaned && held->m_parent == parent)
        held->setParent(nullptr);
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
    AddRefWrapper<Port> port = Port::createNew(name, directionOf(this, m_ioType));
    port->m_dataType = type; // It has no parent to be asked.
    add(port);
    return port;
}

bool PortList::remove(const AddRefWrapper<Port>& port)
{
    endRecord(); // Before: the list may be gone afterwards.
    return removeEvery(port);
}

bool PortList::removeEvery(const AddRefWrapper<Port>& port)
{
    if (!port)
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Port> held(port.get());
    bool found = false;
    // Looked for again after each question: the listener may have changed the list.
    while (parent() && entries().contains(toEntry(held.get()))) {
        found = true;
        if (!m_parent->onPortListPortRemoved(*this, held))
            return false;
        if (entries().eraseFirst(toEntry(held.get())) && holdsReferences())
            releasePlace(held.get());
    }
    if (!parent()) {
        const int erased = entries().eraseEvery(toEntry(held.get()));
        for (int i = 0; i < erased && holdsReferences(); ++i)
            releasePlace(held.get());
        found = found || erased > 0;
    }
    if (!found)
        reportMissing(*held);
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
    if (parent() && !m_parent->onPortListPortMove(*this, from, to))
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
    if (parent())
        m_parent->onPortListPortMoved(*this, from, to);
    return true;
}

void PortList::repeatForward(int from, int to)
{
    // Contract: the entry behind the moved port is erased, not the moved port's old place. One
    // place further on that entry is the inserted copy itself, and the list ends as it began.
    endRecord();
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
    if (forget(port))
        endRecord();
}

/// True when the port stood there.
bool PortList::forget(Port* port)
{
    const int erased = entries().eraseEvery(toEntry(port));
    // The port may be dying: what the list remembered of it would meet another one at its address.
    if (SequenceExtras* const rare = entries().findExtras())
        rare->balance.forget(toEntry(port));
    return erased > 0;
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
    return parent() || m_orphaned != 0;
}

void PortList::addSurplus(Port* port, int change)
{
    entries().extras().balance.add(toEntry(port), change);
}

/// Drops the reference of a place that the port lost, if the place had one.
void PortList::releasePlace(Port* port)
{
    const SequenceExtras* const rare = entries().findExtras();
    if (rare && rare->balance.of(toEntry(port)) < 0)
        addSurplus(port, 1);
    else
        port->release();
}

void PortList::onParentDied(PortNotification* parent)
{
    if (m_parent == parent) {   // No record: it is a list of that parent's own.
        if (getRefCount() == 1) // The ports die with their parent: as long as they can name it.
            releaseEntries(parent);
        setParent(nullptr, ParentKind::Unknown);
        m_orphaned = 1;
    }
    const Sequence ports = entries();
    for (int i = 0; i < ports.size(); ++i) {
        Port* const port = toPort(ports.at(i));
        if (port->m_parent == parent)
            port->setParent(nullptr);
    }
}

} // namespace ZEL
