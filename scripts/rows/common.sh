# shellcheck shell=bash disable=SC2034
# Sourced by scripts/matrix before the rows: how a row is declared, and the steps that rows share.
# A row is a function that runs in a shell of its own, at the top of the tree, and fails by a non-zero
# exit; what it prints goes to build/matrix/NAME/log. $folder is build/matrix/NAME: it is kept, so a
# second run builds what changed. A row that cannot be run on a machine says why in its last line and
# exits with 77.

row_names=()
declare -A row_titles row_commands

# declare_row NAME TITLE FUNCTION [ARGUMENT]...: the order of the declarations is the table's.
declare_row()
{
    local name=$1 title=$2
    shift 2
    row_names+=("$name")
    row_titles[$name]=$title
    row_commands[$name]=$(printf '%q ' "$@")
}

# Ends a row that this machine cannot run.
not_run()
{
    printf '%s\n' "$*"
    exit 77
}

# Configures the library, its tests and the conformance kit in $folder; the arguments are cmake's. A
# later -D counts, so a row can have the sample host, or each source compiled by itself. Nothing of an
# earlier configuration is kept.
configure_row()
{
    configure --fresh -S . -B "$folder" -G Ninja -D CMAKE_BUILD_TYPE=Debug \
        -D CMAKE_COMPILE_WARNING_AS_ERROR=ON -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=32 \
        -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_BENCHMARKS=OFF "$@"
}

# Builds what configure_row has configured; the arguments are those of cmake --build.
build_row()
{
    cmake --build "$folder" --parallel "$(nproc)" "$@"
}

# Runs the tests of $folder; the arguments are ctest's.
test_row()
{
    ctest --test-dir "$folder" --output-on-failure -j 4 --no-tests=error "$@"
}

# googletest_into PREFIX [cmake arguments]: builds GoogleTest out of Debian's sources with the compiler
# and the flags that the arguments name, and installs it. Does nothing when it has been done so before.
googletest_into()
{
    local prefix=$1
    shift
    need_packages googletest
    if [[ -e $prefix/arguments && $(<"$prefix/arguments") == "$*" ]]; then
        return 0
    fi
    rm -rf "$prefix"
    configure -S /usr/src/googletest -B "$prefix/build" -G Ninja -D CMAKE_BUILD_TYPE=Debug \
        -D CMAKE_INSTALL_PREFIX="$prefix" -D CMAKE_INSTALL_LIBDIR=lib -D CMAKE_CXX_STANDARD=17 "$@"
    cmake --build "$prefix/build" --parallel "$(nproc)"
    cmake --install "$prefix/build" >"$prefix/build/install.log"
    printf '%s' "$*" >"$prefix/arguments"
}
