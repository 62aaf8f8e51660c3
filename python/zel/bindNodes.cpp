#include "zel/classes.h"
#include "zel/listProtocol.h"
#include "zel/portQuestionBindings.h"
#include "zel/pyContainer.h"
#include "zel/pyNode.h"
#include "zel/removal.h"
#include "zel/safeCompound.h"
#include "zel/sever.h"

namespace zelpython {

namespace {

using NodeWrapper = ZEL::AddRefWrapper<ZEL::Node>;

/// Node(container, name=None).
void makeNode(py::detail::value_and_holder& place,
              const py::object& container,
              const OptionalText& name)
{
    ZEL::Container* const pointer = toContainer(container.ptr());
    if (!pointer && !container.is_none())
        throw py::type_error("the container of a node is a zel.Container or None");
    const PyRef half = pointer ? PyRef::borrow(container.ptr()) : PyRef();
    auto* const node = new PyNode(pointer, half);
    node->attach(selfOf(place));
    initialise<ZEL::Node>(place, node);
    if (name)
        node->setName(name);
}

PyRef containerOf(ZEL::Node& node)
{
    if (const auto* const safe = dynamic_cast<const SafeNode*>(&node))
        return PyRef::borrow(safe->containerHalf());
    return toPythonObject(node.getContainer());
}

void bindNode(py::module_& module)
{
    using Class = py::class_<ZEL::Node, PyOwned<ZEL::Node>>;
    Binding<Class> node(module, "Node", collected<ZEL::Node>());
    guardSubclasses<ZEL::Node>(node.type());
    node.defInit(makeNode, py::arg("container").none(true), py::arg("name") = py::none())
        .defNaming<PyNode, SafeNode>()
        .defCount()
        .def("isCompound",
             [](ZEL::Node& self) {
                 auto* const half = dynamic_cast<PyNode*>(&self);
                 return half ? half->SafeNode::isCompound() : self.isCompound();
             })
        .def("getAsCompound",
             [](ZEL::Node& self) {
                 auto* const half = dynamic_cast<PyNode*>(&self);
                 return half ? half->SafeNode::getAsCompound() : self.getAsCompound();
             })
        .def("getFullPathName",
             [](ZEL::Node& self) {
                 auto* const half = dynamic_cast<PyNode*>(&self);
                 const ZEL::Namable path =
                     half ? half->SafeNode::getFullPathName() : self.getFullPathName();
                 return toPython(path.getName());
             })
        .def("getNodeTypeName",
             [](ZEL::Node& self) {
                 auto* const half = dynamic_cast<PyNode*>(&self);
                 return toPython(half ? half->SafeNode::getNodeTypeName() : self.getNodeTypeName());
             })
        .def(
            "setNodeTypeName",
            [](ZEL::Node& self, const OptionalText& name) {
                auto* const half = dynamic_cast<PyNode*>(&self);
                half ? half->SafeNode::setNodeTypeName(name) : self.setNodeTypeName(name);
            },
            py::arg("name").none(true))
        // Disconnects on both sides: forgetting on one would leave dead pointers on the other.
        .def("onThisNodeDeleted", [](ZEL::Node& self) { sever(self); })
        .def("inputs",
             [](ZEL::Node& self) { return ZEL::AddRefWrapper<ZEL::PortList>(&self.inputs()); })
        .def("outputs",
             [](ZEL::Node& self) { return ZEL::AddRefWrapper<ZEL::PortList>(&self.outputs()); })
        .def("getParentCompound", &ZEL::Node::getParentCompound)
        .def("getContainer",
             [](ZEL::Node& self) {
                 PyRef container = containerOf(self);
                 return container ? py::reinterpret_steal<py::object>(container.release())
                                  : py::object(py::none());
             })
        .def("recurse_parent_first", recurseParentFirst<ZEL::Node>, py::arg("callback"));
    definePortQuestions<PyNode, SafeNode>(node);
    // Notifications: of the library's HostEditorNotifier.
    node.def(
            "registerEditor",
            [](ZEL::Node& self, ZEL::HostEditor* editor) { self.registerEditor(editor); },
            py::arg("editor"))
        .def(
            "unregisterEditor",
            [](ZEL::Node& self, ZEL::HostEditor* editor) { self.unregisterEditor(editor); },
            py::arg("editor"))
        .def(
            "notifyConnectionChange",
            [](ZEL::Node& self, ZEL::ECnxChangeType type, ZEL::AddRefWrapper<ZEL::Port> a,
               ZEL::AddRefWrapper<ZEL::Port> b) { self.notifyConnectionChange(type, a, b); },
            py::arg("type"), py::arg("a").none(false), py::arg("b"))
        .def(
            "notifyCompoundConnectionChange",
            [](ZEL::Node& self, ZEL::ECnxChangeType type, ZEL::AddRefWrapper<ZEL::Port> a,
               ZEL::AddRefWrapper<ZEL::Port> b) {
                self.notifyCompoundConnectionChange(type, a, b);
            },
            py::arg("type"), py::arg("a"), py::arg("b").none(false))
        .def(
            "notifyNodeChange",
            [](ZEL::Node& self, ZEL::ENodeChangeType type,
               ZEL::AddRefWrapper<ZEL::Compound> compound, ZEL::AddRefWrapper<ZEL::Node> changed) {
                self.notifyNodeChange(type, compound, changed);
            },
            py::arg("type"), py::arg("compound"), py::arg("node"))
        .def(
            "notifyCompoundPortChange",
            [](ZEL::Node& self, ZEL::ECompoundPortChangeType type,
               ZEL::AddRefWrapper<ZEL::Port> port) { self.notifyCompoundPortChange(type, port); },
            py::arg("type"), py::arg("port"));
}

bool addNode(ZEL::NodeList& list, const NodeWrapper& node)
{
    const auto compound = list.getParentCompound();
    if (!compound)
        return false;
    if (isComing(*node))
        throw py::value_error("the node is being added: a compound is asked about it");
    if (const char* const reason = whyNotAdded(*compound, *node))
        throw py::value_error(reason);
    const auto former = node->getParentCompound();
    if (former && former != compound && placeOf(former->Compound::nodes(), *node) >= 0)
        throw py::value_error("the node lies in another compound: remove it there first");
    return list.add(node);
}

bool removeNode(ZEL::NodeList& list, const NodeWrapper& node)
{
    if (!node || !list.remove(node))
        return false;
    if (!dynamic_cast<const SafeNode*>(node.get()))
        afterRemoval(list, *node);
    return true;
}

void bindNodeList(py::module_& module)
{
    using Class = py::class_<ZEL::NodeList, PyView<ZEL::NodeList>>;
    Binding<Class> list(module, "NodeList", py::is_final(), collected<ZEL::NodeList>());
    defineList<ZEL::Node>(list);
    list.def("getParentCompound", &ZEL::NodeList::getParentCompound)
        .def("add", addNode, py::arg("node").none(false))
        .def("remove", removeNode, py::arg("node").none(false));
}

} // namespace

void bindNodes(py::module_& module)
{
    bindNode(module);
    bindNodeList(module);
}

} // namespace zelpython
