# shellcheck shell=bash
# Two builds of the committed state in two folders give the same bytes.

# Builds the library in a copy of the commit below $folder, and the packages, without the compiler's
# cache.
build_copy()
{
    local copy=$folder/$1
    rm -rf "$copy"
    mkdir -p "$copy"
    git archive HEAD | tar -x -C "$copy"
    for type in Release RelWithDebInfo; do
        cmake -S "$copy" -B "$copy/build/$type" -G Ninja -D CMAKE_BUILD_TYPE="$type" \
            -D ZEL_BUILD_TESTS=OFF -D ZEL_BUILD_EXAMPLES=OFF -D ZEL_BUILD_BENCHMARKS=OFF
        cmake --build "$copy/build/$type" --parallel "$(nproc)"
    done
    "$copy/scripts/package"
}

# The same bytes, or which file differs.
same()
{
    cmp "$folder/first/$1" "$folder/and a second/$1"
    printf 'the same bytes: %s\n' "$1"
}

reproducible_row()
{
    need_packages "${build_packages[@]}" git libgtest-dev
    local library package type
    export CCACHE_DISABLE=1 SOURCE_DATE_EPOCH
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
    build_copy first
    build_copy "and a second"
    for type in Release RelWithDebInfo; do
        library=$(basename "$(readlink -f "$folder/first/build/$type/libZEL.so")")
        same "build/$type/$library"
        same "build/$type/conformance/libzelConformance.a"
    done
    diff <(cd "$folder/first/build/packages" && ls) <(cd "$folder/and a second/build/packages" && ls)
    for package in "$folder"/first/build/packages/*; do
        same "build/packages/$(basename "$package")"
    done
}

declare_row reproducible "two builds in two folders: the same bytes of the library and of all packages" reproducible_row
