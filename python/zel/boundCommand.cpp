#include "zel/boundCommand.h"

#include "zel/pyContainer.h"

#include <pybind11/pybind11.h>
#include <stdexcept>

namespace zelpython {

namespace py = pybind11;

namespace {

constexpr const char* kFoundName = "found";

/// Owns the compound for a command only; the compound knows its own node.
class FoundNode final : public ZEL::Node {
public:
    explicit FoundNode(ZEL::Compound* compound) : Node(nullptr), m_compound(compound) {}

    ZEL::AddRefWrapper<ZEL::Compound> getAsCompound() override { return m_compound; }

private:
    ZEL::Compound* m_compound; ///< Held by whoever shows it.
};

} // namespace

void CommandDocument::aim(ZEL::Container* real)
{
    const PyRef former = std::exchange(m_half, toPythonObject(real));
    m_real = real;
}

const char* CommandDocument::show(ZEL::Compound* compound)
{
    m_found = new FoundNode(compound);
    m_found->setName(kFoundName);
    return kFoundName;
}

BoundCommand::Use::Use(BoundCommand& command, bool mayNest) : m_command(command)
{
    if (command.m_uses > 0 && !mayNest)
        throw std::runtime_error(
            "the command is at work: use another one, or wait until it is done");
    if (command.m_uses++ == 0)
        command.work();
}

BoundCommand::Use::~Use()
{
    if (--m_command.m_uses == 0)
        m_command.rest();
}

BoundCommand::Found BoundCommand::find(ZEL::Container* container, const char* path)
{
    if (!container && path && *path)
        throw py::value_error("a path needs a container");
    Found found;
    found.node = container ? container->findNodeFromPath(path) : nullptr;
    found.compound = found.node ? found.node->getAsCompound() : nullptr;
    return found;
}

void BoundCommand::work()
{
    if (m_compound)
        m_compound->work();
}

void BoundCommand::rest()
{
    if (m_compound)
        m_compound->rest();
}

int BoundCommand::traverse(visitproc visit, void* arg) const
{
    Py_VISIT(m_document.half());
    if (m_compound)
        Py_VISIT(m_compound->half());
    return 0;
}

} // namespace zelpython
