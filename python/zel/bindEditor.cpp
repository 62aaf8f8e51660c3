#include "zel/classes.h"
#include "zel/pyEditor.h"

namespace zelpython {

namespace {

using CompoundArgument = ZEL::AddRefWrapper<ZEL::Compound>;
using NodeArgument = ZEL::AddRefWrapper<ZEL::Node>;
using PortArgument = ZEL::AddRefWrapper<ZEL::Port>;

void createEditorEnumerations(py::module_& module)
{
    createEnumeration(typeid(ZEL::ECnxChangeType), module, "ECnxChangeType",
                      {{"eCnxAdded", ZEL::eCnxAdded}, {"eCnxRemoved", ZEL::eCnxRemoved}});
    createEnumeration(typeid(ZEL::ENodeChangeType), module, "ENodeChangeType",
                      {{"eNodeAdded", ZEL::eNodeAdded},
                       {"eNodeRemoved", ZEL::eNodeRemoved},
                       {"eNodeRenamed", ZEL::eNodeRenamed},
                       {"eNodeChanged", ZEL::eNodeChanged}});
    createEnumeration(typeid(ZEL::ECompoundPortChangeType), module, "ECompoundPortChangeType",
                      {{"eCompoundPortAdded", ZEL::eCompoundPortAdded},
                       {"eCompoundPortRemoved", ZEL::eCompoundPortRemoved},
                       {"eCompoundPortRenamed", ZEL::eCompoundPortRenamed},
                       {"eCompoundPortMoved", ZEL::eCompoundPortMoved}});
}

} // namespace

void bindEditor(py::module_& module)
{
    createEditorEnumerations(module);
    using Class = py::class_<ZEL::HostEditor, PyUnique<ZEL::HostEditor>>;
    Binding<Class> editor(module, "HostEditor", collected<ZEL::HostEditor>());
    guardSubclasses<ZEL::HostEditor>(editor.type());
    // Every editor that Python sees was made there, and an override that calls the base gets the
    // base's answer: it does nothing.
    editor
        .defInit([](py::detail::value_and_holder& place) {
            auto* const made = new PyEditor;
            made->attach(selfOf(place));
            initialise<ZEL::HostEditor>(place, made);
        })
        .def(
            "zel_onConnectionChange",
            [](ZEL::HostEditor& self, ZEL::ECnxChangeType type, const PortArgument& first,
               const PortArgument& second) {
                self.HostEditor::zel_onConnectionChange(type, first, second);
            },
            py::arg("type"), py::arg("first"), py::arg("second"))
        .def(
            "zel_onCompoundConnectionChange",
            [](ZEL::HostEditor& self, ZEL::ECnxChangeType type, const PortArgument& first,
               const PortArgument& second) {
                self.HostEditor::zel_onCompoundConnectionChange(type, first, second);
            },
            py::arg("type"), py::arg("first"), py::arg("second"))
        .def(
            "zel_onCompoundPortChange",
            [](ZEL::HostEditor& self, ZEL::ECompoundPortChangeType type, const PortArgument& port) {
                self.HostEditor::zel_onCompoundPortChange(type, port);
            },
            py::arg("type"), py::arg("port"))
        .def(
            "zel_onNodeChange",
            [](ZEL::HostEditor& self, ZEL::ENodeChangeType type, const CompoundArgument& compound,
               const NodeArgument& node) {
                self.HostEditor::zel_onNodeChange(type, compound, node);
            },
            py::arg("type"), py::arg("compound"), py::arg("node"));
}

} // namespace zelpython
