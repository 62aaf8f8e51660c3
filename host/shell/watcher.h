#pragma once

#include "zel.h"

#include <iosfwd>
#include <string>

namespace shading {

/// An editor of the whole document that prints what it hears, a line for each callback. Paths are
/// those after the edit.
///
/// A change is told by the node that owns the compound where it shows: an editor that shows one
/// compound registers with its node. This one registers with all, also with those that come later.
class Watcher : public ZEL::HostEditor {
public:
    /// The stream is not owned and must outlive the watcher.
    Watcher(const ZEL::AddRefWrapper<ZEL::Node>& root, std::ostream& out);

    void zel_onConnectionChange(ZEL::ECnxChangeType type,
                                const ZEL::AddRefWrapper<ZEL::Port>& first,
                                const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                        const ZEL::AddRefWrapper<ZEL::Port>& first,
                                        const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                  const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                          const ZEL::AddRefWrapper<ZEL::Node>& node) override;

private:
    void watch(const ZEL::AddRefWrapper<ZEL::Node>& node);
    void print(const std::string& line);

    std::ostream& m_out;
};

} // namespace shading
