#include "zel/classes.h"
#include "zel/pyLibrary.h"

#include <unordered_set>
#include <vector>

namespace zelpython {

namespace {

using DefinitionWrapper = ZEL::AddRefWrapper<ZEL::NodeDefinition>;
using LibraryWrapper = ZEL::AddRefWrapper<ZEL::NodeLibrary>;

void bindDefinition(py::module_& module)
{
    using Class = py::class_<ZEL::NodeDefinition, PyOwned<ZEL::NodeDefinition>>;
    Binding<Class> definition(module, "NodeDefinition", collected<ZEL::NodeDefinition>());
    guardSubclasses<ZEL::NodeDefinition>(definition.type());
    definition
        .defInit(
            [](py::detail::value_and_holder& place, const OptionalText& name) {
                auto* const made = new PyDefinition(name);
                made->attach(selfOf(place));
                initialise<ZEL::NodeDefinition>(place, made);
            },
            py::arg("name") = py::none())
        .defNaming<PyDefinition, CountedDefinition>()
        .defCount();
}

/// True when the library is the other, or lies somewhere below it.
bool isWithin(ZEL::NodeLibrary& library, ZEL::NodeLibrary& other)
{
    std::unordered_set<const ZEL::NodeLibrary*> seen;
    std::vector<LibraryWrapper> open{&other};
    while (!open.empty()) {
        const LibraryWrapper next = open.back();
        open.pop_back();
        if (next == &library)
            return true;
        if (!next || !seen.insert(next.get()).second)
            continue;
        for (int i = 0; i < next->getNumberOfSubLibraries(); ++i)
            open.push_back(next->getSubLibraryAt(i));
    }
    return false;
}

void addSubLibrary(ZEL::NodeLibrary& self, const LibraryWrapper& library)
{
    if (isWithin(self, *library))
        throw py::value_error("the library would lie in itself");
    self.addSubLibrary(library);
}

template <class Class>
void defineEntries(Class& library)
{
    library.def("getNumberOfSubLibraries", &ZEL::NodeLibrary::getNumberOfSubLibraries)
        .def("getSubLibraryAt", &ZEL::NodeLibrary::getSubLibraryAt, py::arg("index"))
        .def("removeSubLibraryAt", &ZEL::NodeLibrary::removeSubLibraryAt, py::arg("index"))
        .def("addSubLibrary", addSubLibrary, py::arg("library").none(false))
        .def(
            "findLibrary",
            [](ZEL::NodeLibrary& self, const OptionalText& path) { return self.findLibrary(path); },
            py::arg("path").none(true))
        .def("getNumberOfNodes", &ZEL::NodeLibrary::getNumberOfNodes)
        .def("getNodeAt", &ZEL::NodeLibrary::getNodeAt, py::arg("index"))
        .def(
            "addNode",
            [](ZEL::NodeLibrary& self, const DefinitionWrapper& definition) {
                self.addNode(definition);
            },
            py::arg("definition").none(false))
        .def(
            "addNode",
            [](ZEL::NodeLibrary& self, const Text& name) {
                // As the library adds one, with a Python half.
                const py::object made = py::type::of<ZEL::NodeDefinition>()(toPython(name.view));
                self.addNode(py::cast<DefinitionWrapper>(made));
            },
            py::arg("name").none(false))
        .def("sort", &ZEL::NodeLibrary::sort);
}

void bindNodeLibrary(py::module_& module)
{
    using Class = py::class_<ZEL::NodeLibrary, PyOwned<ZEL::NodeLibrary>>;
    Binding<Class> library(module, "NodeLibrary", py::is_final(), collected<ZEL::NodeLibrary>());
    library
        .defInit(
            [](py::detail::value_and_holder& place, const OptionalText& name) {
                auto* const made = new PyLibrary;
                made->attach(selfOf(place));
                initialise<ZEL::NodeLibrary>(place, made);
                made->setName(name);
            },
            py::arg("name") = py::none())
        .defNaming<PyLibrary, CountedLibrary>()
        .defCount();
    defineEntries(library);
}

} // namespace

void bindLibrary(py::module_& module)
{
    bindDefinition(module);
    bindNodeLibrary(module);
    defineLater([module]() mutable {
        module.def("sortFunc", guarded([](const DefinitionWrapper& a, const DefinitionWrapper& b) {
                       return ZEL::sortFunc(a, b);
                   }),
                   py::arg("a").none(false), py::arg("b").none(false), docOf("", "sortFunc"));
    });
}

} // namespace zelpython
