#!/usr/bin/env bash
# windows-python.sh FOLDER: builds the library's half of the Python package for 64-bit Windows by
# mingw-w64. There is no Python for Windows here: the headers are of Debian's source of Python, which
# has Windows' own pyconfig.h, and the names of its DLL those that the headers declare. So the module
# is compiled and linked, and not run. FOLDER takes what is made.
set -euo pipefail
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
version=3.11 # Of Debian 12, which has the headers of that one for the same source.

# The source as published, without a change to the system's list of sources.
get_headers()
{
    local sources=$folder/sources apt
    if [[ -e $folder/python/Python.h ]]; then
        return 0
    fi
    mkdir -p "$sources/parts" "$sources/lists/partial" "$folder/python"
    local file
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/debian.{list,sources}; do
        [[ ! -e $file ]] || sed -E 's/^Types:.*/Types: deb-src/; s/^deb /deb-src /' "$file" \
            >"$sources/parts/${file##*/}"
    done
    [[ ! -e $sources/parts/sources.list ]] || mv "$sources/parts/sources.list" "$sources/parts/more.list"
    apt=(apt-get -qq -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$sources/parts"
        -o Dir::State::Lists="$sources/lists" -o APT::Sandbox::User=root)
    "${apt[@]}" update
    (cd "$sources" && "${apt[@]}" source --download-only --tar-only "python$version")
    tar -xf "$sources/python${version}_"*.orig.tar.* -C "$folder/python" --strip-components=2 \
        --wildcards '*/Include/*'
    tar -xf "$sources/python${version}_"*.orig.tar.* -C "$folder/python" --strip-components=2 \
        --wildcards '*/PC/pyconfig.h'
}

# The names that the headers declare as the DLL's, for the linker.
write_import_library()
{
    {
        printf 'LIBRARY python%s.dll\nEXPORTS\n' "${version/./}"
        cat "$folder"/python/*.h "$folder"/python/cpython/*.h | tr '\n' ' ' \
            | grep -oE 'PyAPI_(FUNC|DATA)\([^)]*\)+ *\**[A-Za-z_0-9]+' \
            | sed -E 's/^PyAPI_FUNC.*[ )*]([A-Za-z_0-9]+)$/    \1/; s/^PyAPI_DATA.*[ )*]([A-Za-z_0-9]+)$/    \1 DATA/' \
            | sort -u
    } >"$folder/python.def"
    x86_64-w64-mingw32-dlltool -d "$folder/python.def" -l "$folder/libpython${version/./}.dll.a"
}

# pybind11 apart from the system's other headers.
copy_pybind11()
{
    mkdir -p "$folder/pybind11/include" "$folder/pybind11/lib/cmake"
    cp -r /usr/include/pybind11 "$folder/pybind11/include"
    cp -r /usr/lib/cmake/pybind11 "$folder/pybind11/lib/cmake"
}

get_headers
write_import_library
copy_pybind11
cmake -S . -B "$folder/build" -G Ninja --fresh \
    -D CMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/windows-x86_64.cmake" \
    -D CMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)" -D CMAKE_BUILD_TYPE= \
    -D CMAKE_COMPILE_WARNING_AS_ERROR=ON -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=32 \
    -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_TESTS=OFF -D ZEL_BUILD_BENCHMARKS=OFF \
    -D ZEL_BUILD_CONFORMANCE=OFF -D ZEL_BUILD_PYTHON=ON -D Python3_EXECUTABLE=/usr/bin/python3 \
    -D Python3_INCLUDE_DIR="$folder/python" -D Python3_LIBRARY="$folder/libpython${version/./}.dll.a" \
    -D pybind11_DIR="$folder/pybind11/lib/cmake/pybind11"
cmake --build "$folder/build"

module=$folder/build/python/zel/_zel.pyd
x86_64-w64-mingw32-objdump -p "$module" >"$folder/module"
for need in python"${version/./}".dll libZEL.dll; do
    grep -q "DLL Name: $need" "$folder/module" || { echo "the module does not need $need"; exit 1; }
done
# Python's folders and the module's own are searched, and no PATH: nothing else may be needed.
if sed -n 's/.*DLL Name: //p' "$folder/module" | grep -vixE \
    'python[0-9]+\.dll|libZEL\.dll|KERNEL32\.dll|msvcrt\.dll|api-ms-.*|libstdc\+\+-6\.dll|libgcc_s_seh-1\.dll|libwinpthread-1\.dll'; then
    echo "the module needs more than the page says"
    exit 1
fi
[[ $(sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/.*\] //p' "$folder/module") == *PyInit__zel ]] \
    || { echo "the module shows no PyInit__zel"; exit 1; }
ls -l "$module"
