# The library exports the names in cmake/libZEL.map and no others. The linker reads the list: what it
# names and the library does not define is an error, what it does not name is hidden; the test
# ExportedNames then says that a public name is missing in the list. What the linker reads is made of the
# list on Windows, a module definition file, on macOS, a list of symbols, and for 32 bits.
#
# The names are those of systems with GNU's standard library; zel_list_for_standard_library makes those
# of other ones. Where a compiler is chosen that mangles other names, ZEL_EXPORT_LIST=OFF builds without
# the list, and what ZEL_API marks is exported.
include(CheckCXXSourceCompiles)

option(ZEL_EXPORT_LIST "Export the names in cmake/libZEL.map only" ON)
if(NOT ZEL_SHARED
        OR NOT (CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF" OR APPLE
            OR (MINGW AND CMAKE_SIZEOF_VOID_P EQUAL 8)))
    set(ZEL_EXPORT_LIST OFF)
endif()

# With another standard library, and with GNU's for debugging or with its old strings, a function that
# takes a string or a vector has another name, and strings have another size, so the bases of a class
# lie at other offsets, which the names of thunks have. Such names are listed with a "*" there.
function(zel_list_for_standard_library list result)
    unset(ZEL_NAMES_AS_LISTED CACHE) # The flags of a folder may change.
    check_cxx_source_compiles("
        #include <string>
        #if !defined(__GLIBCXX__) || !_GLIBCXX_USE_CXX11_ABI || defined(_GLIBCXX_DEBUG)
        #error The strings and vectors have other names.
        #endif
        int main() {}" ZEL_NAMES_AS_LISTED)
    if(NOT ZEL_NAMES_AS_LISTED)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
        file(READ ${list} text)
        string(REGEX REPLACE "N?St(7__cxx11|17basic_string_view)[A-Za-z0-9_]*;" "*;" text "${text}")
        string(REGEX REPLACE "_ZThn[0-9]+_" "_ZThn*_" text "${text}")
        string(REPLACE ";" "@" text "${text}") # CMake's own separator.
        string(REPLACE "\n" ";" lines "${text}")
        list(REMOVE_DUPLICATES lines)
        list(JOIN lines "\n" text)
        string(REPLACE "@" ";" text "${text}")
        set(list ${PROJECT_BINARY_DIR}/libZEL.map)
        file(CONFIGURE OUTPUT ${list} CONTENT "${text}\n" @ONLY)
    endif()
    set(${result} ${list} PARENT_SCOPE)
endfunction()

# Sets ZEL_EXPORTED_NAMES, too: the list in the form in which the linker reads it.
function(zel_export_list target list)
    if(NOT ZEL_EXPORT_LIST)
        return()
    endif()
    if(MINGW)
        set(script ${PROJECT_SOURCE_DIR}/cmake/ZELDefinitionFile.cmake)
        set(definitions ${PROJECT_BINARY_DIR}/lib${target}.def)
        add_custom_command(OUTPUT ${definitions}
            COMMAND ${CMAKE_COMMAND} -D list=${list} -D output=${definitions} -P ${script}
            DEPENDS ${list} ${script} ${PROJECT_SOURCE_DIR}/cmake/ZELNames.cmake
            COMMENT "Making lib${target}.def of the list of exported names"
            VERBATIM)
        target_sources(${target} PRIVATE ${definitions})
        target_compile_definitions(${target} PRIVATE ZEL_EXPORTS_LISTED)
        set(ZEL_EXPORTED_NAMES ${definitions} PARENT_SCOPE)
        return()
    endif()
    zel_list_for_standard_library(${list} list)
    if(APPLE)
        set(script ${PROJECT_SOURCE_DIR}/cmake/ZELExportedSymbols.cmake)
        set(symbols ${PROJECT_BINARY_DIR}/lib${target}.exp)
        add_custom_command(OUTPUT ${symbols}
            COMMAND ${CMAKE_COMMAND} -D list=${list} -D output=${symbols} -P ${script}
            DEPENDS ${list} ${script}
            COMMENT "Making lib${target}.exp of the list of exported names"
            VERBATIM)
        target_sources(${target} PRIVATE ${symbols})
        target_link_options(${target} PRIVATE LINKER:-exported_symbols_list,${symbols})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${symbols})
        return()
    endif()
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND ZEL_NAMES_AS_LISTED)
        set(script ${PROJECT_SOURCE_DIR}/cmake/ZELListFor32Bits.cmake)
        set(changed ${PROJECT_BINARY_DIR}/lib${target}.map)
        add_custom_command(OUTPUT ${changed}
            COMMAND ${CMAKE_COMMAND} -D list=${list} -D output=${changed} -P ${script}
            DEPENDS ${list} ${script} ${PROJECT_SOURCE_DIR}/cmake/ZELNames.cmake
            COMMENT "Making the list of exported names for 32 bits"
            VERBATIM)
        target_sources(${target} PRIVATE ${changed})
        set(list ${changed})
    endif()
    target_link_options(${target} PRIVATE
        LINKER:--version-script=${list} LINKER:--no-undefined-version)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${list})
    set(ZEL_EXPORTED_NAMES ${list} PARENT_SCOPE)
endfunction()
