#include "binding/error.h"
#include "zel/classes.h"

PYBIND11_MODULE(_zel, module)
{
    using namespace zelpython;
    module.doc() = "The object model of a node network for graph editors.";
    createShared(module.ptr());
    createErrorClass();
    module.attr("Error") = pybind11::handle(shared().errorClass.get());
    createEnumeration(typeid(ZEL::PortIOType), module, "PortIOType",
                      {{"PortInput", ZEL::PortInput}, {"PortOutput", ZEL::PortOutput}});
    bindPorts(module);
    bindNodes(module);
    bindCompound(module);
    bindContainer(module);
    bindLibrary(module);
    bindRuntime(module);
    bindPlugins(module);
    bindCommands(module);
    bindEditor(module);
    bindPropertyList(module);
    bindDebug(module);
    defineAll();
}
