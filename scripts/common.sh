# shellcheck shell=bash disable=SC2034
# Sourced by the scripts beside it: goes to the top of the tree, and installs what is missing.
set -euo pipefail
if [[ ${1:-} == -h || ${1:-} == --help ]]; then # The comment at the head of the script.
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"
    exit
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(ccache cmake g++ ninja-build)
host_packages=(libgraphviz-dev libpugixml-dev libreadline-dev nlohmann-json3-dev)
window_packages=(qt6-base-dev fonts-dejavu-core)
python_packages=(pybind11-dev python3-dev)
test_packages=(xvfb xdotool openbox x11-utils libgtest-dev libbenchmark-dev make pkgconf gdb clang
    abigail-tools python3-pytest mypy)
tidy_packages=(clang clang-format-14 clang-tidy-14)
docs_packages=(doxygen)
picture_packages=(graphviz)

say()
{
    printf '== %s\n' "$*"
}

fail()
{
    printf '%s: %s\n' "$0" "$*" >&2
    exit 1
}

# Installs the Debian packages that are not there yet; does nothing, at once, when all are.
need_packages()
{
    command -v dpkg-query >/dev/null || {
        say "No Debian system: expecting what these packages hold: $*"
        return 0
    }
    local package missing=() as_root=()
    for package; do
        dpkg-query --show --showformat '${db:Status-Status}\n' "$package" 2>/dev/null \
            | grep -qx installed || missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi

    if ((EUID != 0)); then
        command -v sudo >/dev/null \
            || fail "these packages are missing, and there is neither root nor sudo to install them: ${missing[*]}"
        as_root=(sudo)
    fi
    as_root+=(env DEBIAN_FRONTEND=noninteractive)
    say "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get -qq update
    "${as_root[@]}" apt-get -qq -y --no-install-recommends install "${missing[@]}" >/dev/null \
        || fail "could not install: ${missing[*]}"
}

# Runs cmake to configure a build. The compilers go through ccache where there is one that can write
# its cache, and run as ever where there is none. What was compiled in one folder counts in every other:
# paths below the tree are hashed as seen from the build, and the folder of the build is not hashed.
configure()
{
    local cache launcher=
    if cache=$(ccache --get-config cache_dir 2>/dev/null) && mkdir -p "$cache/tmp" 2>/dev/null \
        && [[ -w $cache/tmp ]]; then
        launcher=ccache
    fi
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    cmake -D CMAKE_CXX_COMPILER_LAUNCHER="$launcher" "$@"
}
