#include "zel/classes.h"

namespace zelpython {

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
