#pragma once

#include <pybind11/pybind11.h>

namespace zelpython {

/// The file of a module of plugins.
class ModuleFile {
public:
    /// What os.fspath takes. Raises ValueError when there is a NUL in it.
    explicit ModuleFile(const pybind11::object& path);

    /// Loads the module, which stays for good: objects of its classes may be anywhere. Raises
    /// OSError when it cannot be loaded.
    void load() const;

private:
    pybind11::object m_path; ///< As the system's own call takes it: bytes, or text on Windows.
};

} // namespace zelpython
