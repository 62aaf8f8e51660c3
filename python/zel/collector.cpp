#include "zel/collector.h"

#include "zel/pyContainer.h"
#include "zel/safeNode.h"

#include <algorithm>
#include <vector>

namespace zelpython {

namespace py = pybind11;

namespace {

/// The classes that may be derived from. Each lives as long as the process.
std::vector<PyObject*> g_bases;

constexpr const char* kTwoBases = "%s: a class has one base of the library, not more";

/// Whoever holds the object holds it alone.
bool isHeldOnce(const ZEL::ReferenceCounted& object, int ownReferences = 0)
{
    return object.getRefCount() - ownReferences == 1;
}

/// The Python object stands for the object of C++: it holds it alone, or C++ owns and holds the
/// Python half through it.
template <class T>
bool standsFor(const T& object)
{
    const auto* const half = dynamic_cast<const CountedHalf*>(&object);
    return isHeldOnce(object) || (half && half->isOwnedByCpp());
}

/// What a visited object of C++ holds with the only reference: the Python half of that, or else
/// what lies behind it.
template <class T, class Inside>
int visitHeld(T& object, Inside inside, visitproc visit, void* arg)
{
    auto* const half = dynamic_cast<CountedHalf*>(&object);
    if (!half)
        return inside(object, visit, arg);
    if (half->isOwnedByCpp())
        Py_VISIT(half->selfForCollector());
    return 0;
}

int visitInside(ZEL::Node& node, visitproc visit, void* arg);

int visitInside(ZEL::Compound& compound, visitproc visit, void* arg)
{
    ZEL::NodeList& nodes = compound.Compound::nodes();
    if (!isHeldOnce(nodes))
        return 0;
    const auto inside = [](ZEL::Node& node, visitproc each, void* data) {
        return visitInside(node, each, data);
    };
    for (ZEL::Node* const node : nodes) {
        const int stop = isHeldOnce(*node) ? visitHeld(*node, inside, visit, arg) : 0;
        if (stop != 0)
            return stop;
    }
    return 0;
}

int visitInside(ZEL::Node& node, visitproc visit, void* arg)
{
    if (const auto* const safe = dynamic_cast<const SafeNode*>(&node))
        Py_VISIT(safe->containerHalf());
    const ZEL::AddRefWrapper<ZEL::Compound> compound = node.Node::getAsCompound();
    if (!compound || !isHeldOnce(*compound, 1))
        return 0;
    const auto inside = [](ZEL::Compound& held, visitproc each, void* data) {
        return visitInside(held, each, data);
    };
    return visitHeld(*compound, inside, visit, arg);
}

int visitInside(ZEL::NodeLibrary& library, visitproc visit, void* arg);

/// A library that somebody holds, who has found it with a wrapper.
int visitLibrary(ZEL::NodeLibrary& library, visitproc visit, void* arg)
{
    if (!isHeldOnce(library, 1))
        return 0;
    const auto inside = [](ZEL::NodeLibrary& held, visitproc each, void* data) {
        return visitInside(held, each, data);
    };
    return visitHeld(library, inside, visit, arg);
}

int visitInside(ZEL::NodeLibrary& library, visitproc visit, void* arg)
{
    const auto nothing = [](ZEL::NodeDefinition&, visitproc, void*) { return 0; };
    for (int i = 0; i < library.getNumberOfNodes(); ++i) {
        const ZEL::AddRefWrapper<ZEL::NodeDefinition> definition = library.getNodeAt(i);
        const bool isSeen = definition && isHeldOnce(*definition, 1);
        const int stop = isSeen ? visitHeld(*definition, nothing, visit, arg) : 0;
        if (stop != 0)
            return stop;
    }
    for (int i = 0; i < library.getNumberOfSubLibraries(); ++i) {
        const ZEL::AddRefWrapper<ZEL::NodeLibrary> sub = library.getSubLibraryAt(i);
        const int stop = sub ? visitLibrary(*sub, visit, arg) : 0;
        if (stop != 0)
            return stop;
    }
    return 0;
}

/// __init_subclass__(cls, **kwargs).
void onSubclass(const py::object& type, const py::args& args, const py::kwargs& kwargs)
{
    auto* const made = reinterpret_cast<PyTypeObject*>(args[0].ptr());
    int bases = 0;
    for (PyObject* const base : g_bases)
        bases += PyType_IsSubtype(made, reinterpret_cast<PyTypeObject*>(base)) != 0 ? 1 : 0;
    if (bases > 1) {
        PyErr_Format(PyExc_TypeError, kTwoBases, made->tp_name);
        throw py::error_already_set();
    }
    const py::object super(py::handle(reinterpret_cast<PyObject*>(&PySuper_Type))(type, args[0]));
    super.attr("__init_subclass__")(**kwargs);
}

} // namespace

int visitEdges(ZEL::Node& node, visitproc visit, void* arg)
{
    return standsFor(node) ? visitInside(node, visit, arg) : 0;
}

int visitEdges(ZEL::Compound& compound, visitproc visit, void* arg)
{
    return standsFor(compound) ? visitInside(compound, visit, arg) : 0;
}

int visitEdges(ZEL::Container& container, visitproc visit, void* arg)
{
    const auto* const made = dynamic_cast<const PyContainer*>(&container);
    return made ? made->traverse(visit, arg) : 0;
}

int visitEdges(ZEL::NodeDefinition& /*definition*/, visitproc /*visit*/, void* /*arg*/)
{
    return 0;
}

int visitEdges(ZEL::NodeLibrary& library, visitproc visit, void* arg)
{
    return standsFor(library) ? visitInside(library, visit, arg) : 0;
}

int visitEdges(ZEL::Runtime& runtime, visitproc visit, void* arg)
{
    // A runtime of C++ is not Python's: what it holds is held by others.
    if (!dynamic_cast<Half*>(&runtime))
        return 0;
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> library = runtime.Runtime::getNodeLibrary();
    return library ? visitLibrary(*library, visit, arg) : 0;
}

int visitEdges(ZEL::HostEditor& /*editor*/, visitproc /*visit*/, void* /*arg*/)
{
    return 0;
}

namespace detail {

void deallocate(PyObject* self)
{
    if (Py_TYPE(self)->tp_dealloc == deallocate && PyObject_CallFinalizerFromDealloc(self) < 0)
        return; // Caught in the net.
    PyObject_GC_UnTrack(self);
    // Networks are deep, and the stack is not.
    Py_TRASHCAN_BEGIN(self, deallocate) py::detail::pybind11_object_dealloc(self);
    Py_TRASHCAN_END
}

void callDel(PyObject* self)
{
    static PyObject* const name = PyUnicode_InternFromString("__del__");
    PyObject* const function = _PyType_Lookup(Py_TYPE(self), name);
    if (!function)
        return;
    const PyRef held = PyRef::borrow(function);
    const PyRef result = PyRef::steal(PyObject_CallMethodNoArgs(self, name));
    if (!result)
        PyErr_WriteUnraisable(function);
}

PyObject* makeNew(PyTypeObject* type, PyObject* args, PyObject* kwargs)
{
    PyObject* const made = py::detail::pybind11_object_new(type, args, kwargs);
    if (made && !reinterpret_cast<py::detail::instance*>(made)->simple_layout) {
        Py_DECREF(made);
        PyErr_Format(PyExc_TypeError, kTwoBases, type->tp_name);
        return nullptr;
    }
    return made;
}

void guardSubclasses(py::object type)
{
    g_bases.push_back(type.ptr());
    const py::handle base = type;
    const py::cpp_function function([base](const py::args& args, const py::kwargs& kwargs) {
        onSubclass(py::reinterpret_borrow<py::object>(base), args, kwargs);
    });
    type.attr("__init_subclass__") =
        py::reinterpret_steal<py::object>(PyClassMethod_New(function.ptr()));
}

} // namespace detail

} // namespace zelpython
