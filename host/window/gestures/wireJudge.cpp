#include "window/gestures/wireJudge.h"

#include "document/flow.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/edits.h"

#include <algorithm>

namespace shading {

WireJudge::WireJudge(const Edits& edits, std::vector<PortPtr> fixed, bool seeksTarget)
    : m_edits(edits),
      m_fixed(std::move(fixed)),
      m_seeksTarget(seeksTarget)
{
    for (const PortPtr& port : m_fixed)
        m_circles.merge(seeksTarget ? receiversBefore(*port) : sendersAfter(*port));
}

std::string WireJudge::dataType() const
{
    return typeNameOf(*m_fixed.front());
}

bool WireJudge::isThere(ZEL::Port& port) const
{
    return m_fixed.size() == 1 && m_fixed.front()->connectedTo().findPort(&port) >= 0;
}

std::string WireJudge::problem(ZEL::Port& port) const
{
    if (isThere(port))
        return "";
    for (const PortPtr& fixed : m_fixed) {
        // Of several that move together, one may be there.
        if (fixed->connectedTo().findPort(&port) >= 0)
            continue;
        const PortPtr& source = m_seeksTarget ? fixed : PortPtr(&port);
        const PortPtr& target = m_seeksTarget ? PortPtr(&port) : fixed;
        std::string problem = m_edits.connectProblem(source, target);
        if (!problem.empty())
            return problem;
    }
    return "";
}

bool WireJudge::fits(ZEL::Port& port) const
{
    const auto [known, isNew] = m_fits.emplace(&port, false);
    if (isNew)
        known->second = mayFit(port);
    return known->second;
}

/// As the edit judges, but for the circles, which are known.
bool WireJudge::mayFit(ZEL::Port& port) const
{
    const bool isTarget = port.getPortIOType() == ZEL::PortInput;
    if (isTarget != m_seeksTarget)
        return false;
    if (m_circles.count(&port) > 0)
        return isThere(port);
    return std::all_of(m_fixed.begin(), m_fixed.end(), [&](const PortPtr& fixed) {
        return typeNameOf(*fixed) == typeNameOf(port) &&
               (m_seeksTarget ? fitProblem(*fixed, port) : fitProblem(port, *fixed)).empty();
    });
}

PortPtr WireJudge::freePort(ZEL::Node& node, std::string& problem) const
{
    std::string first;
    for (ZEL::Port* const port : m_seeksTarget ? node.inputs() : node.outputs()) {
        if (m_seeksTarget && port->isConnected())
            continue;
        const std::string own = this->problem(*port);
        if (own.empty())
            return port;
        if (first.empty())
            first = own;
    }
    problem = std::string(m_seeksTarget ? "no free input" : "no output") + " of it has the type " +
              dataType();
    // Where one has, what is wrong with that says more.
    for (ZEL::Port* const port : m_seeksTarget ? node.inputs() : node.outputs()) {
        if (typeNameOf(*port) == dataType() && !(m_seeksTarget && port->isConnected())) {
            problem = this->problem(*port);
            break;
        }
    }
    return nullptr;
}

} // namespace shading
