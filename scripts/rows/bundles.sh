# shellcheck shell=bash
# What hosts take along: docs/bundling.md. On Linux the test Bundled shows it in every row.

# The first host, its plugin and the library in a tree of their own, moved, under Wine.
windows_bundle_row()
{
    need_packages "${build_packages[@]}" make g++-mingw-w64-x86-64-posix wine64
    local toolchain=$PWD/cmake/toolchains/windows-x86_64.cmake
    configure_row -D CMAKE_TOOLCHAIN_FILE="$toolchain" -D CMAKE_BUILD_TYPE=Release \
        -D ZEL_BUILD_TESTS=OFF -D ZEL_BUILD_CONFORMANCE=OFF
    build_row
    start_wine
    export WINEPATH= # Its own folder of Windows has no other DLL.
    tests/packaging/bundled.sh "$folder" "$folder/bundled" "$toolchain" /usr/lib/wine/wine64
}

# Python's module for Windows.
windows_python_row()
{
    need_packages "${build_packages[@]}" "${python_packages[@]}" binutils-mingw-w64-x86-64 \
        g++-mingw-w64-x86-64-posix dpkg-dev
    tests/packaging/windows-python.sh "$folder"
}

declare_row windows-bundle "Windows: a host with its plugin as it is shipped, under Wine" windows_bundle_row
declare_row windows-python "Windows: Python's module zel, compiled and linked; not run" windows_python_row
