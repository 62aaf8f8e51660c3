# shellcheck shell=bash
# Standard libraries, linkers, generators; a static library; a tree at an odd path.

# library_row TYPE COMPILER FLAGS [cmake arguments]: everything with those flags. The tests of the
# border that take two compilers are of other rows.
library_row()
{
    local type=$1 compiler=$2 flags=$3
    shift 3
    need_packages "${build_packages[@]}" "${test_packages[@]}"
    if [[ $compiler == clang++-* ]]; then
        need_packages "clang-${compiler#clang++-}"
    fi
    configure_row -D CMAKE_BUILD_TYPE="$type" -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_CXX_FLAGS="$flags" "$@"
    build_row
    test_row -E '^BorderOfModule\.(g|clang)\+\+'
}

# The same with a GoogleTest of its own: for flags that change the classes of the standard library.
library_row_with_googletest()
{
    need_packages "${build_packages[@]}"
    googletest_into "$folder/googletest" -D CMAKE_CXX_COMPILER="$2" -D CMAKE_CXX_FLAGS="$3"
    library_row "$@" -D CMAKE_PREFIX_PATH="$folder/googletest"
}

libcxx_row()
{
    need_packages "${build_packages[@]}" clang-14 libc++-14-dev libc++abi-14-dev
    library_row_with_googletest "$@"
}

# linked_by LINKER COMPILER [cmake arguments]: Release, with that linker.
linked_by()
{
    local flag=-fuse-ld=$1 compiler=$2
    shift 2
    library_row Release "$compiler" "" -D CMAKE_EXE_LINKER_FLAGS="$flag" \
        -D CMAKE_SHARED_LINKER_FLAGS="$flag" -D CMAKE_MODULE_LINKER_FLAGS="$flag" "$@"
}

lto_row()
{
    need_packages clang-14 llvm-14 lld-14
    if [[ $1 == clang* ]]; then
        linked_by lld "$1" -D CMAKE_INTERPROCEDURAL_OPTIMIZATION=ON
    else
        library_row Release "$1" "" -D CMAKE_INTERPROCEDURAL_OPTIMIZATION=ON
    fi
}

linkers_row()
{
    local linker top=$folder
    need_packages binutils lld mold
    for linker in gold lld mold; do
        say "$linker"
        folder=$top/$linker
        linked_by "$linker" g++ -D ZEL_BUILD_CONFORMANCE=OFF
    done
}

# The sample host too, with its plugin and all that it loads.
static_row()
{
    need_packages "${host_packages[@]}"
    library_row Debug g++ "" -D BUILD_SHARED_LIBS=OFF -D ZEL_BUILD_EXAMPLES=ON
}

static_release_row()
{
    library_row Release clang++-14 "" -D BUILD_SHARED_LIBS=OFF
}

# generators_row: make, and one build folder for several build types.
generators_row()
{
    local options=(-D CMAKE_COMPILE_WARNING_AS_ERROR=ON -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_BENCHMARKS=OFF)
    local border='^BorderOfModule\.(g|clang)\+\+' top=$folder type
    need_packages "${build_packages[@]}" "${test_packages[@]}"

    folder=$top/make
    configure --fresh -S . -B "$folder" -G "Unix Makefiles" -D CMAKE_BUILD_TYPE=Debug "${options[@]}"
    build_row
    test_row -E "$border"

    folder=$top/multi
    configure --fresh -S . -B "$folder" -G "Ninja Multi-Config" -D CMAKE_UNITY_BUILD=ON "${options[@]}"
    for type in Debug Release; do
        build_row --config "$type"
        test_row -C "$type" -E "$border"
    done
}

# A copy of the tree in a folder with blanks and umlauts in its name: the demo, and all tests.
odd_path_row()
{
    local place="$folder/Ö b/für Zel"
    mkdir -p "$place"
    find "$place" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
    tar --create --exclude=./build --exclude=./.git . | tar --extract --directory "$place"
    "$place/scripts/demo"
    "$place/scripts/test" dev
}

declare_row libc++ "clang++-14 with LLVM's standard library, GoogleTest built with it too" \
    libcxx_row Debug clang++-14 -stdlib=libc++
declare_row debug-containers "-D_GLIBCXX_DEBUG -D_GLIBCXX_DEBUG_PEDANTIC, GoogleTest built with it too" \
    library_row_with_googletest Debug g++ "-D_GLIBCXX_DEBUG -D_GLIBCXX_DEBUG_PEDANTIC"
declare_row old-strings "-D_GLIBCXX_USE_CXX11_ABI=0, GoogleTest built with it too" \
    library_row_with_googletest Debug g++ -D_GLIBCXX_USE_CXX11_ABI=0
# The exceptions of a plugin pass through the library: that needs one libgcc.
declare_row static-libstdc++ "GNU's standard library linked into each program and library" \
    library_row Release g++ -static-libstdc++
declare_row no-plt "-fno-plt, Release" library_row Release g++ -fno-plt
declare_row hidden "-fvisibility=hidden -fvisibility-inlines-hidden for all targets" \
    library_row Debug g++ "-fvisibility=hidden -fvisibility-inlines-hidden"
declare_row lto-g++ "link-time optimisation of all targets by g++" lto_row g++
declare_row lto-clang++-14 "that of clang++-14, with lld" lto_row clang++-14
declare_row linkers "the linkers gold, lld and mold" linkers_row
declare_row generators "make, and Ninja's build folder for several build types" generators_row
declare_row static "BUILD_SHARED_LIBS=OFF, the sample host and its plugin too" static_row
declare_row static-clang++-14 "BUILD_SHARED_LIBS=OFF, clang++-14, Release" static_release_row
declare_row odd-path "all tests and the demo in a folder with blanks and umlauts in its name" odd_path_row
