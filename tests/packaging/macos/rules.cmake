# What CMake takes for granted where it finds the version of macOS.
set(CMAKE_SHARED_LIBRARY_RUNTIME_C_FLAG "-Wl,-rpath,")
