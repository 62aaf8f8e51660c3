#!/usr/bin/env bash
# The names that libZEL.so exports, against the reviewed list zel.abi beside this script.
#   exportedNames.sh check LIBRARY    prints the difference and fails when there is one
#   exportedNames.sh update LIBRARY   writes the list anew
set -euo pipefail
export LC_ALL=C
list=$(dirname "${BASH_SOURCE[0]}")/zel.abi

# Strong names, and the virtual tables and type information of namespace ZEL, which gcc makes weak.
# Other weak names are inline functions and template instances: how many of them are left depends on
# the optimiser. The sanitizers' own names start with two underscores.
exported()
{
    nm --dynamic --defined-only --format=posix "$1" \
        | awk '($2 ~ /^[TDBR]$/ && $1 !~ /^__|^_(init|fini|end|edata)$/) || $1 ~ /^_ZT[VIS]N3ZEL/ { print $1 }' \
        | c++filt | sort -u
}

usage="usage: $0 check|update LIBRARY"
library=${2:?$usage}
names=$(exported "$library")
case $1 in
check)
    diff -u --label "$list" --label "$library" "$list" - <<<"$names" || {
        echo "libZEL.so exports other names than the list. If that is meant, review them and run"
        echo "    $0 update $library"
        exit 1
    }
    ;;
update)
    printf '%s\n' "$names" >"$list"
    ;;
*)
    echo "$usage" >&2
    exit 2
    ;;
esac
