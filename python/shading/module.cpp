#include <pybind11/pybind11.h>

PYBIND11_MODULE(_shading, module)
{
    module.doc() = "The sample host's shading documents.";
    pybind11::module_::import("zel"); // Whose classes these documents consist of.
}
