// The edits of nodes and compounds, named as the shell names them.

#include "binding/entry.h"
#include "binding/error.h"
#include "console/arrangement.h"
#include "document/names.h"
#include "edits/positions.h"
#include "shading/bind.h"
#include "shading/problems.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using shading::NodePtr;
using zelpython::guarded;
using zelpython::Text;
using zelpython::toPython;

namespace {

using Place = std::optional<std::pair<double, double>>;

NodePtr create(PyDocument& self,
               const Text& nodeType,
               const Text& name,
               const std::optional<NodeArgument>& path,
               const std::optional<Text>& dataType)
{
    Work& work = self.work();
    const std::string around =
        path ? work.pathOf(*path) : shading::pathOf(*work.document().getRootNode());
    if (dataType && dataType->view.empty())
        throw py::value_error("type: needs a data type");
    shading::HostNodePtr node;
    work.check(work.edits().createNode(around, nodeType.string(), name.string(), node,
                                       dataType ? dataType->string() : ""));
    return node.get();
}

NodePtr
collapse(PyDocument& self, const NodeArgument& path, const Text& name, const NodesArgument& nodes)
{
    Work& work = self.work();
    const shading::CompoundPtr compound = work.compoundOf(path);
    NodePtr created;
    work.check(
        work.edits().collapse(compound, name.string(), work.childrenOf(*compound, nodes), created));
    return created;
}

py::list expand(PyDocument& self, const NodeArgument& path)
{
    Work& work = self.work();
    shading::Renamings renamed;
    work.check(work.edits().expand(work.nodeOf(path), renamed));
    py::list list;
    for (const auto& [from, to] : renamed)
        list.append(py::make_tuple(toPython(from), toPython(to)));
    return list;
}

std::vector<NodePtr>
reparent(PyDocument& self, const NodeArgument& path, const NodesArgument& nodes)
{
    Work& work = self.work();
    const shading::CompoundPtr compound = work.compoundOf(path);
    std::vector<NodePtr> moved = work.nodesOf(nodes);
    work.check(work.edits().reparent(compound, moved));
    return moved;
}

void move(PyDocument& self, const NodeArgument& path, double x, double y)
{
    Work& work = self.work();
    work.check(work.edits().moveNode(work.nodeOf(path), {x, y}));
}

void moveAll(PyDocument& self, const std::vector<std::tuple<NodeArgument, double, double>>& places)
{
    Work& work = self.work();
    std::vector<shading::NodePlace> moves;
    moves.reserve(places.size());
    for (const auto& [node, x, y] : places)
        moves.push_back({work.nodeOf(node), {x, y}});
    work.check(work.edits().moveNodes(moves));
}

py::str copy(PyDocument& self, const NodesArgument& nodes)
{
    Work& work = self.work();
    std::vector<shading::SaveProblem> problems;
    if (!work.session().copy(work.nodesOf(nodes), problems))
        raiseProblems(problems);
    return toPython(work.session().copied());
}

shading::PasteOptions pasteOptions(bool isInner, const Place& at, const Place& middle)
{
    if (at && middle)
        throw py::value_error("middle: at says where already");
    shading::PasteOptions options;
    options.isInner = isInner;
    options.isMiddleAt = middle.has_value();
    if (const Place& place = at ? at : middle)
        options.at = shading::Position{place->first, place->second};
    return options;
}

std::vector<NodePtr> paste(PyDocument& self,
                           const std::optional<NodeArgument>& path,
                           const std::optional<Text>& text,
                           bool isInner,
                           const Place& at,
                           const Place& middle)
{
    Work& work = self.work();
    const std::string pasted = text ? text->string() : work.session().copied();
    if (pasted.empty())
        zelpython::raiseError("nothing was copied", "text");
    const shading::CompoundPtr compound = work.compoundOf(path);
    std::vector<NodePtr> made;
    work.check(work.edits().paste(compound, pasted, pasteOptions(isInner, at, middle), made));
    return made;
}

std::vector<NodePtr> duplicate(PyDocument& self,
                               const NodesArgument& nodes,
                               bool isInner,
                               const Place& at,
                               const Place& middle)
{
    Work& work = self.work();
    const std::vector<NodePtr> originals = work.nodesOf(nodes);
    std::vector<NodePtr> made;
    std::vector<shading::SaveProblem> problems;
    if (!work.session().duplicate(originals, pasteOptions(isInner, at, middle), made, problems))
        raiseProblems(problems);
    return made;
}

void deleteNodes(PyDocument& self, const NodesArgument& nodes, bool isHealed)
{
    Work& work = self.work();
    work.check(work.edits().deleteNodes(work.nodesOf(nodes), isHealed));
}

void rename(PyDocument& self, const NodeArgument& path, const Text& name)
{
    Work& work = self.work();
    work.check(work.edits().renameNode(work.nodeOf(path), name.string()));
}

void arrangeNodes(PyDocument& self,
                  const std::optional<NodeArgument>& path,
                  const std::optional<NodesArgument>& nodes)
{
    Work& work = self.work();
    const shading::CompoundPtr compound = work.compoundOf(path);
    std::vector<NodePtr> named;
    if (nodes)
        named = work.childrenOf(*compound, *nodes);
    if (nodes && named.empty())
        throw py::value_error("nodes: one at least, or None for all");
    std::string subject;
    std::string reason;
    if (!shading::arrange(work.session(), compound, named, subject, reason))
        zelpython::raiseError(reason, subject);
}

} // namespace

void bindNodeEdits(DocumentClass& document)
{
    document.def("create", guarded(create), py::arg("nodeType"), py::arg("name"),
                 py::arg("path") = py::none(), py::kw_only(), py::arg("type") = py::none(),
                 "Makes a node inside the compound at the path, the root without one, and gives "
                 "it. The node type is the name of a definition (ND_add_color3), a node type "
                 "(add), or nodegraph for an empty graph. Of several definitions it takes one "
                 "that makes the data type, or without that a float, else the first by name.");
    document.def("collapse", guarded(collapse), py::arg("path"), py::arg("name"), py::arg("nodes"),
                 "Moves nodes of the compound, given by their names, into a new one, and gives "
                 "that. Its name and those of its ports are made unique.");
    document.def("expand", guarded(expand), py::arg("path"),
                 "Moves the nodes of a compound up and removes it. Gives the old and the new path "
                 "of each node that got another name.");
    document.def("reparent", guarded(reparent), py::arg("path"), py::arg("nodes"),
                 "Moves nodes of one compound into that one. Their connections lead the same way, "
                 "through ports of the compounds between. Gives the nodes.");
    document.def("move", guarded(move), py::arg("path"), py::arg("x"), py::arg("y"),
                 "Changes where a node is drawn: its attributes xpos and ypos.");
    document.def("move", guarded(moveAll), py::arg("places"),
                 "Several at once, each a tuple of node, x and y.");
    document.def("copy", guarded(copy), py::arg("nodes"),
                 "Gives nodes, all of one compound, as a document of the format on one line. paste "
                 "makes what was copied last.");
    document.def("paste", guarded(paste), py::arg("path") = py::none(),
                 py::arg("text") = py::none(), py::kw_only(), py::arg("inner") = false,
                 py::arg("at") = py::none(), py::arg("middle") = py::none(),
                 "Makes the nodes of a text of the format in the compound, and gives them. With "
                 "inner they are connected among themselves only. Their upper left corner comes "
                 "to at, or their middle to middle.");
    document.def("duplicate", guarded(duplicate), py::arg("nodes"), py::kw_only(),
                 py::arg("inner") = false, py::arg("at") = py::none(),
                 py::arg("middle") = py::none(),
                 "Copies nodes and pastes them beside themselves. What was copied before stays.");
    document.def("delete", guarded(deleteNodes), py::arg("nodes"), py::kw_only(),
                 py::arg("heal") = false,
                 "Deletes nodes with their connections. With heal, where one of them has one input "
                 "fed and one output feeding something, the source of the one feeds the targets "
                 "of the other, if the types fit.");
    document.def("rename", guarded(rename), py::arg("path"), py::arg("name"),
                 "Gives a node another name: letters, digits and _, and no digit first.");
    document.def("arrange", guarded(arrangeNodes), py::arg("path") = py::none(),
                 py::arg("nodes") = py::none(),
                 "Gives nodes of the compound, all without names, places in layers along their "
                 "connections, as draw does.");
}

} // namespace zelshading
