#include "document/origins.h"

namespace shading {

void Origins::setPort(const ZEL::AddRefWrapper<ZEL::Port>& port, const Piece* element)
{
    m_ports.emplace(port.get(), Origin{port, element, ""});
}

const Piece* Origins::elementOf(const ZEL::Port& port) const
{
    const auto found = m_ports.find(&port);
    return found == m_ports.end() ? nullptr : found->second.element;
}

void Origins::setImplied(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    m_ports.emplace(port.get(), Origin{port, nullptr, port->getName()});
}

bool Origins::isImplied(const ZEL::Port& port) const
{
    const std::string name = impliedNameOf(port);
    return !name.empty() && name == port.getName();
}

std::string Origins::impliedNameOf(const ZEL::Port& port) const
{
    const auto found = m_ports.find(&port);
    return found == m_ports.end() ? "" : found->second.impliedName;
}

} // namespace shading
