# What the toolchain files for Debian's cross compilers have in common. Included after these are set:
#   CMAKE_SYSTEM_PROCESSOR  as uname -m says there
#   triplet                 of the compiler: /usr/bin/TRIPLET-g++
#   CMAKE_LIBRARY_ARCHITECTURE  of the libraries, where it is another than the compiler's
#   emulator                what runs programs: the name of a qemu, or empty where this processor can
# Libraries of that processor that are not beside the compiler are looked for in the folder
# ZEL_SYSROOT, which then must hold the C and C++ libraries for running programs, too:
#   cmake -D CMAKE_TOOLCHAIN_FILE=cmake/toolchains/linux-aarch64.cmake [-D ZEL_SYSROOT=FOLDER] ...
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
if(NOT CMAKE_LIBRARY_ARCHITECTURE)
    set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})
endif()

# The environment hands it on to the projects that cmake makes to try something.
set(ZEL_SYSROOT "$ENV{ZEL_SYSROOT}" CACHE PATH "Where libraries of the other processor were unpacked")
set(ENV{ZEL_SYSROOT} "${ZEL_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(loader_prefix /usr/${triplet})
if(ZEL_SYSROOT)
    list(PREPEND CMAKE_FIND_ROOT_PATH ${ZEL_SYSROOT})
    set(loader_prefix ${ZEL_SYSROOT})
    # What libraries there need of each other.
    set(libraries ${ZEL_SYSROOT}/lib/${CMAKE_LIBRARY_ARCHITECTURE}:${ZEL_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE})
    foreach(kind IN ITEMS EXE SHARED MODULE)
        set(CMAKE_${kind}_LINKER_FLAGS_INIT "-Wl,-rpath-link,\"${libraries}\"")
    endforeach()
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH) # A prefix may lie anywhere.

if(emulator)
    find_program(ZEL_EMULATOR NAMES ${emulator} ${emulator}-static)
    if(ZEL_EMULATOR)
        set(CMAKE_CROSSCOMPILING_EMULATOR ${ZEL_EMULATOR} -L ${loader_prefix})
    else()
        message(STATUS "No ${emulator} (Debian: qemu-user): nothing that is built can be run here")
    endif()
endif()
