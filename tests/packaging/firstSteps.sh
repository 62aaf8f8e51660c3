#!/usr/bin/env bash
# Does what the first section of docs/hosts.md says and compares what it shows, in WORK as the home
# folder. The library is installed from BUILD instead of being built anew.
#   firstSteps.sh BUILD WORK    CXX and CXXFLAGS hold for the copied project, and the words of
#                             RUN run its programs
set -euo pipefail
usage="usage: $0 BUILD WORK"
build=${1:?$usage}
export HOME=${2:?$usage}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

# The blocks of one fence in the guide, one after the other.
blocks()
{
    awk -v fence="$1" '/^## / && ++sections > 1 { exit }
        $0 == "```" && inside { inside = 0; next }
        $0 == fence && !inside { inside = 1; next }
        /^```/ { inside = 2 }
        inside == 1' docs/hosts.md
}
steps=$(blocks '```sh' | awk '/build\/plain -D/ { skip = 1 } !skip && !/--build build\/plain/
    !/\\$/ { skip = 0 }' | sed "s|build/plain|\"$build\"|; s|^g++|${CXX:-g++} ${CXXFLAGS:-}|
    s|^[./a-z]*/firstHost |${RUN:-} &|")
if [[ ${CXX:-} == *clang* ]]; then
    steps=${steps// -fno-gnu-unique/}
fi
for wanted in "cmake --install \"$build\" --prefix" "cp -r examples/first" "build/firstHost " "./firstHost "; do
    grep -qF "$wanted" <<<"$steps" || { echo "docs/hosts.md lacks the step: $wanted"; exit 1; }
done
expected=$(blocks '```' | grep -E '^(nodes|(dis)?connected): ')
rm -rf "$HOME"
mkdir -p "$HOME"
shown=$(bash -euo pipefail -c "$steps") || { printf '%s\n' "$shown"; exit 1; }
diff <(printf '%s\n' "$expected" "$expected") <(grep -E '^(nodes|(dis)?connected): ' <<<"$shown")

# Without its argument, with a file that is none, and with a module that is no plugin.
cd "$HOME/first"
read -ra run <<<"${RUN:-}"
fails()
{
    local wanted=$1 message
    shift
    ! message=$("$@" 2>&1) || { echo "succeeds: $*"; exit 1; }
    grep -qF "$wanted" <<<"$message" || { printf 'instead of "%s":\n%s\n' "$wanted" "$message"; exit 1; }
}
fails "usage: build/firstHost PLUGIN" "${run[@]}" build/firstHost
fails "/nowhere.so: cannot open" "${run[@]}" build/firstHost /nowhere.so
fails "registers no runtime" "${run[@]}" build/firstHost "$("${CXX:-g++}" -print-file-name=libm.so.6)"
