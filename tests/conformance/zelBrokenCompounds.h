#pragma once

#include "zelPlainHost.h"

/// Compounds that each break one rule.
namespace broken {

using plain::CompoundPtr;
using plain::NodePtr;
using plain::PortPtr;
using NodeClass = plain::Node;
using CompoundClass = plain::Compound;
using TypePtr = ZEL::AddRefWrapper<ZEL::PortDataType>;

/// Makes compounds of its own class.
template <class Self>
struct OwnCompound : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    CompoundPtr createNewCompound(const char* name) override
    {
        return plain::makeCompound<NodeClass, Self>(*this, name);
    }
};

struct MakesNone : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    CompoundPtr createNewCompound(const char* /*name*/) override { return nullptr; }
};

struct MakesForeignOnes : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    CompoundPtr createNewCompound(const char* name) override
    {
        return plain::makeCompound<ZEL::Node, ZEL::Compound>(*this, name);
    }
};

struct MakesLostOnes : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    CompoundPtr createNewCompound(const char* name) override
    {
        CompoundPtr made = CompoundClass::createNewCompound(name);
        m_lost = made->getAsNode();
        nodes().remove(m_lost);
        return made;
    }

private:
    NodePtr m_lost;
};

struct HasItsOwnNodes : OwnCompound<HasItsOwnNodes> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    ~HasItsOwnNodes() override { m_list->setParentCompound(nullptr); }
    ZEL::NodeList& nodes() override
    {
        if (!m_list->getParentCompound())
            m_list->setParentCompound(this);
        return *m_list;
    }

private:
    ZEL::AddRefWrapper<ZEL::NodeList> m_list = ZEL::NodeList::createNew();
};

struct HasItsOwnName : OwnCompound<HasItsOwnName> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    const char* getName() const override { return m_name.c_str(); }
    void setName(const char* name) override { m_name = name; }

private:
    std::string m_name;
};

struct CountsFromOne : OwnCompound<CountsFromOne> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    int createCompoundPort(ZEL::PortIOType ioType, const char* name, const TypePtr& type) override
    {
        return CompoundClass::createCompoundPort(ioType, name, type) + 1;
    }
};

struct CreatesInsideOnly : OwnCompound<CreatesInsideOnly> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    int createCompoundPort(ZEL::PortIOType ioType, const char* name, const TypePtr& type) override
    {
        ZEL::PortList& list = ioType == ZEL::PortInput ? innerInputs() : innerOutputs();
        list.addPort(name, type);
        return list.size() - 1;
    }
};

struct DeletesInsideOnly : OwnCompound<DeletesInsideOnly> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    int deleteCompoundPort(PortPtr innerPort) override
    {
        const int index = innerInputs().findPort(innerPort);
        return index >= 0 && innerInputs().remove(innerPort) ? index : -1;
    }
};

struct FollowsNoMove : OwnCompound<FollowsNoMove> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    void onPortListPortMoved(const ZEL::PortList& /*list*/, int /*from*/, int /*to*/) override {}
};

struct KeepsInnerConnections : OwnCompound<KeepsInnerConnections> {
    using OwnCompound::OwnCompound;
    using ZEL::Compound::operator=;
    bool onPortListPortRemoved(const ZEL::PortList& /*list*/, const PortPtr& /*port*/) override
    {
        return true;
    }
};

} // namespace broken
