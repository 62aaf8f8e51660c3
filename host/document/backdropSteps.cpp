// The step of what a document draws around nodes.

#include "document/backdrops.h"
#include "document/change.h"
#include "document/step.h"

namespace shading {

namespace {

class BackdropStep : public Step {
public:
    BackdropStep(Backdrops& backdrops, const BackdropPtr& backdrop, const Backdrop::State& after)
        : m_backdrops(backdrops),
          m_backdrop(backdrop),
          m_before(backdrop->state()),
          m_after(after)
    {
    }

    bool run(bool isForward) override
    {
        m_backdrops.set(m_backdrop, isForward ? m_after : m_before);
        return true;
    }

    bool isDone() const override { return m_backdrop->state() == m_after; }

    void notify(bool /*isForward*/) const override
    {
        for (const NodePtr& owner : owners())
            notifyInside(owner);
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        for (const NodePtr& owner : owners())
            changes.changeInside(owner);
    }

private:
    /// The compounds that it was in and is in.
    std::vector<NodePtr> owners() const
    {
        std::vector<NodePtr> owners;
        for (const NodePtr& owner : {m_before.owner, m_after.owner}) {
            if (owner && (owners.empty() || owners.front() != owner))
                owners.push_back(owner);
        }
        return owners;
    }

    Backdrops& m_backdrops;
    BackdropPtr m_backdrop;
    Backdrop::State m_before;
    Backdrop::State m_after;
};

} // namespace

std::unique_ptr<Step>
makeBackdropStep(Backdrops& backdrops, const BackdropPtr& backdrop, const Backdrop::State& state)
{
    return std::make_unique<BackdropStep>(backdrops, backdrop, state);
}

} // namespace shading
