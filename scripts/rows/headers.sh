# shellcheck shell=bash
# What cannot be run here, as far as other tools show it.

# Microsoft's, by clang with its rules and its layout of objects.
microsoft_row()
{
    need_packages clang-14 googletest libc++-14-dev mingw-w64-x86-64-dev
    tests/packaging/msvc/check.sh "$folder"
}

declare_row msvc-headers "read as by Microsoft's compiler; virtual tables as stored; not run" microsoft_row

# The library, hosts and plugins with Microsoft's objects and calls, run with its run-time library of Wine.
microsoft_run_row()
{
    need_packages clang-14 libc++-14-dev lld-14 llvm-14 mingw-w64-x86-64-dev wine64
    export WINEPREFIX=$folder/wine WINEDEBUG=-all
    unset DISPLAY WAYLAND_DISPLAY
    trap '/usr/lib/wine/wineserver64 -k || true' EXIT
    /usr/lib/wine/wine64 wineboot
    tests/packaging/msvc/run.sh "$folder"
}

declare_row msvc-run "Microsoft's layout of objects by clang, with libc++ and Wine: hosts with plugins" microsoft_run_row

# Apple's: built by LLVM's tools, on another system's C headers.
macos_row()
{
    need_packages "${build_packages[@]}" clang-14 libc++-14-dev lld-14 llvm-14 musl-dev
    tests/packaging/macos/check.sh "$folder"
}

declare_row macos "macOS, arm64 and x86-64: compiled, linked, names and paths checked; not run" macos_row
