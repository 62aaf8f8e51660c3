# shellcheck shell=bash
# The sources as compilers see them that cannot be had here: read, not linked and not run.

# Microsoft's, by clang with its rules and its layout of objects.
microsoft_row()
{
    need_packages clang-14 googletest libc++-14-dev mingw-w64-x86-64-dev
    tests/packaging/msvc/check.sh "$folder"
}

declare_row msvc-headers "read as by Microsoft's compiler; virtual tables as stored; not run" microsoft_row
