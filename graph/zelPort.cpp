#include "zelPort.h"

#include "core/zelKeepAlive.h"
#include "core/zelNameIndex.h"
#include "zelDirection.h"

#include <cstring>

namespace ZEL {

// PortDataType.

PortDataType::PortDataType(const char* name) : Namable(name) {}

PortDataType::~PortDataType() = default;

AddRefWrapper<PortDataType> PortDataType::createNew(const char* name)
{
    return new PortDataType(name);
}

bool PortDataType::operator==(const PortDataType& other) const
{
    return Namable::operator==(other);
}

// PortNotification.

PortNotification::~PortNotification() = default;

// Port.

Port::Port(const char* name, PortIOType ioType)
    : Namable(name),
      m_ioType(keepDirection(this, ioType)),
      m_parentKind(0),
      m_hidden(0),
      m_parentIsPlainNode(0),
      m_parentAgrees(0)
{
    m_connections.addRef();
    m_connections.m_isRecord = 1;
}

Port::~Port()
{
    forgetDirection(this, m_ioType);
}

AddRefWrapper<Port> Port::createNew(const char* name, PortIOType ioType)
{
    return new Port(name, ioType);
}

void Port::setName(const char* name)
{
    if (!name || std::strcmp(name, getName()) == 0)
        return;
    const KeepAlive self(this);
    const std::string copy(name); // The listener may change the text that name points into.
    if (!m_parent || m_parent->onPortSetName(this, copy.c_str()))
        Namable::setName(copy.c_str());
}

void Port::setParent(PortNotification* parent)
{
    setParent(parent, ParentKind::Unknown);
}

void Port::setParent(PortNotification* parent, ParentKind kind)
{
    m_parent = parent;
    m_parentKind = static_cast<std::uint32_t>(kind);
    m_parentIsPlainNode = 0;
    m_parentAgrees = 0;
}

PortNotification* Port::getParent()
{
    return m_parent;
}

Namable Port::getFullPathName()
{
    if (!m_parent)
        return Namable(getName());
    const KeepAlive self(this);
    Namable path = m_parent->onGetParentFullPathName();
    path.m_name += '.';
    NameIndex::appendName(*this, path.m_name);
    return path;
}

PortIOType Port::getPortIOType()
{
    return directionOf(this, m_ioType);
}

AddRefWrapper<PortDataType> Port::getDataType()
{
    return m_dataType;
}

bool Port::setDataType(const AddRefWrapper<PortDataType>& type)
{
    const KeepAlive self(this);
    const AddRefWrapper<PortDataType> newType(type.get());
    if (m_parent && !m_parent->onPortSetDataType(this, newType))
        return false;
    m_dataType = newType;
    return true;
}

const char* Port::getPortDefaultValue()
{
    const KeepAlive self(this);
    const char* const value = m_parent ? m_parent->onPortGetDefaultValue(this) : nullptr;
    if (value)
        return value;
    return m_defaultValue ? m_defaultValue->c_str() : "";
}

void Port::setPortDefaultValue(const char* value)
{
    // Copied at first: value may point into the present one, which a listener may change.
    std::unique_ptr<std::string> copy =
        value && *value ? std::make_unique<std::string>(value) : nullptr;
    const KeepAlive self(this);
    if (m_parent && !m_parent->onPortSetDefaultValue(this, copy ? copy->c_str() : ""))
        return;
    m_defaultValue.swap(copy);
}

void Port::hidePort(bool hide)
{
    m_hidden = hide ? 1 : 0;
}

bool Port::isPortHidden()
{
    return m_hidden != 0;
}

} // namespace ZEL
