#include "binding/shared.h"

namespace zelpython {

namespace {

constexpr const char* kModule = "zel._zel";
constexpr const char* kAttribute = "_shared";
constexpr const char* kCapsule = "zel._zel._shared";

Shared* g_shared = nullptr; ///< Never destroyed: objects of C++ outlive the interpreter.

} // namespace

Shared& shared()
{
    return *g_shared;
}

void createShared(PyObject* module)
{
    g_shared = new Shared;
    const PyRef capsule = PyRef::steal(PyCapsule_New(g_shared, kCapsule, nullptr));
    PyObject_SetAttrString(module, kAttribute, capsule.get());
}

bool importShared()
{
    const PyRef module = PyRef::steal(PyImport_ImportModule(kModule));
    if (!module)
        return false;
    const PyRef capsule = PyRef::steal(PyObject_GetAttrString(module.get(), kAttribute));
    if (capsule)
        g_shared = static_cast<Shared*>(PyCapsule_GetPointer(capsule.get(), kCapsule));
    return g_shared != nullptr;
}

} // namespace zelpython
