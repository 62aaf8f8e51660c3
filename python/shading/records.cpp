#include "shading/records.h"

#include "binding/entry.h"
#include "shading/collected.h"

#include <initializer_list>
#include <pybind11/stl.h>
#include <utility>

namespace zelshading {

namespace py = pybind11;
using zelpython::toPython;

namespace {

/// A class of tuples with names, as in the stub.
void makeTuple(py::module_& module,
               const char* name,
               const char* doc,
               std::initializer_list<const char*> fields)
{
    py::list typed;
    for (const char* const field : fields)
        typed.append(py::make_tuple(field, py::module_::import("builtins").attr("object")));
    const py::object type = py::module_::import("typing").attr("NamedTuple")(name, typed);
    type.attr("__module__") = "zel.shading";
    type.attr("__doc__") = doc;
    module.attr(name) = type;
}

const char* wordOf(shading::Change::Kind kind)
{
    switch (kind) {
    case shading::Change::Kind::Done:
        return "done";
    case shading::Change::Kind::GoneOn:
        return "gone on";
    case shading::Change::Kind::Undone:
        return "undone";
    case shading::Change::Kind::Redone:
        return "redone";
    case shading::Change::Kind::Outside:
        break;
    }
    return "outside";
}

template <class T>
py::list objectsOf(const std::vector<ZEL::AddRefWrapper<T>>& objects)
{
    py::list list;
    for (const ZEL::AddRefWrapper<T>& object : objects)
        list.append(zelpython::toObject(object.get()));
    return list;
}

void bindMessage(py::module_& module)
{
    using shading::Message;
    py::class_<Message> type(module, "Message", py::is_final(), given(),
                             "What is wrong with a document, and where.");
    type.def_property_readonly(
        "file", [](const Message& message) { return toPython(message.file); }, "The path.");
    type.def_readonly("line", &Message::line, "From 1.");
    type.def_readonly("column", &Message::column, "From 1, in characters.");
    type.def_readonly("isError", &Message::isError, "False for a warning.");
    type.def_property_readonly(
        "text", [](const Message& message) { return toPython(message.text); }, "One line.");
    type.def("__str__", [](const Message& message) { return toPython(messageText(message)); });
    type.def("__repr__", [](const Message& message) {
        return toPython("<zel.shading.Message " + messageText(message) + ">");
    });
}

void bindChange(py::module_& module)
{
    py::class_<PyChange> type(
        module, "Change", py::is_final(), given(),
        "What an edit changed when it was done, undone or redone: each thing once, as it is "
        "afterwards.");
    type.def_property_readonly(
        "kind", [](const PyChange& self) { return wordOf(self.change().kind); },
        "\"done\", \"undone\" or \"redone\"; \"gone on\" for more of the last edit; \"outside\" "
        "when the document was changed past its edits, which forgets them.");
    type.def_property_readonly(
        "title", [](const PyChange& self) { return toPython(self.change().name.title); },
        "The title of the edit; empty for a change outside.");
    type.def_property_readonly(
        "commands", [](const PyChange& self) { return toList(self.change().name.lines); },
        "Lines of the shell that do the same.");
    type.def_property_readonly(
        "added", [](const PyChange& self) { return objectsOf(self.change().added); },
        "Nodes that are new in the network.");
    type.def_property_readonly(
        "removed", [](const PyChange& self) { return objectsOf(self.change().removed); },
        "Nodes that are in it no more.");
    type.def_property_readonly(
        "changed", [](const PyChange& self) { return objectsOf(self.change().changed); },
        "Nodes with another name, place, definition, port, value or connection.");
    type.def_property_readonly(
        "compounds", [](const PyChange& self) { return objectsOf(self.change().compounds); },
        "Compounds where any of this shows; also those that are gone.");
    type.def("__repr__", [](const PyChange& self) {
        return toPython(std::string("<zel.shading.Change ") + wordOf(self.change().kind) + ": " +
                        self.change().name.title + ">");
    });
}

} // namespace

py::list toList(const std::vector<std::string>& texts)
{
    py::list list;
    for (const std::string& text : texts)
        list.append(toPython(text));
    return list;
}

void bindRecords(py::module_& module)
{
    makeTuple(module, "Connection", "The paths of the two ends.", {"source", "target"});
    makeTuple(module, "Finding", "What a check found, and where.", {"path", "reason"});
    makeTuple(module, "Stats",
              "Counts of what is in a compound, at all levels, and the bytes of the file as it was "
              "opened.",
              {"nodes", "compounds", "depth", "ports", "connections", "bytes"});
    makeTuple(module, "NodeInfo", "A node in a list.", {"name", "type", "isCompound"});
    makeTuple(module, "PortInfo",
              "A port in a list; sources and targets are paths, also those inside a compound.",
              {"isInput", "name", "type", "value", "sources", "targets"});
    makeTuple(module, "BackdropInfo",
              "A frame around nodes: its place as x, y, width, height, or None.",
              {"name", "frame", "nodes", "text"});
    makeTuple(module, "HistoryEntry", "An edit, and lines of the shell that do the same.",
              {"title", "commands", "isUndone"});
    makeTuple(module, "DefinitionInfo",
              "A definition of nodes: its name, the type of its nodes, its version, and the data "
              "types of its ports by their names.",
              {"name", "nodeType", "version", "inputs", "outputs"});
    bindMessage(module);
    bindChange(module);
}

} // namespace zelshading
