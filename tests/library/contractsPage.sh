#!/usr/bin/env bash
# The pages on contracts and callbacks against the tests and the public headers, and the links of all
# pages against the files and headings that they lead to.
#   contractsPage.sh TESTS    prints what does not fit and fails: TESTS is the program zelTests
set -euo pipefail
export LC_ALL=C
tests=${1:?usage: $0 TESTS}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
page=docs/contracts.md
faults=0

fault()
{
    echo "$1"
    faults=$((faults + 1))
}

# Every test that a page names is one of zelTests: "Suite." lines, each followed by its names.
present=$("$tests" --gtest_list_tests | awk '/^[^ ]/ { suite = $1; next } { print suite $1 }')
for file in "$page" docs/callbacks.md docs/caller-guarantees.md docs/coverage.md; do
    while read -r name; do
        grep -qxF "$name" <<<"$present" || fault "$file: there is no test $name"
    done < <(grep -oE '`[A-Z][A-Za-z]*\.[A-Z][A-Za-z]*`' "$file" | tr -d '`' | sort -u)
done

# The contracts of the headers, "HEADER TEXT" in one line each.
comments=$(awk '
    FNR == 1 { flush() }
    /^ *\/\/\// { line = $0; sub(/^ *\/\/\/ ?/, "", line); comment = comment " " line; file = FILENAME; next }
    { flush() }
    END { flush() }
    function flush(    parts, n, i) {
        n = split(comment, parts, "Contract: ")
        for (i = 2; i <= n; ++i)
            print file, parts[i]
        comment = ""
    }' include/*.h | sed 's|^include/||')
# The beginnings that the rows quote, in the same form.
quotes=$(awk -F ' *[|] *' '/^[|].*`zel[A-Za-z]*\.h` "/ {
        header = $4; sub(/^`/, "", header); sub(/`.*/, "", header)
        n = split($4, parts, "\"")
        for (i = 2; i <= n; i += 2)
            print header, parts[i]
    }' "$page" | sort -u)
[[ -n $comments && -n $quotes ]] || fault "no contracts found: the check itself is broken"

begins()
{
    awk -v text="$1" 'index(text, $0) == 1 { found = 1 } END { exit !found }'
}
while read -r comment; do
    begins "$comment" <<<"$quotes" || fault "$page: no row quotes: $comment"
done <<<"$comments"
while read -r quote; do
    awk -v quote="$quote" 'index($0, quote) == 1 { found = 1 } END { exit !found }' <<<"$comments" \
        || fault "$page: no header declares: $quote"
done <<<"$quotes"
while read -r row; do
    grep -qE '`[A-Z][A-Za-z]*\.[A-Z][A-Za-z]*`' <<<"$row" || fault "$page: a row names no test: $row"
done < <(grep -E '^\|.*`zel[A-Za-z]*\.h` "' "$page")

# Links within the tree: "[text](file#heading)".
for file in docs/*.md README.md; do
    while read -r link; do
        target=$(dirname "$file")/${link%%#*}
        [[ -n ${link%%#*} ]] || target=$file
        [[ -e $target ]] || { fault "$file: no such file: $link"; continue; }
        [[ $link == *#* ]] || continue
        sed -n 's/^#* //p' "$target" | tr 'A-Z ' 'a-z-' | tr -cd 'a-z0-9\n_-' | grep -qxF "${link#*#}" \
            || fault "$file: no such heading: $link"
    done < <(grep -oE '\]\([^)]+\)' "$file" | sed 's/^](//; s/)$//' | grep -v '^https\?:' | sort -u)
done

((faults == 0)) || exit 1
