#include "binding/shared.h"
#include "shading/bind.h"
#include "shading/collected.h"
#include "shading/records.h"

PYBIND11_MODULE(_shading, module)
{
    namespace py = pybind11;
    using namespace zelshading;
    module.doc() = "The sample host's shading documents.";
    py::module_::import("zel"); // Whose classes these documents consist of.
    if (!zelpython::importShared())
        throw py::error_already_set();
    // The classes are those of the package.
    const py::object name = module.attr("__name__");
    module.attr("__name__") = "zel.shading";
    bindRecords(module);
    DocumentClass document(module, "Document", py::is_final(), givenAndCollected<PyDocument>(),
                           "A shading document with its edits and its file: open() and new() give "
                           "one. The edits bear the names of the shell's commands. They take paths "
                           "or objects, and raise zel.Error, with the path and the reason, when "
                           "they are refused: nothing changed then.");
    bindViews(document);
    bindWalk(module, document);
    bindNodeEdits(document);
    bindWireEdits(document);
    bindPortEdits(document);
    bindBackdropEdits(document);
    bindHistory(module, document);
    bindPictures(document);
    bindFiles(module, document);
    module.attr("__name__") = name;
}
