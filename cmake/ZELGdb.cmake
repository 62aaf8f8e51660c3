# gdb's view of the objects. gdb loads a script by itself when it stands beside the library under the
# library's full name; so the installed tree can be moved. A tree that goes to /usr has gdb's own
# folder for it, which needs no permission of the user. A program that has the library as a part of
# it sources the script beside the archive.
set(gdbScriptName libZEL.so.${PROJECT_VERSION}-gdb.py)
if(NOT ZEL_SHARED)
    set(gdbScriptName libZEL-gdb.py)
endif()
configure_file(tools/gdb/libZEL-gdb.py ${PROJECT_BINARY_DIR}/${gdbScriptName} COPYONLY)

if(ZEL_SHARED AND CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(gdbDir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR})
else()
    set(gdbDir ${CMAKE_INSTALL_LIBDIR})
endif()
# Empty in the cache: the prefix may be another when the build is configured again.
set(ZEL_GDB_DIR "" CACHE STRING
    "Where the script for gdb is installed, relative to the prefix; empty: where gdb looks for it")
if(ZEL_GDB_DIR)
    set(gdbDir ${ZEL_GDB_DIR})
endif()
install(FILES ${PROJECT_BINARY_DIR}/${gdbScriptName} DESTINATION ${gdbDir} COMPONENT development)
