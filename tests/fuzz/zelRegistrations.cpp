#include "zelRegistrations.h"

#include "zelFuzzInput.h"

#include <algorithm>

namespace zelFuzz {

void Registrations::add(ZEL::Node& node, ZEL::HostEditor& editor)
{
    node.registerEditor(&editor);
    Editors& editors = m_editors[&node];
    if (std::find(editors.begin(), editors.end(), &editor) == editors.end())
        editors.push_back(&editor);
}

void Registrations::remove(ZEL::Node& node, ZEL::HostEditor& editor)
{
    node.unregisterEditor(&editor);
    const auto found = m_editors.find(&node);
    if (found == m_editors.end())
        return;
    Editors& editors = found->second;
    editors.erase(std::remove(editors.begin(), editors.end(), &editor), editors.end());
}

void Registrations::forget(const ZEL::HostEditor& editor)
{
    for (auto& [node, editors] : m_editors)
        editors.erase(std::remove(editors.begin(), editors.end(), &editor), editors.end());
}

void Registrations::check(ZEL::Node& node)
{
    m_heard.clear();
    node.notifyNodeChange(ZEL::eNodeChanged, nullptr, nullptr);
    const auto found = m_editors.find(&node);
    expect(m_heard == (found == m_editors.end() ? Editors() : found->second),
           "a node notifies other editors than were registered");
    m_heard.clear();
}

std::size_t Registrations::count(const ZEL::Node& node) const
{
    const auto found = m_editors.find(&node);
    return found == m_editors.end() ? 0 : found->second.size();
}

} // namespace zelFuzz
