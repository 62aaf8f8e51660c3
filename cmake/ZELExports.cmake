# The library exports the names in cmake/libZEL.map and no others. The linker reads the list: what it
# names and the library does not define is an error, what it does not name is hidden; the test
# ExportedNames then says that a public name is missing in the list.
#
# The names are those of 64-bit Linux with GNU's standard library. Where a standard library is
# chosen that mangles other names, ZEL_EXPORT_LIST=OFF builds without the list.
option(ZEL_EXPORT_LIST "Export the names in cmake/libZEL.map only" ON)
if(NOT CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF" OR NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(ZEL_EXPORT_LIST OFF)
endif()

function(zel_export_list target list)
    if(ZEL_EXPORT_LIST)
        target_link_options(${target} PRIVATE
            LINKER:--version-script=${list} LINKER:--no-undefined-version)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${list})
    endif()
endfunction()
