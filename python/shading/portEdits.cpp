// The edits of the ports of compounds, of values and of attributes.

#include "binding/entry.h"
#include "binding/error.h"
#include "document/names.h"
#include "shading/bind.h"
#include "shading/values.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using zelpython::guarded;
using zelpython::Text;
using zelpython::toPython;

namespace {

std::string typeOfValues(ZEL::Port& port)
{
    const shading::TypePtr type = port.getDataType();
    return type ? type->getName() : "";
}

ZEL::PortIOType directionOf(const py::object& direction)
{
    if (py::isinstance<py::str>(direction)) {
        const std::string word = direction.cast<Text>().string();
        if (word == "input" || word == "output")
            return word == "input" ? ZEL::PortInput : ZEL::PortOutput;
        zelpython::raiseError("neither input nor output", word);
    }
    if (!PyLong_Check(direction.ptr()))
        throw py::type_error("direction: \"input\", \"output\" or a zel.PortIOType");
    const long value = PyLong_AsLong(direction.ptr());
    PyErr_Clear();
    if (value != ZEL::PortInput && value != ZEL::PortOutput)
        throw py::value_error("direction: zel.PortInput or zel.PortOutput");
    return value == ZEL::PortInput ? ZEL::PortInput : ZEL::PortOutput;
}

void portAdd(PyDocument& self,
             const NodeArgument& path,
             const py::object& direction,
             const Text& name,
             const Text& type)
{
    Work& work = self.work();
    const ZEL::PortIOType ioType = directionOf(direction);
    work.check(work.edits().addPort(work.compoundOf(path), ioType, name.string(), type.string()));
}

/// With a node the port's name stands behind it; a port stands for both.
template <class... Values>
using PortEdit = bool (shading::Edits::*)(const shading::PortPtr&, Values...);
template <class... Values>
using NamedPortEdit = bool (shading::Edits::*)(const std::string&, const std::string&, Values...);

/// What Python gives for a value of an edit.
template <class Value>
struct Given {
    using Type = Value;
    static Value use(Value value) { return value; }
};
template <>
struct Given<const std::string&> {
    using Type = Text;
    static std::string use(const Text& text) { return text.string(); }
};

template <class... Values, class... Extra>
void definePortEdit(DocumentClass& document,
                    const char* name,
                    PortEdit<Values...> edit,
                    NamedPortEdit<Values...> namedEdit,
                    const char* doc,
                    const Extra&... extra)
{
    document.def(name,
                 guarded([namedEdit](PyDocument& self, const NodeArgument& path, const Text& port,
                                     const typename Given<Values>::Type&... values) {
                     Work& work = self.work();
                     work.check((work.edits().*namedEdit)(work.pathOf(path), port.string(),
                                                          Given<Values>::use(values)...));
                 }),
                 py::arg("path"), py::arg("name"), extra..., doc);
    document.def(name,
                 guarded([edit](PyDocument& self, const shading::PortPtr& port,
                                const typename Given<Values>::Type&... values) {
                     self.work().check(
                         (self.work().edits().*edit)(port, Given<Values>::use(values)...));
                 }),
                 py::arg("port").none(false), extra..., doc);
}

void set(PyDocument& self, const PortArgument& path, const py::object& value)
{
    Work& work = self.work();
    const shading::PortPtr port = work.inputOf(path);
    work.check(work.edits().setValue(port, valueText(typeOfValues(*port), value)));
}

py::object value(PyDocument& self, const PortArgument& path)
{
    const shading::PortPtr port = self.work().inputOf(path);
    return toPythonValue(typeOfValues(*port), port->getPortDefaultValue());
}

shading::AttributeOwner ownerAt(Work& work, const std::string& path)
{
    shading::AttributeOwner owner;
    work.check(work.edits().findOwner(path, owner));
    return owner;
}

/// The path that leads to it.
std::string ownerPath(Work& work, const OwnerArgument& owner)
{
    if (!owner.port)
        return work.pathOf(owner.node);
    work.check(work.edits().has(owner.port));
    std::string path = shading::pathOf(*owner.port);
    // A compound's port stands for its inner one.
    const shading::CompoundPtr inside = owner.port->getParentCompound();
    const shading::PortPtr own = inside ? inside->getReversePort(owner.port) : owner.port;
    if (ownerAt(work, path).port != own)
        zelpython::raiseError("another thing has this path: rename one first", path);
    return path;
}

py::dict attributes(PyDocument& self, const OwnerArgument& path)
{
    Work& work = self.work();
    const shading::AttributeOwner owner = ownerAt(work, ownerPath(work, path));
    py::dict all;
    for (const auto& [name, text] : work.document().attributes().all(owner)) {
        if (owner.element || shading::Edits::attributeProblem(owner, name).empty())
            all[toPython(name)] = toPython(text);
    }
    return all;
}

py::str attribute(PyDocument& self, const OwnerArgument& path, const Text& name)
{
    Work& work = self.work();
    const std::string where = ownerPath(work, path);
    std::string text;
    work.check(work.edits().getAttribute(where, name.string(), text));
    return toPython(text);
}

void setAttribute(PyDocument& self, const OwnerArgument& path, const Text& name, const Text& text)
{
    Work& work = self.work();
    work.check(work.edits().setAttribute(ownerPath(work, path), name.string(), text.string()));
}

} // namespace

void bindPortEdits(DocumentClass& document)
{
    using shading::Edits;
    document.def("portAdd", guarded(portAdd), py::arg("path"), py::arg("direction"),
                 py::arg("name"), py::arg("type"),
                 "Adds a port to a compound: \"input\" or \"output\", or zel.PortInput or "
                 "zel.PortOutput.");
    definePortEdit<>(document, "portDelete", &Edits::deletePort, &Edits::deletePort,
                     "Deletes a port of a compound. What it fed gets its value.");
    definePortEdit<const std::string&>(document, "portRename", &Edits::renamePort,
                                       &Edits::renamePort, "Gives a port of a compound a name.",
                                       py::arg("newName"));
    definePortEdit<int>(document, "portMove", &Edits::movePort, &Edits::movePort,
                        "Gives a port of a compound a place, from 1, among its inputs or outputs.",
                        py::arg("place"));
    definePortEdit<const std::string&>(
        document, "portType", &Edits::setPortType, &Edits::setPortType,
        "Gives a port of a compound another data type, when what it is connected to has that.",
        py::arg("type"));
    document.def("set", guarded(set), py::arg("path"), py::arg("value"),
                 "Gives an input a value of its type: float, int, bool, str, or a tuple of those. "
                 "A str is the text of the document, whatever the type; None gives the input the "
                 "value of its definition, or none. It counts where nothing feeds the input.");
    document.def("value", guarded(value), py::arg("path"),
                 "The value of an input as a value of its type; None for no value.");
    document.def("attribute", guarded(attributes), py::arg("path"),
                 "What the network does not show of a node, a port, the document, or an element "
                 "like a look (Top.LOOK), by the names of the attributes.");
    document.def("attribute", guarded(attribute), py::arg("path"), py::arg("name"),
                 "That attribute.");
    document.def("attribute", guarded(setAttribute), py::arg("path"), py::arg("name"),
                 py::arg("value"), "Changes the attribute; an empty value takes it off.");
}

} // namespace zelshading
