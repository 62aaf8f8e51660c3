#include "zel/classes.h"
#include "zel/pyContainer.h"

namespace zelpython {

namespace {

/// Abstract: only a class that is derived from it has objects.
void makeContainer(py::detail::value_and_holder& place)
{
    if (!isDerived(place))
        throw py::type_error("zel.Container is for classes of your own: override getRootNode");
    auto* const made = new PyContainer;
    made->attach(selfOf(place));
    initialise<ZEL::Container>(place, made);
}

py::object ends(ZEL::Container& self, const OptionalText& pathA, const OptionalText& pathB)
{
    ZEL::AddRefWrapper<ZEL::Port> outPort;
    ZEL::AddRefWrapper<ZEL::Port> inPort;
    if (!self.findPortsForConnection(pathA, pathB, &outPort, &inPort))
        return py::none();
    return py::make_tuple(toObject(outPort.get()), toObject(inPort.get()));
}

void registerWithUUID(const Text& uuid, const py::object& container)
{
    ZEL::Container* const pointer = toContainer(container.ptr());
    if (!pointer && !container.is_none())
        throw py::type_error("a UUID is of a zel.Container, or of None");
    auto* const made = dynamic_cast<PyContainer*>(pointer);
    if (pointer && !made)
        throw py::value_error("a document of C++ registers itself");
    ZEL::Container::registerWithUUID(uuid, pointer);
    if (made)
        made->onRegisteredWithUUID(uuid);
}

/// The answer of the base, where an override calls it: an abstract class has none.
template <class Class>
void defineVirtuals(Class& container)
{
    container
        .def("getRootNode",
             [](ZEL::Container& self) -> ZEL::AddRefWrapper<ZEL::Node> {
                 return dynamic_cast<PyContainer*>(&self) ? nullptr : self.getRootNode();
             })
        .def("rebuildCompounds",
             [](ZEL::Container& self) {
                 if (!dynamic_cast<PyContainer*>(&self))
                     self.rebuildCompounds();
             })
        .def("hostOperation",
             [](ZEL::Container& self) {
                 if (!dynamic_cast<PyContainer*>(&self))
                     self.hostOperation();
             })
        .def("getRuntime", [](ZEL::Container& self) -> py::object {
            ZEL::Runtime* const runtime =
                dynamic_cast<PyContainer*>(&self) ? nullptr : self.getRuntime();
            return toObject(runtime);
        });
}

} // namespace

void bindContainer(py::module_& module)
{
    using Class = py::class_<ZEL::Container, PyUnique<ZEL::Container>>;
    Binding<Class> container(module, "Container", collected<ZEL::Container>());
    guardSubclasses<ZEL::Container>(container.type());
    createEnumeration(typeid(ZEL::Container::ESearchMode), container.type(), "ESearchMode",
                      {{"eSearchNode", ZEL::Container::eSearchNode},
                       {"eSearchNodeAndInner", ZEL::Container::eSearchNodeAndInner}});
    container.defInit(makeContainer);
    defineVirtuals(container);
    container
        .defStatic(
            "tokenizePath",
            [](const Text& path) {
                std::vector<std::string> tokens;
                ZEL::Container::tokenizePath(path.string(), tokens);
                py::list names;
                for (const std::string& token : tokens)
                    names.append(toPython(token));
                return names;
            },
            py::arg("path"))
        .def(
            "findNodeFromPath",
            [](ZEL::Container& self, const OptionalText& path) {
                return self.findNodeFromPath(path);
            },
            py::arg("path"))
        .def(
            "findPortFromPath",
            [](ZEL::Container& self, const OptionalText& path, ZEL::PortIOType ioType,
               ZEL::Container::ESearchMode mode) {
                return self.findPortFromPath(path, ioType, mode);
            },
            py::arg("path"), py::arg("ioType"),
            py::arg_v("mode", ZEL::Container::eSearchNode, "Container.eSearchNode"))
        .def("findPortsForConnection", ends, py::arg("pathA"), py::arg("pathB"))
        .def("reverseThisExternalPort", &ZEL::Container::reverseThisExternalPort, py::arg("port"))
        .defStatic("registerWithUUID", registerWithUUID, py::arg("uuid"), py::arg("container"))
        .defStatic(
            "getFromUUID",
            [](const OptionalText& uuid) { return toObject(ZEL::Container::getFromUUID(uuid)); },
            py::arg("uuid"));
}

} // namespace zelpython
