// The walk over all nodes of a document.

#include "binding/entry.h"
#include "document/journal.h"
#include "shading/bind.h"
#include "shading/collected.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using shading::NodePtr;
using zelpython::guarded;

namespace {

/// zel.shading.Walk: the nodes that were there when it began, in that order. Nodes that leave the
/// document meanwhile are passed over.
class Walk {
public:
    Walk(std::shared_ptr<Work> work, ZEL::Compound& compound) : m_work(std::move(work))
    {
        collect(compound);
        m_changes = m_work->document().journal().changes();
    }

    NodePtr next()
    {
        shading::Document& document = m_work->document();
        while (m_next < m_nodes.size()) {
            NodePtr node = std::move(m_nodes[m_next]);
            ++m_next;
            if (document.journal().changes() == m_changes || document.has(node))
                return node;
        }
        throw py::stop_iteration();
    }

private:
    void collect(ZEL::Compound& compound)
    {
        for (ZEL::Node* const node : compound.nodes()) {
            m_nodes.emplace_back(node);
            if (node->isCompound())
                collect(*node->getAsCompound());
        }
    }

    std::shared_ptr<Work> m_work; ///< Goes after the nodes.
    std::vector<NodePtr> m_nodes; ///< Empty ones were given.
    std::size_t m_next = 0;
    std::size_t m_changes = 0; ///< Of the network, when it began.
};

} // namespace

void bindWalk(py::module_& module, DocumentClass& document)
{
    py::class_<Walk>(module, "Walk", py::is_final(), given(), "The nodes of Document.walk.")
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", guarded(&Walk::next));
    document.def("walk", guarded([](PyDocument& self, const std::optional<NodeArgument>& path) {
                     Work& work = self.work();
                     return std::make_unique<Walk>(self.sharedWork(), *work.compoundOf(path));
                 }),
                 py::arg("path") = py::none(),
                 "Every node below the root, or below the compound at the path, outer ones first. "
                 "The document may be edited meanwhile: nodes that leave it are passed over, and "
                 "new ones do not come.");
}

} // namespace zelshading
