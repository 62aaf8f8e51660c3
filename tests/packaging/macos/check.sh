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
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' "$tree/CMakeLists.txt")
library=libZEL.${version%%.*}.dylib

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
    local file=$1 list=$2
    exported_from "$file" | patterns_of >"$file.names"
    LC_ALL=C sort "$list" | diff - "$file.names" || fail "other names are exported than are listed"
    local listed exported
    listed=$(grep -cE '^ *_Z[A-Za-z0-9_]*; # ' "$tree/cmake/libZEL.map")
    exported=$(exported_from "$file" | wc -l)
    ((listed == exported)) || fail "$exported names are exported, $listed listed"
    echo "exported: the $listed names of the list"
}

# A name that is listed and not defined stops the link, and one that is taken from the list is hidden.
check_list_counts()
{
    local build=$1 list=$1/libZEL.exp link
    cp "$list" "$list.kept"
    echo __ZN3ZEL4Node7missingEv >>"$list"
    link=$(ninja -C "$build" -t commands "libZEL.$version.dylib" | tail -n 1)
    link=${link//-undefined dynamic_lookup/-Wl,-undefined,error,--error-limit=0}
    (cd "$build" && sh -c "${link//libZEL.$version.dylib/refused.dylib}") >"$build/refused.log" 2>&1 \
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
    has "host" "$first/build/firstHost" EXECUTE "name @rpath/$library" "path $prefix/lib"
    cmake --install "$first/build" --prefix "$bundle" >>"$first.log"
    has "library in the bundle" "$bundle/lib/$library" DYLIB "name @rpath/$library"
    has "host in the bundle" "$bundle/bin/firstHost" EXECUTE "name @rpath/$library" \
        "path @loader_path/../lib"
    has "plugin in the bundle" "$bundle/lib/plugins/firstPlugin.so" BUNDLE "path @loader_path/.. "
    if grep -rlF "$folder" "$bundle"; then
        fail "these files name the folder of the build"
    fi
}

# The archive as a part of the first host, which shows it to the plugin.
build_static()
{
    local first="$folder/static first" shown
    echo "== $architecture, static"
    cmake -S "$tree" -B "$folder/static" "${options[@]}" "${alone[@]}" -D BUILD_SHARED_LIBS=OFF \
        -D CMAKE_INSTALL_PREFIX="$folder/static installed" >"$folder/static.log"
    cmake --build "$folder/static" >>"$folder/static.log" || fail "$(tail -n 30 "$folder/static.log")"
    cmake --install "$folder/static" >>"$folder/static.log"
    cmake -S "$tree/examples/first" -B "$first" "${options[@]}" \
        -D CMAKE_PREFIX_PATH="$folder/static installed" >"$first.log"
    cmake --build "$first" >>"$first.log" || fail "$(tail -n 30 "$first.log")"
    shown=$(exported_from "$first/firstHost" | grep -c '^__Z.*3ZEL')
    ((shown >= 400)) || fail "the host shows $shown names of the library"
    if exported_from "$first/firstPlugin.so" | grep -x __ZN3ZEL7RuntimeC2Ev; then
        fail "the plugin has a library of its own"
    fi
    echo "the host shows $shown names of the library, the plugin has none of them"
}

build()
{
    local architecture=$1 build=$folder/$1 prefix="$folder/$1 installed"
    local options=(-G Ninja --fresh -D CMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake"
        -D ZEL_ARCHITECTURE="$architecture" -D ZEL_C_HEADERS="$folder/c" -D CMAKE_BUILD_TYPE=Release)
    local alone=(-D CMAKE_COMPILE_WARNING_AS_ERROR=ON -D CMAKE_UNITY_BUILD=ON
        -D CMAKE_UNITY_BUILD_BATCH_SIZE=32 -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_TESTS=OFF
        -D ZEL_BUILD_BENCHMARKS=OFF -D ZEL_BUILD_CONFORMANCE=OFF)
    rm -f "$build"/libZEL.exp* # Of a run that was broken off.
    echo "== $architecture"
    cmake -S "$tree" -B "$build" "${options[@]}" "${alone[@]}" -D CMAKE_INSTALL_PREFIX="$prefix" \
        >"$build.log"
    cmake --build "$build" >>"$build.log" || fail "$(tail -n 30 "$build.log")"
    # shellcheck disable=SC2016
    if grep -nE -e 'version-script|soname|no-undefined|-z defs|as-needed|gnu-unique|semantic-interposition|\$ORIGIN' \
        "$build/build.ninja"; then
        fail "these options are GNU's alone"
    fi
    has "library" "$build/$library" "@rpath/$library" "current version $version"
    check_names "$build/libZEL.dylib" "$build/libZEL.exp"
    check_list_counts "$build"

    rm -rf "$prefix"
    cmake --install "$build" >/dev/null
    (cd "$prefix" && ls lib/libZEL.dylib "lib/$library" lib/libZEL.*.*.*.dylib)
    build_bundle
    if [[ $architecture == arm64 ]]; then
        build_static
    fi
}

write_headers
build arm64
build x86_64
