#include "shading/arguments.h"

namespace zelshading {

namespace py = pybind11;

namespace {

bool toPath(py::handle object, std::string& path)
{
    zelpython::Text text;
    if (!zelpython::toText(object, text))
        return false;
    path = text.string();
    return true;
}

/// False also for None, which is no object.
template <class T>
bool toObject(py::handle object, ZEL::AddRefWrapper<T>& result)
{
    py::detail::make_caster<ZEL::AddRefWrapper<T>> caster;
    if (object.is_none() || !caster.load(object, false))
        return false;
    result = py::detail::cast_op<ZEL::AddRefWrapper<T>&>(caster);
    return true;
}

} // namespace

bool toNode(py::handle object, NodeArgument& node)
{
    shading::CompoundPtr compound;
    if (toPath(object, node.path) || toObject(object, node.object))
        return true;
    if (!toObject(object, compound))
        return false;
    node.object = compound->getAsNode();
    return node.object != nullptr;
}

bool toPort(py::handle object, PortArgument& port)
{
    return toPath(object, port.path) || toObject(object, port.object);
}

bool toOwner(py::handle object, OwnerArgument& owner)
{
    return toObject(object, owner.port) || toNode(object, owner.node);
}

bool toNodes(py::handle object, NodesArgument& nodes)
{
    NodeArgument one;
    if (toNode(object, one)) {
        nodes.nodes = {one};
        return true;
    }
    if (!PyObject_HasAttrString(object.ptr(), "__iter__") || PyBytes_Check(object.ptr()))
        return false;
    for (const py::handle each : object) {
        NodeArgument node;
        if (!toNode(each, node))
            throw py::type_error("a node is a path, zel.Node or zel.Compound, and not " +
                                 std::string(Py_TYPE(each.ptr())->tp_name));
        nodes.nodes.push_back(node);
    }
    return true;
}

bool toFile(py::handle object, FileArgument& file)
{
    if (!PyUnicode_Check(object.ptr()) && !PyBytes_Check(object.ptr()) &&
        !PyObject_HasAttrString(object.ptr(), "__fspath__"))
        return false;
    PyObject* bytes = nullptr;
    if (PyUnicode_FSConverter(object.ptr(), &bytes) == 0)
        throw py::error_already_set();
    const auto held = py::reinterpret_steal<py::bytes>(bytes);
    file.path = held;
    return true;
}

} // namespace zelshading
