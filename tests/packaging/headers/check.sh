#!/usr/bin/env bash
# check.sh COMPILER STANDARD FOLDER [SOURCE...]: compiles the public headers of the folder, with the
# oldest standard each by itself, then the sources, as a user's own code with more warnings than most
# turn on, all errors.
# Ends with 77, "skipped", when there is no such compiler.
set -euo pipefail
compiler=$1 standard=$2 folder=$3
shift 3
command -v "$compiler" >/dev/null || { echo "skipped: no $compiler here"; exit 77; }

options=(-std="$standard" -fsyntax-only -Werror -I "$folder")
if [[ $("$compiler" --version) == *clang* ]]; then
    # Everything but what asks for older C++, for other layouts of a class, or for another style.
    options+=(-Weverything -Wno-c++98-compat -Wno-c++98-compat-pedantic -Wno-padded
        -Wno-unknown-warning-option -Wno-unsafe-buffer-usage -Wno-pre-c++17-compat)
fi
options+=(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual)

bad=0
headers=("$folder/zel.h")
if [[ $standard == c++17 ]]; then
    headers=("$folder"/*.h)
fi
for header in "${headers[@]}"; do
    "$compiler" "${options[@]}" -x c++ - <<<"#include \"${header##*/}\"" || bad=1
done
for source; do
    "$compiler" "${options[@]}" "$source" || bad=1
done
exit $bad
