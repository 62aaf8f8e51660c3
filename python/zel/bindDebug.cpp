#include "zel/classes.h"

namespace zelpython {

namespace {

py::dict live()
{
    py::dict counts;
    for (const auto& [name, count] : shared().live) {
        if (count != 0)
            counts[py::str(name)] = count;
    }
    return counts;
}

/// "python" or "cpp", who owns an object whose class is written in Python; "" for others.
std::string owner(const py::object& object)
{
    CountedHalf* half = nullptr;
    const auto look = [&](auto* type) {
        using T = std::remove_pointer_t<decltype(type)>;
        if (py::isinstance<T>(object))
            half = dynamic_cast<CountedHalf*>(detail::wholeObject<T>(object.ptr()));
    };
    look(static_cast<ZEL::Node*>(nullptr));
    look(static_cast<ZEL::Compound*>(nullptr));
    look(static_cast<ZEL::NodeDefinition*>(nullptr));
    if (!half)
        return "";
    return half->isOwnedByCpp() ? "cpp" : "python";
}

} // namespace

void bindDebug(py::module_& module)
{
    py::module_ debug = module.def_submodule("_debug", "For the tests of the package.");
    debug.def("live", live, "How many objects and wrappers of each class there are.");
    debug.def("owner", owner, py::arg("object"));
    debug.def(
        "sliced", [] { return shared().sliced; },
        "How many Python halves died while C++ kept the other half.");
}

} // namespace zelpython
