#include "zel/pyContainer.h"

#include "binding/overrides.h"
#include "zel/collector.h"

#include <algorithm>

namespace zelpython {

namespace py = pybind11;

namespace {

std::vector<PyContainer*> g_containers;
std::vector<const PyContainer*> g_rebuilding; ///< The innermost last; compared only.

Override ofContainer(const char* name)
{
    return Override::of<ZEL::Container>(name);
}

/// Null also for an object that was never initialised, or whose other half is gone: it is asked in
/// destructors, which raise nothing.
template <class T>
T* pointerTo(PyObject* object)
{
    return object && PyObject_TypeCheck(object, typeOf<T>()->type) ? detail::wholeObject<T>(object)
                                                                   : nullptr;
}

} // namespace

PyContainer::PyContainer() : m_live("zel.Container")
{
    g_containers.push_back(this);
}

PyContainer::~PyContainer()
{
    g_containers.erase(std::find(g_containers.begin(), g_containers.end(), this));
    for (const PyRef& runtime : m_runtimes) {
        if (ZEL::Runtime* const present = toRuntime(runtime.get()))
            present->unregisterContainer(this);
    }
    for (const std::string& uuid : m_uuids) {
        if (getFromUUID(uuid.c_str()) == this)
            registerWithUUID(uuid.c_str(), nullptr);
    }
}

ZEL::AddRefWrapper<ZEL::Node> PyContainer::getRootNode()
{
    static const Override override = ofContainer("getRootNode");
    return askObject<ZEL::Node>(*this, override,
                                []() -> ZEL::AddRefWrapper<ZEL::Node> { return nullptr; });
}

void PyContainer::rebuildCompounds()
{
    static const Override override = ofContainer("rebuildCompounds");
    g_rebuilding.push_back(this);
    tell(*this, override, [] {});
    g_rebuilding.pop_back(); // The container may be gone.
}

void PyContainer::hostOperation()
{
    static const Override override = ofContainer("hostOperation");
    tell(*this, override, [this] { Container::hostOperation(); });
}

ZEL::Runtime* PyContainer::getRuntime()
{
    static const Override override = ofContainer("getRuntime");
    const auto use = [&](PyObject* answer) -> ZEL::Runtime* {
        if (!answer || answer == Py_None)
            return nullptr;
        ZEL::Runtime* const runtime = toRuntime(answer);
        if (runtime)
            m_answered = PyRef::borrow(answer);
        else
            override.refuseAnswer(self(), answer, "a zel.Runtime or None");
        return runtime;
    };
    return dispatch(*this, override, use, []() -> ZEL::Runtime* { return nullptr; });
}

void PyContainer::onRegistered(const PyRef& runtime)
{
    if (!isRegistered(toRuntime(runtime.get())))
        m_runtimes.push_back(runtime);
}

void PyContainer::onUnregistered(const ZEL::Runtime* runtime)
{
    const auto isIt = [runtime](const PyRef& held) { return toRuntime(held.get()) == runtime; };
    m_runtimes.erase(std::remove_if(m_runtimes.begin(), m_runtimes.end(), isIt), m_runtimes.end());
}

bool PyContainer::isRegistered(const ZEL::Runtime* runtime) const
{
    return std::any_of(m_runtimes.begin(), m_runtimes.end(),
                       [runtime](const PyRef& held) { return toRuntime(held.get()) == runtime; });
}

bool PyContainer::isBeingRebuilt() const
{
    return std::find(g_rebuilding.begin(), g_rebuilding.end(), this) != g_rebuilding.end();
}

bool PyContainer::isAnyBeingRebuilt()
{
    return !g_rebuilding.empty();
}

void PyContainer::leave(ZEL::Runtime& runtime)
{
    if (!isRegistered(&runtime))
        return;
    runtime.unregisterContainer(this);
    onUnregistered(&runtime);
}

int PyContainer::traverse(visitproc visit, void* arg) const
{
    for (const PyRef& runtime : m_runtimes)
        Py_VISIT(runtime.get());
    Py_VISIT(m_answered.get());
    return 0;
}

const std::vector<PyContainer*>& PyContainer::all()
{
    return g_containers;
}

PyRef toPythonObject(ZEL::Container* container)
{
    return PyRef::steal(toObject(container).release().ptr());
}

PyRef toPythonObject(ZEL::Runtime* runtime)
{
    return PyRef::steal(toObject(runtime).release().ptr());
}

ZEL::Container* toContainer(PyObject* object)
{
    return pointerTo<ZEL::Container>(object);
}

ZEL::Runtime* toRuntime(PyObject* object)
{
    return pointerTo<ZEL::Runtime>(object);
}

} // namespace zelpython
