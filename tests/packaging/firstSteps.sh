#!/usr/bin/env bash
# Does what the first section of PAGE says, which is docs/hosts.md or docs/windows.md, and compares
# what it shows, in WORK as the home folder. The library is installed from BUILD instead of being built
# anew.
#   firstSteps.sh BUILD WORK PAGE    CXX and CXXFLAGS hold for the copied project, and the words of
#                                    RUN run its programs
set -euo pipefail
usage="usage: $0 BUILD WORK PAGE"
build=${1:?$usage}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
page=${3:?$usage}
case $page in
*windows.md)
    suffix=.exe
    no_module='/nowhere.so: Module not found'
    no_plugin=libstdc++-6.dll
    export WINEPREFIX=${WINEPREFIX:-$HOME/.wine}
    ;;
*)
    suffix=
    no_module='/nowhere.so: cannot open'
    no_plugin=libm.so.6
    ;;
esac
export HOME=${2:?$usage}

# The blocks of one fence in the guide, one after the other.
blocks()
{
    awk -v fence="$1" '/^## / && ++sections > 1 { exit }
        $0 == "```" && inside { inside = 0; next }
        $0 == fence && !inside { inside = 1; next }
        /^```/ { inside = 2 }
        inside == 1' "$page"
}
# Where the page runs programs by itself, RUN is not put before them.
steps=$(blocks '```sh' | awk '/build\/(plain|windows) -D/ { skip = 1 } !skip && !/--build build\/(plain|windows)/
    !/\\$/ { skip = 0 }' | sed -E "s;build/(plain|windows);\"$build\";
    s|^[-_0-9a-z]*g\+\+[-a-z]* |${CXX:-g++} ${CXXFLAGS:-} |
    s|^[./a-z]*/firstHost |${RUN:-} &|")
if [[ ${CXX:-} == *clang* ]]; then
    steps=${steps// -fno-gnu-unique/}
fi
for wanted in "cmake --install \"$build\" --prefix" "cp -r examples/first" "build/firstHost$suffix " \
    "${suffix:+\$run }./firstHost$suffix "; do
    grep -qF "$wanted" <<<"$steps" || { echo "$page lacks the step: $wanted"; exit 1; }
done
runs=$(grep -v "^cp " <<<"$steps" | grep -c "firstHost$suffix .*firstPlugin")
expected=$(blocks '```' | grep -E '^(nodes|(dis)?connected): ')
[[ -n $expected ]] || { echo "$page does not show what the host prints"; exit 1; }
rm -rf "$HOME"
mkdir -p "$HOME"
shown=$(bash -euo pipefail -c "$steps") || { printf '%s\n' "$shown"; exit 1; }
diff <(for ((i = 0; i < runs; ++i)); do printf '%s\n' "$expected"; done) \
    <(tr -d '\r' <<<"$shown" | grep -E '^(nodes|(dis)?connected): ')

# Without its argument, with a file that is none, and with a module that is no plugin.
cd "$HOME/first"
eval "run=(${RUN:-})"
fails()
{
    local wanted=$1 message
    shift
    ! message=$("$@" 2>&1) || { echo "succeeds: $*"; exit 1; }
    grep -qF "$wanted" <<<"$message" || { printf 'instead of "%s":\n%s\n' "$wanted" "$message"; exit 1; }
}
host=build/firstHost$suffix
fails "firstHost$suffix PLUGIN, with the whole path" "${run[@]}" "$host"
fails "$no_module" "${run[@]}" "$host" /nowhere.so
fails "registers no runtime" "${run[@]}" "$host" "$("${CXX:-g++}" -print-file-name=$no_plugin)"
