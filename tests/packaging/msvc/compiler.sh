# shellcheck shell=bash disable=SC2034
# Sourced by the scripts beside it, with their folder in $here: how clang is called so that it takes the
# sources as Microsoft's compiler would.
llvm=/usr/lib/llvm-14
compiler=(clang++-14 --target=x86_64-pc-windows-msvc -fms-compatibility -fms-extensions
    -fms-compatibility-version=19.29 -nostdinc
    -D_UCRT -D_DLL -D_MT -D_LIBCPP_NO_VCRUNTIME -D_LIBCPP_WCHAR_H_HAS_CONST_OVERLOADS=1
    -isystem "$llvm/include/c++/v1" -isystem "$(echo "$llvm"/lib/clang/14*/include)"
    -isystem /usr/x86_64-w64-mingw32/include -isystem /usr/src/googletest/googletest/include
    -include "$here/crt.h")
