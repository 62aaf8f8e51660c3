// Pictures of documents and compounds.

#include "base/file.h"
#include "binding/entry.h"
#include "binding/error.h"
#include "console/picture.h"
#include "document/names.h"
#include "shading/bind.h"
#include "shading/problems.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using zelpython::guarded;
using zelpython::toPython;

namespace {

shading::PictureChoice choiceOf(int depth, bool isAll)
{
    if (depth < 0)
        throw py::value_error("depth: a number of levels, from 0");
    return {depth, isAll};
}

std::string
svgOf(ZEL::Compound& compound, const shading::PictureChoice& choice, const std::string& subject)
{
    std::string svg;
    std::string problem;
    if (!shading::drawPicture(compound, choice, svg, problem))
        zelpython::raiseError(problem, subject);
    return svg;
}

py::str svg(PyDocument& self, const std::optional<NodeArgument>& path, int depth, bool isAll)
{
    const shading::CompoundPtr compound = self.work().compoundOf(path);
    return toPython(
        svgOf(*compound, choiceOf(depth, isAll), shading::pathOf(*compound->getAsNode())));
}

void draw(PyDocument& self,
          const FileArgument& file,
          const std::optional<NodeArgument>& path,
          int depth,
          bool isAll)
{
    const shading::PictureChoice choice = choiceOf(depth, isAll);
    std::string problem = shading::pictureNameProblem(file.path);
    if (!problem.empty())
        zelpython::raiseError(problem, file.path);
    const std::string svg = svgOf(*self.work().compoundOf(path), choice, file.path);
    int number = 0;
    if (shading::replaceFile(file.path, svg, problem, nullptr, {}, &number))
        return;
    if (number != 0)
        raiseOSError(number, file.path);
    zelpython::raiseError("cannot be written: " + problem, file.path);
}

/// For notebooks; None when there is no picture of it, or when it is no compound of a document.
py::object pictureOf(const shading::CompoundPtr& compound)
{
    std::string svg;
    std::string problem;
    if (!compound || !dynamic_cast<shading::Document*>(compound->getAsNode()->getContainer()) ||
        !shading::drawPicture(*compound, {}, svg, problem))
        return py::none();
    return toPython(svg);
}

} // namespace

void bindPictures(DocumentClass& document)
{
    document.def("draw", guarded(draw), py::arg("file"), py::arg("path") = py::none(),
                 py::kw_only(), py::arg("depth") = 0, py::arg("all") = false,
                 "Draws a compound, the root without a path, into a file whose name ends in .svg. "
                 "With depth, compounds in it are open frames, so many levels down; with all, "
                 "inputs are drawn that say no more than the node's definition.");
    document.def("svg", guarded(svg), py::arg("path") = py::none(), py::kw_only(),
                 py::arg("depth") = 0, py::arg("all") = false,
                 "The same picture as the text of an SVG file.");
    document.def("_repr_svg_", guarded([](PyDocument& self) {
                     return pictureOf(self.work().document().getRootNode()->getAsCompound());
                 }));
    const py::object compound = py::module_::import("zel").attr("Compound");
    compound.attr("_repr_svg_") =
        py::cpp_function(guarded([](const shading::CompoundPtr& self) { return pictureOf(self); }),
                         py::name("_repr_svg_"), py::is_method(compound));
}

} // namespace zelshading
