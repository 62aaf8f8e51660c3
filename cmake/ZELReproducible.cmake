# Two builds of one commit give the same bytes, whatever their folders are called: paths that the
# compiler notes (in debug information and __FILE__) begin at the top of the tree. g++ has the options
# for linking as well, since its link-time optimiser compiles once more. Debug builds keep their paths,
# for which debuggers and coverage reports look; ZEL_REPRODUCIBLE=OFF leaves them to all builds.
option(ZEL_REPRODUCIBLE "Keep folders and dates of the build out of what is built, but for Debug" ON)
if(ZEL_REPRODUCIBLE)
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-ffile-prefix-map=/here=. ZEL_HAS_FILE_PREFIX_MAP)
    if(ZEL_HAS_FILE_PREFIX_MAP)
        set(isOptimised "$<NOT:$<CONFIG:Debug>>")
        # The last one that fits counts: the build may lie in the tree.
        foreach(map ${PROJECT_SOURCE_DIR}=. ${PROJECT_BINARY_DIR}=build)
            add_compile_options("$<${isOptimised}:-ffile-prefix-map=${map}>")
            add_link_options("$<$<AND:${isOptimised},$<CXX_COMPILER_ID:GNU>>:-ffile-prefix-map=${map}>")
        endforeach()
    endif()
    if(MINGW)
        add_link_options(LINKER:--no-insert-timestamp)
    endif()
endif()
