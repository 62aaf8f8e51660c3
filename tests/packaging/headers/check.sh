#!/usr/bin/env bash
# check.sh COMPILER STANDARD FOLDER SOURCE...: compiles the sources, which include the public headers
# of the folder, as a user's own code with more warnings than most turn on, all errors. That each header
# stands by itself shows when the presets dev and clang are built.
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
for source; do
    "$compiler" "${options[@]}" "$source" || bad=1
done
exit $bad
