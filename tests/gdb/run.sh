#!/usr/bin/env bash
# Lets gdb show the objects of a small program and compares what it shows with expected.txt, with the
# library of the build tree, with an installed one in a moved tree, and with a stripped one; of a static
# library, with the script of the installed tree.
#   run.sh GDB CMAKE BUILD_DIR LIB_DIR WORK_DIR LIBRARY PROGRAM
set -euo pipefail
gdb=$1 cmake=$2 build=$3 libdir=$4 work=$5 library=$6 program=$7
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

# expect FILE WHAT FOLDER [for gdb]...: what gdb shows when it runs the program with the library in the
# folder; only that folder is safe.
expect()
{
    local expected=$1 what=$2 folder=$3
    shift 3
    LD_LIBRARY_PATH=$folder "$gdb" -batch -nx -iex "set debuginfod enabled off" \
        -iex "add-auto-load-safe-path $folder" "$@" -x "$here/commands.gdb" "$program" \
        >"$work/output.txt" 2>&1 || true
    if grep -qiE 'ptrace|could not trace' "$work/output.txt"; then
        echo "SKIPPED: this system does not let gdb run a program"
        exit 77
    fi
    if ! grep -q __cxx11 "$library" \
        && grep -q '<no object: texts of another standard library>' "$work/output.txt"; then
        echo "SKIPPED: the printers read the strings of GNU's standard library"
        exit 77
    fi
    if grep -E 'Python Exception|Traceback|Error|auto-loading has been declined' "$work/output.txt"; then
        echo "gdb failed on the library in $folder"
        exit 1
    fi
    diff -u --label "expected ($what)" --label "shown" "$expected" <(sed -n 's/^show: //p' "$work/output.txt") \
        || { sed 's/^/gdb: /' "$work/output.txt"; exit 1; }
    echo "As expected: $what"
}

rm -rf "$work"
mkdir -p "$work"
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"
installed=$work/moved/$libdir

if [[ $library == *.a ]]; then
    expected=$here/expectedStripped.txt
    [[ $(readelf --sections --wide "$library") != *debug_info* ]] || expected=$here/expected.txt
    expect "$expected" "a static library" "$installed" -x "$installed/libZEL-gdb.py"
    exit
fi
if [[ $(readelf --sections --wide "$library") == *debug_info* ]]; then
    expect "$here/expected.txt" "the library of the build tree" "$(dirname "$library")"
    expect "$here/expected.txt" "an installed library" "$installed"
else
    echo "The library was built without debug information: only that case is tested"
fi
strip --strip-debug "$installed/$(basename "$library")"
expect "$here/expectedStripped.txt" "a library without debug information" "$installed"
