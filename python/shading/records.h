#pragma once

#include "shading/work.h"

#include <memory>
#include <pybind11/pybind11.h>

namespace zelshading {

/// zel.shading.Change: what watchers are told. Holds the document.
class PyChange {
public:
    PyChange(std::shared_ptr<Work> work, shading::Change change)
        : m_work(std::move(work)),
          m_change(std::move(change))
    {
    }
    const shading::Change& change() const { return m_change; }

private:
    std::shared_ptr<Work> m_work; ///< Goes after the objects of its document.
    shading::Change m_change;
};

/// Makes the records of the module: tuples with names, Message and Change.
void bindRecords(pybind11::module_& module);

/// Of str.
pybind11::list toList(const std::vector<std::string>& texts);

/// A record of that name of the module with these values.
template <class... Values>
pybind11::object makeRecord(const char* name, Values&&... values)
{
    return pybind11::module_::import("zel.shading._shading")
        .attr(name)(std::forward<Values>(values)...);
}

} // namespace zelshading
