#include "zel/pyCompound.h"

#include "zel/listProtocol.h"
#include "zel/portQuestions.h"
#include "zel/safeNode.h"

namespace zelpython {

namespace {

using CompoundQuestions = PortQuestions<ZEL::Compound, SafeCompound, PyCompound>;

Override ofCompound(const char* name)
{
    return Override::of<ZEL::Compound>(name);
}

} // namespace

void PyCompound::setName(const char* name)
{
    static const Override override = ofCompound("setName");
    tell(
        *this, override, [&] { SafeCompound::setName(name); }, name);
}

void PyCompound::appendString(const char* text)
{
    static const Override override = ofCompound("appendString");
    tell(
        *this, override, [&] { SafeCompound::appendString(text); }, text);
}

bool PyCompound::onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                     const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return CompoundQuestions(*this).addConnection(port, other);
}

bool PyCompound::onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                        const ZEL::AddRefWrapper<ZEL::Port>& other)
{
    return CompoundQuestions(*this).removeConnection(port, other);
}

bool PyCompound::onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                   const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    return CompoundQuestions(*this).setDataType(port, type);
}

bool PyCompound::onPortListPortAdded(const ZEL::PortList& list,
                                     const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Compound> self(this);
    return comesIn(list, *port, *this, CompoundQuestions(*this).added(list, port));
}

bool PyCompound::onPortListPortRemoved(const ZEL::PortList& list,
                                       const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Compound> self(this); // The override may drop it.
    const bool isAgreed = CompoundQuestions(*this).removed(list, port);
    return letGo(list, *port, *this, isAgreed);
}

bool PyCompound::onPortListPortMove(const ZEL::PortList& list, int from, int to)
{
    return CompoundQuestions(*this).move(list, from, to);
}

void PyCompound::onPortListPortMoved(const ZEL::PortList& list, int from, int to)
{
    CompoundQuestions(*this).moved(list, from, to);
}

const char* PyCompound::onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Compound> self(this);
    return CompoundQuestions(*this).getDefaultValue(port, m_defaultValues);
}

bool PyCompound::onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* value)
{
    return CompoundQuestions(*this).setDefaultValue(port, value);
}

bool PyCompound::onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name)
{
    return CompoundQuestions(*this).setName(port, name);
}

ZEL::Namable PyCompound::onGetParentFullPathName()
{
    return CompoundQuestions(*this).parentFullPathName();
}

bool PyCompound::onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    static const Override override = ofCompound("onNodeAdd");
    const ZEL::AddRefWrapper<ZEL::Compound> self(this); // The override may drop it.
    if (isComing(*node) || whyNotAdded(*this, *node))
        return false;
    {
        const SafeNode::Coming coming(*node);
        if (!ask(
                *this, override, [] { return true; }, node))
            return false;
    }
    // Asked again: the override may have changed the network around.
    return !isForsaken() && SafeCompound::onNodeAdd(node);
}

bool PyCompound::onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    static const Override override = ofCompound("onNodeRemove");
    const ZEL::AddRefWrapper<ZEL::Compound> self(this);
    return ask(
               *this, override, [] { return true; }, node) &&
           SafeCompound::onNodeRemove(node);
}

ZEL::AddRefWrapper<ZEL::Node> PyCompound::createNodeFromPreset(const char* preset)
{
    static const Override override = ofCompound("createNodeFromPreset");
    return askObject<ZEL::Node>(
        *this, override, [&] { return SafeCompound::createNodeFromPreset(preset); }, preset);
}

ZEL::AddRefWrapper<ZEL::Compound> PyCompound::createNewCompound(const char* name)
{
    static const Override override = ofCompound("createNewCompound");
    return askObject<ZEL::Compound>(
        *this, override, [&] { return SafeCompound::createNewCompound(name); }, name);
}

bool PyCompound::saveAs(const char* name)
{
    static const Override override = ofCompound("saveAs");
    return ask(
        *this, override, [&] { return SafeCompound::saveAs(name); }, name);
}

int PyCompound::createCompoundPort(ZEL::PortIOType ioType,
                                   const char* name,
                                   const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    static const Override override = ofCompound("createCompoundPort");
    return askNumber(
        *this, override, -1, [&] { return SafeCompound::createCompoundPort(ioType, name, type); },
        ioType, name, type);
}

int PyCompound::deleteCompoundPort(ZEL::AddRefWrapper<ZEL::Port> innerPort)
{
    static const Override override = ofCompound("deleteCompoundPort");
    return askNumber(
        *this, override, -1, [&] { return SafeCompound::deleteCompoundPort(innerPort); },
        innerPort);
}

int PyCompound::createLinkedPort(const char* name,
                                 const char* target,
                                 const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
{
    static const Override override = ofCompound("createLinkedPort");
    return askNumber(
        *this, override, -1, [&] { return SafeCompound::createLinkedPort(name, target, type); },
        name, target, type);
}

const char* PyCompound::getSpecializedCompoundTypeName()
{
    static const Override override = ofCompound("getSpecializedCompoundTypeName");
    const char* const answer = askText(*this, override, m_typeName, false, [&] {
        return SafeCompound::getSpecializedCompoundTypeName();
    });
    return answer ? answer : "";
}

} // namespace zelpython
