#!/usr/bin/env bash
# cross.sh HOST-COMPILER MODULE-COMPILER LIBRARY INCLUDE FLAGS FOLDER: host and module by different
# compilers, run with the library as it is. Ends with 77, "skipped", where that cannot be.
set -euo pipefail
host_compiler=$1 module_compiler=$2 library=$3 include=$4 flags=$5 folder=$6
here=$(dirname "${BASH_SOURCE[0]}")
for compiler in "$host_compiler" "$module_compiler"; do
    command -v "$compiler" >/dev/null || { echo "skipped: no $compiler here"; exit 77; }
done
[[ $flags != *-fsanitize* && $flags != *--coverage* ]] || { echo "skipped: two compilers do not share the runtime of $flags"; exit 77; }

options=(-std=c++17 -fvisibility=hidden -fvisibility-inlines-hidden -I "$include")
of_host=("$library") of_module=("$library")
if [[ $library == *.a ]]; then # A part of the host, which shows it to the module.
    options+=(-D ZEL_STATIC)
    of_host=(-Wl,--whole-archive "$library" -Wl,--no-whole-archive
        "-Wl,--dynamic-list=$here/../../../cmake/libZEL.dynamic")
    of_module=()
fi
mkdir -p "$folder"
"$module_compiler" "${options[@]}" -shared -fPIC "$here/module.cpp" "${of_module[@]}" -o "$folder/module.so"
"$host_compiler" "${options[@]}" "$here/host.cpp" "${of_host[@]}" -ldl -o "$folder/host"
LD_LIBRARY_PATH=$(dirname "$library") "$folder/host" "$folder/module.so"
