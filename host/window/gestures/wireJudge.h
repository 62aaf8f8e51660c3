#pragma once

#include "document/pointers.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shading {

class Edits;

/// Says which ports a wire may be led to whose other end is fixed: one source, or the targets of
/// several wires that move together. Good for as long as the network does not change.
class WireJudge {
public:
    /// The edits are not owned and must outlive the judge; the ports are the document's.
    WireJudge(const Edits& edits, std::vector<PortPtr> fixed, bool seeksTarget);

    bool seeksTarget() const { return m_seeksTarget; }
    const std::vector<PortPtr>& fixed() const { return m_fixed; }
    /// Why the edit would refuse the port; empty when it would not, or the wire is there already.
    std::string problem(ZEL::Port& port) const;
    /// The same answer, for many ports at a time.
    bool fits(ZEL::Port& port) const;
    /// The first free port of the node that fits, or where others can stay the first one. Empty,
    /// with the reason, when there is none.
    PortPtr freePort(ZEL::Node& node, std::string& problem) const;
    /// The data type that all the fixed ends have.
    std::string dataType() const;

private:
    bool mayFit(ZEL::Port& port) const;
    bool isThere(ZEL::Port& port) const;

    const Edits& m_edits;
    std::vector<PortPtr> m_fixed;
    bool m_seeksTarget;
    std::unordered_set<const ZEL::Port*> m_circles; ///< Ports that would close one.
    mutable std::unordered_map<const ZEL::Port*, bool> m_fits;
};

} // namespace shading
