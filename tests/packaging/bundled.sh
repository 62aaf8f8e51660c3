#!/usr/bin/env bash
# bundled.sh BUILD WORK: does what docs/bundling.md says with the first host, in WORK as the home folder,
# and runs the bundle with an empty environment after the library that it was built with is gone. The
# library is installed from BUILD. In the environment: CXX and CXXFLAGS for the copied project.
#   bundled.sh BUILD WORK TOOLCHAIN RUN    for Windows: the toolchain file, and what runs a program
set -euo pipefail
usage="usage: $0 BUILD WORK [TOOLCHAIN RUN]"
build=${1:?$usage}
mkdir -p "${2:?$usage}"
work=$(cd "$2" && pwd)
toolchain=${3:-} run=${4:-}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

# The blocks of one language in a section of the page, one after the other.
blocks()
{
    awk -v heading="## $1" -v fence="\`\`\`$2" '/^## / { here = $0 == heading }
        !here { next }
        $0 == "```" && inside { inside = 0; next }
        $0 == fence { inside = 1; next }
        inside' docs/bundling.md
}
lines=$(blocks "The lines for CMake" cmake)
steps=$(blocks "The lines for CMake" sh)
[[ $lines == *"install(IMPORTED_RUNTIME_ARTIFACTS ZEL::ZEL"* && $steps == *"cmake --install build"* ]] \
    || { echo "docs/bundling.md has no lines for CMake"; exit 1; }
linux=$(blocks "Linux" sh)
[[ $linux == mv*"env -i"*firstPlugin.so* ]] || { echo "docs/bundling.md moves and runs nothing"; exit 1; }

export HOME=$work/home
rm -rf "$HOME"
mkdir -p "$HOME"
cmake --install "$build" --prefix "$HOME/zel" >"$work/install.log"
cp -r examples/first "$HOME/first"
printf '\n%s\n' "$lines" >>"$HOME/first/CMakeLists.txt"
cd "$HOME/first"
if [[ -n $toolchain ]]; then
    steps=${steps/cmake -B build/cmake -B build -D CMAKE_TOOLCHAIN_FILE=\"$toolchain\"}
fi
bash -euo pipefail -c "$steps" >"$work/steps.log" 2>&1 || { cat "$work/steps.log"; exit 1; }
cd "$HOME"
rm -rf "$HOME/zel" "$HOME/first"

expected='nodes: Blur Load
connected: Top.Load.Out > Top.Blur.In
disconnected: Top.Load.Out > Top.Blur.In
connected: Top.Load.Out > Top.Blur.In'
if [[ -z $toolchain ]]; then
    shown=$(bash -euo pipefail -c "$linux" 2>&1) || { printf '%s\n' "$shown"; exit 1; }
else
    moved="$HOME/Moved host"
    mv "$HOME/First host" "$moved"
    for dll in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
        cp "$(x86_64-w64-mingw32-g++-posix -print-file-name="$dll")" "$moved/bin"
    done
    shown=$("$run" "$moved/bin/firstHost.exe" "Z:$moved/lib/plugins/firstPlugin.dll" 2>&1 | tr -d '\r') \
        || { printf '%s\n' "$shown"; exit 1; }
fi
diff <(printf '%s\n' "$expected") <(printf '%s\n' "$shown")
find "$HOME/Moved host" -type f -printf '%P\n' | sort
