#include "zel/pyNode.h"

#include "zel/listProtocol.h"
#include "zel/portQuestions.h"

namespace zelpython {

namespace {

using NodeQuestions = PortQuestions<ZEL::Node, SafeNode, PyNode>;

Override ofNode(const char* name)
{
    return Override::of<ZEL::Node>(name);
}

} // namespace

void PyNode::setName(const char* name)
{
    static const Override override = ofNode("setName");
    tell(
        *this, override, [&] { SafeNode::setName(name); }, name);
}

void PyNode::appendString(const char* text)
{
    static const Override override = ofNode("appendString");
    tell(
        *this, override, [&] { SafeNode::appendString(text); }, text);
}

bool PyNode::isCompound()
{
    static const Override override = ofNode("isCompound");
    return ask(*this, override, [&] { return SafeNode::isCompound(); });
}

ZEL::AddRefWrapper<ZEL::Compound> PyNode::getAsCompound()
{
    static const Override override = ofNode("getAsCompound");
    const ZEL::AddRefWrapper<ZEL::Node> held(this);
    ZEL::AddRefWrapper<ZEL::Compound> answer =
        askObject<ZEL::Compound>(*this, override, [&] { return SafeNode::getAsCompound(); });
    if (!answer || answer == SafeNode::getAsCompound())
        return answer;
    // Walks down the network would not end.
    PyErr_SetString(PyExc_ValueError, "getAsCompound must answer the compound of the node itself");
    putAwayError(self());
    return nullptr;
}

ZEL::Namable PyNode::getFullPathName()
{
    static const Override override = ofNode("getFullPathName");
    return NodeQuestions(*this).askName(override, [&] { return SafeNode::getFullPathName(); });
}

const char* PyNode::getNodeTypeName() const
{
    static const Override override = ofNode("getNodeTypeName");
    const char* const answer =
        askText(*this, override, m_typeName, false, [&] { return SafeNode::getNodeTypeName(); });
    return answer ? answer : "";
}

void PyNode::setNodeTypeName(const char* name)
{
    static const Override override = ofNode("setNodeTypeName");
    tell(
        *this, override, [&] { SafeNode::setNodeTypeName(name); }, name);
}

void PyNode::onThisNodeDeleted()
{
    static const Override override = ofNode("onThisNodeDeleted");
    tell(*this, override, [] {});
    SafeNode::onThisNodeDeleted();
}

bool PyNode::onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                 const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return NodeQuestions(*this).addConnection(port, other);
}

bool PyNode::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                    const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return NodeQuestions(*this).removeConnection(port, other);
}

bool PyNode::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                               const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    return NodeQuestions(*this).setDataType(port, type);
}

bool PyNode::onPortListPortAdded(const ZEL::PortList& list,
                                 const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Node> self(this);
    return comesIn(list, *port, *this, NodeQuestions(*this).added(list, port));
}

bool PyNode::onPortListPortRemoved(const ZEL::PortList& list,
                                   const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Node> self(this); // The override may drop it.
    const bool isAgreed = NodeQuestions(*this).removed(list, port);
    return letGo(list, *port, *this, isAgreed);
}

bool PyNode::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    return NodeQuestions(*this).move(list, from, to);
}

void PyNode::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    NodeQuestions(*this).moved(list, from, to);
}

const char* PyNode::onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Node> self(this);
    return NodeQuestions(*this).getDefaultValue(port, m_defaultValues);
}

bool PyNode::onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* value)
{
    return NodeQuestions(*this).setDefaultValue(port, value);
}

bool PyNode::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    return NodeQuestions(*this).setName(port, name);
}

ZEL::Namable PyNode::onGetParentFullPathName()
{
    return NodeQuestions(*this).parentFullPathName();
}

void PyNode::onLetGo()
{
    setParentCompound(nullptr);
}

} // namespace zelpython
