#include <pybind11/pybind11.h>

PYBIND11_MODULE(_zel, module)
{
    module.doc() = "The object model of a node network for graph editors.";
}
