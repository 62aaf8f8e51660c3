#!/usr/bin/env bash
# The names that the library exports, against the reviewed list cmake/libZEL.map, which is the
# linker's version script too. UNLISTED is the same library linked without the list.
#   exportedNames.sh check LIBRARY UNLISTED [LIST]  prints the differences and fails when there is
#                                                   one; LIST is the one made for another platform,
#                                                   a module definition file for Windows
#   exportedNames.sh update UNLISTED                writes the list anew
set -euo pipefail
export LC_ALL=C
list=$(dirname "${BASH_SOURCE[0]}")/../../cmake/libZEL.map

# g++ makes constructors for whole objects of abstract classes too, clang++ does not, nobody calls
# them: they are not exported.
of_abstract_classes='^_ZN3ZEL9ContainerC1Ev$'

# The public names: the strong ones, and the weak ones of namespace ZEL, which are virtual tables and
# type information. What comes from the standard library's headers depends on the optimiser, and the
# whole of it may be linked into ours; two underscores begin the names of sanitizers.
public()
{
    if [[ $1 == *.dll ]]; then
        exported "$1" | grep -v "$of_abstract_classes"
        return
    fi
    "${NM:-nm}" --dynamic --defined-only --format=posix "$1" \
        | awk '($2 ~ /^[TDBR]$/ && $1 !~ /^__|^_(init|fini|end|edata)$|^_txnal_|^_Z(NK?)?St/) ||
               $1 ~ /^_Z(T[VTISC])?NK?3ZEL/ { print $1 }' \
        | grep -v "$of_abstract_classes" | sort -u
}

# All names, but for the one of the version itself. Of a DLL the table of exports, after its heading.
exported()
{
    if [[ $1 == *.dll ]]; then
        "${OBJDUMP:-objdump}" --private-headers "$1" \
            | awk '/^\[Ordinal\/Name Pointer\] Table/ { inside = 1; next }
                   inside && !/\[ *[0-9]+\]/ { exit }
                   inside { print $NF }' | sort -u
        return
    fi
    "${NM:-nm}" --dynamic --defined-only --format=posix "$1" | awk '$2 != "A" { sub(/@.*/, "", $1); print $1 }' | sort -u
}

listed()
{
    if [[ $list == *.def ]]; then
        awk '/^ / { print $1 }' "$list" | sort -u
        return
    fi
    sed -n 's/^ *\(_Z[A-Za-z0-9_*]*\); # .*/\1/p' "$list" | sort -u
}

# Names in the form in which they are listed, where that has a "*" in it.
as_listed()
{
    awk 'FNR == NR { if (/[*]/) { form = "^" $0 "$"; gsub(/[*]/, ".*", form); forms[form] = $0 }; next }
        { name = $0; for (form in forms) if ($0 ~ form) name = forms[form]; print name }' <(listed) - | sort -u
}

compare()
{
    local names difference
    names=$("$2" "$3" | as_listed)
    difference=$(diff <(listed) - <<<"$names" || true)
    if [[ -n $difference ]]; then
        printf '%s\n' "$1"
        grep '^[<>]' <<<"$difference" | c++filt
        return 1
    fi
}

usage="usage: $0 check LIBRARY UNLISTED [LIST] | update UNLISTED"
case ${1:-} in
check)
    good=true
    list=${4:-$list}
    [[ -r ${2:?$usage} && -r ${3:?$usage} ]] || { echo "$0: no library $2 or $3" >&2; exit 2; }
    compare "Exported by the library (>) against cmake/libZEL.map (<):" exported "$2" || good=false
    compare "Public in the sources (>) against cmake/libZEL.map (<):" public "$3" || good=false
    $good || {
        echo "If that is meant, review the names and run scripts/abi update."
        exit 1
    }
    ;;
update)
    names=$(public "${2:?$usage}")
    {
        sed '/^global:$/q' "$list"
        paste -d ' ' <(sed 's/.*/    &; #/' <<<"$names") <(c++filt <<<"$names") | sort -t '#' -k 2
        printf 'local:\n    *;\n};\n'
    } >"$list.new"
    mv "$list.new" "$list"
    ;;
*)
    echo "$usage" >&2
    exit 2
    ;;
esac
