# 32 bits, Intel. Debian: g++-i686-linux-gnu; qemu-user where the processor cannot run it.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(triplet i686-linux-gnu)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(emulator qemu-i386)
include(${CMAKE_CURRENT_LIST_DIR}/linux.cmake)
if(ZEL_SYSROOT)
    return()
endif()

# Most x86-64 run it by themselves: then the loader that came with the compiler starts programs.
set(loader ${loader_prefix}/lib/ld-linux.so.2)
execute_process(COMMAND ${loader} --version RESULT_VARIABLE cannot_run OUTPUT_QUIET ERROR_QUIET)
if(NOT cannot_run)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${loader} --library-path ${loader_prefix}/lib)
endif()
