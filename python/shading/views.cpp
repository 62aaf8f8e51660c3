// What a document has, for scripts to look at.

#include "binding/entry.h"
#include "binding/error.h"
#include "console/findings.h"
#include "document/names.h"
#include "shading/bind.h"
#include "shading/records.h"
#include "views/libraryReport.h"
#include "views/report.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using zelpython::guarded;
using zelpython::Text;
using zelpython::toPython;

namespace {

using CompoundChoice = std::optional<NodeArgument>;

py::list connectionsOf(PyDocument& self, const CompoundChoice& path)
{
    const shading::CompoundPtr compound = self.work().compoundOf(path);
    const py::object type = py::module_::import("zel.shading._shading").attr("Connection");
    py::list list;
    for (const shading::ConnectionRecord& record : shading::connectionRecords(*compound))
        list.append(type(toPython(record.source), toPython(record.target)));
    return list;
}

py::object statsOf(PyDocument& self, const CompoundChoice& path)
{
    Work& work = self.work();
    const shading::Statistics counts = shading::statisticsOf(*work.compoundOf(path));
    return makeRecord("Stats", counts.nodes, counts.compounds, counts.depth, counts.ports,
                      counts.connections, work.document().fileSize());
}

py::list findingsFor(PyDocument& self, bool withNotes)
{
    const shading::Findings findings = shading::findingsOf(self.work().document());
    const std::size_t count = withNotes ? findings.records.size() : findings.faults;
    py::list list;
    for (std::size_t i = 0; i < count; ++i) {
        const shading::FindingRecord& record = findings.records[i];
        list.append(makeRecord("Finding", toPython(record.path), toPython(record.reason)));
    }
    return list;
}

py::list ls(PyDocument& self, const CompoundChoice& path)
{
    py::list list;
    for (const shading::NodeRecord& record : shading::nodeRecords(*self.work().compoundOf(path)))
        list.append(makeRecord("NodeInfo", toPython(record.name), toPython(record.type),
                               record.isCompound));
    return list;
}

py::list ports(PyDocument& self, const NodeArgument& path)
{
    py::list list;
    for (const shading::PortRecord& record : shading::portRecords(*self.work().nodeOf(path)))
        list.append(makeRecord("PortInfo", record.isInput, toPython(record.name),
                               toPython(record.type), toPython(record.value),
                               toList(record.sources), toList(record.targets)));
    return list;
}

shading::PortPtr portAt(PyDocument& self, const Text& path, const Text& direction)
{
    const std::string word = direction.string();
    if (word != "input" && word != "output")
        zelpython::raiseError("neither input nor output", word);
    Work& work = self.work();
    shading::PortPtr port = work.document().findPortFromPath(
        path, word == "input" ? ZEL::PortInput : ZEL::PortOutput, ZEL::Container::eSearchNode);
    if (!port)
        zelpython::raiseError("no such " + word, path.string());
    return port;
}

py::str libraryOf(PyDocument& self, const std::optional<Text>& name)
{
    ZEL::Runtime& runtime = *self.work().document().getRuntime();
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> found =
        name ? runtime.findLibrary(*name) : runtime.getNodeLibrary();
    if (!found)
        zelpython::raiseError(name ? "no such library" : "it has no node library",
                              name ? name->string() : "runtime");
    return toPython(shading::libraryText(*found, name.has_value()));
}

py::dict portTypes(const std::vector<shading::PortDescription>& ports)
{
    py::dict types;
    for (const shading::PortDescription& port : ports)
        types[toPython(port.name)] = toPython(port.type);
    return types;
}

py::list definitions(PyDocument& self, const Text& nodeType)
{
    py::list list;
    for (const shading::DefinitionPtr& definition :
         self.work().document().definitions().ofNodeType(nodeType.string())) {
        const shading::DefinitionRecord& record = definition->record();
        list.append(makeRecord("DefinitionInfo", toPython(record.name), toPython(nodeType.view),
                               toPython(record.version), portTypes(record.inputs),
                               portTypes(record.outputs)));
    }
    return list;
}

py::list typeNames(PyDocument& self)
{
    ZEL::Runtime& runtime = *self.work().document().getRuntime();
    py::list list;
    for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
        list.append(toPython(runtime.getPortDataType(i)->getName()));
    return list;
}

} // namespace

void bindViews(DocumentClass& document)
{
    const auto below = py::arg("path") = py::none();
    document.def_property_readonly(
        "root", [](PyDocument& self) { return self.work().document().getRootNode(); },
        "The node Top, which has the whole network in its compound.");
    document.def_property_readonly(
        "path",
        [](PyDocument& self) -> py::object {
            const std::string& path = self.work().session().path();
            return path.empty() ? py::object(py::none()) : py::object(toPython(path));
        },
        "The file that it was opened from or last saved into; None for a new one without a file.");
    document.def_property_readonly(
        "messages", [](PyDocument& self) { return self.work().messages(); },
        "What was said when it was opened.");
    document.def("node", guarded([](PyDocument& self, const NodeArgument& path) {
                     return self.work().nodeOf(path);
                 }),
                 py::arg("path"), "The node at the path. Raises zel.Error when there is none.");
    document.def("compound", guarded([](PyDocument& self, const NodeArgument& path) {
                     return self.work().compoundOf(path);
                 }),
                 py::arg("path"), "The compound of the node at the path. Raises zel.Error.");
    document.def("port", guarded(portAt), py::arg("path"), py::arg("direction") = "input",
                 "The port of a node at the path: \"input\" or \"output\". Raises zel.Error.");
    document.def("connections", guarded(connectionsOf), below,
                 "The connections in a compound and below, sorted, as pairs of source and target. "
                 "A source in brackets is one that the document names and the network does not "
                 "show.");
    document.def("stats", guarded(statsOf), below, "Counts what is in a compound, at all levels.");
    document.def("check", guarded(findingsFor), py::kw_only(), py::arg("notes") = false,
                 "What is wrong with the document: broken connections and circles, what a save "
                 "would refuse, and the rules of the format that the file would break. Empty for a "
                 "sound one. With notes also what is to be known and is no fault.");
    document.def("ls", guarded(ls), below, "The nodes inside a compound.");
    document.def("ports", guarded(ports), py::arg("path"), "The ports of a node.");
    document.def("tree", guarded([](PyDocument& self, const std::optional<NodeArgument>& path) {
                     Work& work = self.work();
                     return toPython(shading::treeText(
                         *(path ? work.nodeOf(*path) : work.document().getRootNode())));
                 }),
                 below, "A node and everything below it, a line each.");
    document.def("types", guarded(typeNames), "The names of the data types.");
    document.def("definitions", guarded(definitions), py::arg("nodeType"),
                 "The definitions of a node type, by name: what create takes.");
    document.def("library", guarded(libraryOf), py::arg("name") = py::none(),
                 "The tree of node libraries, or one of them with its definitions, as text.");
    document.def("rebuild", guarded([](PyDocument& self) {
                     self.work().check(self.work().edits().rebuild());
                 }),
                 "Brings all nodes of the document up to their definitions.");
    document.def("__repr__", [](PyDocument& self) {
        const std::string& path = self.work().session().path();
        return toPython("<zel.shading.Document " + (path.empty() ? "without a file" : path) + ">");
    });
}

} // namespace zelshading
