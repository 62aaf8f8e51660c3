#pragma once

#include "document/compound.h"
#include "document/node.h"

/// How many questions are agreed to before one is refused; all when negative.
inline int g_agreed = -1;

/// Counts; false for the question whose turn it is.
inline bool agree()
{
    return g_agreed < 0 || g_agreed-- > 0;
}

/// Refuses one question after its base class has agreed, as a class derived from a host's may.
template <class Base>
class Refusing : public Base {
public:
    using Base::Base;
    using Base::operator=;
    using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;

    bool onPortAddConnection(const PortPtr& port, const PortPtr& other) override
    {
        return Base::onPortAddConnection(port, other) && agree();
    }
    bool onPortRemoveConnection(const PortPtr& port, const PortPtr& other) override
    {
        return Base::onPortRemoveConnection(port, other) && agree();
    }
    bool onPortListPortAdded(const ZEL::PortList& list, const PortPtr& port) override
    {
        return Base::onPortListPortAdded(list, port) && agree();
    }
    bool onPortListPortRemoved(const ZEL::PortList& list, const PortPtr& port) override
    {
        return Base::onPortListPortRemoved(list, port) && agree();
    }
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override
    {
        return Base::onPortListPortMove(list, from, to) && agree();
    }
    bool onPortSetDefaultValue(const PortPtr& port, const char* value) override
    {
        return Base::onPortSetDefaultValue(port, value) && agree();
    }
    bool onPortSetName(const PortPtr& port, const char* name) override
    {
        return Base::onPortSetName(port, name) && agree();
    }
};

class RefusingCompound : public Refusing<shading::Compound> {
public:
    using Refusing::Refusing;
    using Refusing::operator=;

    bool onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node) override
    {
        return Compound::onNodeAdd(node) && agree();
    }
    bool onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node) override
    {
        return Compound::onNodeRemove(node) && agree();
    }
};
