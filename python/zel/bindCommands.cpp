#include "zel/classes.h"
#include "zel/commands.h"

#include <memory>

namespace zelpython {

namespace {

template <class Command>
using CommandClass = py::class_<Command, std::unique_ptr<Command>>;

template <class Command>
Binding<CommandClass<Command>> bindCommand(py::module_& module, const char* name)
{
    Binding<CommandClass<Command>> bound(module, name, py::is_final(), collected<Command>());
    bound.defInit([](py::detail::value_and_holder& place) { initialise(place, new Command); });
    return bound;
}

void bindConnect(py::module_& module)
{
    using Command = PyConnectCommand;
    bindCommand<Command>(module, "ConnectCommand")
        .def("connect", &Command::connect, py::arg("container"), py::arg("a"), py::arg("b"))
        .def("disconnect", &Command::disconnect, py::arg("container"), py::arg("a"), py::arg("b"))
        .def("disconnectAll", &Command::disconnectAll, py::arg("container"), py::arg("port"))
        .def("undo", &Command::undo, py::arg("container"))
        .def("redo", &Command::redo, py::arg("container"))
        .def("resolvePorts", [](Command& self) -> py::object {
            Command::Port outPort;
            Command::Port inPort;
            if (!self.resolvePorts(outPort, inPort))
                return py::none();
            return py::make_tuple(toObject(outPort.get()), toObject(inPort.get()));
        });
}

void bindCreateCompound(py::module_& module)
{
    using Command = PyCreateCompoundCommand;
    bindCommand<Command>(module, "CreateCompoundCommand")
        .def(
            "setParentCompound",
            [](Command& self, ZEL::Container* container, const OptionalText& path) {
                return self.setParentCompound(container, path);
            },
            py::arg("container"), py::arg("path").none(true))
        .def(
            "setNewCompoundName",
            [](Command& self, const OptionalText& name) { self.setNewCompoundName(name); },
            py::arg("name").none(true))
        .def(
            "addNodeToMove",
            [](Command& self, const Text& name) { return self.addNodeToMove(name); },
            py::arg("name").none(false))
        .def("doit", &Command::doit)
        .def("undo", &Command::undo, py::arg("container"))
        .def(
            "redo", [](Command& self, ZEL::Container* /*container*/) { return self.redo(); },
            py::arg("container"))
        .def("getCreatedCompoundPath",
             [](Command& self) { return toPython(self.getCreatedCompoundPath()); });
}

void bindModifyCompoundPort(py::module_& module)
{
    using Command = PyModifyCompoundPortCommand;
    bindCommand<Command>(module, "ModifyCompoundPortCommand")
        .def(
            "setParentCompound",
            [](Command& self, ZEL::Container* container, const OptionalText& path) {
                return self.setParentCompound(container, path);
            },
            py::arg("container"), py::arg("path").none(true))
        .def(
            "createPort",
            [](Command& self, ZEL::PortIOType ioType, const OptionalText& name,
               const OptionalText& type) { return self.createPort(ioType, name, type); },
            py::arg("ioType"), py::arg("name").none(true), py::arg("dataTypeName").none(true))
        .def(
            "deletePort", [](Command& self, const Text& name) { return self.deletePort(name); },
            py::arg("name").none(false))
        .def(
            "renamePort",
            [](Command& self, const Text& oldName, const OptionalText& newName) {
                return self.renamePort(oldName, newName);
            },
            py::arg("oldName").none(false), py::arg("newName").none(true))
        .def("doit", &Command::doit)
        .def(
            "undo", [](Command& self, ZEL::Container* /*container*/) { self.undo(); },
            py::arg("container"))
        .def(
            "redo", [](Command& self, ZEL::Container* /*container*/) { self.redo(); },
            py::arg("container"));
}

} // namespace

void bindCommands(py::module_& module)
{
    bindConnect(module);
    bindCreateCompound(module);
    bindModifyCompoundPort(module);
}

} // namespace zelpython
