# shellcheck shell=bash
# 64-bit Windows by Debian's g++-mingw-w64, and its programs under Wine.

wineserver=/usr/lib/wine/wineserver64
toolchain=$PWD/cmake/toolchains/windows-x86_64.cmake

# A Wine of the row's own: its folder of Windows lies in the row's. Its services are started before the
# tests, whose output they would keep open otherwise, and end with the row.
start_wine()
{
    export WINEPREFIX=$folder/wine WINEDEBUG=-all
    unset DISPLAY WAYLAND_DISPLAY
    trap '"$wineserver" -k || true' EXIT
    mkdir -p "$WINEPREFIX"
    "$wineserver" -p
    cmake/toolchains/run-on-wine wineboot
}

# How a program finds its own file, which a bundle of a host goes by.
find_own_program()
{
    local program=$folder/ownProgram.exe said
    x86_64-w64-mingw32-g++-posix -std=c++17 -Wall -Wextra -Werror -I host -x c++ host/base/programPath.cpp \
        - -o "$program" <<<'#include "base/programPath.h"
#include <iostream>
int main() { std::cout << shading::programPath().filename().string(); }'
    said=$(cmake/toolchains/run-on-wine "$program")
    [[ $said == ownProgram.exe ]] || fail "a program takes \"$said\" for its own file"
}

# windows_row [cmake arguments]
windows_row()
{
    [[ $PWD != *[![:ascii:]]* ]] \
        || not_run "programs of Windows read the tests' files in folders with ASCII names only"
    need_packages ccache cmake make ninja-build pkgconf g++-mingw-w64-x86-64-posix wine64
    start_wine
    googletest_into "$folder/googletest" -D CMAKE_TOOLCHAIN_FILE="$toolchain"
    configure_row -D CMAKE_TOOLCHAIN_FILE="$toolchain" -D CMAKE_PREFIX_PATH="$folder/googletest" "$@"
    build_row
    find_own_program
    test_row
}

# The archive, for a host that has its plugins in itself: installed, and linked by both packages; and a
# program with a plugin in it.
windows_static_row()
{
    local consumer=tests/packaging/consumer prefix=$folder/installed flags source program
    need_packages ccache cmake make ninja-build pkgconf g++-mingw-w64-x86-64-posix wine64
    start_wine
    configure_row -D CMAKE_TOOLCHAIN_FILE="$toolchain" -D CMAKE_BUILD_TYPE=Release -D BUILD_SHARED_LIBS=OFF \
        -D ZEL_BUILD_TESTS=OFF -D ZEL_BUILD_CONFORMANCE=OFF
    build_row
    rm -rf "$prefix"
    cmake --install "$folder" --prefix "$prefix"
    [[ ! -e $prefix/bin/libZEL.dll ]]

    configure --fresh -S "$consumer" -B "$folder/consumer" -G Ninja -D CMAKE_TOOLCHAIN_FILE="$toolchain" \
        -D CMAKE_PREFIX_PATH="$prefix"
    cmake --build "$folder/consumer"
    cmake/toolchains/run-on-wine "$folder/consumer/consumer.exe"

    export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    eval "flags=($(pkg-config --cflags --libs zel))" # An array: the path may have blanks.
    for source in "$consumer/consumer.cpp" tests/abi/border/builtIn.cpp; do
        program=$folder/consumer/byPkgConfig-$(basename "$source" .cpp).exe
        x86_64-w64-mingw32-g++-posix -std=c++17 "$source" "${flags[@]}" -o "$program"
        cmake/toolchains/run-on-wine "$program"
    done
}

declare_row windows "Windows, x86-64: g++ of mingw-w64, Release, exported by the list, under Wine" \
    windows_row -D CMAKE_BUILD_TYPE=Release
declare_row windows-debug "Windows, x86-64: Debug, exported by the marks in the headers" \
    windows_row -D CMAKE_BUILD_TYPE=Debug -D ZEL_EXPORT_LIST=OFF
declare_row windows-static "Windows, x86-64: the archive in a host without modules" windows_static_row
