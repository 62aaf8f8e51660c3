#pragma once

#include "binding/half.h"
#include "binding/shared.h"
#include "zel.h"

#include <string>
#include <vector>

namespace zelpython {

/// A container whose class is written in Python. It unregisters itself when it dies.
class PyContainer final : public ZEL::Container, public Half {
public:
    PyContainer();
    ~PyContainer() override;

    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override;
    void rebuildCompounds() override;
    void hostOperation() override;
    ZEL::Runtime* getRuntime() override;

    // What it takes back at its end, and what it holds until then.
    void onRegistered(const PyRef& runtime);
    void onUnregistered(const ZEL::Runtime* runtime);
    void onRegisteredWithUUID(const char* uuid) { m_uuids.emplace_back(uuid); }
    bool isRegistered(const ZEL::Runtime* runtime) const;
    /// Within its own rebuildCompounds, called by a runtime.
    bool isBeingRebuilt() const;
    /// True when any container is.
    static bool isAnyBeingRebuilt();
    /// The runtime is about to go.
    void leave(ZEL::Runtime& runtime);

    /// For the collector.
    int traverse(visitproc visit, void* arg) const;

    /// Those that are there.
    static const std::vector<PyContainer*>& all();

private:
    std::vector<PyRef> m_runtimes; ///< Where it is registered.
    PyRef m_answered;              ///< The runtime that getRuntime gave last.
    std::vector<std::string> m_uuids;
    LiveCount m_live;
};

/// The Python object of a container or a runtime: the one that is there, or a wrapper. None for
/// null.
PyRef toPythonObject(ZEL::Container* container);
PyRef toPythonObject(ZEL::Runtime* runtime);
/// What the Python object holds; null when it is none, or None.
ZEL::Container* toContainer(PyObject* object);
ZEL::Runtime* toRuntime(PyObject* object);

} // namespace zelpython
