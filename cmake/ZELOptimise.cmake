# The library's own calls of what it exports are bound within it and may be inlined, across its
# sources too in optimised builds. What a virtual table holds is not affected: hosts override as ever.
include(CheckIPOSupported)

function(zel_optimise target)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
    # The linker of mingw-w64 takes the addresses of exported names from before that, all of them wrong.
    if(MINGW)
        return()
    endif()
    check_ipo_supported(RESULT supported OUTPUT reason LANGUAGES CXX)
    if(supported)
        set_target_properties(${target} PROPERTIES
            INTERPROCEDURAL_OPTIMIZATION_RELEASE ON
            INTERPROCEDURAL_OPTIMIZATION_RELWITHDEBINFO ON)
    endif()
endfunction()
