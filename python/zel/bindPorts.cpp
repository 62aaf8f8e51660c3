#include "zel/classes.h"
#include "zel/listProtocol.h"
#include "zel/safePort.h"

#include <vector>

namespace zelpython {

namespace {

using PortWrapper = ZEL::AddRefWrapper<ZEL::Port>;
using TypeWrapper = ZEL::AddRefWrapper<ZEL::PortDataType>;

/// PortDataType's constructor is for classes derived from it.
class MadeType final : public ZEL::PortDataType {
public:
    explicit MadeType(const char* name) : PortDataType(name) {}
};

void bindDataType(py::module_& module)
{
    using Class = py::class_<ZEL::PortDataType, PyOwned<ZEL::PortDataType>>;
    Binding<Class>(module, "PortDataType", py::is_final())
        .defInit(
            [](py::detail::value_and_holder& place, const OptionalText& name) {
                initialise<ZEL::PortDataType>(place, new MadeType(name));
            },
            py::arg("name") = py::none())
        .defNaming<MadeType, ZEL::PortDataType>()
        .defCount()
        .def(
            "isSameType",
            [](const ZEL::PortDataType& self, const ZEL::PortDataType& other) {
                return self == other;
            },
            py::arg("other").none(false));
}

py::tuple connectionsOf(ZEL::Port& port)
{
    // What is made for Python may start a collection, in which other ports go.
    std::vector<PortWrapper> ports;
    for (ZEL::Port* const other : port.connectedTo())
        ports.emplace_back(other);
    py::tuple result(ports.size());
    for (std::size_t i = 0; i < ports.size(); ++i)
        result[i] = toObject(ports[i].get());
    return result;
}

/// None, a compound or a node.
py::object parentOf(ZEL::Port& port)
{
    if (const auto compound = port.getParentCompound())
        return toObject(compound.get());
    return toObject(port.getParentNode().get());
}

/// A port that was made by the library and lies in no list would leave a dead pointer when it dies.
void requireHome(ZEL::Port& port)
{
    if (!port.getParent() && !dynamic_cast<SafePort*>(&port))
        throw py::value_error("a port that was taken out of its list is not connected any more");
}

bool isOfPython(ZEL::Port& port)
{
    return dynamic_cast<CountedHalf*>(port.getParentNode().get()) != nullptr;
}

/// The nodes of a document of C++ die without a word to ports that lie elsewhere.
void requireOneDocument(ZEL::Port& a, ZEL::Port& b)
{
    const Keeper keeper = keeperOf(a);
    if (keeper != keeperOf(b) || (keeper && isOfPython(a) != isOfPython(b)))
        throw py::value_error("ports of different documents are not connected");
}

bool connect(ZEL::Port& port, const PortWrapper& other)
{
    requireHome(port);
    if (other) {
        requireHome(*other);
        requireOneDocument(port, *other);
    }
    return port.addConnection(other);
}

void bindPort(py::module_& module)
{
    using Class = py::class_<ZEL::Port, PyOwned<ZEL::Port>>;
    Binding<Class> port(module, "Port", py::is_final());
    port.defInit(
            [](py::detail::value_and_holder& place, const OptionalText& name,
               ZEL::PortIOType ioType) {
                initialise<ZEL::Port>(place, new SafePort(name, ioType));
            },
            py::arg("name").none(true), py::arg("ioType"))
        .defNaming<SafePort, ZEL::Port>()
        .defCount()
        .def("getParent", parentOf)
        .def("isCompoundInternalPort", &ZEL::Port::isCompoundInternalPort)
        .def("getParentNode", &ZEL::Port::getParentNode)
        .def("getParentCompound", &ZEL::Port::getParentCompound)
        .def("getFullPathName",
             [](ZEL::Port& self) { return toPython(self.getFullPathName().getName()); })
        .def("connectedTo", connectionsOf)
        .def("isConnected", &ZEL::Port::isConnected)
        .def("addConnection", connect, py::arg("other"))
        .def(
            "removeConnection",
            [](ZEL::Port& self, const PortWrapper& other) { return self.removeConnection(other); },
            py::arg("other"))
        .def("removeAllConnections", &ZEL::Port::removeAllConnections)
        .def("getPortIOType", &ZEL::Port::getPortIOType)
        .def("getDataType", &ZEL::Port::getDataType)
        .def("setDataType", &ZEL::Port::setDataType, py::arg("type"))
        .def("getPortDefaultValue",
             [](ZEL::Port& self) {
                 // The text lies in the parent, which may be dropped in the question.
                 const auto node = self.getParentNode();
                 const auto compound = self.getParentCompound();
                 return toPython(self.getPortDefaultValue());
             })
        .def(
            "setPortDefaultValue",
            [](ZEL::Port& self, const OptionalText& value) { self.setPortDefaultValue(value); },
            py::arg("value").none(true))
        .def("hidePort", &ZEL::Port::hidePort, py::arg("hide"))
        .def("isPortHidden", &ZEL::Port::isPortHidden);
}

/// A port is in one list, and takes no connection of its own into another: ValueError.
void requireFree(ZEL::Port& port, ZEL::PortList& list)
{
    if (port.getParent() && port.getParent() != list.getParent())
        throw py::value_error("the port lies in another list: remove it there first");
    if (port.getParent() && list.findPort(&port) < 0 && isListed(port))
        throw py::value_error("the port lies in another list: remove it there first");
    if (port.isConnected() && port.getParent() != list.getParent())
        throw py::value_error("the port is connected: disconnect it first");
}

bool addPort(ZEL::PortList& list, const PortWrapper& port)
{
    requireFree(*port, list);
    if (list.add(port))
        return true;
    // Refused, it is as it was: the library leaves the parent set.
    if (!isListed(*port))
        port->setParent(nullptr);
    return false;
}

PortWrapper makePort(ZEL::PortList& list, const OptionalText& name, const TypeWrapper& type)
{
    PortWrapper port = list.addPort(name, type);
    if (!isListed(*port)) { // Refused.
        sever(*port);
        port->setParent(nullptr);
    }
    return port;
}

bool removePort(ZEL::PortList& list, const PortWrapper& port)
{
    if (list.findPort(port) < 0 || !list.remove(port))
        return false;
    // What a host of C++ leaves: outside of every list it must not know its parent.
    if (port->getParent() && port->getParent() == list.getParent() && !isListed(*port)) {
        sever(*port);
        port->setParent(nullptr);
    }
    return true;
}

bool movePort(ZEL::PortList& list, int from, int to)
{
    if (from >= 0 && from < to && to <= list.size())
        throw py::value_error("a port is moved backwards only: move the ones behind it instead");
    return list.movePort(from, to);
}

void bindPortList(py::module_& module)
{
    using Class = py::class_<ZEL::PortList, PyView<ZEL::PortList>>;
    Binding<Class> list(module, "PortList", py::is_final(), collected<ZEL::PortList>());
    defineList<ZEL::Port>(list);
    list.def("getParent",
             [](ZEL::PortList& self) -> py::object {
                 ZEL::PortNotification* const parent = self.getParent();
                 if (auto* const compound = dynamic_cast<ZEL::Compound*>(parent))
                     return toObject(compound);
                 return toObject(dynamic_cast<ZEL::Node*>(parent));
             })
        .def(
            "findPort",
            [](ZEL::PortList& self, const PortWrapper& port) { return self.findPort(port); },
            py::arg("port"))
        .def("add", addPort, py::arg("port").none(false))
        .def("addPort", makePort, py::arg("name").none(true), py::arg("type") = py::none())
        .def("remove", removePort, py::arg("port").none(false))
        .def("movePort", movePort, py::arg("fromIndex"), py::arg("toIndex"));
}

} // namespace

void bindPorts(py::module_& module)
{
    bindDataType(module);
    bindPort(module);
    bindPortList(module);
}

} // namespace zelpython
