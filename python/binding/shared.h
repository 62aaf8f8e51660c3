#pragma once

#include "binding/interpreter.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace zelpython {

/// What the modules of the package share: zel._zel makes it, zel.shading's module finds it there.
struct Shared {
    // The calls that are under way; see entry.h.
    int callDepth = 0;
    unsigned long callThread = 0; ///< Of the calls, while there are any.
    PyRef errorType;              ///< The first error of a callback, to be raised at the end of the
    PyRef errorValue;             ///< outermost call. Empty: none.
    PyRef errorTrace;

    PyRef errorClass;                                    ///< zel.Error.
    std::unordered_map<std::string, PyRef> enumerations; ///< Members by value; by the type's name.

    /// Who keeps a document or a runtime of C++ alive, by its address; see keepers.h.
    std::unordered_map<const void*, std::weak_ptr<void>> keepers;

    /// Of plugins of C++, by somebody who goes on using them until the process ends: the plugins
    /// are not ended then.
    int runtimesInUse = 0;

    // For the tests.
    long sliced = 0; ///< Python halves that died while C++ kept the other half.
    std::unordered_map<std::string, long> live; ///< Objects and wrappers that are there, by class.
};

/// Must not be called before one of the two functions below.
Shared& shared();

/// Makes it, and hangs it into the module. It lives as long as the process.
void createShared(PyObject* module);
/// Finds it in zel._zel, which is imported if need be. False with a Python error.
bool importShared();

/// One more or less of the class, for the counts that the tests compare.
class LiveCount {
public:
    explicit LiveCount(const char* name) : m_count(&shared().live[name]) { ++*m_count; }
    LiveCount(const LiveCount& other) : m_count(other.m_count) { ++*m_count; }
    LiveCount& operator=(const LiveCount&) = delete;
    ~LiveCount() { --*m_count; }

private:
    long* m_count; ///< Not owned: of the shared table, whose entries stay where they are.
};

} // namespace zelpython
