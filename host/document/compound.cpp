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

Journal* Compound::journal() const
{
    const ZEL::AddRefWrapper<ZEL::Node> owner = getAsNode();
    return owner ? journalOf(*owner) : nullptr;
}

ZEL::PortList& Compound::listLike(const ZEL::PortList& list)
{
    return &list == &innerInputs() ? innerInputs() : innerOutputs();
}

bool Compound::onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                   const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    Journal* const journal = this->journal();
    return !journal || journal->mayConnect(port, other);
}

bool Compound::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                      const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    Journal* const journal = this->journal();
    return !journal || journal->mayDisconnect(port, other);
}

bool Compound::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                 const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    Journal* const journal = this->journal();
    return !journal || journal->maySetType(port, type);
}

bool Compound::onPortListPortAdded(const ZEL::PortList& list,
                                   const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    Journal* const journal = this->journal();
    return !journal || journal->mayAddPort(listLike(list), port);
}

bool Compound::onPortListPortRemoved(const ZEL::PortList& list,
                                     const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    Journal* const journal = this->journal();
    return disconnect(port) && (!journal || journal->mayRemovePort(listLike(list), port));
}

bool Compound::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    Journal* const journal = this->journal();
    return !journal || journal->mayMovePort(listLike(list), from, to);
}

void Compound::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    followMove(list, from, to);
}

bool Compound::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    Journal* const journal = this->journal();
    ZEL::PortList& list = port->getPortIOType() == ZEL::PortOutput ? innerInputs() : innerOutputs();
    return !journal || journal->mayRenamePort(list, port, name);
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
    Journal* const journal = this->journal();
    return !journal || journal->maySetValue(port, value);
}

bool Compound::onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    Journal* const journal = this->journal();
    return !journal || journal->mayAddNode(*this, node);
}

bool Compound::onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
        for (int i = 0; i < list->size(); ++i) {
            if (!disconnect((*list)[i]))
                return false;
        }
    }
    Journal* const journal = this->journal();
    return !journal || journal->mayRemoveNode(*this, node);
}

int Compound::createCompoundPort(ZEL::PortIOType ioType,
                                 const char* name,
                                 const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    Journal* const journal = this->journal();
    const bool isEdit = journal && journal->isRecording();
    const std::string portName = isEdit ? uniqueName(*this, name) : name;
    return ZEL::Compound::createCompoundPort(ioType, portName.c_str(), type);
}

ZEL::AddRefWrapper<ZEL::Compound> Compound::createNewCompound(const char* name)
{
    Journal* const journal = this->journal();
    const bool isEdit = journal && journal->isRecording();
    const std::string nodeName = isEdit ? uniqueName(*this, name) : name;
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
    Journal* const journal = this->journal();
    // What was written down holds the moves of both lists.
    if (m_isFollowing || (journal && journal->isReplaying()))
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
