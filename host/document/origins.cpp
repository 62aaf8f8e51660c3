#include "document/origins.h"

#include "base/progress.h"
#include "format/piece.h"

namespace shading {

void Origins::setPort(const ZEL::AddRefWrapper<ZEL::Port>& port, const Piece* element)
{
    const Piece*& known = m_elements[port.get()];
    if (known)
        return;
    known = element;
    m_held.push_back(port);
}

const Piece* Origins::elementOf(const ZEL::Port& port) const
{
    const Piece* const* const found = m_elements.find(&port);
    return found ? *found : nullptr;
}

void Origins::setImplied(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    if (m_impliedNames.emplace(port.get(), port->getName()).second)
        m_held.push_back(port);
}

bool Origins::isImplied(const ZEL::Port& port) const
{
    const std::string name = impliedNameOf(port);
    return !name.empty() && name == port.getName();
}

std::string Origins::impliedNameOf(const ZEL::Port& port) const
{
    const auto found = m_impliedNames.find(&port);
    return found == m_impliedNames.end() ? "" : found->second;
}

std::string Origins::nameOf(const ZEL::Port& port) const
{
    const Piece* const element = elementOf(port);
    return element ? attributeOf(*element, "name") : impliedNameOf(port);
}

void Origins::setHiddenSource(const ZEL::AddRefWrapper<ZEL::Port>& port, const std::string& name)
{
    if (m_hiddenSources.emplace(port.get(), name).second)
        m_held.push_back(port);
}

std::string Origins::hiddenSourceOf(const ZEL::Port& port) const
{
    const auto found = m_hiddenSources.find(&port);
    return found == m_hiddenSources.end() ? "" : found->second;
}

void Origins::setConnected(const Piece& element)
{
    if (element.number >= m_connected.size())
        m_connected.resize(element.number * 2 + 1);
    m_connected[element.number] = true;
}

bool Origins::wasConnected(const Piece& element) const
{
    return element.number < m_connected.size() && m_connected[element.number];
}

void Origins::release(Progress& progress)
{
    m_elements = {};
    m_impliedNames.clear();
    m_hiddenSources.clear();
    for (ZEL::AddRefWrapper<ZEL::Port>& port : m_held) {
        port = nullptr;
        progress.step();
    }
    m_held.clear();
}

} // namespace shading
