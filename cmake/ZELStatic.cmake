# The library is a shared one unless BUILD_SHARED_LIBS is set and says otherwise. As an archive it
# becomes a part of the host's program, which then has the registry, the virtual tables and the type
# information once for itself and for all its plugins. Three targets see to that, and a host and a
# plugin that build against the shared library build against the archive without a change:
#   ZEL::ZEL      links all of the archive, also what only a plugin calls, and shows it to plugins.
#                 A module (a target of the type MODULE) gets the headers alone.
#   ZEL::plugin   the headers alone: for a shared library that plugins and the host have in common.
#                 Of the shared library it is the same as ZEL::ZEL.
#   ZEL::archive  the archive itself: for a host that is a module.
include(GNUInstallDirs)

if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(ZEL_SHARED OFF)
else()
    set(ZEL_SHARED ON)
endif()

function(zel_add_library target)
    add_library(zelPlugin INTERFACE)
    add_library(ZEL::plugin ALIAS zelPlugin)
    set_target_properties(zelPlugin PROPERTIES EXPORT_NAME plugin)
    if(ZEL_SHARED)
        add_library(${target} SHARED)
        add_library(ZEL::ZEL ALIAS ${target})
        target_link_libraries(zelPlugin INTERFACE ${target})
        return()
    endif()

    add_library(${target} STATIC)
    add_library(ZEL::archive ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME archive
        POSITION_INDEPENDENT_CODE ON
        INTERPROCEDURAL_OPTIMIZATION OFF) # Hosts link it by compilers and linkers of their own.
    target_compile_definitions(${target} PUBLIC ZEL_STATIC)
    target_compile_features(zelPlugin INTERFACE cxx_std_17)
    target_compile_definitions(zelPlugin INTERFACE ZEL_STATIC)
    target_include_directories(zelPlugin INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zel>)

    add_library(zelWhole INTERFACE)
    add_library(ZEL::ZEL ALIAS zelWhole)
    set_target_properties(zelWhole PROPERTIES EXPORT_NAME ZEL)
    set(type $<TARGET_PROPERTY:TYPE>)
    target_link_libraries(zelWhole INTERFACE zelPlugin
        $<$<NOT:$<STREQUAL:${type},MODULE_LIBRARY>>:$<LINK_LIBRARY:WHOLE_ARCHIVE,$<TARGET_NAME:${target}>>>)
    zel_show_to_plugins(zelWhole $<STREQUAL:${type},EXECUTABLE>)
endfunction()

# Lets the linker show the library's names in a program to the modules that it loads. The list holds
# patterns: it fits every processor, compiler and standard library.
function(zel_show_to_plugins target condition)
    if(APPLE)
        target_link_options(${target} INTERFACE $<${condition}:LINKER:-export_dynamic>)
        target_link_options(zelPlugin INTERFACE
            $<$<NOT:${condition}>:LINKER:-undefined,dynamic_lookup>)
    elseif(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
        set(list libZEL.dynamic)
        target_link_options(${target} INTERFACE
            "$<BUILD_INTERFACE:$<${condition}:LINKER:--dynamic-list=${PROJECT_SOURCE_DIR}/cmake/${list}>>"
            "$<INSTALL_INTERFACE:$<${condition}:LINKER:--dynamic-list=$<INSTALL_PREFIX>/${CMAKE_INSTALL_LIBDIR}/cmake/ZEL/${list}>>")
    endif()
endfunction()

# Adds to the variable what links all of the archive in that folder and shows it to plugins, for
# zel.pc; the other folder has the list of names. The archive is named once: twice would define all twice.
function(zel_archive_flags variable archives lists)
    set(flags "${${variable}}")
    set(archive ${CMAKE_STATIC_LIBRARY_PREFIX}ZEL${CMAKE_STATIC_LIBRARY_SUFFIX})
    if(APPLE)
        string(APPEND flags " -Wl,-force_load,${archives}/${archive} -Wl,-export_dynamic")
    elseif(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
        string(APPEND flags " -Wl,--whole-archive -lZEL -Wl,--no-whole-archive"
            " -Wl,--dynamic-list=${lists}/libZEL.dynamic")
    else()
        string(APPEND flags " -lZEL")
    endif()
    set(${variable} "${flags}" PARENT_SCOPE)
endfunction()
