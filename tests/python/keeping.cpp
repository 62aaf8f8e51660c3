// For the tests: keeps objects as code in C++ may, by a wrapper made from a pointer from inside,
// and changes them where no Python calls.
#include "zel.h"

#include <pybind11/pybind11.h>
#include <vector>

namespace {

std::vector<ZEL::AddRefWrapper<ZEL::Node>> g_nodes;
std::vector<ZEL::AddRefWrapper<ZEL::Compound>> g_compounds;

} // namespace

PYBIND11_MODULE(_keeping, module)
{
    module.def("keepNodeOf", [](ZEL::Port& port) { g_nodes.push_back(port.getParentNode()); });
    module.def("keepCompoundOf",
               [](ZEL::Port& port) { g_compounds.push_back(port.getParentCompound()); });
    module.def("letGo", [] {
        g_nodes.clear();
        g_compounds.clear();
    });
    module.def("rename", [](ZEL::Port& port, const char* name) { port.setName(name); });
}
