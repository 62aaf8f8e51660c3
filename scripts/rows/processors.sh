# shellcheck shell=bash disable=SC2154
# Other processors, by Debian's cross compilers; qemu runs what is built.

# The compiler and its package that a toolchain file names.
compiler_package()
{
    sed -n 's/^set(triplet \(.*\))$/g++-\1/p' "cmake/toolchains/linux-$1.cmake"
}

# Fails when the configured build has no such test: a build that goes another way would pass too.
expect_test()
{
    local tests
    tests=$(ctest --test-dir "$folder" -N)
    grep -qE "^ *Test +#[0-9]+: $1\$" <<<"$tests" \
        || { printf 'There is no test %s: the build does not go the way that it proves\n' "$1"; exit 1; }
}

# for_processor NAME [cmake arguments]: configures a build that is optimised a little, for qemu is slow.
for_processor()
{
    local name=$1
    shift
    configure_row -D CMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/linux-$name.cmake" \
        -D CMAKE_BUILD_TYPE= -D CMAKE_CXX_FLAGS=-O1 "$@"
}

# processor_row NAME: all tests; then those of the library once more, with wrappers that note what a
# class overrides, as on platforms where its virtual table does not show that.
processor_row()
{
    local name=$1 gtest=$folder/googletest
    need_packages "${build_packages[@]}" make pkgconf qemu-user "$(compiler_package "$name")"
    googletest_into "$gtest" -D CMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/linux-$name.cmake"
    for_processor "$name" -D CMAKE_PREFIX_PATH="$gtest"
    expect_test ExportedNames
    build_row
    expect_test PlainAnswers.AreReadFromAnObject
    expect_test Inside.PlainAnswers.AreNotReadFromAnObject
    test_row

    folder+=/by-type
    for_processor "$name" -D CMAKE_PREFIX_PATH="$gtest" -D CMAKE_CXX_FLAGS="-O1 -D ZEL_NAMES_BY_TYPE" \
        -D ZEL_EXPORT_LIST=OFF
    build_row --target zelTests zelPathTests
    expect_test PlainAnswers.AreNotReadFromAnObject
    ctest --test-dir "$folder/tests/library" --output-on-failure -j 4 --no-tests=error \
        -E NOT_BUILT
}

# unpack_packages ARCHITECTURE FOLDER PACKAGE...: fetches Debian's packages for another architecture and
# unpacks them below the folder. apt has lists of its own for it: the system stays as it is.
unpack_packages()
{
    local architecture=$1 root=$2 file apt=$2.apt
    shift 2
    rm -rf "$root"
    mkdir -p "$root" "$apt/lists/partial" "$apt/archives/partial"
    : >"$apt/status"
    local options=(-qq -o APT::Architecture="$architecture" -o APT::Architectures="$architecture"
        -o Dir::State="$apt" -o Dir::State::status="$apt/status" -o Dir::Cache="$apt")
    if ((EUID == 0)); then
        options+=(-o APT::Sandbox::User=root)
    fi
    apt-get "${options[@]}" update
    (cd "$apt/archives" && rm -f ./*.deb && apt-get "${options[@]}" download "$@")
    for file in "$apt"/archives/*.deb; do
        dpkg-deb --extract "$file" "$root"
    done
    # Links from the top of the system would lead out of the folder.
    while read -r file; do
        ln -sf "$root$(readlink "$file")" "$file"
    done < <(find "$root" -type l -lname '/*')
}

# What programs of the host need of another architecture, from the C library on.
sysroot_packages=(libc6 libgcc-s1 libstdc++6 libpugixml-dev libpugixml1v5 libreadline-dev libreadline8
    libtinfo6 libgraphviz-dev libgvc6 libcgraph6 libcdt5 libpathplan4 libltdl7 libexpat1 zlib1g
    nlohmann-json3-dev)

# edit_with FOLDER ZELSH: opens a document, edits it in many ways, and leaves in the folder what zelsh
# said, the document as it was saved, and a picture of it.
edit_with()
{
    local out=$1 zelsh=$2 document=$PWD/examples/documents/rusty_painted_gate.mtlx
    local commands=("dump" "check" "collapse Top.NG_gate mixing gate_color gate_roughness"
        "rename Top.NG_gate.mixing mix" "set Top.SR_gate.metalness 0.3" "create add sum Top.NG_gate"
        "disconnect-all Top.NG_gate.chipping.intact.out" "duplicate Top.NG_gate.rust.stain" "undo 2" "redo 1"
        "arrange Top.NG_gate" "history" "connections" "save edited.mtlx" "draw edited.svg Top --depth 3")
    local words=() command
    for command in "${commands[@]}"; do
        words+=(-c "$command")
    done
    rm -rf "$out"
    mkdir -p "$out"
    (cd "$out" && "$zelsh" "$document" "${words[@]}" >said.txt 2>&1) || { cat "$out/said.txt"; return 1; }
    [[ -s $out/edited.mtlx && -s $out/edited.svg ]] && ! diff -q "$document" "$out/edited.mtlx"
}

# host_row NAME ARCHITECTURE: all tests with the sample host, but for its window; and a document that
# zelsh edits there and here.
host_row()
{
    local name=$1 architecture=$2 gtest=$folder/googletest root=$folder/sysroot
    local toolchain=$PWD/cmake/toolchains/linux-$name.cmake
    need_packages "${build_packages[@]}" "${host_packages[@]}" make pkgconf qemu-user \
        "$(compiler_package "$name")"
    googletest_into "$gtest" -D CMAKE_TOOLCHAIN_FILE="$toolchain"
    unpack_packages "$architecture" "$root" "${sysroot_packages[@]}"
    for_processor "$name" -D ZEL_SYSROOT="$root" -D CMAKE_PREFIX_PATH="$gtest" -D ZEL_BUILD_EXAMPLES=ON
    build_row
    test_row

    local there=$folder
    folder+=/native
    configure_row -D CMAKE_BUILD_TYPE= -D CMAKE_CXX_FLAGS=-O1 -D ZEL_BUILD_EXAMPLES=ON -D ZEL_BUILD_TESTS=OFF
    build_row --target zelsh shadingPlugin
    edit_with "$there/edited" "$there/tests/host/zelsh"
    edit_with "$folder/edited" "$folder/bin/zelsh"
    diff -r "$folder/edited" "$there/edited"
}

declare_row aarch64 "ARM, 64 bits, under qemu" processor_row aarch64
declare_row aarch64-host "the sample host on ARM, 64 bits, under qemu" host_row aarch64 arm64
declare_row armhf "ARM, 32 bits, under qemu" processor_row armhf
declare_row i386 "Intel, 32 bits" processor_row i386
declare_row s390x "the highest byte first (s390x), under qemu" processor_row s390x
