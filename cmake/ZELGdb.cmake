# gdb's view of the objects. gdb loads a script by itself when it stands beside the library under the
# library's full name; so the installed tree can be moved. A tree that goes to /usr has gdb's own
# folder for it, which needs no permission of the user.
set(gdbScriptName libZEL.so.${PROJECT_VERSION}-gdb.py)
configure_file(gdb/libZEL-gdb.py ${PROJECT_BINARY_DIR}/${gdbScriptName} COPYONLY)

if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(gdbDefaultDir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR})
else()
    set(gdbDefaultDir ${CMAKE_INSTALL_LIBDIR})
endif()
set(ZEL_GDB_DIR ${gdbDefaultDir} CACHE STRING
    "Where the script for gdb is installed, relative to the prefix")
install(FILES ${PROJECT_BINARY_DIR}/${gdbScriptName} DESTINATION ${ZEL_GDB_DIR})
