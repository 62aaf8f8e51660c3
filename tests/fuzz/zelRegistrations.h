#pragma once

#include "zel.h"

#include <map>
#include <vector>

namespace zelFuzz {

/// Which editors are registered with which node, in order: what the library has to know, too.
class Registrations {
public:
    void add(ZEL::Node& node, ZEL::HostEditor& editor);
    void remove(ZEL::Node& node, ZEL::HostEditor& editor);
    // In the destructors.
    void forget(const ZEL::Node& node) { m_editors.erase(&node); }
    void forget(const ZEL::HostEditor& editor);

    /// In the callback of an editor.
    void hear(const ZEL::HostEditor& editor) { m_heard.push_back(&editor); }
    /// Notifies the editors of the node, which change nothing, and compares who is called.
    void check(ZEL::Node& node);
    /// How many editors the node has.
    std::size_t count(const ZEL::Node& node) const;

private:
    using Editors = std::vector<const ZEL::HostEditor*>;

    std::map<const ZEL::Node*, Editors> m_editors;
    Editors m_heard;
};

} // namespace zelFuzz
