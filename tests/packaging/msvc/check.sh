#!/usr/bin/env bash
# check.sh FOLDER [--write]: reads the library and what uses it as Microsoft's compiler would, as far
# as clang shows that: with Microsoft's rules of the language and the target's objects, on libc++ and
# the C headers of mingw-w64 in place of Microsoft's, which cannot be had here. Nothing is linked.
# FOLDER takes what is made on the way. --write stores the slots anew.
set -euo pipefail
shopt -s extglob
folder=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/../../.."
mkdir -p "$folder"

source "$here/compiler.sh"
strict=(-fsyntax-only -Wall -Wextra -Wpedantic -Wmicrosoft -Wshadow -Woverloaded-virtual
    -Wnon-virtual-dtor -Wno-pragma-once-outside-header -Werror -I include)
# A library's own: an object that notes a class's name is made where its module is loaded.
whole=(-Weverything -Wno-c++98-compat -Wno-c++98-compat-pedantic -Wno-padded
    -Wno-global-constructors -Wno-exit-time-destructors)
sources=({core,graph,editor,plugins,commands}/*.cpp)

# each WHAT OPTIONS... -- FILES...: compiles each of the files, as many at once as there are cores.
each()
{
    local what=$1 options=()
    shift
    while [[ $1 != -- ]]; do
        options+=("$1")
        shift
    done
    shift
    printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -I '{}' \
        "${compiler[@]}" -std=c++17 "${strict[@]}" "${options[@]}" -x c++ '{}'
    printf '%3d files  %s\n' $# "$what"
}

# refused WORDS OPTIONS...: the headers say so.
refused()
{
    local words=$1 said
    shift
    said=$("${compiler[@]}" -fsyntax-only -I include "$@" tests/packaging/headers/use.cpp 2>&1) \
        && { echo "compiled: $*"; return 1; }
    [[ $said == *"$words"* ]] || { printf '%s\nsaid nothing of: %s\n' "$said" "$words"; return 1; }
    echo "  refused  $words"
}

# What is compiled where neither clang nor gcc is: the standard's headers are read first.
write_foreign()
{
    {
        echo "#pragma once"; echo "#pragma clang system_header"
        cat "$here/crt.h" "${sources[@]}" {core,graph,editor,plugins,commands,include}/*.h \
            | grep -hE '^#include <[a-z_]+>' | sort -u
        printf '%s\n' '#include <setjmp.h>' '#undef _setjmp' # Of other arguments than clang's.
        echo '#include <intrin.h>'
        echo '#undef __clang__'
    } >"$folder/foreign.h"
    local room
    for room in core graph editor plugins commands; do
        printf '#include "%s"\n' "$room"/*.cpp >"$folder/$room.cpp"
    done
}

# What gcc alone knows must be gone when that compiler has read the conditions.
no_gcc()
{
    local source
    for source in "$folder"/{core,graph,editor,plugins,commands}.cpp tests/packaging/headers/use.cpp; do
        "${compiler[@]}" -std=c++17 -E -I include -I . -include "$folder/foreign.h" "$source"
    done | awk '/^# [0-9]+ "/ { file = $3; next }
        file !~ /^"(\/|<)/ && /__attribute__|__builtin|__extension__|__typeof|#pragma GCC|__PRETTY_|__int128|__asm/ {
            print file ": " $0; bad = 1 }
        NF && file !~ /^"(\/|<)/ { ++lines }
        END { if (bad || lines < 1000) exit 1; print lines " lines  without a word of gcc" }'
}

# The macros of windows.h must change no name of the headers.
no_macros()
{
    "${compiler[@]}" -std=c++17 -E -dM -include windows.h -x c++ /dev/null \
        | sed -n 's/^#define \([A-Za-z_0-9]*\).*/\1/p' | sort -u >"$folder/macros"
    (($(wc -l <"$folder/macros") > 10000)) || { echo "windows.h defines too little"; return 1; }
    "${compiler[@]}" -std=c++17 -fsyntax-only -I include -Xclang -dump-tokens include/zel.h 2>&1 \
        | awk -F"'" '/^(raw_)?identifier / && /Loc=<(include|\.\/include)\// { print $2 }' \
        | sort -u >"$folder/names"
    (($(wc -l <"$folder/names") > 300)) || { echo "too few names were read"; return 1; }
    comm -12 "$folder/macros" "$folder/names" >"$folder/taken"
    [[ ! -s $folder/taken ]] || { printf 'a macro of windows.h: %s\n' "$(<"$folder/taken")"; return 1; }
    echo "$(wc -l <"$folder/names") names  none is a macro of windows.h"
}

# The tables as that compiler lays them out: the slots from 0 on, one of them the destructor's.
slots()
{
    "${compiler[@]}" -std=c++17 -I include -S -emit-llvm -o "$folder/slots.ll" \
        -Xclang -fdump-vtable-layouts "$here/slots.cpp" \
        | awk '/^VFTable for / { shown = !/anonymous/; $1 = $2 = ""; gsub(/ \([0-9]+ entr.*/, "") }
            /^$/ { shown = 0 }
            !shown || /RTTI$/ || /this adjustment/ { next }
            / \| / { printf "%4d %s\n", $1 - 1, substr($0, index($0, "|") + 1); next }
            { print "" ; print }' \
        | sed -E "s/^ +'/'/; s/'ZEL::(\w+)'( in 'ZEL::(\w+)')?\.?/\1 \3/; s/^(\w+) (\w+)$/\2, as \1/
            s/^(\w+) $/\1/; s/ZEL:://g; s/ \[scalar deleting\]//" >"$folder/slots.txt"
}

"${compiler[@]}" --version | head -n 1
each "public headers, imported" -- include/*.h
each "public headers, exported" -DZEL_EXPORTS -- include/*.h
each "public headers of the static library" -DZEL_STATIC -- include/*.h
users=(tests/packaging/headers/use.cpp tests/packaging/consumer/consumer.cpp examples/first/firstPlugin.cpp)
each "a user's code with every warning" "${whole[@]}" -- "${users[@]}"
each "a user's code with every warning, C++20" "${whole[@]}" -std=c++20 -- "${users[@]}"
each "a user's code behind windows.h" -include windows.h -- "${users[@]}" include/zel.h
no_macros
refused "compile with /GR" -std=c++17 -fno-rtti
refused "compile with /std:c++17" -std=c++14
each "sources of the library, exported" -DZEL_EXPORTS -I . -- "${sources[@]}"
write_foreign
each "its rooms, where neither clang nor gcc is" -DZEL_EXPORTS -I . -include "$folder/foreign.h" \
    -- "$folder"/{core,graph,editor,plugins,commands}.cpp
no_gcc
# The test of the slots reads pointers to members as gcc makes them; here the tables stand below.
each "what uses the library" -I . -I conformance -I tests/library -DZEL_SOURCE_DIR='"."' \
    -- {examples/first,conformance}/*.cpp tests/library/!(zelSlotTest).cpp

slots
if [[ ${2:-} == --write ]]; then
    cp "$folder/slots.txt" "$here/slots.txt"
fi
diff -u "$here/slots.txt" "$folder/slots.txt"
echo "$(grep -c '^ ' "$here/slots.txt") slots stand where they stood"
