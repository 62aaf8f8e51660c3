# shellcheck shell=bash
# The packages: Debian's, installed in a bare system, used, replaced by a later version and removed; and
# the archive, unpacked somewhere and used there.

# The hardening of Debian that the preset lacks; the other flags are of optimisation and paths.
flags_that_lack()
{
    local word
    for word in $(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS) \
        $(dpkg-buildflags --get LDFLAGS); do
        case $word in
        -g | -O* | -ffile-prefix-map=*) ;;
        *) grep -qF -e " $word" build/package/build.ninja || printf '%s ' "$word" ;;
        esac
    done
}

# The machine's release of Debian from its own mirrors of that, with what a host is built and looked at by.
# Unpacked into $folder/root; made anew when there is none that is younger than a month.
bare_system()
{
    local release main tar=$folder/base.tar more=()
    # shellcheck source=/dev/null
    release=$(. /etc/os-release && printf '%s' "${VERSION_CODENAME:-}")
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' \
        'Origin: Debian' | sort -u \
        | awk -v release="$release" '$2 == release || index($2, release "-") == 1' >"$folder/sources"
    main=$(awk -v release="$release" '$2 == release && $3 == "main" { print $1; exit }' "$folder/sources")
    [[ -n $main ]] || not_run "no mirror of Debian's $release among the sources of apt"
    rm -rf "$folder/root"
    if [[ -z $(find "$tar" -mtime -30 2>/dev/null) ]]; then
        say "A bare $release"
        [[ $main != https:* ]] || more=(--include=ca-certificates)
        # It mounts /proc there; of a name space of its own, nothing stays when it is broken off.
        unshare --mount debootstrap --variant=minbase "${more[@]}" "$release" "$folder/root" "$main"
        sed 's/^/deb /' "$folder/sources" >"$folder/root/etc/apt/sources.list"
        apt-config dump | grep -i '^Acquire::[a-z]*::Proxy' >"$folder/root/etc/apt/apt.conf.d/proxy" || true
        cp /etc/resolv.conf "$folder/root/etc/resolv.conf"
        in_root 'apt-get -q update && apt-get -q -y --no-install-recommends install \
            g++ make cmake pkgconf libgtest-dev man-db bash-completion gdb shared-mime-info && apt-get clean'
        tar -C "$folder/root" -cf "$tar.new" .
        mv "$tar.new" "$tar"
    else
        mkdir -p "$folder/root"
        tar -C "$folder/root" -xf "$tar"
        in_root 'apt-get -q update'
    fi
}

# Runs a line in $folder/root. The mounts are of a name space that ends with it, so none stays behind.
in_root()
{
    env -i DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb \
        unshare --mount --pid --fork --kill-child bash -ec '
            mount -t proc proc "$1/proc"
            mount --rbind /dev "$1/dev"
            exec chroot "$1" bash -ec "$2"' in_root "$folder/root" "$1"
}

# Both versions: build/packages and $folder/next/packages.
build_versions()
{
    local lacking
    scripts/package deb
    lacking=$(flags_that_lack)
    [[ -z $lacking ]] || fail "the preset package lacks flags of Debian's: $lacking"
    say "The next version"
    configure --preset package -B "$folder/next" \
        -D CMAKE_PROJECT_ZEL_INCLUDE="$PWD/tests/packaging/packed/nextVersion.cmake"
    cmake --build "$folder/next"
    rm -rf "$folder/next/packages"
    cpack --config "$folder/next/CPackConfig.cmake" -G DEB -B "$folder/next/packages"
}

try_in_bare_system()
{
    local check=$folder/root/root/check
    bare_system
    mkdir -p "$check/debs" "$check/next"
    cp build/packages/*.deb "$check/debs"
    cp "$folder"/next/packages/*.deb "$check/next"
    cp -r tests "$check/tests"
    cp -r examples/documents "$check/documents"
    in_root "bash /root/check/tests/packaging/packed/inChroot.sh /root/check"
    rm -rf "$folder/root"
}

packages_row()
{
    ((EUID == 0)) || not_run "a bare system is made by root alone"
    unshare --mount --pid --fork true 2>/dev/null || not_run "no mounts are allowed here"
    need_packages debootstrap lintian dpkg-dev
    build_versions
    say "lintian"
    lintian --allow-root --fail-on error,warning --tag-display-limit 0 build/packages/*.deb
    try_in_bare_system
}

archive_row()
{
    need_packages libgtest-dev pkgconf gdb
    scripts/package archive
    local place=$folder/"an archive" archive
    archive=$(echo build/packages/*.tar.gz)
    rm -rf "$place" "$folder/moved" "$folder/work"
    mkdir -p "$place"
    tar -C "$place" -xzf "$archive"
    mv "$place"/libzel-* "$folder/moved"
    rmdir "$place"
    env -i PATH=/usr/bin:/bin bash tests/packaging/packed/use.sh "$folder/moved" "$PWD/tests" \
        "$PWD/examples/documents" "$folder/work"
}

declare_row packages "Debian packages, installed in a bare system, replaced and removed" packages_row
declare_row archive "the archive, unpacked and moved" archive_row
