#include "binding/error.h"
#include "zel/classes.h"
#include "zel/portQuestionBindings.h"
#include "zel/pyCompound.h"
#include "zel/removal.h"
#include "zel/safeNode.h"

namespace zelpython {

namespace {

using CompoundWrapper = ZEL::AddRefWrapper<ZEL::Compound>;
using NodeWrapper = ZEL::AddRefWrapper<ZEL::Node>;
using PortWrapper = ZEL::AddRefWrapper<ZEL::Port>;
using TypeWrapper = ZEL::AddRefWrapper<ZEL::PortDataType>;

/// Compound(owner, name=None).
void makeCompound(py::detail::value_and_holder& place,
                  const NodeWrapper& owner,
                  const OptionalText& name)
{
    if (!dynamic_cast<SafeNode*>(owner.get()))
        throw py::value_error("a node of C++ makes its compound itself");
    if (owner->Node::getAsCompound())
        throw py::value_error("the node has a compound already");
    auto* const compound = new PyCompound(owner);
    compound->attach(selfOf(place));
    initialise<ZEL::Compound>(place, compound);
    if (name)
        compound->setName(name);
}

PyCompound* halfOf(ZEL::Compound& self)
{
    return dynamic_cast<PyCompound*>(&self);
}

template <class Class>
void defineLists(Class& compound)
{
    using Ports = ZEL::AddRefWrapper<ZEL::PortList>;
    compound
        .def("nodes",
             [](ZEL::Compound& self) { return ZEL::AddRefWrapper<ZEL::NodeList>(&self.nodes()); })
        .def("innerInputs", [](ZEL::Compound& self) { return Ports(&self.innerInputs()); })
        .def("innerOutputs", [](ZEL::Compound& self) { return Ports(&self.innerOutputs()); })
        .def("getAsNode", &ZEL::Compound::getAsNode)
        .def("getReversePort", &ZEL::Compound::getReversePort, py::arg("port"))
        .def(
            "makeConnection",
            [](ZEL::Compound& self, const NodeWrapper& from, const Text& outName,
               const NodeWrapper& to, const Text& inName) {
                const ZEL::StatusStr status = self.makeConnection(from, outName, to, inName);
                if (!status)
                    raiseError(status.getErrorString());
            },
            py::arg("from_"), py::arg("outName"), py::arg("to"), py::arg("inName"))
        .def(
            "removeNode",
            [](ZEL::Compound& self, const Text& name) {
                NodeWrapper node = self.removeNode(name);
                if (node && !dynamic_cast<SafeNode*>(node.get()))
                    afterRemoval(self.nodes(), *node);
                return node;
            },
            py::arg("name"))
        .def("recurse_parent_first", recurseParentFirst<ZEL::Compound>, py::arg("callback"))
        .def("debugPrint", [](ZEL::Compound& self) {
            self.debugPrint();
            std::fflush(stdout);
        });
}

template <class Class>
void defineNodeQuestions(Class& compound)
{
    compound
        .def(
            "onNodeAdd",
            [](ZEL::Compound& self, const NodeWrapper& node) {
                return dynamic_cast<SafeCompound*>(&self) ? !whyNotAdded(self, *node)
                                                          : self.onNodeAdd(node);
            },
            py::arg("node").none(false))
        // True, and nothing else: the node is disconnected when everybody has agreed.
        .def(
            "onNodeRemove",
            [](ZEL::Compound& self, const NodeWrapper& node) {
                return dynamic_cast<SafeCompound*>(&self) || self.onNodeRemove(node);
            },
            py::arg("node").none(false));
}

template <class Class>
void defineHostWork(Class& compound)
{
    compound
        .def(
            "createNodeFromPreset",
            [](ZEL::Compound& self, const OptionalText& preset) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::createNodeFromPreset(preset)
                            : self.createNodeFromPreset(preset);
            },
            py::arg("preset"))
        .def(
            "createNewCompound",
            [](ZEL::Compound& self, const OptionalText& name) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::createNewCompound(name)
                            : self.createNewCompound(name);
            },
            py::arg("name"))
        .def(
            "saveAs",
            [](ZEL::Compound& self, const OptionalText& name) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::saveAs(name) : self.saveAs(name);
            },
            py::arg("name"))
        .def(
            "createCompoundPort",
            [](ZEL::Compound& self, ZEL::PortIOType ioType, const OptionalText& name,
               const TypeWrapper& type) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::createCompoundPort(ioType, name, type)
                            : self.createCompoundPort(ioType, name, type);
            },
            py::arg("ioType"), py::arg("name").none(true), py::arg("type") = py::none())
        .def(
            "deleteCompoundPort",
            [](ZEL::Compound& self, const PortWrapper& innerPort) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::deleteCompoundPort(innerPort)
                            : self.deleteCompoundPort(innerPort);
            },
            py::arg("innerPort"))
        .def(
            "createLinkedPort",
            [](ZEL::Compound& self, const OptionalText& name, const OptionalText& target,
               const TypeWrapper& type) {
                auto* const half = halfOf(self);
                return half ? half->SafeCompound::createLinkedPort(name, target, type)
                            : self.createLinkedPort(name, target, type);
            },
            py::arg("name"), py::arg("target"), py::arg("type") = py::none())
        .def("getSpecializedCompoundTypeName", [](ZEL::Compound& self) {
            auto* const half = halfOf(self);
            return toPython(half ? half->SafeCompound::getSpecializedCompoundTypeName()
                                 : self.getSpecializedCompoundTypeName());
        });
}

} // namespace

void bindCompound(py::module_& module)
{
    using Class = py::class_<ZEL::Compound, PyOwned<ZEL::Compound>>;
    Binding<Class> compound(module, "Compound", collected<ZEL::Compound>());
    guardSubclasses<ZEL::Compound>(compound.type());
    compound.defInit(makeCompound, py::arg("owner").none(false), py::arg("name") = py::none())
        .defNaming<PyCompound, SafeCompound>()
        .defCount();
    defineLists(compound);
    definePortQuestions<PyCompound, SafeCompound>(compound);
    defineNodeQuestions(compound);
    defineHostWork(compound);
}

} // namespace zelpython
