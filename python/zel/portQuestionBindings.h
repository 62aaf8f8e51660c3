#pragma once

#include "zel/classes.h"

namespace zelpython {

/// The questions of ports and their lists, for a node or a compound. Half is the class with a
/// Python half; Safe, its base, answers for it, since it is an override that calls.
template <class Half, class Safe, class Class>
void definePortQuestions(Class& bound)
{
    using T = typename Class::T;
    using Port = ZEL::AddRefWrapper<ZEL::Port>;
    bound
        .def(
            "onPortAddConnection",
            [](T& self, const Port& port, const Port& other) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortAddConnection(port, other)
                            : self.onPortAddConnection(port, other);
            },
            py::arg("port").none(false), py::arg("other").none(false))
        .def(
            "onPortRemoveConnection",
            [](T& self, const Port& port, const Port& other) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortRemoveConnection(port, other)
                            : self.onPortRemoveConnection(port, other);
            },
            py::arg("port").none(false), py::arg("other").none(false))
        .def(
            "onPortSetDataType",
            [](T& self, const Port& port, const ZEL::AddRefWrapper<ZEL::PortDataType>& type) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortSetDataType(port, type)
                            : self.onPortSetDataType(port, type);
            },
            py::arg("port").none(false), py::arg("type"))
        .def(
            "onPortListPortAdded",
            [](T& self, const ZEL::PortList& list, const Port& port) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortListPortAdded(list, port)
                            : self.onPortListPortAdded(list, port);
            },
            py::arg("list").none(false), py::arg("port").none(false))
        // True, and nothing else: the port is disconnected when everybody has agreed.
        .def(
            "onPortListPortRemoved",
            [](T& self, const ZEL::PortList& list, const Port& port) {
                const bool isMadeInPython = dynamic_cast<Safe*>(&self) != nullptr;
                return isMadeInPython || self.onPortListPortRemoved(list, port);
            },
            py::arg("list").none(false), py::arg("port").none(false))
        .def(
            "onPortListPortMove",
            [](T& self, const ZEL::PortList& list, int from, int to) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortListPortMove(list, from, to)
                            : self.onPortListPortMove(list, from, to);
            },
            py::arg("list").none(false), py::arg("fromIndex"), py::arg("toIndex"))
        .def(
            "onPortListPortMoved",
            [](T& self, const ZEL::PortList& list, int from, int to) {
                auto* const half = dynamic_cast<Half*>(&self);
                half ? half->Safe::onPortListPortMoved(list, from, to)
                     : self.onPortListPortMoved(list, from, to);
            },
            py::arg("list").none(false), py::arg("fromIndex"), py::arg("toIndex"))
        .def(
            "onPortGetDefaultValue",
            [](T& self, const Port& port) -> py::object {
                auto* const half = dynamic_cast<Half*>(&self);
                const char* const value = half ? half->Safe::onPortGetDefaultValue(port)
                                               : self.onPortGetDefaultValue(port);
                return value ? py::object(toPython(std::string_view(value))) : py::none();
            },
            py::arg("port").none(false))
        .def(
            "onPortSetDefaultValue",
            [](T& self, const Port& port, const OptionalText& value) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortSetDefaultValue(port, value)
                            : self.onPortSetDefaultValue(port, value);
            },
            py::arg("port").none(false), py::arg("value"))
        .def(
            "onPortSetName",
            [](T& self, const Port& port, const OptionalText& name) {
                auto* const half = dynamic_cast<Half*>(&self);
                return half ? half->Safe::onPortSetName(port, name)
                            : self.onPortSetName(port, name);
            },
            py::arg("port").none(false), py::arg("name"))
        .def("onGetParentFullPathName", [](T& self) {
            auto* const half = dynamic_cast<Half*>(&self);
            const ZEL::Namable path =
                half ? half->Safe::onGetParentFullPathName() : self.onGetParentFullPathName();
            return toPython(path.getName());
        });
}

} // namespace zelpython
