#!/usr/bin/env bash
# In a system that has nothing but what is needed to build a host: installs the packages in debs/, uses
# them, installs the next version in next/ over them, and takes them away; then no file is left.
#   inChroot.sh FOLDER    with debs/, next/, the project's tests/, and its documents in documents/
set -euo pipefail
cd "$1"
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
    ! grep -E '^(dpkg|W): .*(zel|ZEL)' "$here/apt.log" || wrong "a package complains"
}

# Every path but those of this folder, of the kernel, of the books and caches of apt, dpkg, ucf and man,
# and of what Python keeps of its own files and gdb's when these run.
all_files()
{
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path "$here" -o -path /var/lib/dpkg \
        -o -path /var/lib/apt -o -path /var/lib/ucf -o -path /var/log -o -path /var/cache/apt \
        -o -path /var/cache/debconf -o -path /var/cache/man \
        -o -name __pycache__ -not -path '*/dist-packages/*' \) -prune -o -print | sort
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
    man zelsh | grep -- --strict >/dev/null || wrong "the man page is not shown"
    # Without a terminal the shell does not load the completions by itself.
    bash -c 'source /usr/share/bash-completion/bash_completion
        for program in zelsh zeledit; do __load_completion $program && complete -p $program; done'
    grep -q '^application/x-shading-document+xml:\*\.mtlx$' /usr/share/mime/globs \
        || wrong "the system does not know the documents"
    [[ -s /usr/share/doc/libzel-doc/html/index.html && -d /usr/share/doc/libzel-doc/examples/first ]] \
        || wrong "no documentation"
    ldconfig -p | grep -E 'libZEL\.so\.0 .*/lib/' || wrong "ldconfig does not know the library"
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
    apt purge libzel0 libzel-dev libzel-doc python3-zel zel-shading
    ! all_files | grep -iE '/[^/]*(zel[-0es.]|shadingDef|shadingPl|x-shading)[^/]*$' || wrong "these are left"
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
