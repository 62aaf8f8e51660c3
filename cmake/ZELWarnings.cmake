# The warnings that every target of the project builds with. The presets dev, asan and clang make
# them errors.
function(zel_warnings target)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4)
        return()
    endif()
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual -Wnon-virtual-dtor)
endfunction()

# The library's classes need their virtual tables and type information in one place, the library:
# dynamic_cast across its border depends on it.
function(zel_library_warnings target)
    zel_warnings(${target})
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wweak-vtables>)
endfunction()
