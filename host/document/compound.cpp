#include "document/compound.h"

#include "document/journal.h"
#include "document/node.h"
#include "document/rules.h"

namespace shading {

ZEL::AddRefWrapper<Compound> Compound::createNew(const ZEL::AddRefWrapper<ZEL::Node>& owner)
{
    return ZEL::AddRefWrapper<Compound>(new Compound(owner));
}

Compound::Compound(const ZEL::AddRefWrapper<ZEL::Node>& owner) : ZEL::Compound(owner) {}

Journal& Compound::journal() const
{
    return journalOf(getAsNode().get());
}

ZEL::PortList& Compound::listLike(const ZEL::PortList& list)
{
    return &list == &innerInputs() ? innerInputs() : innerOutputs();
}

bool Compound::onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                   const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return journal().mayConnect(port, other);
}

bool Compound::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                      const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return journal().mayDisconnect(port, other);
}

bool Compound::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                 const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    return journal().maySetType(port, type);
}

bool Compound::onPortListPortAdded(const ZEL::PortList& list,
                                   const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return journal().mayAddPort(listLike(list), port);
}

bool Compound::onPortListPortRemoved(const ZEL::PortList& list,
                                     const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return disconnect(port) && journal().mayRemovePort(listLike(list), port);
}

bool Compound::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    return journal().mayMovePort(listLike(list), from, to);
}

void Compound::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    followMove(list, from, to);
}

bool Compound::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    ZEL::PortList& list = port->getPortIOType() == ZEL::PortOutput ? innerInputs() : innerOutputs();
    return journal().mayRenamePort(list, port, name);
}

const char* Compound::onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Port> mirror = getReversePort(port);
    return mirror ? mirror->getPortDefaultValue() : nullptr;
}

bool Compound::onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* value)
{
    if (const ZEL::AddRefWrapper<ZEL::Port> mirror = getReversePort(port)) {
        mirror->setPortDefaultValue(value);
        return false;
    }
    return journal().maySetValue(port, value);
}

bool Compound::onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    const bool isOwn =
        node->getContainer() == getAsNode()->getContainer() && dynamic_cast<Node*>(node.get());
    if (!isOwn)
        return journal().refuse(std::string(node->getName()) + ": it is no node of this document");
    return journal().mayAddNode(*this, node);
}

bool Compound::onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
        for (int i = 0; i < list->size(); ++i) {
            if (!disconnect((*list)[i]))
                return false;
        }
    }
    return journal().mayRemoveNode(*this, node);
}

int Compound::createCompoundPort(ZEL::PortIOType ioType,
                                 const char* name,
                                 const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    const std::string portName = journal().isRecording() ? uniqueName(*this, name) : name;
    return ZEL::Compound::createCompoundPort(ioType, portName.c_str(), type);
}

ZEL::AddRefWrapper<ZEL::Compound> Compound::createNewCompound(const char* name)
{
    const std::string nodeName = journal().isRecording() ? uniqueName(*this, name) : name;
    const ZEL::AddRefWrapper<Node> node =
        Node::createNew(getAsNode()->getContainer(), nodeName.c_str());
    node->setNodeTypeName(getSpecializedCompoundTypeName());
    ZEL::AddRefWrapper<Compound> compound = createNew(node);
    if (!nodes().add(node))
        return nullptr;
    return compound;
}

const char* Compound::getSpecializedCompoundTypeName()
{
    return "nodegraph";
}

void Compound::followMove(const ZEL::PortList& list, int from, int to)
{
    // What was written down holds the moves of both lists.
    if (m_isFollowing || journal().isReplaying())
        return;
    const ZEL::AddRefWrapper<ZEL::Node> owner = getAsNode();
    ZEL::PortList* const pairs[][2] = {
        {&innerInputs(), &owner->inputs()},
        {&owner->inputs(), &innerInputs()},
        {&innerOutputs(), &owner->outputs()},
        {&owner->outputs(), &innerOutputs()},
    };
    for (const auto& [moved, mirror] : pairs) {
        if (moved != &list || mirror->size() != moved->size())
            continue;
        m_isFollowing = true;
        // Refused: back, by single places, for a move to the back is none.
        for (int i = mirror->movePort(from, to) ? from : to; i < from; ++i)
            moved->movePort(i + 1, i);
        m_isFollowing = false;
    }
}

} // namespace shading
