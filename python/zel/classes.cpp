#include "zel/classes.h"

#include <utility>
#include <vector>

namespace zelpython {

namespace {

std::vector<std::function<void()>> g_definitions; ///< Of the module that is being made.

} // namespace

void defineLater(std::function<void()> define)
{
    g_definitions.push_back(std::move(define));
}

void defineAll()
{
    for (const auto& define : std::exchange(g_definitions, {}))
        define();
}

void callBack(const py::function& function, const py::object& argument)
{
    try {
        function(argument);
    } catch (py::error_already_set& error) {
        error.restore();
        putAwayError(function.ptr());
    }
}

} // namespace zelpython
