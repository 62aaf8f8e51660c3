# Whether the Python package is built. ZEL_PYTHON says so: ZEL_BUILD_PYTHON, and the interpreter with its
# headers and pybind11 are there. The interpreter is the system's, whose headers the system has, and
# not the first one on PATH; Python3_EXECUTABLE names another. macOS has a Python only for itself.
set(ZEL_PYTHON OFF)
if(ZEL_BUILD_PYTHON AND NOT ZEL_SHARED)
    message(STATUS "The modules of the Python package share one library: with a static one they are not built")
elseif(ZEL_BUILD_PYTHON)
    if(NOT Python3_EXECUTABLE AND NOT APPLE AND EXISTS /usr/bin/python3)
        set(Python3_EXECUTABLE /usr/bin/python3)
    endif()
    find_package(Python3 3.9 QUIET COMPONENTS Interpreter Development.Module)
    set(Python3_EXECUTABLE "${Python3_EXECUTABLE}" CACHE FILEPATH "The interpreter that the package is for")
    set(PYBIND11_NOPYTHON ON) # The headers alone: Python is found already.
    find_package(pybind11 2.10 QUIET CONFIG)
    if(NOT Python3_FOUND)
        message(STATUS "No Python 3.9 with its headers: the Python package is not built")
    elseif(NOT pybind11_FOUND)
        message(STATUS "No pybind11 2.10: the Python package is not built")
    else()
        set(ZEL_PYTHON ON)
    endif()
endif()
