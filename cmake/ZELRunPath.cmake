# Where an installed program or module finds the libraries of this project: from its own place, so that
# the tree can be moved. Where the loader looks by itself, as in packages for /usr, no path is needed.

set(ZEL_ORIGIN "$ORIGIN") # What the loader takes for the folder of the file that it loads.
if(APPLE)
    set(ZEL_ORIGIN "@loader_path")
endif()

# zel_run_path(TARGET FOLDER): TARGET is installed to FOLDER of the prefix.
function(zel_run_path target folder)
    set(paths)
    if(NOT CMAKE_INSTALL_FULL_LIBDIR IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
        set(paths ${CMAKE_INSTALL_FULL_LIBDIR})
        if(NOT IS_ABSOLUTE "${folder}" AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
            cmake_path(RELATIVE_PATH paths BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${folder})
            string(REGEX REPLACE "/\\.?$" "" paths "${ZEL_ORIGIN}/${paths}")
        endif()
    endif()
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${paths}")
endfunction()
