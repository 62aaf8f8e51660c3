// The edits of the frames around nodes.

#include "binding/entry.h"
#include "binding/error.h"
#include "edits/positions.h"
#include "shading/bind.h"
#include "shading/records.h"

#include <array>
#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using shading::BackdropPtr;
using zelpython::guarded;
using zelpython::Text;
using zelpython::toPython;

namespace {

using Numbers = std::optional<std::array<double, 4>>;

BackdropPtr backdropAt(Work& work, const NodeArgument& path, const Text& name)
{
    const std::string full = work.pathOf(path) + "." + name.string();
    BackdropPtr backdrop = work.edits().backdropAt(full);
    if (!backdrop)
        zelpython::raiseError("no such backdrop", full);
    return backdrop;
}

void backdropAdd(PyDocument& self,
                 const NodeArgument& path,
                 const Text& name,
                 const NodesArgument& nodes,
                 const Numbers& frame,
                 const Text& text)
{
    Work& work = self.work();
    const shading::CompoundPtr compound = work.compoundOf(path);
    std::optional<shading::Frame> given;
    if (frame)
        given = shading::Frame{{(*frame)[0], (*frame)[1]}, (*frame)[2], (*frame)[3]};
    BackdropPtr created;
    work.check(work.edits().createBackdrop(
        compound, name.string(), work.childrenOf(*compound, nodes), given, text.string(), created));
}

void backdropNodes(PyDocument& self,
                   const NodeArgument& path,
                   const Text& name,
                   const NodesArgument& nodes)
{
    Work& work = self.work();
    const BackdropPtr backdrop = backdropAt(work, path, name);
    work.check(work.edits().setBackdropNodes(
        backdrop, work.childrenOf(*backdrop->owner()->getAsCompound(), nodes)));
}

void backdropFrame(PyDocument& self,
                   const NodeArgument& path,
                   const Text& name,
                   double x,
                   double y,
                   double width,
                   double height)
{
    Work& work = self.work();
    work.check(
        work.edits().setBackdropFrame(backdropAt(work, path, name), {{x, y}, width, height}));
}

void backdropMove(PyDocument& self, const NodeArgument& path, const Text& name, double x, double y)
{
    Work& work = self.work();
    work.check(work.edits().moveBackdrop(backdropAt(work, path, name), {x, y}));
}

void backdropText(PyDocument& self, const NodeArgument& path, const Text& name, const Text& text)
{
    Work& work = self.work();
    work.check(work.edits().setBackdropText(backdropAt(work, path, name), text.string()));
}

void backdropRename(PyDocument& self,
                    const NodeArgument& path,
                    const Text& name,
                    const Text& newName)
{
    Work& work = self.work();
    work.check(work.edits().renameBackdrop(backdropAt(work, path, name), newName.string()));
}

void backdropDelete(PyDocument& self, const NodeArgument& path, const Text& name)
{
    Work& work = self.work();
    work.check(work.edits().deleteBackdrop(backdropAt(work, path, name)));
}

py::list backdropList(PyDocument& self, const std::optional<NodeArgument>& path)
{
    Work& work = self.work();
    shading::Document& document = work.document();
    py::list all;
    for (const BackdropPtr& backdrop : document.backdrops().in(*work.compoundOf(path))) {
        py::object frame = py::none();
        if (const auto place = shading::frameOf(document, *backdrop))
            frame = py::make_tuple(place->first.x, place->first.y, place->width, place->height);
        shading::AttributeOwner owner;
        owner.element = &backdrop->element();
        all.append(makeRecord("BackdropInfo", toPython(backdrop->name()), frame,
                              py::cast(backdrop->nodes()),
                              toPython(document.attributes().get(owner, "doc"))));
    }
    return all;
}

} // namespace

void bindBackdropEdits(DocumentClass& document)
{
    const auto path = py::arg("path");
    const auto name = py::arg("name");
    document.def("backdropAdd", guarded(backdropAdd), path, name, py::arg("nodes") = py::tuple(),
                 py::kw_only(), py::arg("frame") = py::none(), py::arg("text") = "",
                 "Makes a frame around nodes of the compound, given by their names: around their "
                 "places, or at x, y, width, height.");
    document.def("backdropNodes", guarded(backdropNodes), path, name, py::arg("nodes"),
                 "Gives a backdrop other nodes: those that it contains from then on.");
    document.def("backdropFrame", guarded(backdropFrame), path, name, py::arg("x"), py::arg("y"),
                 py::arg("width"), py::arg("height"), "Moves and resizes a backdrop alone.");
    document.def("backdropMove", guarded(backdropMove), path, name, py::arg("x"), py::arg("y"),
                 "Moves a backdrop with the nodes that it contains.");
    document.def("backdropText", guarded(backdropText), path, name, py::arg("text"),
                 "Changes what a backdrop says to people.");
    document.def("backdropRename", guarded(backdropRename), path, name, py::arg("newName"),
                 "Gives a backdrop another name.");
    document.def("backdropDelete", guarded(backdropDelete), path, name, "Deletes a backdrop.");
    document.def("backdropList", guarded(backdropList), py::arg("path") = py::none(),
                 "The backdrops of the compound: name, frame, nodes and text.");
}

} // namespace zelshading
