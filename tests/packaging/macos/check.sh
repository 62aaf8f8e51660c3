#!/usr/bin/env bash
# check.sh FOLDER: builds the library and the first host and plugin for macOS by LLVM's tools, as far as
# that goes without Apple's: compiled and linked, on libc++ and another system's C headers, and not run.
# What the linker was told is read from the files. FOLDER takes the builds.
set -euo pipefail
mkdir -p "$1"
folder=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(cd "$here/../../.." && pwd)
llvm=/usr/lib/llvm-14/bin

fail()
{
    printf '%s\n' "$*"
    exit 1
}

# has WHAT FILE PATTERN...: the commands for the loader in the file say each of these.
has()
{
    local what=$1 file=$2 pattern said
    shift 2
    said=$("$llvm/llvm-objdump" --macho --private-headers "$file")
    for pattern; do
        [[ $said == *$pattern* ]] || fail "$what: nothing of $pattern in $said"
    done
    echo "$what: $(printf '%s; ' "$@")"
}

# The standard's types of macOS in the C headers of musl: of 64 bits is long long.
write_headers()
{
    rm -rf "$folder/c"
    cp -r /usr/include/x86_64-linux-musl "$folder/c"
    sed -i 's/^#define _Int64 long$/#define _Int64 long long/' "$folder/c/bits/alltypes.h"
    grep -q '_Int64 long long' "$folder/c/bits/alltypes.h" || fail "musl has other headers now"
}

# A name that is called otherwise for what the standard library has of its own, as the list has it.
patterns_of()
{
    sed -E 's/^__ZThn[0-9]+_/__ZThn*_/; s/NSt3__1.*/*/' | LC_ALL=C sort -u
}

exported_from()
{
    "$llvm/llvm-nm" --extern-only --defined-only --just-symbol-name "$1"
}

check_names()
{
    local library=$1 list=$2
    exported_from "$library" | patterns_of >"$library.names"
    LC_ALL=C sort "$list" | diff - "$library.names" || fail "other names are exported than are listed"
    local listed exported
    listed=$(grep -cE '^ *_Z[A-Za-z0-9_]*; # ' "$tree/cmake/libZEL.map")
    exported=$(exported_from "$library" | wc -l)
    ((listed == exported)) || fail "$exported names are exported, $listed listed"
    echo "exported: the $listed names of the list"
}

# A name that is listed and not defined stops the link, and one that is taken from the list is hidden.
check_list_counts()
{
    local build=$1 list=$1/libZEL.exp link
    cp "$list" "$list.kept"
    echo __ZN3ZEL4Node7missingEv >>"$list"
    link=$(ninja -C "$build" -t commands libZEL.0.1.0.dylib | tail -n 1)
    link=${link//-undefined dynamic_lookup/-Wl,-undefined,error,--error-limit=0}
    (cd "$build" && sh -c "${link//libZEL.0.1.0.dylib/refused.dylib}") >"$build/refused.log" 2>&1 \
        && fail "a name that is missing was linked"
    grep 'undefined symbol: .*ZEL' "$build/refused.log" | sort -u >"$build/refused"
    [[ $(<"$build/refused") == *"Node::missing()" ]] || fail "$(<"$build/refused.log")"
    grep -v __ZN3ZEL4Node10isCompoundEv "$list.kept" >"$list"
    cmake --build "$build" >/dev/null
    if exported_from "$build/libZEL.dylib" | grep -x __ZN3ZEL4Node10isCompoundEv; then
        fail "a name is exported that was taken from the list"
    fi
    mv "$list.kept" "$list"
    cmake --build "$build" >/dev/null
    echo "a missing name stops the link, one that is not listed is hidden"
}

# The first host with the page's lines, which say where its files lie and find each other.
build_bundle()
{
    local first=$build/first bundle="$folder/$architecture bundle"
    rm -rf "$first" "$bundle"
    cp -r "$tree/examples/first" "$first"
    awk '/^```cmake$/ { inside = 1; next } /^```/ { inside = 0 } inside' "$tree/docs/bundling.md" \
        >>"$first/CMakeLists.txt"
    cmake -S "$first" -B "$first/build" "${options[@]}" -D CMAKE_PREFIX_PATH="$prefix" >"$first.log"
    cmake --build "$first/build" >>"$first.log" || fail "$(tail -n 30 "$first.log")"
    has "host" "$first/build/firstHost" EXECUTE "name @rpath/libZEL.0.dylib" "path $prefix/lib"
    cmake --install "$first/build" --prefix "$bundle" >>"$first.log"
    has "library in the bundle" "$bundle/lib/libZEL.0.dylib" DYLIB "name @rpath/libZEL.0.dylib"
    has "host in the bundle" "$bundle/bin/firstHost" EXECUTE "name @rpath/libZEL.0.dylib" \
        "path @loader_path/../lib"
    has "plugin in the bundle" "$bundle/lib/plugins/firstPlugin.so" BUNDLE "path @loader_path/.. "
    if grep -rlF "$folder" "$bundle"; then
        fail "these files name the folder of the build"
    fi
}

build()
{
    local architecture=$1 build=$folder/$1 prefix="$folder/$1 installed"
    local options=(-G Ninja --fresh -D CMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake"
        -D ZEL_ARCHITECTURE="$architecture" -D ZEL_C_HEADERS="$folder/c" -D CMAKE_BUILD_TYPE=Release)
    rm -f "$build"/libZEL.exp* # Of a run that was broken off.
    echo "== $architecture"
    cmake -S "$tree" -B "$build" "${options[@]}" -D CMAKE_INSTALL_PREFIX="$prefix" \
        -D CMAKE_COMPILE_WARNING_AS_ERROR=ON -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=32 \
        -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_TESTS=OFF -D ZEL_BUILD_BENCHMARKS=OFF \
        -D ZEL_BUILD_CONFORMANCE=OFF >"$build.log"
    cmake --build "$build" >>"$build.log" || fail "$(tail -n 30 "$build.log")"
    # shellcheck disable=SC2016
    if grep -nE -e 'version-script|soname|no-undefined|-z defs|as-needed|gnu-unique|semantic-interposition|\$ORIGIN' \
        "$build/build.ninja"; then
        fail "these options are GNU's alone"
    fi
    has "library" "$build/libZEL.0.dylib" "@rpath/libZEL.0.dylib" "current version 0.1.0"
    check_names "$build/libZEL.dylib" "$build/libZEL.exp"
    check_list_counts "$build"

    rm -rf "$prefix"
    cmake --install "$build" >/dev/null
    (cd "$prefix" && ls lib/libZEL.dylib lib/libZEL.0.dylib lib/libZEL.*.*.*.dylib)
    build_bundle
}

write_headers
build arm64
build x86_64
