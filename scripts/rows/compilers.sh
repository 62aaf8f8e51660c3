# shellcheck shell=bash
# Compilers, standards and build types; the sanitizers; valgrind.

# compiler_row COMPILER STANDARD TYPE JOINED [FLAGS]: JOINED says whether sources are compiled together.
# The tests of the headers and of the border name their compilers themselves: in their place the
# headers are compiled as the row says.
compiler_row()
{
    local compiler=$1 standard=$2 type=$3 joined=$4 flags=${5:-}
    need_packages "${build_packages[@]}" "${test_packages[@]}"
    if [[ $compiler == clang++-* ]]; then
        need_packages "clang-${compiler#clang++-}"
    fi
    if [[ $flags == *sanitize* && $compiler == clang++-* ]]; then
        need_packages "libclang-rt-${compiler#clang++-}-dev"
    fi
    # g++ 12 warns wrongly about std::string in optimised C++20 and later (-Wrestrict).
    if [[ $compiler == g++ && $standard != 17 ]]; then
        flags+=" -Wno-restrict"
    fi
    configure_row -D CMAKE_CXX_COMPILER="$compiler" -D CMAKE_CXX_STANDARD="$standard" \
        -D CMAKE_BUILD_TYPE="$type" -D CMAKE_CXX_FLAGS="$flags" -D CMAKE_UNITY_BUILD="$joined"
    build_row
    test_row -E '^(HeaderWarnings|BorderOfModule\.|Refused)'
    tests/packaging/headers/check.sh "$compiler" "c++$standard" include tests/packaging/headers/use.cpp \
        tests/packaging/consumer/consumer.cpp
}

# The tests of the library under valgrind, but for those of the registry, which need a process each,
# and those of long lists. Built as the quick row of clang++-14 is, whose compilations it takes over.
valgrind_row()
{
    need_packages "${build_packages[@]}" "${test_packages[@]}" valgrind clang-14
    configure_row -D CMAKE_CXX_COMPILER=clang++-14 -D CMAKE_CXX_STANDARD=20 -D CMAKE_BUILD_TYPE=Release
    build_row --target zelTests
    valgrind --quiet --leak-check=full --error-exitcode=9 "$folder/tests/library/zelTests" \
        --gtest_filter='-HostTest.*:Long*' | tee "$folder/said"
    grep -q '^\[  PASSED  \] [1-9][0-9]* tests' "$folder/said"
}

# Each compiler compiles each source by itself once, in the rows of C++17 Debug: that shows an include
# that is missing. Older clangs do not take their system's headers as C++23.
for kind in "20 Release" "17 Debug" "17 Release" "20 Debug" "23 Debug" "23 Release"; do
    read -r standard type <<<"$kind"
    compilers=(g++ clang++-14 clang++-15 clang++-16 clang++-19)
    [[ $standard != 23 ]] || compilers=(g++ clang++-19)
    for compiler in "${compilers[@]}"; do
        joined=ON
        [[ $kind != "17 Debug" ]] || joined=OFF
        declare_row "$compiler-$standard-$type" "$compiler, C++$standard, $type" \
            compiler_row "$compiler" "$standard" "$type" "$joined"
    done
done
sanitizers="-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer"
declare_row sanitizers-g++ "address and undefined behaviour sanitizers of g++" \
    compiler_row g++ 20 Debug ON "$sanitizers"
declare_row sanitizers-clang++-14 "those of clang++-14" compiler_row clang++-14 17 Debug ON "$sanitizers"
declare_row sanitizers-clang++-19 "those of clang++-19" compiler_row clang++-19 20 Debug ON "$sanitizers"
declare_row valgrind "most of the library's tests under valgrind" valgrind_row
