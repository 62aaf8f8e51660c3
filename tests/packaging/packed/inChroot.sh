#!/usr/bin/env bash
# In a system that has nothing but what is needed to build a host: installs the packages in debs/, uses
# them, installs the next version in next/ over them, and takes them away; then no file is left. Stands
# with all that it needs in one folder, where it is run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
here=$PWD
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
export HOME=$here/home
mkdir -p "$HOME"

step()
{
    printf '== %s\n' "$*"
}

wrong()
{
    printf 'wrong: %s\n' "$*"
    exit 1
}

apt()
{
    apt-get -q -y --no-install-recommends "$@" >"$here/apt.log" 2>&1 || { cat "$here/apt.log"; exit 1; }
    ! grep -i 'warning:' "$here/apt.log" || wrong "a package complains"
}

# Every path but those of this folder, of the kernel, and of the books and caches of apt and dpkg.
all_files()
{
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path "$here" -o -path /var/lib/dpkg \
        -o -path /var/lib/apt -o -path /var/cache/apt -o -path /var/log -o -path /var/cache/debconf \) -prune \
        -o -print | sort
}

packages=(libzel0 libzel-dev libzel-doc python3-zel zel-shading zel-tools)
versions()
{
    dpkg-query --show --showformat '${Version}\n' "${packages[@]}" | sort -u
}

# What the files in the system's folders are for.
desktop_and_pages()
{
    step "Pages, completion, the kind of file"
    man -w zelsh | grep -x /usr/share/man/man1/zelsh.1.gz
    man -w zeledit | grep -x /usr/share/man/man1/zeledit.1.gz
    man zelsh | grep -q -- --strict || wrong "the man page is not shown"
    # Without a terminal the shell does not load the completions by itself.
    bash -c 'source /usr/share/bash-completion/bash_completion
        for program in zelsh zeledit; do __load_completion $program && complete -p $program; done'
    grep -q '^application/x-shading-document+xml:\*\.mtlx$' /usr/share/mime/globs \
        || wrong "the system does not know the documents"
    [[ -s /usr/share/doc/libzel-doc/html/index.html && -d /usr/share/doc/libzel-doc/examples/first ]] \
        || wrong "no documentation"
    /sbin/ldconfig -p | grep -q 'libZEL\.so\.0 .*/usr/lib/' || wrong "ldconfig does not know the library"
}

first_version()
{
    step "Installing"
    apt install ./debs/*.deb
    versions >first.txt
    [[ $(wc -l <first.txt) == 1 ]] || wrong "more than one version"
    bash ./tests/packaging/packed/use.sh /usr "$here/tests" "$here/documents" "$here/work"
    desktop_and_pages
}

next_version()
{
    step "Installing the next version over it"
    apt install ./next/*.deb
    dpkg --compare-versions "$(versions)" gt "$(<first.txt)" || wrong "the version is $(versions)"
    [[ $(echo /usr/lib/*/libZEL.so.0.*) == */libZEL.so."$(versions | sed 's/-.*//')" ]] \
        || wrong "files of both versions: $(echo /usr/lib/*/libZEL.so.0.*)"
    work/plainConsumer # Built against the first version.
    rm -rf work
    bash ./tests/packaging/packed/use.sh /usr "$here/tests" "$here/documents" "$here/work"
}

# A user's settings and documents are nobody's to remove.
without_tools()
{
    step "Removing zel-tools"
    mkdir -p "$HOME/.config/zeledit" "$HOME/.local/state/zeledit/recovery"
    touch "$HOME/.config/zeledit/zeledit.conf" "$HOME/.local/state/zeledit/recovery/kept" "$HOME/kept.mtlx"
    find "$HOME" | sort >kept.txt
    apt remove zel-tools
    find "$HOME" | sort | diff kept.txt - || wrong "a file of the user's is gone"
    ! command -v zelsh || wrong "zelsh is still there"
    /usr/bin/python3 -c "import zel.shading"
}

nothing_left()
{
    step "Removing all"
    apt purge "${packages[@]}"
    ! find / -xdev \( -path "$here" -o -path /proc \) -prune -o -iname '*zel[-0es]*' -print | grep . \
        || wrong "these files are left"
    apt autoremove --purge
    all_files | diff before.txt - || wrong "what was there before and now (<, >) differs"
    ! dpkg-query --list | grep -i zel || wrong "dpkg still knows a package"
    echo "Nothing is left of the packages"
}

all_files >before.txt
first_version
next_version
without_tools
nothing_left
