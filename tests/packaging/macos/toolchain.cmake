# What stands in for macOS and its compiler where neither can be had: clang and LLVM's linker, libc++,
# and another system's C headers, in the folder ZEL_C_HEADERS, with the types of macOS. It shows what is
# compiled, exported and written into the files for the loader. Nothing that it makes can be run, and
# what the system would define is left to the loader.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 20)
set(ZEL_ARCHITECTURE arm64 CACHE STRING "arm64 or x86_64")
set(CMAKE_SYSTEM_PROCESSOR ${ZEL_ARCHITECTURE})
set(CMAKE_OSX_SYSROOT /)
set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/rules.cmake)
set(llvm /usr/lib/llvm-14)
set(CMAKE_CXX_COMPILER ${llvm}/bin/clang++)
set(CMAKE_CXX_COMPILER_TARGET ${ZEL_ARCHITECTURE}-apple-macos11)
set(CMAKE_CXX_COMPILER_WORKS TRUE)
foreach(tool IN ITEMS AR NM RANLIB)
    string(TOLOWER ${tool} name)
    set(CMAKE_${tool} ${llvm}/bin/llvm-${name})
endforeach()
set(CMAKE_INSTALL_NAME_TOOL ${llvm}/bin/llvm-install-name-tool)

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZEL_C_HEADERS ZEL_ARCHITECTURE)
file(GLOB clangHeaders ${llvm}/lib/clang/14*/include)
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -nostdinc -D_GNU_SOURCE -Wno-unused-command-line-argument")
foreach(folder IN ITEMS ${llvm}/include/c++/v1 ${clangHeaders} ${ZEL_C_HEADERS})
    string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${folder}")
endforeach()
foreach(kind IN ITEMS EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=${llvm}/bin/ld64.lld -mlinker-version=609 -nostdlib -undefined dynamic_lookup")
endforeach()
