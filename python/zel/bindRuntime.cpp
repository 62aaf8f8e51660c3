#include "zel/classes.h"
#include "zel/pyContainer.h"
#include "zel/pyRuntime.h"

#include <vector>

namespace zelpython {

namespace {

using LibraryWrapper = ZEL::AddRefWrapper<ZEL::NodeLibrary>;

PyRuntime* madeInPython(ZEL::Runtime& self)
{
    return dynamic_cast<PyRuntime*>(&self);
}

template <class Class>
void defineLibraries(Class& runtime)
{
    runtime
        .def(
            "setNodeLibrary",
            [](ZEL::Runtime& self, LibraryWrapper library) {
                auto* const half = madeInPython(self);
                half ? half->Runtime::setNodeLibrary(library) : self.setNodeLibrary(library);
            },
            py::arg("library").none(true))
        .def("getNodeLibrary",
             [](ZEL::Runtime& self) {
                 auto* const half = madeInPython(self);
                 return half ? half->Runtime::getNodeLibrary() : self.getNodeLibrary();
             })
        .def(
            "findLibrary",
            [](ZEL::Runtime& self, const OptionalText& path) {
                auto* const half = madeInPython(self);
                return half ? half->Runtime::findLibrary(path) : self.findLibrary(path);
            },
            py::arg("path").none(true));
}

template <class Class>
void defineDataTypes(Class& runtime)
{
    runtime
        .def("getNumberOfPortDataTypes",
             [](ZEL::Runtime& self) {
                 auto* const half = madeInPython(self);
                 return half ? half->Runtime::getNumberOfPortDataTypes()
                             : self.getNumberOfPortDataTypes();
             })
        .def(
            "getPortDataType",
            [](ZEL::Runtime& self, int index) {
                auto* const half = madeInPython(self);
                return half ? half->Runtime::getPortDataType(index) : self.getPortDataType(index);
            },
            py::arg("index"))
        .def(
            "getPortDataType",
            [](ZEL::Runtime& self, const OptionalText& name) {
                const char* const text = name;
                auto* const half = madeInPython(self);
                return half ? half->Runtime::getPortDataType(text) : self.getPortDataType(text);
            },
            py::arg("name").none(true))
        .def(
            "createPortDataType",
            [](ZEL::Runtime& self, const OptionalText& name) {
                auto* const half = madeInPython(self);
                return half ? half->Runtime::createPortDataType(name)
                            : self.createPortDataType(name);
            },
            py::arg("name").none(true));
}

/// The container, if it may come and go now.
PyContainer& movable(ZEL::Container& container)
{
    auto* const made = dynamic_cast<PyContainer*>(&container);
    if (!made)
        throw py::value_error("a document of C++ registers itself");
    if (made->isBeingRebuilt())
        throw std::runtime_error("the container is being rebuilt: its place is open until then");
    return *made;
}

void registerContainer(ZEL::Runtime& self, ZEL::Container& container)
{
    PyContainer& made = movable(container);
    self.registerContainer(&made);
    made.onRegistered(toPythonObject(&self));
}

void unregisterContainer(ZEL::Runtime& self, ZEL::Container& container)
{
    PyContainer& made = movable(container);
    self.unregisterContainer(&made);
    made.onUnregistered(&self);
}

void forceRebuildCompounds(ZEL::Runtime& self)
{
    // One that is dropped meanwhile lives until the walk is over.
    std::vector<PyRef> held;
    for (const PyContainer* const container : PyContainer::all()) {
        if (container->isRegistered(&self))
            held.push_back(PyRef::borrow(container->self()));
    }
    self.forceRebuildCompounds();
}

} // namespace

void bindRuntime(py::module_& module)
{
    using Class = py::class_<ZEL::Runtime, PyUnique<ZEL::Runtime>>;
    Binding<Class> runtime(module, "Runtime", collected<ZEL::Runtime>());
    guardSubclasses<ZEL::Runtime>(runtime.type());
    runtime
        .defInit([](py::detail::value_and_holder& place) {
            auto* const made = new PyRuntime;
            made->attach(selfOf(place));
            initialise<ZEL::Runtime>(place, made);
        })
        .defNaming<PyRuntime, ZEL::Runtime>();
    defineLibraries(runtime);
    defineDataTypes(runtime);
    runtime.def("registerContainer", registerContainer, py::arg("container").none(false))
        .def("unregisterContainer", unregisterContainer, py::arg("container").none(false))
        .def("forceRebuildCompounds", forceRebuildCompounds);
}

} // namespace zelpython
