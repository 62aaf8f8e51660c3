#!/usr/bin/env bash
# Uses what a package has brought, as its users do: builds the consumer in both ways and the tests of the
# conformance kit, edits a document by both programs and in Python, lets gdb show the objects.
#   use.sh PREFIX TESTS DOCUMENTS WORK
# With the prefix /usr everything is found without being told where; otherwise it is told.
set -euo pipefail
prefix=$1 tests=$2 documents=$3 work=$4
gate=$documents/rusty_painted_gate.mtlx
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
export HOME=$work/home XDG_RUNTIME_DIR=$work/home
mkdir -p "$HOME"
chmod 700 "$HOME"
zelsh=zelsh zeledit=zeledit
if [[ $prefix != /usr ]]; then
    zelsh=$prefix/bin/zelsh zeledit=$prefix/bin/zeledit
fi

step()
{
    printf '== %s\n' "$*"
}

wrong()
{
    printf 'wrong: %s\n' "$*"
    exit 1
}

find_package_builds()
{
    step "A host through find_package"
    local hint=()
    [[ $prefix == /usr ]] || hint=(-D CMAKE_PREFIX_PATH="$prefix")
    cmake -S "$tests/packaging/consumer" -B "$work/consumer" "${hint[@]}" >"$work/cmake.log" \
        || { cat "$work/cmake.log"; exit 1; }
    cmake --build "$work/consumer" >>"$work/cmake.log" || { cat "$work/cmake.log"; exit 1; }
    "$work/consumer/consumer"
    [[ $(sed -n 's/^ZEL_DIR:PATH=//p' "$work/consumer/CMakeCache.txt") == "$prefix"/lib/* ]] \
        || wrong "another package was found: $(grep ^ZEL_DIR "$work/consumer/CMakeCache.txt")"
    step "The conformance kit"
    "$work/consumer/conformance" --gtest_brief=1
}

pkg_config_builds()
{
    step "A host through pkg-config"
    [[ $prefix == /usr ]] || export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    local flags
    flags=$(pkg-config --cflags --libs zel)
    [[ $prefix == /usr ]] || export LD_LIBRARY_PATH=$prefix/lib
    eval "g++ -std=c++17 \"\$tests/packaging/consumer/consumer.cpp\" -o \"\$work/plainConsumer\" $flags"
    "$work/plainConsumer"
    if command -v gdb >/dev/null; then
        eval "g++ -std=c++17 -g -O0 \"\$tests/gdb/zelGdbProgram.cpp\" -o \"\$work/zelGdbProgram\" $flags"
        gdb_shows
    fi
    unset LD_LIBRARY_PATH
}

gdb_shows()
{
    step "gdb finds the printers"
    gdb -batch -nx -iex "set debuginfod enabled off" -iex "add-auto-load-safe-path $prefix" \
        -x "$tests/gdb/commands.gdb" "$work/zelGdbProgram" >"$work/gdb.txt" 2>&1 || true
    if grep -qiE 'ptrace|could not trace' "$work/gdb.txt"; then
        echo "gdb cannot run a program here: not tried"
        return
    fi
    sed -n 's/^show: //p' "$work/gdb.txt" | diff -u "$tests/gdb/expectedStripped.txt" - \
        || { cat "$work/gdb.txt"; exit 1; }
}

programs_edit()
{
    step "zelsh and zeledit"
    "$zelsh" "$gate" -c "rename Top.NG_gate.chipping chips" -c check -c "save $work/chips.mtlx" 2>"$work/err"
    [[ ! -s $work/err ]] || wrong "zelsh says: $(<"$work/err")"
    "$zelsh" "$work/chips.mtlx" -c "find Top.NG_gate.chips" >/dev/null || wrong "the name was not saved"
    "$zelsh" --new "$work/new.mtlx" -c "create add sum" | grep ND_add_float >/dev/null || wrong "no definitions"
    "$zeledit" "$work/chips.mtlx" --screenshot "$work/window.png" --compound Top.NG_gate 2>"$work/err"
    [[ -s $work/window.png && ! -s $work/err ]] || wrong "zeledit says: $(<"$work/err")"
    "$zeledit" --keys | grep 'Ctrl+G' >/dev/null || wrong "zeledit prints no keys"
}

python_edits()
{
    step "Python"
    if [[ $prefix != /usr ]]; then
        PYTHONPATH=$(echo "$prefix"/lib/python3*/dist-packages)
        export PYTHONPATH
    fi
    /usr/bin/python3 -c "import zel; import zel.shading; print(zel.Node.__module__, zel.shading.__name__)"
    (cd "$work" && /usr/bin/python3 "$tests/python/installed/installed.py" "$prefix" "$documents" 1)
    unset PYTHONPATH
}

find_package_builds
pkg_config_builds
programs_edit
python_edits
